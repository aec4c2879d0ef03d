#pragma once

#include <functional>
#include <string>

#include "shell/constants.h"

// Where the daemon code and its interpreter are, and the folders that both sides share.
//
// The first two look at the file system at every call and keep no state, so that an interpreter
// installed while the program runs is found; any thread may call.
namespace varnhold {

// Folder of the daemon code: inside the bundle if it is there, otherwise a folder "daemon" beside
// the bundle, whether or not that exists.
[[nodiscard]] std::string daemonResourcesPath(const std::string& bundlePath);

using PathTest = std::function<bool(const std::string& path)>;

// Interpreter for the daemons and the short scripts: the first of six places at which anything
// exists. Existence is all that counts; no version is asked, and the last resort is always given.
[[nodiscard]] std::string findPython(const PathTest& exists);
[[nodiscard]] std::string findPython();

// Makes the program's folder and the two below it that the daemons use. A failure of one is
// dropped: the next is still tried, and whoever needs the folder finds out.
void ensureAppSupportDirs(const Constants& constants);

} // namespace varnhold
