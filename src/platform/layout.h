#pragma once

#include <string>

// Where the program's own pieces lie, told from the path of its executable.
//
// Both systems' rules are plain functions, so that each is tested on the other. Pure; any thread.
namespace varnhold::platform {

struct Layout {
    std::string bundlePath;    // see System::bundlePath
    std::string launchctlPath; // see System::launchctlPath

    bool operator==(const Layout&) const = default;
};

// Varnhold.app/Contents/MacOS/Varnhold belongs to the bundle Varnhold.app; an executable outside a
// bundle has its own folder in that place. The tool is the system's.
[[nodiscard]] Layout macLayout(const std::string& executable);

// PREFIX/bin/varnhold and PREFIX/libexec/varnhold/supervisor have PREFIX/lib/varnhold as their
// bundle and their own tool in PREFIX/libexec/varnhold; a build folder is laid out like a prefix.
[[nodiscard]] Layout linuxLayout(const std::string& executable);

// The program that PREFIX/bin/varnhold becomes where none runs yet.
[[nodiscard]] std::string supervisorBehind(const std::string& executable);

} // namespace varnhold::platform
