#include "doctor/files_check.h"

#include <chrono>
#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#include <vector>

#include "doctor/catalogue.h"
#include "doctor_home.h"

namespace varnhold::doctor {
namespace {

namespace fs = std::filesystem;
using testing::DoctorHome;
using testing::findingsOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* oneBot =
    R"([{"icon":"x","title":"Ops","token":"","role":"ops",)"
    R"("launchdLabel":"com.ostrelleai.ops.telegramd","service":"Telegram"}])";

// What there is to say of one file, apart from what is missing elsewhere.
std::vector<Finding> findingsAbout(const DoctorHome& home, const std::string& name) {
    std::vector<Finding> found;
    for (const Finding& each : checkFiles(home.around).findings) {
        if (each.subject == name) {
            found.push_back(each);
        }
    }
    return found;
}

TEST(FilesCheck, AHomeWithoutAnythingLacksItsFolder) {
    const DoctorHome home;
    fs::remove(home.constants.appSupportDir);
    const Section section = checkFiles(home.around);
    ASSERT_THAT(section.findings, SizeIs(1));
    EXPECT_EQ(section.findings[0].id, ids::fileMissing);
    EXPECT_EQ(worst(section), Level::warning);
}

TEST(FilesCheck, AMissingFleetIsAWarningAndMissingChainsANote) {
    const DoctorHome home;
    EXPECT_EQ(findingsAbout(home, "bots.json").at(0).level, Level::warning);
    const auto rest = findingsAbout(home, "13 files");
    ASSERT_THAT(rest, SizeIs(1));
    EXPECT_EQ(rest[0].level, Level::note);
    EXPECT_THAT(rest[0].sentence, HasSubstr("photo_preferences.json"));
    EXPECT_THAT(findingsAbout(home, "custom_groups.json"), IsEmpty());
    EXPECT_THAT(findingsAbout(home, "PROMPT.md"), IsEmpty());
}

TEST(FilesCheck, ARefusedRecordIsTracedToItsPlace) {
    const DoctorHome home;
    home.write(home.constants.botsConfigFile,
               "[\n  {\"icon\": \"🧭\", \"title\": \"Ops\", \"token\": \"\","
               " \"role\": \"ops\",\n   \"launchdLabel\": \"l\","
               " \"service\": \"telegram\"}\n]\n");
    const auto found = findingsAbout(home, "bots.json");
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].id, ids::fileRejected);
    EXPECT_EQ(found[0].level, Level::fault);
    EXPECT_EQ(found[0].sentence, "No such service: \"telegram\".");
    EXPECT_THAT(found[0].consequence, HasSubstr("empty fleet"));
    EXPECT_EQ(found[0].place, (Place{.file = home.constants.botsConfigFile,
                                     .line = 3,
                                     .column = 36,
                                     .record = 1,
                                     .field = "service"}));
}

TEST(FilesCheck, WhatIsNoJsonIsTracedToWhereItStops) {
    const DoctorHome home;
    home.write(home.constants.effortPrefsFile,
               "{\n  \"architect\": \"high\"\n  \"worker\": \"low\"\n}");
    const auto found = findingsAbout(home, "effort_preferences.json");
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].id, ids::fileRejected);
    EXPECT_EQ(found[0].place->line, 3U);
    EXPECT_THAT(found[0].sentence, HasSubstr("unexpected string literal"));
    EXPECT_THAT(found[0].sentence, ::testing::Not(HasSubstr("worker"))); // could be a token as well
}

TEST(FilesCheck, AFolderAPipeASocketADeviceAndALeadNowhereAreToldApart) {
    const DoctorHome home;
    const auto& c = home.constants;
    fs::create_directory(c.botsConfigFile);
    ASSERT_EQ(::mkfifo(c.reauthAlertsFile.c_str(), 0600), 0);
    fs::create_symlink("/dev/zero", c.effortPrefsFile);
    fs::create_symlink("/nowhere/at/all", c.promptFile);
    EXPECT_THAT(findingsAbout(home, "bots.json").at(0).sentence, HasSubstr("a folder"));
    EXPECT_THAT(findingsAbout(home, "reauth_alerts.json").at(0).sentence, HasSubstr("named pipe"));
    EXPECT_EQ(findingsAbout(home, "effort_preferences.json").at(0).id, ids::fileNotRegular);
    EXPECT_EQ(findingsAbout(home, "PROMPT.md").at(0).id, ids::fileUnreadable);
}

TEST(FilesCheck, AFileBeyondTheLimitIsNotRead) {
    const DoctorHome home;
    home.write(home.constants.modelLibraryFile, "");
    fs::resize_file(home.constants.modelLibraryFile, (std::uintmax_t{64} << 20U) + 1);
    EXPECT_EQ(findingsAbout(home, "model_library.json").at(0).id, ids::fileTooLarge);
}

TEST(FilesCheck, KeysThatASaveDropsAreNamedWithThePlaceOfTheFirst) {
    const DoctorHome home;
    home.write(home.constants.botsConfigFile,
               R"([{"icon":"x","nick":"n","title":"Ops","token":"","role":"ops","isPaused":null,)"
               R"("launchdLabel":"com.ostrelleai.ops.telegramd","service":"Telegram"}])");
    const auto found = findingsAbout(home, "bots.json");
    ASSERT_THAT(found, SizeIs(1)); // a null is dropped as well, and nothing is lost with it
    EXPECT_EQ(found[0].id, ids::fileDropsKeys);
    EXPECT_THAT(found[0].sentence, HasSubstr("1 key that a save leaves out: nick"));
    EXPECT_EQ(found[0].place->column, 21U);
}

TEST(FilesCheck, TokensThatOnlyAStartReadsAreSaidToGoWithTheNextSave) {
    const DoctorHome home;
    std::string auth = R"({"oauthTokens":{"claude":"t","gemini":5})";
    for (const char* maker : {"anthropic", "google", "openai", "mistral", "qwen", "deepseek"}) {
        auth += std::string(",\"") + maker + "Method\":\"API Key\",\"" + maker + "Key\":\"\"";
    }
    home.write(home.constants.authConfigFile, auth + R"(,"openrouterKey":""})");
    const Section section = checkFiles(home.around);
    const auto dropped = findingsOf(section, ids::fileDropsKeys);
    ASSERT_THAT(dropped, SizeIs(1));
    EXPECT_THAT(dropped[0].consequence, HasSubstr("until the next save"));
    const auto partly = findingsOf(section, ids::filePartlyRead);
    ASSERT_THAT(partly, SizeIs(1));
    EXPECT_EQ(partly[0].place->field, "oauthTokens.gemini");
    EXPECT_EQ(partly[0].consequence, "No agent gets any of these tokens.");
}

TEST(FilesCheck, AnUnknownLevelOfEffortFallsBackForItsChainAlone) {
    const DoctorHome home;
    home.write(home.constants.effortPrefsFile, R"({"architect":"huge","worker":"low"})");
    const auto found = findingsAbout(home, "effort_preferences.json");
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].id, ids::filePartlyRead);
    EXPECT_EQ(found[0].consequence, "The chain falls back to medium.");
    EXPECT_EQ(found[0].place->field, "architect");
}

TEST(FilesCheck, SecretsThatOthersCanReadAreTold) {
    const DoctorHome home;
    const std::string path = home.constants.botsConfigFile;
    std::string withToken = oneBot;
    withToken.replace(withToken.find(R"("token":"")") + 9, 0, "1234567:abc");
    home.write(path, withToken);
    ::chmod(path.c_str(), 0644);
    EXPECT_THAT(findingsAbout(home, "bots.json"), IsEmpty()) << "the home is closed to others";
    ::chmod(home.home.path().c_str(), 0755);
    const auto found = findingsAbout(home, "bots.json");
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].id, ids::fileReadableByOthers);
    EXPECT_EQ(found[0].command, "chmod 600 '" + path + "'");
    ::chmod(path.c_str(), 0640);
    EXPECT_THAT(findingsAbout(home, "bots.json"), IsEmpty());
    ::chmod(path.c_str(), 0644);
    home.write(path, oneBot);
    EXPECT_THAT(findingsAbout(home, "bots.json"), IsEmpty()) << "nothing secret in it";
}

TEST(FilesCheck, ABackupOfAnEarlierDayIsNoted) {
    const DoctorHome home;
    const std::string path = home.constants.customGroupsFile;
    home.write(path, "[ ]");
    home.write(path + ".bak", "[  ]");
    fs::last_write_time(path + ".bak", fs::last_write_time(path) - std::chrono::hours(48));
    const auto found = findingsAbout(home, "custom_groups.json.bak");
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].id, ids::fileBackupOlder);
    home.write(path + ".bak", "[ ]");
    fs::last_write_time(path + ".bak", fs::last_write_time(path) - std::chrono::hours(48));
    EXPECT_THAT(findingsAbout(home, "custom_groups.json.bak"), IsEmpty()) << "the same content";
}

TEST(FilesCheck, RoomForASaveIsMeasuredByWhatIsThere) {
    DoctorHome home;
    home.write(home.constants.botsConfigFile, oneBot);
    const auto found = [&home](DiskRoom room) {
        home.around.diskRoom = [room](const std::string&) { return room; };
        return findingsOf(checkFiles(home.around), ids::diskNearlyFull);
    };
    EXPECT_THAT(found({.freeBytes = 4096}), IsEmpty());
    EXPECT_THAT(found({.freeBytes = 4095}), SizeIs(1));
    EXPECT_EQ(found({.freeBytes = 4096, .quotaLeft = 100}).at(0).subject, "quota");
    EXPECT_THAT(found({.freeBytes = 4096, .outOfNames = true}), SizeIs(1));
}

TEST(FilesCheck, AnotherFoldersFilesAreLookedAtWhereTheyLie) {
    const DoctorHome home;
    home.write(home.home.at("copy/bots.json"), oneBot);
    const Constants copy(home.constants.appHome, home.home.at("copy"));
    const Surroundings around{.constants = copy,
                              .home = home.constants,
                              .now = home.around.now,
                              .diskRoom = home.around.diskRoom};
    const Section section = checkFiles(around);
    EXPECT_EQ(section.summary, "1 of 1 file can be read");
    EXPECT_EQ(section.data["files"][0]["path"], home.home.at("copy/bots.json"));
}

TEST(FilesCheck, APromptThatIsNoTextIsRejected) {
    const DoctorHome home;
    home.write(home.constants.promptFile, "caf\xE9");
    const auto found = findingsAbout(home, "PROMPT.md");
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].sentence, "Not UTF-8 text.");
}

TEST(FilesCheck, NoticesAndAlertsThatShowNothingAreTold) {
    const DoctorHome home;
    home.write(home.constants.reauthAlertsFile, R"({"gemini":1})");
    home.write(home.constants.appSupportDir + "/pending_model_notices.json", R"([{},1])");
    EXPECT_EQ(findingsAbout(home, "reauth_alerts.json").at(0).id, ids::filePartlyRead);
    const auto notices = findingsAbout(home, "pending_model_notices.json");
    ASSERT_THAT(notices, SizeIs(1));
    EXPECT_EQ(notices[0].place->record, 2U);
    EXPECT_THAT(notices[0].consequence, HasSubstr("shows nothing"));
}

} // namespace
} // namespace varnhold::doctor
