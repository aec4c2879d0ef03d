#pragma once

#include <chrono>

namespace varnhold::doctor {

// How long a bus or a display may take to answer before it counts as one that doesn't.
inline constexpr std::chrono::seconds answerLimit{1};

} // namespace varnhold::doctor
