#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "platform/user_defaults.h"

namespace varnhold::platform {
namespace {

class MacUserDefaults : public ::testing::Test {
protected:
    std::unique_ptr<UserDefaults> store = makeUserDefaults("/nowhere");
};

TEST_F(MacUserDefaults, GiveEmptyTextAndFalseForWhatIsMissing) {
    EXPECT_EQ(store->string("missing text"), "");
    EXPECT_FALSE(store->boolean("missing switch"));
}

TEST_F(MacUserDefaults, AreSeenAtOnce) {
    store->setString("method", "Login (OAuth)");
    store->setBoolean("hasSeenWelcome", true);

    EXPECT_EQ(store->string("method"), "Login (OAuth)");
    EXPECT_TRUE(store->boolean("hasSeenWelcome"));
    EXPECT_EQ(makeUserDefaults("/nowhere")->string("method"), "Login (OAuth)");

    store->setBoolean("hasSeenWelcome", false);
    EXPECT_FALSE(store->boolean("hasSeenWelcome"));
}

TEST_F(MacUserDefaults, CarryAnyTextUnchanged) {
    for (const std::string text : {"@x", "a;b,c", "zwei\nZeilen", "😀 é", " ", ""}) {
        store->setString("text", text);
        EXPECT_EQ(store->string("text"), text);
    }
}

} // namespace
} // namespace varnhold::platform
