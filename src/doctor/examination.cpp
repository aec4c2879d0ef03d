#include "doctor/examination.h"

#include "base/dates.h"
#include "doctor/file_state.h"
#include "doctor/files_check.h"
#include "doctor/settings_files.h"

namespace varnhold::doctor {

Secrets gatherSecrets(const Surroundings& surroundings) {
    Secrets secrets;
    for (const SettingsFile& file : settingsFiles()) {
        secrets.addFromJson(fileStateOf(pathOf(file, surroundings.constants)).content);
    }
    return secrets;
}

Report examine(const Surroundings& surroundings, const std::vector<std::string>& checks) {
    Report report{.made = dates::iso8601(surroundings.now),
                  .data = surroundings.constants.appSupportDir,
                  .sections = {}};
    for (const std::string& check : checks) {
        if (check == "files") {
            report.sections.push_back(checkFiles(surroundings));
        }
    }
    return report;
}

} // namespace varnhold::doctor
