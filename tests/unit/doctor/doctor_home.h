#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <optional>
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
        .home = constants,
        .now = std::chrono::system_clock::time_point(std::chrono::seconds(1772600767)),
        .diskRoom = [](const std::string&) { return doctor::DiskRoom{.freeBytes = 1U << 30U}; },
        .environment = {},
        .bundlePath = home.at("lib/varnhold"),
        .runtimeFolder = home.at("run"),
        .launchctlPath = "/opt/bin/launchctl",
        .listJobs = [this] { return listing; },
        .startOf =
            [this](std::int64_t process) -> std::optional<std::chrono::system_clock::time_point> {
            const auto found = runsFor.find(process);
            return found == runsFor.end() ? std::nullopt
                                          : std::optional(around.now - found->second);
        },
        .processes = [this] { return processes; },
        .lockHolder = [this](const std::string&) { return lockHolder; },
        .hasTray = [this] { return tray; },
        .hasEmbeddedTray = [this] { return embeddedTray; }};
    std::vector<doctor::Process> processes;
    std::optional<std::int64_t> lockHolder;
    std::optional<bool> tray;
    std::optional<bool> embeddedTray = false;
    doctor::ListingRun listing{.started = true};
    std::map<std::int64_t, std::chrono::seconds> runsFor; // by process

    DoctorHome(const DoctorHome&) = delete;
    DoctorHome& operator=(const DoctorHome&) = delete;
    DoctorHome() { home.makeFolder(constants.appSupportDir); }

    void write(const std::string& path, std::string_view content) const {
        home.write(path, content);
    }
};

// The record of a bot as the file has it.
inline std::string botRecord(const std::string& role, const std::string& more = "") {
    return R"({"icon":"x","title":"The )" + role + R"(","token":"t-of-)" + role + R"(","role":")" +
           role + R"(","launchdLabel":"com.ostrelleai.)" + role +
           R"(.telegramd","service":"Telegram")" + more + "}";
}

inline std::string labelOf(const std::string& role) {
    return "com.ostrelleai." + role + ".telegramd";
}

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
