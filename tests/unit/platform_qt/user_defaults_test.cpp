#include "platform/qt/qt_user_defaults.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <optional>
#include <string>
#include <vector>

#include "support/temporary_home.h"

namespace varnhold::testing {
namespace {

using platform::QtUserDefaults;

struct Defaults {
    TemporaryHome home;
    std::string path = platform::userDefaultsPath(home.path());
    std::optional<QtUserDefaults> store;

    QtUserDefaults& open() { return store.emplace(path); }
};

TEST(QtUserDefaults, StandBelowTheHomeFolder) {
    EXPECT_EQ(platform::userDefaultsPath("/home/somebody"),
              "/home/somebody/.config/OstrelleAI/Varnhold.conf");
}

TEST(QtUserDefaults, GiveEmptyTextAndFalseForWhatIsMissing) {
    Defaults defaults;
    EXPECT_EQ(defaults.open().string("api_key_openai"), "");
    EXPECT_FALSE(defaults.store->boolean("hasSeenWelcome_v7"));
    defaults.store.reset();
    EXPECT_FALSE(std::filesystem::exists(defaults.path));
}

TEST(QtUserDefaults, AreSeenAtOnceAndAfterARestart) {
    Defaults defaults;
    defaults.open().setString("api_key_openai", "key");
    defaults.store->setBoolean("hasSeenWelcome_v7", true);
    EXPECT_EQ(defaults.store->string("api_key_openai"), "key");
    EXPECT_TRUE(defaults.store->boolean("hasSeenWelcome_v7"));
    defaults.store.reset();
    defaults.open();
    EXPECT_EQ(defaults.store->string("api_key_openai"), "key");
    EXPECT_TRUE(defaults.store->boolean("hasSeenWelcome_v7"));
    defaults.store->setBoolean("hasSeenWelcome_v7", false);
    defaults.open();
    EXPECT_FALSE(defaults.store->boolean("hasSeenWelcome_v7"));
}

TEST(QtUserDefaults, CarryAnyTextUnchanged) {
    Defaults defaults;
    const std::vector<std::string> texts{"Login (OAuth)", "",          "@x",  "@@",  "a;b,c",
                                         "a\nb\t\"c\"",   "⚖️ é", "50%", " x ", "\\n",
                                         "true",          "#/=[x]"};
    defaults.open();
    for (std::size_t i = 0; i < texts.size(); ++i) {
        defaults.store->setString("key_" + std::to_string(i), texts[i]);
    }
    defaults.store.reset();
    defaults.open();
    for (std::size_t i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(defaults.store->string("key_" + std::to_string(i)), texts[i]);
    }
}

TEST(QtUserDefaults, KeepAnEmptyTextAsStored) {
    Defaults defaults;
    defaults.open().setString("api_key_openai", "");
    defaults.store.reset();
    EXPECT_THAT(defaults.home.read(defaults.path), ::testing::HasSubstr("api_key_openai="));
}

TEST(QtUserDefaults, KeepWhatOthersPutIntoTheFile) {
    Defaults defaults;
    defaults.home.write(defaults.path, "[General]\nmine=1\napi_key_qwen=q\n");
    EXPECT_EQ(defaults.open().string("api_key_qwen"), "q");
    defaults.store->setString("api_key_qwen", "r");
    defaults.store.reset();
    EXPECT_THAT(defaults.home.read(defaults.path), ::testing::HasSubstr("mine=1"));
}

TEST(QtUserDefaults, StartEmptyOnAFileThatIsNone) {
    Defaults defaults;
    defaults.home.makeFolder(defaults.path);
    defaults.open().setString("api_key_openai", "key");
    EXPECT_EQ(defaults.store->string("api_key_openai"), "key");
    defaults.store.reset();
    EXPECT_TRUE(std::filesystem::is_directory(defaults.path));
}

} // namespace
} // namespace varnhold::testing
