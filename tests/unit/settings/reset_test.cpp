#include <string>
#include <vector>

#include "window.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::IsEmpty;
using ::testing::SizeIs;

TEST(Reset, EmptiesFiveChainsAndLeavesTheVoiceChainFilled) {
    Window window;
    ModelSelectorView& view = *window.view;
    fill(view);
    view.reset();
    const Constants& files = window.constants;
    for (const std::string& path :
         {files.workerPrefsFile, files.architectPrefsFile, files.photoPrefsFile,
          files.videoPrefsFile, files.governorChainFile}) {
        EXPECT_EQ(window.read(path), "[]") << path;
    }
    EXPECT_THAT(*readChain(files.voicePrefsFile), ElementsAre(model("voice")));
    EXPECT_EQ(window.saves(), 1);
}

TEST(Reset, LeavesEffortContextAndAssignmentsAlone) {
    Window window;
    ModelSelectorView& view = *window.view;
    fill(view);
    view.governorEffort = EffortLevel::high;
    view.workerContextTokens = 16000;
    view.reset();
    EXPECT_EQ(view.governorEffort, EffortLevel::high);
    EXPECT_EQ(view.workerContextTokens, 16000);
    EXPECT_EQ(view.chainBotAssignments,
              (ChainBotAssignments{{"worker", {"com.ostrelleai.ops.telegramd"}}}));
    EXPECT_EQ(view.architectResponseMode, ResponseMode::both);
    EXPECT_THAT(view.customGroups, SizeIs(1));
    EXPECT_EQ(view.masterPrompt, "Be kind.\n");
}

TEST(Reset, ReadsTheLibraryBeforeItSaves) {
    Window window;
    ModelSelectorView& view = *window.view;
    fill(view);
    window.write(window.constants.modelLibraryFile, encodeLibrary({{model("new")}}));
    std::vector<std::size_t> seen;
    view.observe([&](Animation) {
        EXPECT_THAT(view.governorModels, IsEmpty());
        seen.push_back(static_cast<std::size_t>(window.saves()) * 10 + view.directModels.size());
    });
    view.reset();
    EXPECT_THAT(seen, ElementsAre(1, 11)); // the library without a save, then the toast
}

} // namespace
} // namespace varnhold::testing
