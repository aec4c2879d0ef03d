#include <optional>
#include <string>
#include <vector>

#include "settings_home.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::SizeIs;

AIModelItem entry(const std::string& id, const std::optional<std::string>& type,
                  const std::string& family = "F") {
    return model(id, {.family = family, .type = type});
}

std::vector<std::string> ids(const std::vector<AIModelItem>& models) {
    std::vector<std::string> out;
    for (const AIModelItem& each : models) {
        out.push_back(each.id);
    }
    return out;
}

struct Library : SettingsHome {
    void setLibrary(const std::vector<AIModelItem>& models) const {
        write(constants.modelLibraryFile, encodeLibrary({models}));
    }
};

TEST(Refresh, KeepsTheListsWhereOneEntryLacksItsColor) {
    Library settings;
    settings.setLibrary({entry("good", "cli")});
    ModelSelectorView& view = settings.open();
    view.refresh();
    settings.write(settings.constants.modelLibraryFile,
                   R"({"models":[{"id":"n","name":"n","family":"f","color":"c","type":"cli"},)"
                   R"({"id":"i","name":"n","family":"f","type":"cli"}]})");
    view.refresh();
    EXPECT_THAT(ids(view.directModels), ElementsAre("good"));
    EXPECT_THAT(ids(view.allLibraryModels), ElementsAre("good"));
}

TEST(Refresh, HidesEntriesWithoutATypeOrOfTypeApiAndKeepsThemInTheWholeList) {
    Library settings;
    settings.write(settings.constants.modelLibraryFile,
                   R"({"models":[{"id":"none","name":"n","family":"f","color":"c","type":null},)"
                   R"({"id":"api","name":"n","family":"f","color":"c","type":"api"},)"
                   R"({"id":"cli","name":"n","family":"f","color":"c","type":"cli"}]})");
    ModelSelectorView& view = settings.open();
    view.refresh();
    EXPECT_THAT(ids(view.directModels), ElementsAre("cli"));
    EXPECT_THAT(ids(view.allLibraryModels), ElementsAre("none", "api", "cli"));
}

TEST(Refresh, HidesATypeSpelledInCapitals) {
    Library settings;
    settings.setLibrary({entry("a", "CLI"), entry("b", "cli ")});
    ModelSelectorView& view = settings.open();
    view.refresh();
    EXPECT_THAT(view.directModels, IsEmpty());
}

TEST(Refresh, SortsCapitalFamiliesBeforeSmallOnesThenByName) {
    Library settings;
    settings.setLibrary({entry("3", "cli", "a"), entry("2", "cli", "Z"), entry("1", "cli", "Z"),
                         entry("4", "cli", "é"), entry("5", "cli", "\uFF5E"),
                         entry("6", "cli", "😀")});
    ModelSelectorView& view = settings.open();
    view.refresh();
    EXPECT_THAT(ids(view.directModels), ElementsAre("1", "2", "3", "4", "5", "6"));
    EXPECT_THAT(ids(view.allLibraryModels), ElementsAre("3", "2", "1", "4", "5", "6"));
}

TEST(Refresh, EmptiesTheListsThatNothingFillsYet) {
    Library settings;
    settings.setLibrary({});
    ModelSelectorView& view = settings.open();
    view.ollamaModels = view.cerebrasModels = view.openRouterModels = {entry("x", "cli")};
    view.refresh();
    EXPECT_THAT(view.ollamaModels, IsEmpty());
    EXPECT_THAT(view.cerebrasModels, IsEmpty());
    EXPECT_THAT(view.openRouterModels, IsEmpty());
}

TEST(Refresh, TellsWhoIsSignedInByTheFilesThatAreThere) {
    Library settings;
    ModelSelectorView& view = settings.open();
    view.refresh();
    EXPECT_THAT(view.oauthStatuses,
                ElementsAre(Pair("claude", false), Pair("gemini", false), Pair("mistral", false),
                            Pair("openai", false), Pair("qwen", false)));
    settings.write(settings.home.at(".claude.json"), "");
    settings.home.makeFolder(settings.home.at(".gemini/oauth_creds.json"));
    settings.write(settings.home.at(".codex/auth.json"), "{}");
    settings.write(settings.home.at(".mistral.json"), "{}");
    settings.write(settings.home.at(".qwen.json"), "{}");
    EXPECT_FALSE(view.oauthStatuses.at("claude")); // until the next look
    view.refresh();
    EXPECT_THAT(view.oauthStatuses,
                ElementsAre(Pair("claude", true), Pair("gemini", true), Pair("mistral", true),
                            Pair("openai", true), Pair("qwen", true)));
}

TEST(Refresh, KnowsBothPlacesOfQwensFile) {
    Library settings;
    settings.write(settings.home.at(".qwen/auth.json"), "");
    ModelSelectorView& view = settings.open();
    view.refresh();
    EXPECT_TRUE(view.oauthStatuses.at("qwen"));
}

TEST(Refresh, CopesWithTenThousandEntries) {
    Library settings;
    std::vector<AIModelItem> models;
    for (int i = 0; i < 10000; ++i) {
        models.push_back(entry(std::to_string(i), "cli", std::to_string(i % 100)));
    }
    settings.setLibrary(models);
    ModelSelectorView& view = settings.open();
    view.refresh();
    EXPECT_THAT(view.directModels, SizeIs(10000));
    EXPECT_EQ(view.directModels.front().id, "0");
}

} // namespace
} // namespace varnhold::testing
