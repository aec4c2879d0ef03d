#include "settings/ollama.h"

#include <string>
#include <vector>

#include "editing.h"

namespace varnhold::testing {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr const char* pathText = "export PATH=$PATH:/usr/local/bin:/opt/homebrew/bin; ";

struct Ollama : Editing {
    std::string listing;

    Ollama() {
        platform.answer = [this](const platform::ProcessRequest& request) {
            platform::ProcessResult result;
            result.started = true;
            if (request.standardOutput == platform::Stream::captured) {
                result.standardOutput = listing;
            }
            return result;
        };
    }

    [[nodiscard]] std::vector<std::string> shellTexts() const {
        std::vector<std::string> texts;
        for (const auto& child : platform.children) {
            EXPECT_EQ(child.request.program, "/bin/sh");
            EXPECT_EQ(child.request.arguments.at(0), "-c");
            EXPECT_EQ(child.request.arguments.size(), 2U);
            texts.push_back(child.request.arguments.at(1));
        }
        return texts;
    }
};

TEST(Ollama, IsAskedAndThenToldWithTheseTexts) {
    EXPECT_EQ(ollamaCheckRequest("llama3"),
              (platform::ProcessRequest{
                  .program = "/bin/sh",
                  .arguments = {"-c", "export PATH=$PATH:/usr/local/bin:/opt/homebrew/bin; ollama "
                                      "list | grep 'llama3'"},
                  .standardOutput = platform::Stream::captured}));
    EXPECT_EQ(ollamaPullRequest("llama3"),
              (platform::ProcessRequest{.program = "/bin/sh",
                                        .arguments = {"-c", "export PATH=$PATH:/usr/local/bin:/opt/"
                                                            "homebrew/bin; ollama pull llama3"}}));
}

TEST(Ollama, TakesAnIdWithABlankAsOnePatternAndAsTwoWords) {
    EXPECT_EQ(ollamaCheckRequest("a b").arguments[1],
              std::string(pathText) + "ollama list | grep 'a b'");
    EXPECT_EQ(ollamaPullRequest("a b").arguments[1], std::string(pathText) + "ollama pull a b");
}

TEST(Ollama, LeavesAQuoteInTheIdAsItIs) {
    EXPECT_EQ(ollamaCheckRequest("it's").arguments[1],
              std::string(pathText) + "ollama list | grep 'it's'");
    EXPECT_EQ(ollamaPullRequest("it's").arguments[1], std::string(pathText) + "ollama pull it's");
}

TEST(Ollama, IsCheckedAfterAFreshDropWhenTheChainIsSaved) {
    Ollama settings;
    settings.view->ollamaModels = {model("llama3", {.type = "ollama"})};
    settings.drop("llama3", TargetList::worker);
    EXPECT_THAT(settings.platform.children, IsEmpty());
    EXPECT_THAT(settings.platform.priorities, ElementsAre(platform::Priority::userInitiated));
    EXPECT_EQ(settings.fileOf(TargetList::worker), encodeChain(settings.view->workerModels));
    settings.platform.settle();
    EXPECT_THAT(settings.shellTexts(), ElementsAre(ollamaCheckRequest("llama3").arguments[1],
                                                   ollamaPullRequest("llama3").arguments[1]));
}

TEST(Ollama, IsNotCheckedWhenARowMovesBetweenChains) {
    Ollama settings;
    settings.view->workerModels = {model("llama3", {.type = "ollama"})};
    settings.drop("llama3", TargetList::photo);
    settings.platform.settle();
    EXPECT_THAT(settings.ids(TargetList::photo), ElementsAre("llama3"));
    EXPECT_THAT(settings.platform.children, IsEmpty());
    EXPECT_THAT(settings.platform.priorities, IsEmpty());
}

TEST(Ollama, IsNotCheckedForOtherTypesOrRefusedDrops) {
    Ollama settings;
    AIModelItem refused = model("refused", {.type = "ollama"});
    refused.provider_key = "openai";
    AIModelItem capital = model("capital", {.type = "ollama"});
    capital.type = "Ollama";
    AIModelItem byKey = model("key");
    byKey.provider_key = "ollama";
    settings.view->ollamaModels = {refused, capital, byKey};
    for (const char* payload : {"refused", "capital", "key"}) {
        settings.drop(payload, TargetList::worker);
    }
    EXPECT_THAT(settings.platform.priorities, IsEmpty());
    EXPECT_THAT(settings.ids(TargetList::worker), ElementsAre("capital", "key"));
}

TEST(Ollama, IsNotPulledIfTheModelIsListed) {
    Ollama settings;
    settings.listing = "llama3:latest 365c0bd3c000 4.7 GB\n";
    settings.view->checkOllamaDownload(model("llama3", {.type = "ollama"}));
    settings.platform.settle();
    EXPECT_EQ(settings.shellTexts().size(), 1U);
    EXPECT_THAT(settings.view->downloadingModels, IsEmpty());
    EXPECT_THAT(settings.platform.record, Not(Contains("post main")));
}

TEST(Ollama, IsPulledIfTheAnswerIsNoText) {
    Ollama settings;
    settings.listing = "llama3 \xff";
    settings.view->checkOllamaDownload(model("llama3", {.type = "ollama"}));
    settings.platform.settle();
    EXPECT_EQ(settings.shellTexts().size(), 2U);
}

TEST(Ollama, IsPulledEvenIfNoShellStarts) {
    Ollama settings;
    settings.platform.answer = [](const auto&) { return platform::ProcessResult{}; };
    settings.view->checkOllamaDownload(model("llama3", {.type = "ollama"}));
    settings.platform.settle();
    EXPECT_EQ(settings.shellTexts().size(), 2U);
    EXPECT_THAT(settings.view->downloadingModels, IsEmpty());
}

TEST(Ollama, ShowsTheDownloadFromItsStartToItsEndWhateverComesOut) {
    Ollama settings;
    settings.platform.answer = [](const auto&) {
        platform::ProcessResult failed;
        failed.started = true;
        failed.status = 1;
        return failed;
    };
    settings.view->workerModels = {model("llama3", {.type = "ollama"})};
    settings.view->downloadOllama(model("llama3", {.type = "ollama"}));
    EXPECT_THAT(settings.view->downloadingModels, ElementsAre("llama3"));
    EXPECT_TRUE(settings.view->modelRow(settings.view->workerModels[0]).isDownloading);
    EXPECT_THAT(settings.platform.priorities, ElementsAre(platform::Priority::background));
    settings.platform.runBackground();
    EXPECT_THAT(settings.view->downloadingModels, ElementsAre("llama3"));
    settings.platform.runMain();
    EXPECT_THAT(settings.view->downloadingModels, IsEmpty());
    EXPECT_THAT(settings.ids(TargetList::worker), ElementsAre("llama3"));
    EXPECT_FALSE(settings.view->showAlert);
    EXPECT_EQ(settings.newSaves(), 0);
    EXPECT_THAT(settings.animations, ElementsAre(Animation::none, Animation::none));
}

TEST(Ollama, ShowsTheDownloadInEveryRowOfTheModelWhateverTheRowsOwnName) {
    Ollama settings;
    AIModelItem inAChain = model("llama3", {.type = "ollama"});
    inAChain.uniqueId = "row-1";
    AIModelItem other = model("other", {.type = "ollama"});
    other.uniqueId = "llama3";
    settings.view->downloadOllama(model("llama3", {.type = "ollama"}));
    EXPECT_TRUE(settings.view->modelRow(inAChain).isDownloading);
    EXPECT_FALSE(settings.view->modelRow(other).isDownloading);
}

TEST(Ollama, GoesOnPullingForAWindowThatHasGone) {
    Ollama settings;
    settings.view->downloadOllama(model("llama3", {.type = "ollama"}));
    settings.view->checkOllamaDownload(model("other", {.type = "ollama"}));
    settings.view.reset();
    settings.platform.settle();
    // The second was asked about, but there is nobody left to pull it for.
    EXPECT_THAT(settings.shellTexts(), ElementsAre(ollamaPullRequest("llama3").arguments[1],
                                                   ollamaCheckRequest("other").arguments[1]));
}

TEST(Ollama, DroppedAgainDuringAPullIsPulledAgainAndTheFirstEndClears) {
    Ollama settings;
    settings.view->downloadOllama(model("llama3", {.type = "ollama"}));
    settings.view->checkOllamaDownload(model("llama3", {.type = "ollama"}));
    settings.platform.runBackground();
    settings.platform.runMain();
    EXPECT_EQ(settings.shellTexts().size(), 2U) << "the second pull still waits for its turn";
    EXPECT_EQ(settings.platform.backgroundTasks(), 1U);
    settings.platform.settle();
    EXPECT_EQ(settings.shellTexts().size(), 3U);
    EXPECT_THAT(settings.view->downloadingModels, IsEmpty());
}

TEST(Ollama, AnsweringAfterTheStateHasGoneIsLeftAlone) {
    Ollama settings;
    settings.view->checkOllamaDownload(model("a", {.type = "ollama"}));
    settings.view->downloadOllama(model("b", {.type = "ollama"}));
    settings.view.reset();
    settings.platform.settle();
    EXPECT_THAT(settings.shellTexts(), ElementsAre(ollamaCheckRequest("a").arguments[1],
                                                   ollamaPullRequest("b").arguments[1]));
}

} // namespace
} // namespace varnhold::testing
