#include "doctor/examination.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <system_error>

#include "base/dates.h"
#include "doctor/chains_check.h"
#include "doctor/file_state.h"
#include "doctor/files_check.h"
#include "doctor/fleet_check.h"
#include "doctor/jobs.h"
#include "doctor/keepalive_check.h"
#include "doctor/settings_files.h"
#include "doctor/stored_defaults.h"
#include "doctor/system_check.h"
#include "doctor/window_state.h"

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

} // namespace

Secrets gatherSecrets(const Surroundings& surroundings, const Jobs& jobs) {
    Secrets secrets;
    for (const SettingsFile& file : settingsFiles()) {
        for (const Constants* constants : {&surroundings.constants, &surroundings.home}) {
            secrets.addFromJson(fileStateOf(pathOf(file, *constants)).content);
        }
    }
    const std::string defaults = storedDefaultsPath(surroundings.home.appHome);
    for (const auto& [name, value] : parseStoredDefaults(fileStateOf(defaults).content)) {
        if (name.starts_with("api_key_")) {
            secrets.add(value);
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

Examination examine(const Surroundings& surroundings, const Command& command) {
    Report report{.made = dates::iso8601(surroundings.now),
                  .data = surroundings.constants.appSupportDir,
                  .sections = {}};
    const auto asksFor = [&command](const char* check) {
        const auto& checks = command.checks;
        return std::find(checks.begin(), checks.end(), check) != checks.end();
    };
    const auto add = [&report](Section section) { report.sections.push_back(std::move(section)); };
    const Jobs jobs = asksFor("fleet") || asksFor("system") ? findJobs(surroundings) : Jobs();
    const WindowState window(surroundings);
    if (asksFor("files")) {
        add(checkFiles(surroundings));
    }
    if (asksFor("fleet")) {
        add(checkFleet(surroundings, jobs));
    }
    if (asksFor("chains")) {
        const bool botsAreKnown = readBots(surroundings.constants.botsConfigFile).has_value();
        add(checkChains(window.fields(), botsAreKnown));
    }
    if (asksFor("keepalive")) {
        add(checkKeepalive(window.fields(), surroundings));
    }
    if (asksFor("system")) {
        add(checkSystem(surroundings, jobs));
    }
    if (asksFor("without")) {
        add(checkWithout(window.fields(), command.without));
    }
    return {std::move(report), gatherSecrets(surroundings, jobs)};
}

} // namespace varnhold::doctor
