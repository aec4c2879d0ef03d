#pragma once

#include <algorithm>

#include "unit/settings/settings_home.h"
#include "views/qt_text.h"
#include "views/settings/settings_model.h"

namespace varnhold::testing {

// The bridge on a record of its own, without a window. Fill the record before modelled().
struct ModelledSettings : SettingsHome {
    ModelledSettings() { open(); }

    std::unique_ptr<SettingsModel> model;

    SettingsModel& modelled() {
        model = std::make_unique<SettingsModel>(
            SettingsContext{*view, FleetContext{platform.interfaces, constants}});
        return *model;
    }

    // How often everything was saved.
    [[nodiscard]] long saves() const {
        const auto& keys = platform.defaults.written;
        return std::count(keys.begin(), keys.end(), "api_key_cerebras");
    }

    [[nodiscard]] std::vector<BotConfig> botsOnDisk() const { return loadBots(constants); }
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
