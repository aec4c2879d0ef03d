#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <sys/stat.h>

// A settings file as one finds it, without a doubt about why it can't be read.
//
// Only ever opened for reading, and only if it is a regular file: a pipe would never end. Any
// thread.
namespace varnhold::doctor {

struct FileState {
    enum class Kind {
        missing,
        danglingLink,
        notRegular, // a folder, a pipe, a socket, a device
        unreadable,
        tooLarge,
        read,
    };

    Kind kind = Kind::missing;
    std::string what;    // "a folder", "a named pipe"; of an unreadable file, why
    std::string content; // of a read one
    std::uint64_t size = 0;
    std::chrono::system_clock::time_point changed;
    bool writable = false; // for this user
};

// Files beyond this size count as unreadable everywhere.
inline constexpr std::uint64_t largestFile = std::uint64_t{64} << 20U;

[[nodiscard]] FileState fileStateOf(const std::string& path);

// "a folder", "a named pipe"; "a file" for a regular one.
[[nodiscard]] std::string kindInWords(mode_t mode);

// Whether any other user of the machine can read what is there: the file's own mode and those of
// the folders on the way decide.
[[nodiscard]] bool othersCanRead(const std::string& path);

} // namespace varnhold::doctor
