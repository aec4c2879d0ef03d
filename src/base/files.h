#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/result.h"

// Whole-file work as the daemons and this program agree on it.
//
// Every function can be called on any thread; none keeps state or a lock, so two writers of one
// file race and a reader can see half of it. Failures come back as a reason in words.
namespace varnhold::files {

// True if anything is there, a file or a folder; a link is followed, so a dangling one is nothing.
[[nodiscard]] bool exists(const std::string& path);
[[nodiscard]] bool isDirectory(const std::string& path);

// Size in bytes of the thing itself: of a link, the length of its text. None if nothing is there.
[[nodiscard]] std::optional<std::uint64_t> attributesSize(const std::string& path);

// By what a plain file shows that it has been written to: of two equal stamps, nothing was written
// between them.
struct Stamp {
    std::uint64_t device = 0;
    std::uint64_t number = 0;
    std::uint64_t size = 0;
    std::int64_t changed = 0; // seconds since 1970
    bool operator==(const Stamp&) const = default;
};

// Links are followed. None where there is no plain file, and none of one that has changed within
// the last two seconds: the next change could look the same.
[[nodiscard]] std::optional<Stamp> stampOf(const std::string& path);

// More than any file that this program keeps; whoever left one as large has done something else.
inline constexpr std::uint64_t largestFile = 64U << 20U;

// The whole content of a plain file of at most `largestFile` bytes; anything else, such as a pipe
// or a device, is a failure at once.
[[nodiscard]] Result<std::string> read(const std::string& path);

// The last `limit` bytes of a file, or all of it if it is shorter. Never waits: of a pipe, what is
// in it at the moment, up to the limit, or a failure if that is less and a writer has it open.
[[nodiscard]] Result<std::string> readTail(const std::string& path, std::uint64_t limit);

// Writes over the old content, through links, keeping inode, mode and hard links. Where it fails,
// on a full disk or a broken one, the old content is still there or again, and a file that wasn't
// there isn't: only a disk that refuses even what it had loses it. Not atomic: a reader may see
// half, and so may whoever comes after a crash, for nothing waits for the disk. Needs the right to
// read the file too.
[[nodiscard]] Result<void> writeInPlace(const std::string& path, std::string_view content);

// Writes beside the file and renames over it: a reader sees the old content or the new, never half.
// Keeps the mode of a file that was there; a link at the path is replaced by a file. Doesn't wait
// for the disk.
[[nodiscard]] Result<void> writeAtomically(const std::string& path, std::string_view content);

// Creates the folder and its parents. A folder that is there already is a success.
[[nodiscard]] Result<void> createDirectories(const std::string& path);

// Copies a file, a link as a link, or a folder with all in it. Refuses if anything at all, also a
// dangling link, has the target's name. The name is given last, to what is whole and on the disk:
// of a copy that fails nothing is left, and of one that is cut short nothing that looks like one.
[[nodiscard]] Result<void> copyItem(const std::string& from, const std::string& to);

} // namespace varnhold::files
