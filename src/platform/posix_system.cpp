#include "platform/posix_system.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <pwd.h>
#include <string>
#include <unistd.h>
#include <vector>

#include "base/files.h"
#include "platform/executable.h"
#include "platform/layout.h"
#include "platform/runtime_directory.h"

namespace varnhold::platform {

namespace {

std::string homeFromPasswordDatabase() {
    std::vector<char> buffer(1024);
    passwd entry{};
    passwd* found = nullptr;
    // What the system suggests as the size is a guess, and some entries are longer.
    while (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) == ERANGE) {
        buffer.resize(buffer.size() * 2);
    }
    return found == nullptr ? "/" : entry.pw_dir;
}

std::string findHome() {
    const char* variable = std::getenv("HOME"); // NOLINT(concurrency-mt-unsafe): read at start
    std::string home =
        variable != nullptr && *variable == '/' ? variable : homeFromPasswordDatabase();
    while (home.ends_with('/')) {
        home.pop_back();
    }
    return home;
}

// Said once for the whole program: children that fall back as well, as they do without a variable
// that leads nowhere, needn't repeat it.
std::string ownRuntimeDirectory() {
    const auto found = findRuntimeDirectory(runtimeHints());
    const std::string& remark = found ? found->remark : found.error();
    if (!remark.empty()) {
        std::fprintf(stderr, "varnhold: %s\n", remark.c_str());
    }
    if (found && found->variableIsVoid) {
        ::unsetenv("XDG_RUNTIME_DIR"); // NOLINT(concurrency-mt-unsafe): at start
    }
    return found ? found->path : std::string();
}

class PosixSystem final : public System {
public:
    PosixSystem() : home_(findHome()), layout_(systemLayout(executablePath())) {}

    [[nodiscard]] std::uint32_t userId() const override { return ::getuid(); }
    [[nodiscard]] bool exists(const std::string& path) const override {
        return files::exists(path);
    }
    [[nodiscard]] std::string homeDirectory() const override { return home_; }
    [[nodiscard]] std::string bundlePath() const override { return layout_.bundlePath; }
    [[nodiscard]] std::string launchctlPath() const override { return layout_.launchctlPath; }
    [[nodiscard]] std::string runtimeDirectory() const override { return runtimeDirectory_; }
    [[nodiscard]] std::string orphanSweep() const override { return systemOrphanSweep(); }
    [[nodiscard]] std::optional<ProcessRequest>
    terminalRequest(const std::string& script, const std::string& argument) const override {
        return systemTerminalRequest(script, argument);
    }

private:
    std::string home_;
    Layout layout_;
    std::string runtimeDirectory_ = ownRuntimeDirectory();
};

} // namespace

std::unique_ptr<System> makeSystem() {
    return std::make_unique<PosixSystem>();
}

} // namespace varnhold::platform
