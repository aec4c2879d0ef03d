#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/files.h"
#include "platform/platform.h"
#include "support/fake_http_client.h"
#include "support/fake_user_defaults.h"

namespace varnhold::testing {

// Surroundings with virtual time: nothing runs, nothing waits, and every call is recorded in order.
//
// Time moves only when something sleeps or a test calls advance(). Main-thread tasks that are due
// run when time moves or in settle(), as a real main thread would run them while another sleeps.
class FakePlatform final : private platform::Processes,
                           private platform::Queues,
                           private platform::Timers,
                           private platform::Clock,
                           private platform::System {
public:
    FakePlatform();
    FakePlatform(const FakePlatform&) = delete;
    FakePlatform& operator=(const FakePlatform&) = delete;

    platform::Platform interfaces;

    struct Child {
        platform::ProcessRequest request;
        bool waited = false;
        std::chrono::microseconds at{};
    };

    // Children in the order of their start, and everything else in words: "run launchctl list",
    // "start launchctl stop x", "sleep 150000", "post main", "post background", "timer 10000".
    std::vector<Child> children;
    std::vector<std::string> record;

    // Of the background tasks, in the order of posting.
    std::vector<platform::Priority> priorities;

    // What children answer; by default they run and print nothing.
    std::function<platform::ProcessResult(const platform::ProcessRequest&)> answer;

    FakeUserDefaults defaults;
    FakeHttpClient http;

    std::string home = "/home/somebody";
    std::string bundle = "/opt/varnhold/lib/varnhold";
    bool terminal = true; // whether there is one
    // What is where; by default what really is.
    std::function<bool(const std::string& path)> isThere = files::exists;

    // Runs main-thread tasks that are due and all background tasks until none is left.
    void settle();
    void runMain();
    [[nodiscard]] std::size_t pausedTimers() const;
    [[nodiscard]] std::size_t backgroundTasks() const { return background_.size(); }
    void runBackground();

    // Moves time; timers and delayed tasks fire in order on the way.
    void advance(std::chrono::microseconds duration);
    [[nodiscard]] std::chrono::microseconds elapsed() const { return now_; }

    // Children's command lines, as in the record, without the other calls.
    [[nodiscard]] std::vector<std::string> commandLines() const;

private:
    platform::ProcessResult run(const platform::ProcessRequest& request) override;
    void start(const platform::ProcessRequest& request) override;
    void postMain(platform::Task task) override;
    void postMainAfter(std::chrono::milliseconds delay, platform::Task task) override;
    void postBackground(platform::Priority priority, platform::Task task) override;
    std::unique_ptr<platform::Timer> repeat(std::chrono::milliseconds interval,
                                            platform::Task task) override;
    std::chrono::system_clock::time_point now() override;
    void sleep(std::chrono::microseconds duration) override;
    [[nodiscard]] std::uint32_t userId() const override { return 501; }
    [[nodiscard]] bool exists(const std::string& path) const override { return isThere(path); }
    [[nodiscard]] std::string homeDirectory() const override { return home; }
    [[nodiscard]] std::string bundlePath() const override { return bundle; }
    [[nodiscard]] std::string launchctlPath() const override { return "/bin/launchctl"; }
    [[nodiscard]] std::string orphanSweep() const override { return "sweep"; }
    [[nodiscard]] std::string runtimeDirectory() const override { return home + "/run"; }
    [[nodiscard]] std::optional<platform::ProcessRequest>
    terminalRequest(const std::string& script, const std::string& argument) const override {
        return terminal ? std::optional<platform::ProcessRequest>(
                              {.program = "/usr/bin/terminal", .arguments = {script, argument}})
                        : std::nullopt;
    }

    struct Due {
        std::chrono::microseconds at{};
        platform::Task task;
    };
    struct Repeating {
        std::chrono::microseconds interval{};
        std::chrono::microseconds next{};
        platform::Task task;
        bool paused = false;
    };
    class FakeTimer;

    platform::ProcessResult note(const platform::ProcessRequest& request, bool waited);
    void fireUntil(std::chrono::microseconds end);

    std::chrono::microseconds now_{};
    std::vector<Due> main_;
    std::deque<platform::Task> background_;
    std::list<Repeating> timers_;
};

// "launchctl bootout gui/501/x": the program's name and its arguments with blanks between.
[[nodiscard]] std::string commandLine(const platform::ProcessRequest& request);

} // namespace varnhold::testing
