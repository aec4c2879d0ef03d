#pragma once

namespace varnhold {

// Under these keys the user defaults remember what was dismissed, for good. A new key would bring
// its sheet back to everybody.
inline constexpr const char* welcomeSeenKey = "hasSeenWelcome_v7";
inline constexpr const char* libraryTipSeenKey = "hasSeenLibraryTip_v1";

} // namespace varnhold
