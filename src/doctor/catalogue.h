#pragma once

#include <array>
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

inline constexpr std::array files{fileMissing,     fileNotRegular,       fileUnreadable,
                                  fileTooLarge,    fileRejected,         filePartlyRead,
                                  fileDropsKeys,   fileReadableByOthers, fileNotWritable,
                                  fileBackupOlder, diskNearlyFull};

} // namespace varnhold::doctor::ids
