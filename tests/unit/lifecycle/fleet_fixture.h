#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "lifecycle/fleet_context.h"
#include "records/bots.h"
#include "support/fake_platform.h"
#include "support/records.h"
#include "support/temporary_home.h"

namespace varnhold {

using testing::bot;
using testing::governorBot;
using testing::labelOf;

// A home folder, recorded surroundings and a bots file to act on. The bundle holds no daemon code,
// so the folder beside it stands for that.
class FleetFixture : public ::testing::Test {
protected:
    FleetFixture() { fake.bundle = home.at("Varnhold.app"); }

    void writeBots(const std::vector<BotConfig>& bots) const {
        home.write(constants.botsConfigFile, encodeBots(bots));
    }

    void writeSignIn(const std::string& content) const {
        home.write(constants.authConfigFile, content);
    }

    [[nodiscard]] std::string plistPath(const std::string& label) const {
        return home.at("Library/LaunchAgents/" + label + ".plist");
    }

    [[nodiscard]] std::string plistOf(const std::string& role) const {
        return plistPath("com.ostrelleai." + role + ".telegramd");
    }

    // "launchctl bootstrap gui/501 PATH" of one agent.
    [[nodiscard]] std::string bootstrapOf(const std::string& role) const {
        return "launchctl bootstrap gui/501 " + plistOf(role);
    }

    static std::string bootoutOf(const std::string& role) {
        return "launchctl bootout gui/501/com.ostrelleai." + role + ".telegramd";
    }

    testing::TemporaryHome home;
    testing::FakePlatform fake;
    Constants constants{home.path()};
    FleetContext context{fake.interfaces, constants};
};

} // namespace varnhold
