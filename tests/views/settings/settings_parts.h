#pragma once

#include "unit/settings/settings_home.h"
#include "views/settings/settings_model.h"

namespace varnhold::testing {

// The bridge on a record of its own, with nothing shown. Fill the record before connect().
struct SettingsParts : SettingsHome {
    std::unique_ptr<SettingsModel> model;

    SettingsParts() { open(); }

    void connect() {
        model = std::make_unique<SettingsModel>(
            SettingsContext{*view, FleetContext{platform.interfaces, constants}});
    }

    [[nodiscard]] ChainPart& chain(TargetList list) const {
        QQmlListProperty<ChainPart> chains = model->chains();
        for (qsizetype i = 0;; ++i) {
            ChainPart* part = chains.at(&chains, i);
            if (part->key().toStdString() == chainKey(list)) {
                return *part;
            }
        }
    }

    [[nodiscard]] GroupPart& group(int row) const {
        return *model->groups()->groups()->value(row, QStringLiteral("group")).value<GroupPart*>();
    }

    [[nodiscard]] static std::vector<std::string> values(const KeyedListModel& rows,
                                                         const char* name) {
        std::vector<std::string> out;
        for (int row = 0; row < rows.count(); ++row) {
            out.push_back(rows.value(row, QString::fromUtf8(name)).toString().toStdString());
        }
        return out;
    }
};

inline AIModelItem rowModel(const std::string& id, const std::string& uid) {
    AIModelItem item = model(id);
    item.uniqueId = uid;
    return item;
}

} // namespace varnhold::testing
