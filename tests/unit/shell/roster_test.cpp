#include "shell/roster.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace varnhold {
namespace {

using Row = std::vector<std::string>;
using Rows = std::vector<Row>;

Rows rowsOf(const std::vector<DaemonInfo>& daemons) {
    Rows rows;
    for (const DaemonInfo& each : daemons) {
        rows.push_back({each.icon(), each.title(), each.launchdLabel(), each.deptKey()});
    }
    return rows;
}

TEST(Roster, StaffHasSeventeenAgents) {
    const Rows expected{
        {"🏢", "Chief of Staff (Bot)", "com.ostrelleai.cos.telegramd", "cos"},
        {"💻", "Chief Technology Officer (Bot)", "com.ostrelleai.technology.telegramd",
         "technology"},
        {"🤖", "CTO (Claude Bot)", "com.ostrelleai.cto.telegramd", "cto"},
        {"📈", "Chief Financial Officer (Bot)", "com.ostrelleai.finance.telegramd", "finance"},
        {"📢", "Director of Communications (Bot)", "com.ostrelleai.communications.telegramd",
         "communications"},
        {"💬", "Comms (Claude Bot)", "com.ostrelleai.comms.telegramd", "comms"},
        {"👤", "Executive Assistant (Bot)", "com.ostrelleai.ea.telegramd", "ea"},
        {"🏋\uFE0F", "Director of Health & Wellness (Bot)", "com.ostrelleai.health.telegramd",
         "health"},
        {"👥", "Chief Operating Officer (Bot)", "com.ostrelleai.operations.telegramd", "operations"},
        {"🤝", "Director of Philanthropy (Bot)", "com.ostrelleai.philanthropy.telegramd",
         "philanthropy"},
        {"🔒", "Director of Security (Bot)", "com.ostrelleai.security.telegramd", "security"},
        {"🚗", "Director of Transportation (Bot)", "com.ostrelleai.transport.telegramd",
         "transport"},
        {"⚖\uFE0F", "Director of Legal & Estate (Bot)", "com.ostrelleai.legal.telegramd", "legal"},
        {"🏠", "Director of Property (Bot)", "com.ostrelleai.property.telegramd", "property"},
        {"👨👩👧", "Director of Family Governance (Bot)", "com.ostrelleai.family.telegramd", "family"},
        {"✈\uFE0F", "Director of Lifestyle (Bot)", "com.ostrelleai.lifestyle.telegramd",
         "lifestyle"},
        {"🎮", "Game Studio (Bot)", "com.ostrelleai.studio.telegramd", "studio"},
    };
    EXPECT_EQ(expected.size(), 17U);
    EXPECT_EQ(rowsOf(Roster().staffDaemons), expected);
}

TEST(Roster, WorkersAreTwoDevelopers) {
    const Rows expected{
        {"👨💻", "Software Developer (Bot)", "com.ostrelleai.software-developer.telegramd",
         "software-developer"},
        {"👩💻", "Software Dev A (Umber Bot)", "com.ostrelleai.software-developer-a.telegramd",
         "software-developer-a"},
    };
    EXPECT_EQ(rowsOf(Roster().workerDaemons), expected);
}

TEST(Roster, TheSystemAgentHasNoDepartment) {
    const Rows expected{{"📧", "Cerebras Email Monitor", "com.ostrelleai.email-monitor", ""}};
    EXPECT_EQ(rowsOf(Roster().systemDaemons), expected);
}

TEST(Roster, KindwellHasTwoAgents) {
    const Rows expected{
        {"🌱", "Kindwell Bounty Watch", "com.ostrelleai.kindwell.bountywatch",
         "kindwell-bountywatch"},
        {"💬", "Kindwell Feedback Bot", "com.ostrelleai.kindwell.feedback", "kindwell-feedback"},
    };
    EXPECT_EQ(rowsOf(Roster().kindwellDaemons), expected);
}

TEST(Roster, LabelsOfChatAgentsAreMadeOfTheirDepartment) {
    const Roster roster;
    for (const auto* list : {&roster.staffDaemons, &roster.workerDaemons}) {
        for (const DaemonInfo& each : *list) {
            EXPECT_EQ(each.launchdLabel(), "com.ostrelleai." + each.deptKey() + ".telegramd");
        }
    }
    for (const auto* list : {&roster.systemDaemons, &roster.kindwellDaemons}) {
        for (const DaemonInfo& each : *list) {
            EXPECT_NE(each.launchdLabel(), "com.ostrelleai." + each.deptKey() + ".telegramd");
        }
    }
}

TEST(DaemonInfo, AChangeOfTitleIsToldToEveryObserverInTurn) {
    DaemonInfo info("🏢", "old", "label", "dept");
    std::vector<std::string> seen;
    info.observe([&](const DaemonInfo& changed) { seen.push_back("first " + changed.title()); });
    info.observe([&](const DaemonInfo& changed) { seen.push_back("second " + changed.title()); });
    EXPECT_TRUE(seen.empty());
    info.setTitle("new");
    EXPECT_EQ(info.title(), "new");
    EXPECT_EQ(seen, (std::vector<std::string>{"first new", "second new"}));
}

} // namespace
} // namespace varnhold
