#include "platform/posix_system.h"

#include <cstdlib>
#include <pwd.h>
#include <unistd.h>
#include <vector>

#include "base/files.h"
#include "platform/executable.h"
#include "platform/layout.h"
#include "platform/runtime_directory.h"

namespace varnhold::platform {

namespace {

std::string homeFromPasswordDatabase() {
    const long suggested = ::sysconf(_SC_GETPW_R_SIZE_MAX);
    std::vector<char> buffer(suggested > 0 ? static_cast<std::size_t>(suggested) : 16384U);
    passwd entry{};
    passwd* found = nullptr;
    if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 ||
        found == nullptr) {
        return "/";
    }
    return entry.pw_dir;
}

std::string findHome() {
    const char* variable = std::getenv("HOME"); // NOLINT(concurrency-mt-unsafe): read at start
    std::string home =
        variable != nullptr && *variable != '\0' ? variable : homeFromPasswordDatabase();
    while (home.ends_with('/')) {
        home.pop_back();
    }
    return home;
}

class PosixSystem final : public System {
public:
    PosixSystem() : home_(findHome()), layout_(systemLayout(executablePath())) {}

    [[nodiscard]] std::uint32_t userId() const override { return ::getuid(); }
    [[nodiscard]] std::string homeDirectory() const override { return home_; }
    [[nodiscard]] std::string bundlePath() const override { return layout_.bundlePath; }
    [[nodiscard]] std::string launchctlPath() const override { return layout_.launchctlPath; }
    [[nodiscard]] std::string runtimeDirectory() const override { return runtimeDirectory_; }
    [[nodiscard]] bool hasUserManager() const override {
        // The socket of a systemd user manager; asked for each time, as one may come up later.
        const std::string session = runtimeDirectory_.substr(0, runtimeDirectory_.rfind('/'));
        return files::exists(session + "/systemd/private");
    }
    [[nodiscard]] ProcessRequest terminalRequest(const std::string& script,
                                                 const std::string& argument) const override {
        return systemTerminalRequest(script, argument);
    }

private:
    std::string home_;
    Layout layout_;
    // NOLINTNEXTLINE(concurrency-mt-unsafe): read at start
    std::string runtimeDirectory_ =
        platform::runtimeDirectory(std::getenv("XDG_RUNTIME_DIR"), ::getuid());
};

} // namespace

std::unique_ptr<System> makeSystem() {
    return std::make_unique<PosixSystem>();
}

} // namespace varnhold::platform
