#include "views/settings/groups/group_part.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "groups/group_sheet.h"
#include "views/settings/groups/attach_dialog.h"
#include "views/settings/row_columns.h"
#include "views/settings/stacks/shown_rows.h"

namespace varnhold {

namespace {

constexpr std::array chipColumns{
    RowColumn<PathChip>{"path",
                        [](const PathChip& chip) -> QVariant { return toQString(chip.path); }},
    RowColumn<PathChip>{"name",
                        [](const PathChip& chip) -> QVariant { return shownText(chip.name); }},
    RowColumn<PathChip>{"image",
                        [](const PathChip& chip) -> QVariant { return toQString(chip.image); }},
};

} // namespace

GroupPart::GroupPart(const SettingsContext& context, const Uuid& id, CustomGroupsColumn& column,
                     QObject* parent)
    : StackPart(context, column.stack(id), parent),
      id_(id),
      column_(column),
      attachments_(columnNames(chipColumns)),
      doctrine_(columnNames(chipColumns)) {}

void GroupPart::attachFiles() {
    askForPaths(AttachKind::files, this, [this](const QStringList& paths) { attach(paths); });
}

void GroupPart::attachFolder() {
    askForPaths(AttachKind::folder, this, [this](const QStringList& paths) { attach(paths); });
}

void GroupPart::attachUrls(const QList<QUrl>& urls) {
    QStringList paths;
    for (const QUrl& url : urls) {
        if (url.isLocalFile()) {
            // A folder may come with a slash at its end, which a chosen one has not.
            paths.append(url.adjusted(QUrl::StripTrailingSlash).toLocalFile());
        }
    }
    if (!paths.isEmpty()) {
        attach(paths);
    }
}

void GroupPart::attach(const QStringList& paths) {
    std::vector<std::string> texts;
    for (const QString& path : paths) {
        texts.push_back(path.toStdString());
    }
    column_.attach(id_, texts);
}

void GroupPart::removeAttachment(const QString& path) {
    if (const CustomBotGroup* group = find()) {
        if (const auto chips = column_.attachmentChips(*group)) {
            chips->onRemove(path.toStdString());
        }
    }
}

void GroupPart::removeDoctrine(const QString& path) {
    if (const CustomBotGroup* group = find()) {
        if (const auto chips = column_.doctrineChips(*group)) {
            chips->onRemove(path.toStdString());
        }
    }
}

void GroupPart::toggleObjectives() {
    column_.toggleObjectives(id_);
}

void GroupPart::setObjectives(const QString& text) {
    column_.setObjectives(id_, text.toStdString());
}

void GroupPart::sync(Animation) {
    if (place_ >= view().customGroups.size()) {
        return;
    }
    CustomBotGroup& group = view().customGroups[place_];
    const auto attachments = column_.attachmentChips(group);
    const auto doctrine = column_.doctrineChips(group);
    show(attachments, seenAttachments_, attachments_);
    show(doctrine, seenDoctrine_, doctrine_);
    Shown now{.name = shownText(group.name),
              .ground = toQColor(group.pastelColor()),
              .objectives = toQString(group.objectives),
              .expanded = column_.expandedObjectives().contains(id_),
              .chipSpacing =
                  attachments ? attachments->spacing : (doctrine ? doctrine->spacing : 0)};
    const bool stackChanged = syncStack(column_.stack(group));
    if (stackChanged || shown_ != now) {
        shown_ = std::move(now);
        emit shownChanged();
    }
}

void GroupPart::show(const std::optional<PathChipsView>& chips,
                     std::optional<std::vector<std::string>>& seen, KeyedListModel& rows) {
    const std::vector<std::string> paths = chips ? chips->paths : std::vector<std::string>();
    if (seen == paths) {
        return;
    }
    seen = paths;
    std::vector<KeyedListModel::Row> wanted;
    if (chips) {
        for (const PathChip& chip : chips->chips()) {
            wanted.push_back(rowOf(toQString(chip.path), chip, chipColumns));
        }
    }
    rows.sync(std::move(wanted));
}

void GroupPart::forgetPaths() {
    seenAttachments_.reset();
    seenDoctrine_.reset();
}

const CustomBotGroup* GroupPart::find() const {
    return findGroup(view().customGroups, id_);
}

} // namespace varnhold
