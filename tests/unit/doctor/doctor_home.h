#pragma once

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "doctor/finding.h"
#include "doctor/surroundings.h"
#include "support/temporary_home.h"

namespace varnhold::testing {

// A home for the doctor to look at, at a moment of its own.
struct DoctorHome {
    TemporaryHome home;
    Constants constants{home.path()};
    doctor::Surroundings around{
        .constants = constants,
        .now = std::chrono::system_clock::time_point(std::chrono::seconds(1772600767)),
        .diskRoom = [](const std::string&) { return doctor::DiskRoom{.freeBytes = 1U << 30U}; }};

    DoctorHome() { home.makeFolder(constants.appSupportDir); }

    void write(const std::string& path, std::string_view content) const {
        home.write(path, content);
    }
};

inline std::vector<doctor::Finding> findingsOf(const doctor::Section& section,
                                               std::string_view id) {
    std::vector<doctor::Finding> found;
    std::copy_if(section.findings.begin(), section.findings.end(), std::back_inserter(found),
                 [id](const doctor::Finding& each) { return each.id == id; });
    return found;
}

inline std::vector<std::string> idsOf(const doctor::Section& section) {
    std::vector<std::string> ids;
    for (const doctor::Finding& each : section.findings) {
        ids.emplace_back(each.id);
    }
    return ids;
}

} // namespace varnhold::testing
