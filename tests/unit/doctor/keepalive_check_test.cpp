#include "doctor/keepalive_check.h"

#include <chrono>
#include <filesystem>
#include <string>

#include "doctor/catalogue.h"
#include "doctor/window_state.h"
#include "doctor_home.h"

namespace varnhold::doctor {
namespace {

using testing::botRecord;
using ::testing::Contains;
using testing::DoctorHome;
using ::testing::ElementsAre;
using testing::findingsOf;
using ::testing::HasSubstr;
using testing::idsOf;
using ::testing::IsEmpty;
using testing::labelOf;
using ::testing::Not;
using ::testing::SizeIs;

constexpr const char* claude =
    R"([{"id":"c","name":"C","family":"Anthropic","color":"red","provider_key":"claude"}])";

struct Keepalive : DoctorHome {
    Keepalive() {
        write(constants.botsConfigFile, "[" + botRecord("a") + "," +
                                            botRecord("b", R"(,"keepaliveEnabled":false)") + "," +
                                            botRecord("c", R"(,"isPaused":true)") + "]");
        write(constants.architectPrefsFile, claude);
        home.makeFolder(folderOf("a"));
        home.makeFolder(folderOf("c"));
    }
    [[nodiscard]] std::string folderOf(const std::string& role) const {
        return constants.ostrelleAIDataDir + "/" + role;
    }
    void assign(const std::string& chain, const std::string& role) const {
        write(constants.chainBotAssignmentsFile, "{\"" + chain + "\":[\"" + labelOf(role) + "\"]}");
    }
    [[nodiscard]] Section check() const {
        const WindowState window(around);
        return checkKeepalive(window.fields(), around);
    }
};

TEST(KeepaliveCheck, AChainWithAWillingBotIsKeptWarm) {
    const Keepalive home;
    home.assign("architect", "a");
    const Section section = home.check();
    EXPECT_THAT(section.findings, IsEmpty());
    EXPECT_EQ(section.summary, "1 chain is kept warm");
    EXPECT_EQ(section.data["chains"][0].dump(),
              R"({"chain":"architect","kept":true,"lifetimeSeconds":300,"roles":["a"]})");
    EXPECT_EQ(section.data["chains"][1]["why"], "there is no model in it");
}

TEST(KeepaliveCheck, WhatIsNeverKeptWarmIsToldWhereBotsAreAssigned) {
    const Keepalive home;
    home.assign("architect", "b");
    EXPECT_THAT(findingsOf(home.check(), ids::keepaliveNever).at(0).sentence,
                HasSubstr("have keepalive off"));
    home.write(home.constants.voicePrefsFile, claude);
    home.assign("voice", "a");
    const auto voice = findingsOf(home.check(), ids::keepaliveNever);
    ASSERT_THAT(voice, SizeIs(1));
    EXPECT_EQ(voice[0].subject, "Audio chain");
    EXPECT_THAT(voice[0].sentence, HasSubstr("this chain never is"));
}

TEST(KeepaliveCheck, ARoleWithoutAFolderIsPassedOver) {
    const Keepalive home;
    home.assign("architect", "a");
    std::filesystem::remove(home.folderOf("a"));
    const auto found = findingsOf(home.check(), ids::pingFolderMissing);
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_THAT(found[0].sentence, HasSubstr(": a."));
}

TEST(KeepaliveCheck, APausedBotCostsTokens) {
    const Keepalive home;
    home.assign("architect", "c");
    EXPECT_THAT(findingsOf(home.check(), ids::keepalivePaused).at(0).sentence, HasSubstr("The c"));
}

TEST(KeepaliveCheck, ARequestLongOverdueIsNoted) {
    Keepalive home;
    home.assign("architect", "a");
    home.write(home.folderOf("a") + "/keepalive_ping", "2026-03-04T05:06:07Z");
    home.around.now = std::chrono::system_clock::now() + std::chrono::seconds(400);
    EXPECT_THAT(idsOf(home.check()), Not(Contains(ids::keepaliveOverdue)));
    home.around.now += std::chrono::seconds(60);
    EXPECT_THAT(idsOf(home.check()), ElementsAre(ids::keepaliveOverdue));
}

} // namespace
} // namespace varnhold::doctor
