#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "shell/constants.h"

namespace varnhold::doctor {

// Room for new content where a file stands.
struct DiskRoom {
    std::uint64_t freeBytes = 0;
    std::optional<std::uint64_t> quotaLeft = std::nullopt; // bytes; none without a quota
    bool outOfNames = false;                               // no new file can be made
};

// What the checks ask of the machine, read-only. The constants must outlive it.
struct Surroundings {
    const Constants& constants; // its files may be those of another folder
    std::chrono::system_clock::time_point now;
    std::function<std::optional<DiskRoom>(const std::string& folder)> diskRoom;
};

// Constants whose files lie in `folder` instead of the home's own.
[[nodiscard]] Constants withDataFolder(Constants constants, const std::string& folder);

} // namespace varnhold::doctor
