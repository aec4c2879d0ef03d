#include "doctor/examination.h"

#include <algorithm>
#include <filesystem>

#include "base/dates.h"
#include "doctor/file_state.h"
#include "doctor/files_check.h"
#include "doctor/fleet_check.h"
#include "doctor/jobs.h"
#include "doctor/settings_files.h"

namespace varnhold::doctor {

namespace {

void addVariables(const PropertyList& list, Secrets& secrets) {
    for (const auto& [name, value] : list.environmentVariables) {
        secrets.addVariable(name, value);
    }
}

// Of all agents, also of those whose bots have gone: their logs and jobs are looked at.
void addPropertyLists(const std::string& folder, Secrets& secrets) {
    std::error_code missing; // then there are none
    for (const auto& entry : std::filesystem::directory_iterator(folder, missing)) {
        if (entry.path().extension() == ".plist") {
            const FileState file = fileStateOf(entry.path().string());
            if (const auto list = decodePropertyList(file.content)) {
                addVariables(*list, secrets);
            }
        }
    }
}

Secrets gatherSecrets(const Surroundings& surroundings, const Jobs& jobs) {
    Secrets secrets;
    for (const SettingsFile& file : settingsFiles()) {
        for (const Constants* constants : {&surroundings.constants, &surroundings.home}) {
            secrets.addFromJson(fileStateOf(pathOf(file, *constants)).content);
        }
    }
    for (const auto& [name, value] : surroundings.environment) {
        secrets.addVariable(name, value);
    }
    for (const auto& [label, job] : jobs.byLabel) {
        if (job.folder && job.folder->loaded) {
            addVariables(*job.folder->loaded, secrets);
        }
    }
    addPropertyLists(surroundings.home.launchAgentsDir, secrets);
    return secrets;
}

} // namespace

Examination examine(const Surroundings& surroundings, const std::vector<std::string>& checks) {
    Report report{.made = dates::iso8601(surroundings.now),
                  .data = surroundings.constants.appSupportDir,
                  .sections = {}};
    const bool asksForJobs =
        std::any_of(checks.begin(), checks.end(), [](const auto& each) { return each == "fleet"; });
    const Jobs jobs = asksForJobs ? findJobs(surroundings) : Jobs();
    for (const std::string& check : checks) {
        if (check == "files") {
            report.sections.push_back(checkFiles(surroundings));
        } else if (check == "fleet") {
            report.sections.push_back(checkFleet(surroundings, jobs));
        }
    }
    return {std::move(report), gatherSecrets(surroundings, jobs)};
}

} // namespace varnhold::doctor
