#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "unit/settings/settings_home.h"
#include "views/settings/settings_model.h"
#include "views/text/qt_text.h"

namespace varnhold::testing {

// The bridge on a record of its own, without a window. Fill the record before modelled().
struct ModelledSettings : SettingsHome {
    std::unique_ptr<SettingsModel> model;
    std::vector<std::string> running; // labels of the agents that are alive, once answerForAgents()

    ModelledSettings() { open(); }

    SettingsModel& modelled() {
        model = std::make_unique<SettingsModel>(
            SettingsContext{*view, FleetContext{platform.interfaces, constants}});
        return *model;
    }

    void answerForAgents() {
        platform.answer = [this](const platform::ProcessRequest& request) {
            platform::ProcessResult result;
            result.started = true;
            const auto& label = request.arguments.back();
            if (std::find(running.begin(), running.end(), label) != running.end()) {
                result.standardOutput = "\"PID\" = 12;";
            }
            return result;
        };
    }

    [[nodiscard]] ChainPart& chain(TargetList list) const {
        const auto& chains = model->chains();
        return **std::find_if(chains.begin(), chains.end(), [list](const ChainPart* part) {
            return part->key().toStdString() == chainKey(list);
        });
    }

    [[nodiscard]] GroupPart& group(int row) const {
        return *model->groups()->groups()->value(row, QStringLiteral("group")).value<GroupPart*>();
    }
};

// Values of that name, from the first row to the last.
inline std::vector<std::string> column(const KeyedListModel& rows, const char* name) {
    std::vector<std::string> values;
    for (int row = 0; row < rows.count(); ++row) {
        values.push_back(rows.value(row, QString::fromLatin1(name)).toString().toStdString());
    }
    return values;
}

} // namespace varnhold::testing
