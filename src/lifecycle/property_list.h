#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"

// A service's definition and its property list file.
//
// The file is XML property list version 1.0 with a dictionary of eight keys at the root, as service
// managers of the launchd family read it (man 5 launchd.plist). Written and read with libplist.
// Pure functions; any thread.
namespace varnhold {

struct PropertyList {
    std::string label;
    bool keepAlive = true; // start again after any exit
    bool runAtLoad = true; // start as soon as it is loaded
    std::map<std::string, std::string> environmentVariables;
    std::vector<std::string> programArguments; // the first is the program's path
    std::string workingDirectory;
    std::string standardOutPath;
    std::string standardErrorPath;

    bool operator==(const PropertyList&) const = default;
};

// Fails on text that XML 1.0 can't carry: a NUL, other control characters than tab, line feed and
// carriage return, U+FFFE, U+FFFF, or bytes that aren't UTF-8. Such a file could never be read
// back.
[[nodiscard]] Result<std::string> encodePropertyList(const PropertyList& list);

// Takes a file of ours, an older one or one made by hand, XML or binary. Label and ProgramArguments
// must be there and not empty; the rest may be missing, and then KeepAlive and RunAtLoad are false
// as for any service manager. Unknown keys are ignored; a wrong type is refused,
// and so is what checkPropertyList doesn't let pass.
[[nodiscard]] Result<PropertyList> decodePropertyList(std::string_view content);

} // namespace varnhold
