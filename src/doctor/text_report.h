#pragma once

#include <string>

#include "doctor/finding.h"
#include "doctor/secrets.h"

namespace varnhold::doctor {

struct TextStyle {
    std::size_t width = 80; // columns
    bool color = false;
};

// The report as a person reads it: each check with its table and its findings, the worst first.
// Level and state are told by sign and word, and by colour only on top of that. Pure; any thread.
[[nodiscard]] std::string textReport(const Report& report, const Secrets& secrets,
                                     const TextStyle& style);

} // namespace varnhold::doctor
