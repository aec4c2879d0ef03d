#pragma once

#include <string>

// What daemons leave behind of the command-line tools that they run, and how it is got rid of.
//
// A script for /bin/sh, which kills the orphans among the processes of four tools by the places
// where they are installed. Their parent marks them, the system's first process or who else adopts;
// a tool under another living parent is the user's own and is left alone. Both systems' scripts are
// plain texts, so that each is tested on the other. Nothing here kills; pure; any thread.
namespace varnhold::platform {

// The package manager's folder; anywhere in the command line, and also with something behind the
// tool's name.
[[nodiscard]] std::string macOrphanSweep();

// The same, and besides as a whole name, as the program that runs or the script that an interpreter
// runs, in
//   ~/.local/bin, and what the links there lead to, ~/.local/share/TOOL/
//   /usr/local/bin and /usr/bin
//   ~/.npm-global/bin, ~/.npm/bin, node_modules/.bin and below lib/node_modules (npm)
//   ~/.nvm/versions/node/VERSION/bin (nvm)
//   /home/linuxbrew/.linuxbrew/bin and ~/.linuxbrew/bin (Linuxbrew)
// Orphans go to the first process, or to the user manager of their session. Only processes of the
// user's are looked at, and none that has a terminal: what somebody runs by hand may have lost its
// parent and still be in use.
[[nodiscard]] std::string linuxOrphanSweep();

} // namespace varnhold::platform
