#include "platform/runtime_directory.h"

#include <cstdlib>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace varnhold::platform {

namespace {

enum class Place { nowhere, ours, openToOthers, somebodyElses };

Place look(const std::string& path, std::uint32_t userId) {
    struct stat found {};
    if (path.empty() || path.front() != '/' || ::stat(path.c_str(), &found) != 0 ||
        !S_ISDIR(found.st_mode)) {
        return Place::nowhere;
    }
    if (found.st_uid != userId) {
        return Place::somebodyElses;
    }
    return (found.st_mode & 0022U) == 0 ? Place::ours : Place::openToOthers;
}

// In a home it is left to the user who may write there: what we make in it is closed to others, and
// is believed only as long as it is.
std::string homeOf(const RuntimeHints& hints) {
    if (const Place home = look(hints.home, hints.userId);
        home == Place::ours || home == Place::openToOthers) {
        return hints.home;
    }
    passwd entry{};
    passwd* user = nullptr;
    std::vector<char> buffer(65536); // far above what any entry takes
    if (::getpwuid_r(hints.userId, &entry, buffer.data(), buffer.size(), &user) != 0 ||
        user == nullptr) {
        return {};
    }
    const Place home = look(user->pw_dir, hints.userId);
    return home == Place::ours || home == Place::openToOthers ? user->pw_dir : std::string();
}

std::string complaint(const std::string& path, Place place) {
    switch (place) {
    case Place::nowhere:
        return "XDG_RUNTIME_DIR is " + path + ", which is no folder";
    case Place::somebodyElses:
        return "XDG_RUNTIME_DIR is " + path + ", which belongs to another user";
    default:
        return "XDG_RUNTIME_DIR is " + path + ", to which others can write";
    }
}

} // namespace

RuntimeHints runtimeHints() {
    const char* home = std::getenv("HOME"); // NOLINT(concurrency-mt-unsafe): read at start
    return {.xdgRuntimeDir = std::getenv("XDG_RUNTIME_DIR"), // NOLINT(concurrency-mt-unsafe)
            .loginFolder = "/run/user/" + std::to_string(::getuid()),
            .home = home == nullptr ? "" : home,
            .userId = ::getuid()};
}

Result<RuntimeDirectory> findRuntimeDirectory(const RuntimeHints& hints) {
    const std::string given = hints.xdgRuntimeDir == nullptr ? "" : hints.xdgRuntimeDir;
    std::string why;
    bool isVoid = false;
    if (!given.empty()) {
        const Place place = look(given, hints.userId);
        if (place == Place::ours) {
            return RuntimeDirectory{given + "/varnhold", {}};
        }
        if (place == Place::somebodyElses && hints.userId == 0) {
            return failure("XDG_RUNTIME_DIR: " + given +
                           " belongs to another user, and root would spoil it for him");
        }
        why = complaint(given, place);
        isVoid = place != Place::openToOthers;
    }
    if (look(hints.loginFolder, hints.userId) == Place::ours) {
        const std::string path = hints.loginFolder + "/varnhold";
        return RuntimeDirectory{path, why.empty() ? "" : why + "; using " + path, isVoid};
    }
    const std::string home = homeOf(hints);
    if (home.empty()) {
        return failure("there is no folder of this user's for what is loaded: neither "
                       "XDG_RUNTIME_DIR, nor " +
                       hints.loginFolder + ", nor a home");
    }
    const std::string path = (home == "/" ? "" : home) + "/.local/state/varnhold/run";
    struct stat found {};
    if (why.empty() && ::lstat(path.c_str(), &found) != 0) {
        why = "there is no runtime folder of this user's"; // said until it has been made
    }
    return RuntimeDirectory{path, why.empty() ? "" : why + "; using " + path, isVoid};
}

} // namespace varnhold::platform
