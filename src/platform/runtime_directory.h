#pragma once

#include <cstdint>
#include <string>

#include "base/result.h"

namespace varnhold::platform {

// What the choice of a place for locks, sockets and loaded jobs goes by.
struct RuntimeHints {
    const char* xdgRuntimeDir = nullptr; // variable of the environment; null if it isn't set
    std::string loginFolder;             // what a login manager would have made
    std::string home;
    std::uint32_t userId = 0;
};

// The hints of this process; reads its environment.
[[nodiscard]] RuntimeHints runtimeHints();

struct RuntimeDirectory {
    std::string path;
    // A sentence for standard error, if it isn't where the user would look for it; else empty.
    std::string remark;
    // Whether XDG_RUNTIME_DIR is of no use to anybody in this process.
    bool variableIsVoid = false;
};

// The program's own folder for things that are gone with the session: below XDG_RUNTIME_DIR
// (freedesktop.org base directories), or else below the folder of the login manager, or else in the
// user's home. Each counts only if it is a folder of the user's that nobody else can write to, so
// nothing that another user has prepared in a place for all is ever believed. Only named here, not
// made: see PrivateFolder.
//
// Fails where there is no such place, and for root with the XDG_RUNTIME_DIR of somebody else, whose
// session would be left with folders that he can't use.
[[nodiscard]] Result<RuntimeDirectory> findRuntimeDirectory(const RuntimeHints& hints);

} // namespace varnhold::platform
