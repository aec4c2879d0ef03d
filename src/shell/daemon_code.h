#pragma once

#include <functional>
#include <string>

#include "platform/platform.h"
#include "shell/constants.h"

// Where the daemon code and its interpreter are, and the folders that both sides share.
//
// All of them look at the file system at every call and keep no state, so that an interpreter
// installed while the program runs is found; any thread may call.
namespace varnhold {

// Whether anything is at the path: that of the platform, or what stands for it.
using PathTest = std::function<bool(const std::string& path)>;

// Folder of the daemon code: inside the bundle if it is there, otherwise a folder "daemon" beside
// the bundle, whether or not that exists.
[[nodiscard]] std::string daemonResourcesPath(const std::string& bundlePath,
                                              const PathTest& exists);
[[nodiscard]] std::string daemonResourcesPath(const platform::System& system);

// What to tell somebody whose bots can't run for want of it, in a line; empty where it is in its
// place.
[[nodiscard]] std::string missingDaemonCode(const platform::System& system);
// Tells it on standard error.
void warnOfMissingDaemonCode(const platform::System& system);

// Scripts of the daemon code: signing a provider in takes its key, and is for a terminal; setting
// the chains up is for the interpreter.
[[nodiscard]] std::string loginScript(const platform::System& system);
[[nodiscard]] std::string autoSetupScript(const platform::System& system);

// Interpreter for the daemons and the short scripts: the first of six places at which anything
// exists. Existence is all that counts; no version is asked, and the last resort is always given.
[[nodiscard]] std::string findPython(const PathTest& exists);
[[nodiscard]] std::string findPython(const platform::System& system);

// Where agents and the daemons' scripts look for programs.
inline constexpr const char* agentPath = "/opt/homebrew/bin:/usr/local/bin:/usr/bin:/bin";

// Makes the program's folder and the two below it that the daemons use. A failure of one is
// dropped: the next is still tried, and whoever needs the folder finds out.
void ensureAppSupportDirs(const Constants& constants);

} // namespace varnhold
