#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "doctor/surroundings.h"
#include "lifecycle/property_list.h"
#include "status/job_list.h"

// The loaded jobs: what the service manager lists, and what stands in the folders that our own
// tools keep of them. Reads only; any thread.
namespace varnhold::doctor {

// What our own service tools keep of a loaded job. A system with a manager of its own has none.
struct JobFolder {
    bool isUnit = false;                // a systemd user manager has it, and s6 otherwise
    std::optional<PropertyList> loaded; // the definition it was loaded with
    std::optional<std::int64_t> starts; // since it was loaded
    std::string spawnError;             // why its program couldn't be started
    std::string logError;               // why a log couldn't be opened
};

struct Job {
    std::string label;
    std::optional<std::int64_t> process;
    int lastStatus = 0; // exit code, or the negative number of a signal
    std::optional<JobFolder> folder = std::nullopt;
};

struct Jobs {
    bool answered = false; // false: nobody knows what is loaded
    ListingRun run;
    std::map<std::string, Job> byLabel;
    StatusMap shown; // what the supervisor makes of the same listing
};

// The listing's rows. A label may hold blanks: it is all that stands behind the second tab.
[[nodiscard]] std::vector<Job> parseJobs(std::string_view listing);

// Folders of loaded jobs, by label.
[[nodiscard]] std::map<std::string, JobFolder> jobFolders(const std::string& runtimeFolder);

// Runs the listing.
[[nodiscard]] Jobs findJobs(const Surroundings& surroundings);

// "exit code 3", "signal 9 (KILL)", "exit code 78: its program could not be spawned".
[[nodiscard]] std::string endInWords(int lastStatus);

} // namespace varnhold::doctor
