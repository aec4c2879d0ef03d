#pragma once

#include <optional>
#include <string>

#include "doctor/surroundings.h"

namespace varnhold::doctor {

// Room on the folder's disk, and what the user's quota leaves of it. None if the system won't tell.
[[nodiscard]] std::optional<DiskRoom> diskRoomOf(const std::string& folder);

} // namespace varnhold::doctor
