#include "settings/sign_in.h"

#include <algorithm>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "settings/library_sections.h"
#include "window.h"

namespace varnhold::testing {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Key;
using ::testing::Not;
using ::testing::SizeIs;

AuthRow rowOf(ModelSelectorView& view, const std::string& id) {
    std::vector<AuthRow> rows = authRows(view);
    return *std::find_if(rows.begin(), rows.end(),
                         [&](const AuthRow& row) { return row.auth.id == id; });
}

TEST(SignInRows, StandInTheirOrderWithTheirScriptKeys) {
    Window window;
    std::vector<std::string> rows;
    for (const AuthRow& row : authRows(*window.view)) {
        rows.push_back(row.auth.id + " " + row.auth.name + " " + row.auth.scoutKey.value_or("-"));
    }
    EXPECT_THAT(rows, ElementsAre("claude Anthropic claude", "gemini Google gemini",
                                  "openai OpenAI openai", "qwen Qwen qwen",
                                  "deepseek DeepSeek deepseek"));
    const std::vector<KeyRow> keys = keyRows(*window.view);
    ASSERT_THAT(keys, SizeIs(2));
    EXPECT_EQ(keys[0].name + " " + keys[0].tag, "OpenRouter (no tools)");
    EXPECT_EQ(keys[1].name + " " + keys[1].tag, "Cerebras (governor)");
}

TEST(SignInRows, ReadAndWriteTheProvidersOwnMethodAndKey) {
    Window window;
    std::vector<AuthRow> rows = authRows(*window.view);
    for (AuthRow& row : rows) {
        row.method = AuthMethod::apiKey;
        row.apiKey = row.auth.id;
    }
    for (KeyRow& row : keyRows(*window.view)) {
        row.apiKey = row.name;
    }
    ModelSelectorView& view = *window.view;
    EXPECT_EQ(view.anthropicKey, "claude");
    EXPECT_EQ(view.googleKey, "gemini");
    EXPECT_EQ(view.openaiKey, "openai");
    EXPECT_EQ(view.qwenKey, "qwen");
    EXPECT_EQ(view.deepseekKey, "deepseek");
    EXPECT_EQ(view.mistralKey, "");
    EXPECT_EQ(view.openrouterKey, "OpenRouter");
    EXPECT_EQ(view.cerebrasKey, "Cerebras");
    EXPECT_EQ(view.anthropicMethod, AuthMethod::apiKey);
    EXPECT_EQ(view.googleMethod, AuthMethod::apiKey);
}

TEST(SignInRows, SwitchingTheMethodClearsNeitherKeyNorStatus) {
    Window window;
    window.view->oauthStatuses["claude"] = true;
    AuthRow row = rowOf(*window.view, "claude");
    row.apiKey = "key";
    row.method = AuthMethod::apiKey;
    EXPECT_TRUE(row.isAuthorized());
    row.apiKey.clear();
    EXPECT_FALSE(row.isAuthorized());
    row.method = AuthMethod::oauth;
    EXPECT_TRUE(row.isAuthorized());
}

TEST(SignInRows, KeyRowsAreGreenByTheirKeyAlone) {
    Window window;
    EXPECT_FALSE(keyRows(*window.view)[0].isAuthorized());
    window.view->openrouterKey = " ";
    EXPECT_TRUE(keyRows(*window.view)[0].isAuthorized());
}

TEST(SignInRows, OnlyARowOfOpenRouterWouldCarryTheTag) {
    Window window;
    AuthRow row = rowOf(*window.view, "openai");
    EXPECT_EQ(row.tag(), "");
    row.auth.id = "openrouter";
    EXPECT_EQ(row.tag(), "(no tool support)");
}

TEST(SignedIn, QwenByEitherOfItsTwoFilesAndNotWithoutBoth) {
    for (const char* file : {".qwen/auth.json", ".qwen.json"}) {
        Window window;
        window.view->refresh();
        EXPECT_FALSE(rowOf(*window.view, "qwen").auth.oauthStatus);
        window.write(window.home.at(file), "{}");
        window.view->refresh();
        EXPECT_TRUE(rowOf(*window.view, "qwen").auth.oauthStatus) << file;
    }
}

TEST(SignedIn, ByACredentialFileThatIsEmpty) {
    Window window;
    window.write(window.home.at(".claude.json"), "");
    window.view->refresh();
    EXPECT_TRUE(rowOf(*window.view, "claude").isAuthorized());
}

TEST(SignedIn, UntilTheNextRefreshAfterTheCredentialFileWasDeleted) {
    Window window;
    window.view->openaiMethod = AuthMethod::oauth;
    window.write(window.home.at(".codex/auth.json"), "{}");
    window.view->refresh();
    ASSERT_EQ(std::remove(window.home.at(".codex/auth.json").c_str()), 0);
    EXPECT_TRUE(rowOf(*window.view, "openai").isAuthorized());
    window.view->refresh();
    EXPECT_FALSE(rowOf(*window.view, "openai").isAuthorized());
}

TEST(LibraryColumn, ShowsTheLocalToolsAloneWhereAllEntriesAreOfTypeApi) {
    Window window;
    AIModelItem api = model("m");
    api.type = "api";
    window.write(window.constants.modelLibraryFile, encodeLibrary({{api, api}}));
    window.view->refresh();
    EXPECT_THAT(window.view->directModels, IsEmpty());
    const auto sections = librarySections(*window.view);
    ASSERT_THAT(sections, SizeIs(1));
    EXPECT_EQ(sections[0].title, "Local Tools");
    EXPECT_THAT(sections[0].models, SizeIs(2));
}

TEST(LibraryColumn, ShowsEverySectionThatHasModelsInOrder) {
    Window window;
    ModelSelectorView& view = *window.view;
    view.directModels = view.ollamaModels = view.cerebrasModels =
        view.openRouterModels = {model("m")};
    std::vector<std::string> titles;
    for (const LibrarySection& section : librarySections(view)) {
        titles.push_back(section.title + section.note);
    }
    EXPECT_THAT(titles, ElementsAre("Local Tools", "Direct", "Ollama", "Cerebras(wafer-scale)",
                                    "OpenRouter(no tool calls)"));
}

TEST(LibraryColumn, KeepsBothOfTwoEntriesWithOneFamilyAndName) {
    Window window;
    AIModelItem first = model("a");
    AIModelItem second = model("b");
    second.name = first.name;
    window.write(window.constants.modelLibraryFile, encodeLibrary({{first, second}}));
    window.view->refresh();
    EXPECT_THAT(window.view->directModels, ::testing::UnorderedElementsAre(first, second));
}

TEST(Verify, OfDeepSeekRunsTheLoginAndTheRowStaysRed) {
    Window window;
    window.view->deepseekMethod = AuthMethod::oauth;
    rowOf(*window.view, "deepseek").verify();
    ASSERT_THAT(window.platform.children, SizeIs(1));
    EXPECT_FALSE(window.platform.children[0].waited);
    EXPECT_THAT(window.platform.children[0].request.arguments,
                ElementsAre(window.home.at("daemon/login_scout.sh"), "deepseek"));
    window.view->refresh();
    EXPECT_THAT(window.view->oauthStatuses, Not(Contains(Key("deepseek"))));
    EXPECT_FALSE(rowOf(*window.view, "deepseek").isAuthorized());
}

TEST(Verify, TakesTheScriptFromTheBundleWhereItIs) {
    Window window;
    window.home.makeFolder(window.home.at("bundle/Contents/Resources/daemon"));
    window.view->runScout("claude");
    ASSERT_THAT(window.platform.children, SizeIs(1));
    EXPECT_THAT(
        window.platform.children[0].request.arguments,
        ElementsAre(window.home.at("bundle/Contents/Resources/daemon/login_scout.sh"), "claude"));
}

TEST(Verify, PressedTwiceOpensTwoWindows) {
    Window window;
    const AuthRow row = rowOf(*window.view, "qwen");
    row.verify();
    row.verify();
    EXPECT_THAT(window.platform.children, SizeIs(2));
}

TEST(Verify, WithoutAKeyDoesNothing) {
    Window window;
    window.view->runScout(std::nullopt);
    EXPECT_THAT(window.platform.children, IsEmpty());
}

TEST(Verify, SaysSoWhereThereIsNoTerminal) {
    Window window;
    window.platform.terminal = false;
    rowOf(*window.view, "qwen").verify();
    EXPECT_THAT(window.platform.children, IsEmpty());
    EXPECT_TRUE(window.view->showAlert);
    EXPECT_EQ(window.view->alertMsg, noTerminalAlert);
}

TEST(Verify, SavesNothing) {
    Window window;
    window.view->runScout("claude");
    EXPECT_EQ(window.saves(), 0);
}

} // namespace
} // namespace varnhold::testing
