#include <filesystem>
#include <gmock/gmock.h>
#include <string>

#include "platform/payload.h"
#include "settings/ollama.h"
#include "shell_world.h"
#include "support/records.h"

namespace varnhold::testing {
namespace {

using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

bool isFound(ShellWorld& world, const std::string& id) {
    return isListed(world.platform().processes.run(ollamaCheckRequest(id)));
}

// Checks and, if need be, pulls; returns when all of it is over.
void checkToTheEnd(ShellWorld& world, const std::string& id) {
    int changes = 0;
    world.view->observe([&changes](Animation) { ++changes; });
    world.view->downloadingModels.clear();
    world.view->checkOllamaDownload(model(id, {.type = "ollama"}));
    // A pull is two changes: the row shows it, and stops showing it.
    EXPECT_TRUE(world.runUntil([&] { return changes == 2; })) << id;
    EXPECT_THAT(world.view->downloadingModels, IsEmpty());
    world.view->observe(nullptr);
}

TEST(OllamaShell, PullsAModelThatIsNotListed) {
    ShellWorld world;
    world.list("NAME ID SIZE\nllama3:latest 365c 4.7 GB\n");
    checkToTheEnd(world, "mistral:7b");
    EXPECT_THAT(world.calls(), ElementsAre("list", "pull [mistral:7b]"));
}

TEST(OllamaShell, TakesAModelForPresentWhoseNameBeginsAnothers) {
    ShellWorld world;
    world.list("llama3.1:8b 365c 4.7 GB\n");
    EXPECT_TRUE(isFound(world, "llama3"));
    EXPECT_TRUE(isFound(world, "l..ma"));
    EXPECT_FALSE(isFound(world, "llama3.2"));
    EXPECT_FALSE(isFound(world, "Llama3"));
}

TEST(OllamaShell, SplitsAnIdWithABlankForThePullButNotForTheCheck) {
    ShellWorld world;
    world.list("two\nwords\n");
    checkToTheEnd(world, "two words");
    EXPECT_THAT(world.calls(), ElementsAre("list", "pull [two] [words]"));
}

TEST(OllamaShell, FindsAnIdWithABlankAsOnePattern) {
    ShellWorld world;
    world.list("two words\n");
    EXPECT_TRUE(isFound(world, "two words"));
    EXPECT_FALSE(isFound(world, "words two"));
}

TEST(OllamaShell, GoesOnToAPullWhenAQuoteInTheIdBreaksTheCheck) {
    ShellWorld world;
    world.list("it's here\n");
    checkToTheEnd(world, "it's");
    // Both commands are broken off by the shell before anything of them runs.
    EXPECT_THAT(world.calls(), IsEmpty());
    // With two quotes both commands stand again, without them.
    checkToTheEnd(world, "'x'");
    EXPECT_THAT(world.calls(), ElementsAre("list", "pull [x]"));
}

TEST(OllamaShell, TriesAPullAlsoWithoutTheTool) {
    for (const char* folder : {"/usr/bin", "/bin", "/usr/local/bin", "/opt/homebrew/bin"}) {
        if (std::filesystem::exists(std::string(folder) + "/ollama")) {
            GTEST_SKIP() << "there is a real one in " << folder;
        }
    }
    ShellWorld world(ShellWorld::Tool::missing);
    checkToTheEnd(world, "llama3");
    EXPECT_FALSE(world.view->showAlert);
}

TEST(OllamaShell, FollowsAFreshDropThatIsSavedBefore) {
    ShellWorld world;
    world.holdPulls();
    world.view->ollamaModels = {model("llama3", {.type = "ollama"})};
    world.view->handleDrop({platform::textPayload("llama3")}, TargetList::worker);
    ASSERT_TRUE(world.runUntil([&] { return world.calls().size() == 2; }));
    EXPECT_THAT(world.view->downloadingModels, ElementsAre("llama3"));
    EXPECT_EQ(valueOrEmpty(readChain(world.constants().workerPrefsFile)), world.view->workerModels);
    EXPECT_THAT(world.view->workerModels, SizeIs(1));
    world.letPullsEnd();
    EXPECT_TRUE(world.runUntil([&] { return world.view->downloadingModels.empty(); }));
    EXPECT_THAT(world.calls(), ElementsAre("list", "pull [llama3]"));
}

TEST(OllamaShell, LeavesRoomForRestartsAndOnlineChecksHoweverManyPull) {
    constexpr std::size_t pulls = 40;
    ShellWorld world;
    world.holdPulls();
    for (std::size_t i = 0; i < pulls; ++i) {
        world.view->downloadOllama(model("model-" + std::to_string(i), {.type = "ollama"}));
    }
    ASSERT_TRUE(world.runUntil([&] { return world.calls().size() == pulls; }));
    int answers = 0;
    for (const auto priority : {platform::Priority::userInitiated, platform::Priority::utility}) {
        world.platform().queues.postBackground(
            priority, [&] { world.platform().queues.postMain([&answers] { ++answers; }); });
    }
    EXPECT_TRUE(world.runUntil([&] { return answers == 2; }));
    EXPECT_THAT(world.view->downloadingModels, SizeIs(pulls)) << "all of them are still pulling";
    EXPECT_THAT(world.calls(), Each(HasSubstr("pull [model-")));
    EXPECT_THAT(world.calls(), Contains("pull [model-39]"));
    world.letPullsEnd();
    EXPECT_TRUE(world.runUntil([&] { return world.view->downloadingModels.empty(); }));
}

} // namespace
} // namespace varnhold::testing
