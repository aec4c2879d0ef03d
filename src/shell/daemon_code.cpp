#include "shell/daemon_code.h"

#include <algorithm>
#include <array>
#include <iostream>

#include "base/files.h"
#include "base/paths.h"

namespace varnhold {

namespace {

constexpr std::array<const char*, 6> interpreters{
    "/opt/homebrew/bin/python3.14", "/opt/homebrew/bin/python3.13", "/opt/homebrew/bin/python3.12",
    "/opt/homebrew/bin/python3",    "/usr/local/bin/python3",       "/usr/bin/python3"};

PathTest testOf(const platform::System& system) {
    return [&system](const std::string& path) { return system.exists(path); };
}

std::string placeInside(const std::string& bundlePath) {
    return bundlePath + "/Contents/Resources/daemon";
}

} // namespace

std::string daemonResourcesPath(const std::string& bundlePath, const PathTest& exists) {
    std::string inside = placeInside(bundlePath);
    if (exists(inside)) {
        return inside;
    }
    return paths::standardized(bundlePath + "/../daemon");
}

std::string daemonResourcesPath(const platform::System& system) {
    return daemonResourcesPath(system.bundlePath(), testOf(system));
}

std::string missingDaemonCode(const platform::System& system) {
    const std::string code = daemonResourcesPath(system);
    return system.exists(code + "/provider_telegramd")
               ? ""
               : "there is no provider_telegramd in " + code +
                     ", so no bot can run; put the bots' code into " +
                     placeInside(system.bundlePath());
}

void warnOfMissingDaemonCode(const platform::System& system) {
    if (const std::string missing = missingDaemonCode(system); !missing.empty()) {
        std::cerr << "varnhold: " << missing << ".\n";
    }
}

std::string loginScript(const platform::System& system) {
    return daemonResourcesPath(system) + "/login_scout.sh";
}

std::string autoSetupScript(const platform::System& system) {
    return daemonResourcesPath(system) + "/auto_setup_chains.py";
}

std::string findPython(const PathTest& exists) {
    const auto* const found = std::find_if(interpreters.begin(), interpreters.end(), exists);
    return found == interpreters.end() ? interpreters.back() : *found;
}

std::string findPython(const platform::System& system) {
    return findPython(testOf(system));
}

void ensureAppSupportDirs(const Constants& constants) {
    for (const char* folder : {"", "/data", "/locks"}) {
        static_cast<void>(files::createDirectories(constants.appSupportDir + folder));
    }
}

} // namespace varnhold
