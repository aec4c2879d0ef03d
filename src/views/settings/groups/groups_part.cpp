#include "views/settings/groups/groups_part.h"

#include <map>
#include <vector>

namespace varnhold {

GroupsPart::GroupsPart(const SettingsContext& context, QObject* parent)
    : SettingsPart(context, parent), column_(view().groupsColumn()), groups_({"group"}) {}

void GroupsPart::sync(Animation animation) {
    std::map<QString, GroupPart*> parts;
    std::vector<KeyedListModel::Row> rows;
    for (std::size_t place = 0; place < view().customGroups.size(); ++place) {
        const CustomBotGroup& group = view().customGroups[place];
        QString key = toQString(group.id.text());
        while (parts.contains(key)) {
            key += u'+'; // a file edited by hand may hold one identity twice
        }
        const auto known = parts_.find(key);
        GroupPart* part = known == parts_.end() ? new GroupPart(settings(), group.id, column_, this)
                                                : known->second;
        part->standAt(place);
        part->sync(animation);
        parts.emplace(key, part);
        rows.push_back({key, {QVariant::fromValue(part)}});
    }
    parts_.swap(parts);
    groups_.sync(std::move(rows));
    for (const auto& [key, part] : parts) {
        if (!parts_.contains(key)) {
            part->deleteLater(); // it may be its own button that led here
        }
    }
}

void GroupsPart::forgetPaths() {
    for (const auto& [key, part] : parts_) {
        part->forgetPaths();
    }
}

} // namespace varnhold
