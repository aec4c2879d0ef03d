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

// chains, and who answers without a provider
inline constexpr std::string_view chainEmpty = "chain-empty";
inline constexpr std::string_view chainCannotAnswer = "chain-cannot-answer";
inline constexpr std::string_view chainOneProvider = "chain-one-provider";
inline constexpr std::string_view chainBotUnknown = "chain-bot-unknown";
inline constexpr std::string_view chainUnknown = "chain-unknown";
inline constexpr std::string_view modelNotConnected = "model-not-connected";
inline constexpr std::string_view modelCannotServe = "model-cannot-serve";
inline constexpr std::string_view modelNotInLibrary = "model-not-in-library";
inline constexpr std::string_view modelTwice = "model-twice";
inline constexpr std::string_view budgetNegative = "budget-negative";
inline constexpr std::string_view botInNoChain = "bot-in-no-chain";
inline constexpr std::string_view choiceNotConnected = "choice-not-connected";
inline constexpr std::string_view groupPathMissing = "group-path-missing";
inline constexpr std::string_view withoutNobody = "without-nobody";
inline constexpr std::string_view withoutUnknown = "without-unknown";

// keepalive
inline constexpr std::string_view keepaliveNever = "keepalive-never";
inline constexpr std::string_view keepaliveOverdue = "keepalive-overdue";
inline constexpr std::string_view keepalivePaused = "keepalive-paused";
inline constexpr std::string_view pingFolderMissing = "ping-folder-missing";

// system
inline constexpr std::string_view jobsUnknown = "jobs-unknown";
inline constexpr std::string_view jobsSlow = "jobs-slow";
inline constexpr std::string_view interpreterMissing = "interpreter-missing";
inline constexpr std::string_view daemonCodeMissing = "daemon-code-missing";
inline constexpr std::string_view daemonScriptMissing = "daemon-script-missing";
inline constexpr std::string_view supervisorNotRunning = "supervisor-not-running";
inline constexpr std::string_view displayMissing = "display-missing";
inline constexpr std::string_view displaySilent = "display-silent";
inline constexpr std::string_view orphanTool = "orphan-tool";
inline constexpr std::string_view strayDaemon = "stray-daemon";
inline constexpr std::string_view logsLarge = "logs-large";
inline constexpr std::string_view eventsUnreadable = "events-unreadable";
inline constexpr std::string_view eventsSlow = "events-slow";
inline constexpr std::string_view signInFailing = "sign-in-failing";

} // namespace varnhold::doctor::ids
