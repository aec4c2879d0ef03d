#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>

#include "base/files.h"
#include "platform/orphan_sweep.h"
#include "platform/posix_processes.h"
#include "platform/posix_system.h"
#include "platform/terminal.h"

namespace varnhold::platform {
namespace {

namespace fs = std::filesystem;

TEST(MacSystem, AsksTheSystemsOwnToolForServices) {
    EXPECT_EQ(makeSystem()->launchctlPath(), "/bin/launchctl");
}

TEST(MacSystem, TakesTheFolderOfAProgramOutsideABundleForTheBundle) {
    EXPECT_EQ(makeSystem()->bundlePath(),
              fs::read_symlink("/proc/self/exe").parent_path().string());
}

TEST(MacSystem, ScriptsTheSystemsTerminal) {
    EXPECT_EQ(makeSystem()->terminalRequest("/a b/login_scout.sh", "gemini"),
              macTerminalRequest("/a b/login_scout.sh", "gemini"));
}

TEST(MacSystem, SweepsThePackageManagersFolder) {
    EXPECT_EQ(makeSystem()->orphanSweep(), macOrphanSweep());
}

TEST(MacSystem, HearsAChildToTheEnd) {
    PosixProcesses processes;
    const ProcessResult result = processes.run({.program = "/bin/sh",
                                                .arguments = {"-c", "echo heard; exit 3"},
                                                .standardOutput = Stream::captured});
    EXPECT_TRUE(result.started);
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.standardOutput, "heard\n");
}

class MacFiles : public ::testing::Test {
protected:
    MacFiles() { fs::create_directory(folder_); }
    ~MacFiles() override { fs::remove_all(folder_); }
    [[nodiscard]] std::string path(const std::string& name) const { return folder_ + "/" + name; }

private:
    std::string folder_ = ::testing::TempDir() + "mac_files." + std::to_string(::getpid());
};

TEST_F(MacFiles, AreCopiedUnderANameThatIsFree) {
    ASSERT_TRUE(files::writeInPlace(path("from"), "content"));

    EXPECT_TRUE(files::copyItem(path("from"), path("to")));
    EXPECT_EQ(files::read(path("to")).value(), "content");
}

TEST_F(MacFiles, AreNotCopiedOverWhatIsThere) {
    ASSERT_TRUE(files::writeInPlace(path("from"), "content"));
    ASSERT_TRUE(files::writeInPlace(path("to"), "other"));

    EXPECT_FALSE(files::copyItem(path("from"), path("to")));
    EXPECT_EQ(files::read(path("to")).value(), "other");
}

} // namespace
} // namespace varnhold::platform
