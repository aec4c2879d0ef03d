#include "full_disk.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <sys/resource.h>
#include <vector>

#include "lifecycle/launch_agent.h"
#include "settings/settings_state.h"
#include "shell/migration.h"
#include "support/fake_platform.h"
#include "support/temporary_home.h"

// Run on small file systems, with less and less of them full: whatever room there is, each file is
// the old one or the new one, byte for byte.
namespace varnhold::testing {
namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t step = 1024; // the smallest block of the file systems here

using Contents = std::map<std::string, std::string>; // by name

std::vector<AIModelItem> models(const std::string& text, std::size_t count) {
    return std::vector<AIModelItem>(
        count, {.uniqueId = text, .id = text, .name = text, .family = text, .color = "blue"});
}

// Everything that is saved, each file with a size of its own.
void fill(ModelSelectorView& view, const std::string& text) {
    view.workerModels = models(text, 1);
    view.architectModels = models(text, 3);
    view.photoModels = models(text, 5);
    view.videoModels = models(text, 9);
    view.voiceModels = models(text, 2);
    view.governorModels = models(text, 7);
    view.userBots = std::vector<BotConfig>(6, {.icon = text, .title = text, .role = text});
    static const CustomBotGroup one{.name = {}}; // its id and its colour are drawn by lot
    view.customGroups = {one};
    view.customGroups.front().name = text;
    view.customGroups.front().models = models(text, 4);
    view.chainBotAssignments = {{"worker", std::vector<std::string>(10, text)}};
    view.masterPrompt = text;
    view.openaiKey = text;
    view.governorModelId = text;
}

class FullDisk : public ::testing::Test {
protected:
    [[nodiscard]] Contents contents() const {
        Contents all;
        for (const auto& entry : fs::directory_iterator(constants.appSupportDir)) {
            if (entry.is_regular_file()) {
                all[entry.path().filename()] = home.read(entry.path());
            }
        }
        return all;
    }

    void save(const std::string& text) {
        fill(view(), text);
        view().save();
    }

    ModelSelectorView& view() {
        if (!view_) {
            home.makeFolder(constants.appSupportDir);
            view_.emplace(platform.interfaces, constants);
        }
        return *view_;
    }

    const TemporaryHome home;
    const Constants constants{home.path()};
    FakePlatform platform;
    Filler filler{home.at("filler")};

private:
    std::optional<ModelSelectorView> view_;
};

TEST_F(FullDisk, LeavesEachFileOfASaveOldOrNew) {
    const std::string oldText(400, 'o');
    const std::string newText(1300, 'n');
    save(newText);
    save(newText); // makes the copy of the groups too
    const Contents wanted = contents();
    save(oldText);
    const Contents old = contents();
    ASSERT_EQ(old.size(), 16U);

    std::size_t kept = 0;
    for (std::uint64_t room = 0; contents() != wanted; room += step) {
        save(oldText);
        ASSERT_TRUE(contents() == old);
        ASSERT_TRUE(filler.leave(room));
        save(newText);
        for (const auto& [name, content] : contents()) {
            ASSERT_TRUE(old.contains(name)) << name << ", room " << room;
            EXPECT_TRUE(content == wanted.at(name) || content == old.at(name))
                << name << " of " << content.size() << " bytes, room " << room;
            kept += content == old.at(name) ? 1U : 0U;
        }
        EXPECT_EQ(contents().size(), old.size());
        filler.giveBack();
    }
    EXPECT_GT(kept, old.size()) << "the disk was never full";
}

TEST_F(FullDisk, LeavesNoFileWhereAFirstSaveHasNoRoom) {
    std::size_t missing = 0;
    for (std::uint64_t room = 0;; room += step) {
        fs::remove_all(constants.appSupportDir);
        home.makeFolder(constants.appSupportDir);
        ASSERT_TRUE(filler.leave(room));
        save(std::string(1300, 'n'));
        const Contents found = contents();
        filler.giveBack();
        save(std::string(1300, 'n'));
        const Contents wanted = contents();
        for (const auto& [name, content] : found) {
            EXPECT_TRUE(content == wanted.at(name)) << name << ", room " << room;
        }
        if (found.size() == 15) {
            break;
        }
        missing += 15 - found.size();
    }
    EXPECT_GT(missing, 15U) << "the disk was never full";
}

TEST_F(FullDisk, KeepsTheFirstStateOfTheGroupsWholeOrNotAtAll) {
    const std::string backup = constants.customGroupsFile + ".bak";
    save(std::string(1300, 'o'));
    const std::string old = home.read(constants.customGroupsFile);
    std::size_t missing = 0;
    for (std::uint64_t room = 0; !fs::exists(backup); room += step) {
        ASSERT_TRUE(filler.leave(room));
        save(std::string(1300, 'o'));
        filler.giveBack();
        missing += fs::exists(backup) ? 0U : 1U;
    }
    EXPECT_TRUE(home.read(backup) == old);
    EXPECT_GT(missing, 1U) << "the disk was never full";
}

TEST_F(FullDisk, LetsALaterLaunchBringOverWhatDidNotFit) {
    const std::string shared = "Library/Application Support/OstrelleAI/shared/";
    const Contents old{{"bots.json", std::string(60000, 'b')},
                       {"auth_config.json", std::string(3000, 'a')},
                       {"PROMPT.md", std::string(10000, 'p')}};
    for (const auto& [name, content] : old) {
        home.write(home.at(shared + name), content);
    }
    home.makeFolder(constants.appSupportDir);
    std::size_t incomplete = 0;
    for (std::uint64_t room = 0; contents() != old; room += 4 * step) {
        fs::remove_all(constants.appSupportDir);
        home.makeFolder(constants.appSupportDir);
        ASSERT_TRUE(filler.leave(room));
        migrateFromLegacyPathIfNeeded(constants);
        for (const auto& [name, content] : contents()) {
            ASSERT_TRUE(old.contains(name)) << name << ", room " << room;
            EXPECT_TRUE(content == old.at(name)) << name << ", room " << room;
        }
        filler.giveBack();
        if (!fs::exists(constants.botsConfigFile)) {
            ++incomplete;
            migrateFromLegacyPathIfNeeded(constants);
            EXPECT_TRUE(contents() == old) << "room " << room;
            fs::remove_all(constants.appSupportDir);
            home.makeFolder(constants.appSupportDir);
        }
    }
    EXPECT_GT(incomplete, 1U) << "the disk was never full";
}

TEST_F(FullDisk, LeavesAPropertyListOldOrNew) {
    const FleetContext context{platform.interfaces, constants};
    BotConfig bot{.role = "cos", .launchdLabel = "com.ostrelleai.cos.telegramd"};
    const auto generate = [&](const std::string& token) {
        bot.token = token;
        return home.read(generatePlist(context, bot).value());
    };
    const std::string wanted = generate(std::string(9000, 'n'));
    const std::string old = generate("o");
    std::size_t kept = 0;
    for (std::uint64_t room = 0;; room += step) {
        EXPECT_TRUE(generate("o") == old);
        ASSERT_TRUE(filler.leave(room));
        const std::string found = generate(std::string(9000, 'n'));
        filler.giveBack();
        if (found == wanted) {
            break;
        }
        EXPECT_TRUE(found == old) << "room " << room;
        ++kept;
    }
    EXPECT_GT(kept, 1U) << "the disk was never full";
}

// Each file system asks in a place of its own how large a file may be, and ends the process there.
TEST_F(FullDisk, NorALimitOnFileSizesEndsTheProcess) {
    save(std::string(400, 'o'));
    save(std::string(400, 'o')); // makes the copy of the groups too
    const Contents old = contents();
    rlimit unlimited{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &unlimited), 0);
    for (const rlim_t bytes : {0U, 1U, 1024U, 2000U}) {
        const rlimit limit{.rlim_cur = bytes, .rlim_max = unlimited.rlim_max};
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
        save(std::string(1300, 'n'));
        const Contents found = contents();
        ::setrlimit(RLIMIT_FSIZE, &unlimited);
        for (const auto& [name, content] : found) {
            EXPECT_TRUE(content.size() <= bytes || content == old.at(name)) << name;
        }
        save(std::string(400, 'o'));
    }
}

} // namespace
} // namespace varnhold::testing
