#pragma once

#include <string_view>

// Every finding that there is, by its id. docs/doctor.md has a section for each.
namespace varnhold::doctor::ids {

// files
inline constexpr std::string_view fileMissing = "file-missing";
inline constexpr std::string_view fileNotRegular = "file-not-regular";
inline constexpr std::string_view fileUnreadable = "file-unreadable";
inline constexpr std::string_view fileTooLarge = "file-too-large";
inline constexpr std::string_view fileRejected = "file-rejected";
inline constexpr std::string_view filePartlyRead = "file-partly-read";
inline constexpr std::string_view fileDropsKeys = "file-drops-keys";
inline constexpr std::string_view fileReadableByOthers = "file-readable-by-others";
inline constexpr std::string_view fileNotWritable = "file-not-writable";
inline constexpr std::string_view fileBackupOlder = "file-backup-older";
inline constexpr std::string_view diskNearlyFull = "disk-nearly-full";

// fleet
inline constexpr std::string_view fleetEmpty = "fleet-empty";
inline constexpr std::string_view fleetNotLoaded = "fleet-not-loaded";
inline constexpr std::string_view botNotStartable = "bot-not-startable";
inline constexpr std::string_view botNotLoaded = "bot-not-loaded";
inline constexpr std::string_view botPausedButLoaded = "bot-paused-but-loaded";
inline constexpr std::string_view botCrashed = "bot-crashed";
inline constexpr std::string_view botNotSpawned = "bot-not-spawned";
inline constexpr std::string_view botFlapping = "bot-flapping";
inline constexpr std::string_view botEnded = "bot-ended";
inline constexpr std::string_view botSilent = "bot-silent";
inline constexpr std::string_view botWithoutToken = "bot-without-token";
inline constexpr std::string_view botFolderBlocked = "bot-folder-blocked";
inline constexpr std::string_view logRefused = "log-refused";
inline constexpr std::string_view roleEmpty = "role-empty";
inline constexpr std::string_view roleBlank = "role-blank";
inline constexpr std::string_view roleTwice = "role-twice";
inline constexpr std::string_view labelTwice = "label-twice";
inline constexpr std::string_view labelOfOtherRole = "label-of-other-role";
inline constexpr std::string_view agentOutdated = "agent-outdated";
inline constexpr std::string_view propertyListStale = "property-list-stale";
inline constexpr std::string_view propertyListMissing = "property-list-missing";
inline constexpr std::string_view propertyListBroken = "property-list-broken";
inline constexpr std::string_view propertyListImpossible = "property-list-impossible";
inline constexpr std::string_view jobOfNobody = "job-of-nobody";

} // namespace varnhold::doctor::ids
