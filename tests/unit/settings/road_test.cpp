#include <filesystem>
#include <string>
#include <vector>

#include "base/dates.h"
#include "editing.h"
#include "records/auth.h"
#include "records/governor_choice.h"

namespace varnhold::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::UnorderedElementsAreArray;

// From a drag out of the library to every file on disk, and back into a state that reads them.
TEST(TheRoadOfOneEdit, LeadsFromADropToAllFilesOnDisk) {
    Editing settings;
    const Constants& files = settings.constants;
    ModelSelectorView& view = settings.open();
    AIModelItem sonnet = model("claude-sonnet", "ROW");
    sonnet.provider_key = "claude";
    settings.home.write(settings.home.at(".claude.json"), "{}");
    settings.write(files.modelLibraryFile, encodeLibrary({{sonnet, model("other")}}));
    settings.write(files.governorPrefsFile, R"({"worker":{"provider":"x"}})");
    view.appear();
    settings.platform.settle(); // the save that comes with it
    fill(view);
    settings.platform.advance(26h);

    LatePayload payload;
    ASSERT_EQ(view.directModels.size(), 2U);
    EXPECT_EQ(view.modelRow(view.directModels[0]).onDrag(), "ROW");
    EXPECT_TRUE(view.handleDrop({payload.provider()}, TargetList::architect, 0));
    payload.arrive("ROW");
    EXPECT_EQ(settings.read(files.architectPrefsFile), "[]");
    settings.platform.runMain();
    EXPECT_TRUE(view.showSaveToast);
    settings.platform.advance(1s);
    EXPECT_FALSE(view.showSaveToast);

    const auto architect = readChain(files.architectPrefsFile);
    ASSERT_TRUE(architect);
    ASSERT_EQ(architect->size(), 3U);
    AIModelItem dropped = architect->front();
    EXPECT_TRUE(Uuid::parse(dropped.uniqueId.value()));
    dropped.uniqueId = "ROW";
    EXPECT_EQ(dropped, sonnet);
    EXPECT_EQ(settings.read(files.workerPrefsFile), encodeChain({model("worker")}));
    EXPECT_EQ(settings.read(files.photoPrefsFile), encodeChain({model("photo")}));
    EXPECT_EQ(settings.read(files.videoPrefsFile), encodeChain({model("video")}));
    EXPECT_EQ(settings.read(files.voicePrefsFile), encodeChain({model("voice")}));
    EXPECT_EQ(settings.read(files.governorChainFile), encodeChain({model("governor")}));
    EXPECT_EQ(settings.read(files.responseModeFile), "\"both\"");
    EXPECT_EQ(settings.read(files.botsConfigFile), encodeBots({builtInGovernorBot(), bot("ops")}));
    EXPECT_EQ(settings.read(files.customGroupsFile), encodeGroups(view.customGroups));
    EXPECT_EQ(settings.read(files.chainBotAssignmentsFile),
              R"({"worker":["com.ostrelleai.ops.telegramd"]})");
    EXPECT_EQ(settings.read(files.promptFile), "Be kind.\n");
    EXPECT_EQ(valueOrEmpty(readAuthConfig(files.authConfigFile)).openaiKey, "key");
    EXPECT_EQ(valueOrEmpty(readEffortPrefs(files.effortPrefsFile)).video, "high");
    EXPECT_EQ(valueOrEmpty(readContextPrefs(files.contextPrefsFile)).voice, 8000);
    EXPECT_THAT(settings.read(files.governorPrefsFile), HasSubstr("1970-01-02T02:00:00Z"));
    EXPECT_THAT(settings.read(files.governorPrefsFile), HasSubstr("\"worker\""));
    EXPECT_THAT(settings.platform.children, ElementsAre()) << "no agent is told";

    std::vector<std::string> there;
    for (const auto& entry : std::filesystem::directory_iterator(files.appSupportDir)) {
        there.push_back(entry.path().string());
    }
    std::vector<std::string> expected = settings.savedFiles();
    expected.push_back(files.modelLibraryFile);
    EXPECT_THAT(there, UnorderedElementsAreArray(expected));

    const auto chain = view.architectModels;
    EXPECT_EQ(settings.open().architectModels, chain) << "the next start reads it back";
}

} // namespace
} // namespace varnhold::testing
