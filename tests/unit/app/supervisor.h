#pragma once

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "app/app_delegate.h"
#include "support/fake_platform.h"
#include "support/fake_presentation.h"
#include "support/records.h"
#include "support/temporary_home.h"

namespace varnhold::testing {

// A whole supervisor in a home of its own, on fakes: nothing runs, time is virtual.
struct Supervisor {
    TemporaryHome home;
    FakePlatform platform;
    FakePresentation presentation;
    Constants constants{home.path()};
    std::string listing = "PID\tStatus\tLabel\n"; // what "launchctl list" prints
    std::optional<AppDelegate> delegate;

    Supervisor() {
        platform.home = home.path();
        platform.bundle = home.at("bundle");
        platform.answer = [this](const platform::ProcessRequest& request) {
            platform::ProcessResult result;
            result.started = true;
            if (request.arguments == std::vector<std::string>{"list"}) {
                result.standardOutput = listing;
            }
            return result;
        };
    }

    AppDelegate& make() { return delegate.emplace(platform.interfaces, constants, presentation); }

    // Made and launched; the launch-time start has run.
    AppDelegate& launch() {
        AppDelegate& made = make();
        made.applicationDidFinishLaunching();
        platform.settle();
        forget();
        return made;
    }

    // A poll from its question to what it shows.
    void refresh() {
        delegate->refreshStatus();
        platform.settle();
    }

    void forget() {
        platform.children.clear();
        platform.record.clear();
        presentation.record.clear();
    }

    void writeBots(const std::vector<BotConfig>& bots) const {
        home.write(constants.botsConfigFile, encodeBots(bots));
    }
    void list(const std::string& pid, const std::string& status, const std::string& label) {
        listing += pid + "\t" + status + "\t" + label + "\n";
    }
    [[nodiscard]] std::string plist(const std::string& role) const {
        return constants.launchAgentsDir + "/" + labelOf(role) + ".plist";
    }
    // "launchctl list" of every poll left out: those come with each refresh.
    [[nodiscard]] std::vector<std::string> fleetCommands() const {
        std::vector<std::string> lines = platform.commandLines();
        std::erase(lines, "launchctl list");
        return lines;
    }
    [[nodiscard]] long polls() const {
        const auto lines = platform.commandLines();
        return std::count(lines.begin(), lines.end(), "launchctl list");
    }
};

} // namespace varnhold::testing
