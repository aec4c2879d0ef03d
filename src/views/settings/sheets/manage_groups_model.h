#pragma once

#include <QtQml/qqmlregistration.h>

#include "views/settings/keyed_list_model.h"
#include "views/settings/settings_part.h"

namespace varnhold {

// The sheet in which groups are made, named and deleted, as QML sees it. Groups are known by the
// text of their identity. Main thread.
class ManageGroupsModel final : public SettingsPart {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")
    // A row for each group: groupId, name.
    Q_PROPERTY(varnhold::KeyedListModel* groups READ groups CONSTANT)
    Q_PROPERTY(QString newName READ newName WRITE setNewName NOTIFY newNameChanged)
    Q_PROPERTY(bool canAdd READ canAdd NOTIFY newNameChanged)

public:
    ManageGroupsModel(const SettingsContext& context, QObject* parent);

    void sync(Animation animation) override;

    [[nodiscard]] KeyedListModel* groups() { return &groups_; }
    [[nodiscard]] QString newName() const { return newName_; }
    void setNewName(const QString& name);
    [[nodiscard]] bool canAdd() const;

    // Nothing while there is no name.
    Q_INVOKABLE void add();
    Q_INVOKABLE void rename(const QString& groupId, const QString& name);
    Q_INVOKABLE void remove(const QString& groupId);
    Q_INVOKABLE void dismiss();

signals:
    void newNameChanged();

private:
    KeyedListModel groups_{{"groupId", "name"}};
    QString newName_;
};

} // namespace varnhold
