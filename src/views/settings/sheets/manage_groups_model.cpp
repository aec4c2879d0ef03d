#include "views/settings/sheets/manage_groups_model.h"

#include <vector>

#include "settings/groups_wiring.h"
#include "views/text/qt_text.h"

namespace varnhold {

ManageGroupsModel::ManageGroupsModel(const SettingsContext& context, QObject* parent)
    : SettingsPart(context, parent) {}

void ManageGroupsModel::sync(Animation) {
    std::vector<KeyedListModel::Row> rows;
    for (const CustomBotGroup& group : view().customGroups) {
        const QString id = toQString(group.id.text());
        rows.push_back({id, {id, toQString(group.name)}});
    }
    groups_.sync(std::move(rows));
    if (const QString name = toQString(view().newGroupNameInput); name != newName_) {
        newName_ = name;
        emit newNameChanged();
    }
}

void ManageGroupsModel::setNewName(const QString& name) {
    if (name != newName_) {
        view().groupsSheet().setNewGroupName(name.toStdString());
    }
}

bool ManageGroupsModel::canAdd() const {
    return view().groupsSheet().canAddGroup();
}

void ManageGroupsModel::add() {
    view().groupsSheet().addGroup();
}

void ManageGroupsModel::rename(const QString& groupId, const QString& name) {
    if (const auto id = Uuid::parse(groupId.toStdString())) {
        view().groupsSheet().rename(*id, name.toStdString());
    }
}

void ManageGroupsModel::remove(const QString& groupId) {
    if (const auto id = Uuid::parse(groupId.toStdString())) {
        view().groupsSheet().remove(*id);
    }
}

void ManageGroupsModel::dismiss() {
    view().groupsSheet().onDismiss();
}

} // namespace varnhold
