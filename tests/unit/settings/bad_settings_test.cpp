#include <cstdint>
#include <string>
#include <vector>

#include "base/files.h"
#include "settings_home.h"
#include "support/generator.h"

// The whole state against whole folders of bad files: each counts as missing, none disturbs the
// others, and opening destroys nothing by itself.
namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

void expectStartingValues(const ModelSelectorView& view) {
    EXPECT_THAT(view.workerModels, IsEmpty());
    EXPECT_THAT(view.architectModels, IsEmpty());
    EXPECT_THAT(view.photoModels, IsEmpty());
    EXPECT_THAT(view.videoModels, IsEmpty());
    EXPECT_THAT(view.voiceModels, IsEmpty());
    EXPECT_THAT(view.governorModels, IsEmpty());
    EXPECT_EQ(view.architectResponseMode, ResponseMode::text);
    EXPECT_THAT(view.userBots, ElementsAre(builtInGovernorBot()));
    EXPECT_THAT(view.customGroups, IsEmpty());
    EXPECT_THAT(view.chainBotAssignments, IsEmpty());
    EXPECT_EQ(view.governorProvider, "cerebras");
    EXPECT_EQ(view.architectEffort, EffortLevel::medium);
    EXPECT_EQ(view.architectContextTokens, 0);
    EXPECT_THAT(view.directModels, IsEmpty());
    EXPECT_EQ(view.anthropicMethod, AuthMethod::oauth);
}

std::vector<std::string> readFiles(const SettingsHome& settings) {
    std::vector<std::string> files = settings.savedFiles();
    files.push_back(settings.constants.modelLibraryFile);
    files.push_back(settings.constants.customGroupsFile + ".bak");
    return files;
}

TEST(BadSettings, CountAsMissingWhateverTheyHold) {
    for (const std::string& content :
         {std::string(), std::string("null"), std::string("{"), std::string("[null]"),
          std::string("\xFF\xFE"), std::string("{\"models\":5}"), std::string(100000, '['),
          std::string("\0\0\0", 3), std::string("5")}) {
        SettingsHome settings;
        for (const std::string& path : readFiles(settings)) {
            settings.write(path, content);
        }
        ModelSelectorView& view = settings.open();
        view.loadSettings();
        view.refresh();
        expectStartingValues(view);
        for (const std::string& path : readFiles(settings)) {
            EXPECT_EQ(settings.read(path), content) << path;
        }
    }
}

TEST(BadSettings, CountAsMissingWhereFoldersStandInTheirPlaces) {
    SettingsHome settings;
    for (const std::string& path : readFiles(settings)) {
        settings.home.makeFolder(path);
    }
    ModelSelectorView& view = settings.open();
    view.loadSettings();
    view.refresh();
    expectStartingValues(view);
    EXPECT_EQ(view.masterPrompt, "");
    view.save();
    for (const std::string& path : readFiles(settings)) {
        EXPECT_TRUE(files::isDirectory(path)) << path;
    }
}

TEST(BadSettings, AreEmptiedByTheSaveThatFollowsButForGroups) {
    SettingsHome settings;
    settings.write(settings.constants.workerPrefsFile, "[broken");
    settings.write(settings.constants.customGroupsFile, "[broken");
    settings.open().save();
    settings.platform.settle();
    EXPECT_EQ(settings.read(settings.constants.workerPrefsFile), "[]");
    EXPECT_EQ(settings.read(settings.constants.customGroupsFile), "[broken");
}

TEST(BadSettings, CutAtEveryByteNeverLoadHalf) {
    SettingsHome settings;
    const std::string whole = encodeBots({bot("ops"), bot("cto")});
    for (std::size_t length = 0; length < whole.size(); ++length) {
        settings.write(settings.constants.botsConfigFile, whole.substr(0, length));
        EXPECT_THAT(settings.open().userBots, SizeIs(1)) << length;
    }
    settings.write(settings.constants.botsConfigFile, whole);
    EXPECT_THAT(settings.open().userBots, SizeIs(3));
}

TEST(ManySettings, AreLoadedAndSavedByTheTenThousand) {
    Generator generator(7);
    SettingsHome settings;
    std::vector<AIModelItem> models;
    std::vector<BotConfig> bots;
    for (int i = 0; i < 10000; ++i) {
        models.push_back(generator.model());
        bots.push_back(generator.bot());
    }
    settings.write(settings.constants.workerPrefsFile, encodeChain(models));
    settings.write(settings.constants.botsConfigFile, encodeBots(bots));
    ModelSelectorView& view = settings.open();
    EXPECT_EQ(view.workerModels, models);
    EXPECT_THAT(view.userBots, SizeIs(10001));
    view.save();
    EXPECT_EQ(settings.read(settings.constants.workerPrefsFile), encodeChain(models));
    EXPECT_EQ(settings.read(settings.constants.botsConfigFile), encodeBots(view.userBots));
}

TEST(GeneratedSettings, ComeBackFromASaveAsTheyWere) {
    for (std::uint64_t seed = 1; seed <= 15; ++seed) {
        Generator generator(seed);
        SettingsHome settings;
        ModelSelectorView& view = settings.open();
        view.workerModels = generator.chain();
        view.voiceModels = generator.chain();
        view.userBots.insert(view.userBots.end(), 1, generator.bot());
        view.customGroups = generator.groups();
        view.chainBotAssignments = generator.assignments();
        view.masterPrompt = "x" + generator.text();
        view.openrouterKey = generator.text();
        view.governorModelId = generator.text();
        view.save();

        const ModelSelectorView again(settings.platform.interfaces, settings.constants);
        EXPECT_EQ(again.workerModels, view.workerModels) << seed;
        EXPECT_EQ(again.voiceModels, view.voiceModels) << seed;
        EXPECT_EQ(again.userBots, view.userBots) << seed;
        EXPECT_EQ(again.customGroups, view.customGroups) << seed;
        EXPECT_EQ(again.chainBotAssignments, view.chainBotAssignments) << seed;
        EXPECT_EQ(again.masterPrompt, view.masterPrompt) << seed;
        EXPECT_EQ(again.governorModelId, view.governorModelId) << seed;
        EXPECT_EQ(readAuthConfig(settings.constants.authConfigFile)->openrouterKey,
                  view.openrouterKey)
            << seed;
    }
}

} // namespace
} // namespace varnhold::testing
