#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <pwd.h>
#include <string>
#include <unistd.h>

#include "platform/executable.h"
#include "platform/layout.h"
#include "platform/posix_system.h"

namespace varnhold::platform {
namespace {

// Puts the variable back as it was, whatever a test made of it.
class PosixSystemHome : public ::testing::Test {
protected:
    PosixSystemHome() {
        if (const char* found = std::getenv("HOME")) {
            before_ = found;
        }
    }
    ~PosixSystemHome() override {
        if (before_) {
            ::setenv("HOME", before_->c_str(), 1);
        } else {
            ::unsetenv("HOME");
        }
    }

    static std::string homeWith(const char* value) {
        ::setenv("HOME", value, 1);
        return makeSystem()->homeDirectory();
    }

private:
    std::optional<std::string> before_;
};

TEST_F(PosixSystemHome, IsWhatTheVariableSaysWhetherOrNotItExists) {
    EXPECT_EQ(homeWith("/nonexistent/somebody"), "/nonexistent/somebody");
}

TEST_F(PosixSystemHome, HasNoTrailingSlash) {
    EXPECT_EQ(homeWith("/nonexistent/somebody/"), "/nonexistent/somebody");
    EXPECT_EQ(homeWith("/nonexistent/somebody//"), "/nonexistent/somebody");
    EXPECT_EQ(homeWith("/"), "");
}

TEST_F(PosixSystemHome, ComesFromThePasswordDatabaseWhereTheVariableIsEmptyOrUnset) {
    const passwd* entry = ::getpwuid(::getuid());
    ASSERT_NE(entry, nullptr);
    const std::string expected = entry->pw_dir;
    EXPECT_EQ(homeWith(""), expected);
    EXPECT_EQ(homeWith("somebody"), expected);
    EXPECT_EQ(homeWith("./somebody"), expected);
    ::unsetenv("HOME");
    EXPECT_EQ(makeSystem()->homeDirectory(), expected);
}

TEST_F(PosixSystemHome, IsReadOnce) {
    ::setenv("HOME", "/nonexistent/first", 1);
    const auto system = makeSystem();
    ::setenv("HOME", "/nonexistent/second", 1);
    EXPECT_EQ(system->homeDirectory(), "/nonexistent/first");
}

TEST(PosixSystem, TheUserIsTheOneWhoRunsTheProgram) {
    EXPECT_EQ(makeSystem()->userId(), ::getuid());
}

TEST(PosixSystem, ItsPiecesLieWhereTheLayoutOfItsExecutableSays) {
    const std::string executable = executablePath();
    EXPECT_TRUE(std::filesystem::path(executable).is_absolute());
    EXPECT_TRUE(std::filesystem::equivalent(executable, "/proc/self/exe"));
    const auto system = makeSystem();
    EXPECT_EQ((Layout{system->bundlePath(), system->launchctlPath()}), systemLayout(executable));
}

} // namespace
} // namespace varnhold::platform
