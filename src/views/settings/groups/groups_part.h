#pragma once

#include <map>

#include "settings/groups_wiring.h"
#include "views/settings/groups/group_part.h"
#include "views/settings/settings_part.h"

namespace varnhold {

// The column of custom groups for QML: one GroupPart for each group, which lives as long as the
// group does. Main thread.
class GroupsPart final : public SettingsPart {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")
    // Rows whose one value `group` is a GroupPart.
    Q_PROPERTY(varnhold::KeyedListModel* groups READ groups CONSTANT)

public:
    GroupsPart(const SettingsContext& context, QObject* parent);

    [[nodiscard]] KeyedListModel* groups() { return &groups_; }

    void sync(Animation animation) override;
    // Which of the attached paths are folders is asked anew with the next sync.
    void forgetPaths();

private:
    CustomGroupsColumn column_;
    std::map<QString, GroupPart*> parts_; // by the key of their row
    KeyedListModel groups_;
};

} // namespace varnhold
