#pragma once

#include <cstdint>
#include <optional>

namespace varnhold::testing {

// What the system calls that write a file answer for as long as this lives. One at a time.
class FailingDisk {
public:
    FailingDisk();
    ~FailingDisk();
    FailingDisk(const FailingDisk&) = delete;
    FailingDisk& operator=(const FailingDisk&) = delete;

    // The call with this number, counted from 0, fails with this error; the others work.
    std::optional<int> failing = std::nullopt;
    int error = 0;
    // A file system that can't reserve room.
    bool reserves = true;
    // No file grows beyond this many bytes.
    std::optional<std::uint64_t> room = std::nullopt;
    // Across a network: what found no room is told at the next close only.
    bool tellsLate = false;
    bool takesNothingOnceTold = false;
    // No write takes more than this many bytes at once.
    std::optional<std::uint64_t> atOnce = std::nullopt;
    // A file system that can't rename without replacing.
    bool renamesExclusively = true;

    [[nodiscard]] int calls() const { return calls_; }
    [[nodiscard]] int syncs() const { return syncs_; }

    // For the calls themselves: true, with errno set, if this one has to fail.
    [[nodiscard]] bool refuses();
    void owe() { owes_ = true; }
    [[nodiscard]] bool tells();
    void countSync() { ++syncs_; }

private:
    int calls_ = 0;
    int syncs_ = 0;
    bool owes_ = false;
};

} // namespace varnhold::testing
