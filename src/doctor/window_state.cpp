#include "doctor/window_state.h"

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "base/files.h"
#include "doctor/file_state.h"
#include "doctor/stored_defaults.h"
#include "platform/platform.h"
#include "settings/settings_state.h"

namespace varnhold::doctor {

// Surroundings in which nothing happens: loading needs none of it, and reading mustn't cause any.
namespace inert {

using namespace platform;

class QuietProcesses final : public Processes {
public:
    ProcessResult run(const ProcessRequest&) override { return {}; }
    void start(const ProcessRequest&) override {}
};

class QuietQueues final : public Queues {
public:
    void postMain(Task) override {}
    void postMainAfter(std::chrono::milliseconds, Task) override {}
    void postBackground(Priority, Task) override {}
};

class QuietTimers final : public Timers {
public:
    [[nodiscard]] std::unique_ptr<Timer> repeat(std::chrono::milliseconds, Task) override {
        return nullptr;
    }
};

class FixedClock final : public Clock {
public:
    explicit FixedClock(std::chrono::system_clock::time_point now) : now_(now) {}
    [[nodiscard]] std::chrono::system_clock::time_point now() override { return now_; }
    void sleep(std::chrono::microseconds) override {}

private:
    std::chrono::system_clock::time_point now_;
};

class GivenSystem final : public System {
public:
    explicit GivenSystem(const Surroundings& around) : around_(around) {}
    [[nodiscard]] std::uint32_t userId() const override { return 0; }
    [[nodiscard]] std::string homeDirectory() const override { return around_.home.appHome; }
    [[nodiscard]] std::string bundlePath() const override { return around_.bundlePath; }
    [[nodiscard]] std::string launchctlPath() const override { return around_.launchctlPath; }
    [[nodiscard]] std::string runtimeDirectory() const override { return around_.runtimeFolder; }
    [[nodiscard]] bool exists(const std::string& path) const override {
        return files::exists(path);
    }
    [[nodiscard]] std::string orphanSweep() const override { return {}; }
    [[nodiscard]] std::optional<ProcessRequest> terminalRequest(const std::string&,
                                                                const std::string&) const override {
        return std::nullopt;
    }

private:
    const Surroundings& around_;
};

class StoredDefaults final : public UserDefaults {
public:
    explicit StoredDefaults(const std::string& path)
        : values_(parseStoredDefaults(fileStateOf(path).content)) {}
    [[nodiscard]] std::string string(const std::string& key) const override {
        const auto found = values_.find(key);
        return found == values_.end() ? std::string() : found->second;
    }
    void setString(const std::string&, const std::string&) override {}
    [[nodiscard]] bool boolean(const std::string& key) const override {
        return string(key) == "true";
    }
    void setBoolean(const std::string&, bool) override {}

private:
    std::map<std::string, std::string> values_;
};

class NoNetwork final : public HttpClient {
public:
    void get(const std::string&, Completion) override {}
};

} // namespace inert

struct WindowState::Parts {
    explicit Parts(const Surroundings& around)
        : clock(around.now),
          system(around),
          defaults(storedDefaultsPath(around.home.appHome)),
          view(platform, around.constants) {
        view.loadSettings();
        view.refresh();
    }

    inert::QuietProcesses processes;
    inert::QuietQueues queues;
    inert::QuietTimers timers;
    inert::FixedClock clock;
    inert::GivenSystem system;
    inert::StoredDefaults defaults;
    inert::NoNetwork http;
    platform::Platform platform{processes, queues, timers, clock, system, defaults, http};
    ModelSelectorView view;
};

WindowState::WindowState(const Surroundings& surroundings)
    : parts_(std::make_unique<Parts>(surroundings)) {}

WindowState::~WindowState() = default;

const SettingsFields& WindowState::fields() const {
    return parts_->view;
}

} // namespace varnhold::doctor
