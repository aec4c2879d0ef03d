#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/qt/qt_platform.h"
#include "settings/settings_state.h"
#include "support/temporary_home.h"

class QCoreApplication;

namespace varnhold::testing {

// Environment variables of this process, put back at the end.
class Environment final {
public:
    ~Environment();
    Environment() = default;
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

    void set(const std::string& name, const std::string& value);

private:
    std::vector<std::pair<std::string, std::optional<std::string>>> before_;
};

// The real surroundings, with an `ollama` of our own on the path that notes its calls. Its listing
// is what the test wrote; its pulls end at once, or wait while they are held.
class ShellWorld final {
    TemporaryHome home_;
    Environment environment_;
    std::unique_ptr<QCoreApplication> application_;
    std::optional<platform::QtPlatform> platform_;
    Constants constants_;

public:
    enum class Tool { installed, missing };

    explicit ShellWorld(Tool tool = Tool::installed);
    ~ShellWorld();
    ShellWorld(const ShellWorld&) = delete;
    ShellWorld& operator=(const ShellWorld&) = delete;

    std::optional<ModelSelectorView> view;

    [[nodiscard]] platform::Platform& platform() { return platform_->interfaces(); }
    [[nodiscard]] const Constants& constants() const { return constants_; }

    void list(const std::string& listing) const;
    void holdPulls() const;
    void letPullsEnd();

    // One line for each call: "list", "pull [llama3]".
    [[nodiscard]] std::vector<std::string> calls() const;

    // Runs the main thread until it is so; false if it never comes to that.
    [[nodiscard]] bool runUntil(const std::function<bool()>& reached) const;

private:
    [[nodiscard]] std::string gate() const { return home_.at("gate"); }

    int openGate_ = -1;
};

} // namespace varnhold::testing
