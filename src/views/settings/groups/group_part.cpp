#include "views/settings/groups/group_part.h"

#include "groups/group_sheet.h"
#include "records/model_rows.h"
#include "views/settings/chains/shown_rows.h"
#include "views/settings/groups/attach_dialog.h"

namespace varnhold {

namespace {

const QByteArrayList chipNames{"path", "name", "image"};

std::vector<KeyedListModel::Row> shownChips(const std::optional<PathChipsView>& chips) {
    std::vector<KeyedListModel::Row> rows;
    if (chips) {
        for (const PathChip& chip : chips->chips()) {
            const QString path = toQString(chip.path);
            rows.push_back({path, {path, toQString(chip.name), toQString(chip.image)}});
        }
    }
    return rows;
}

} // namespace

GroupPart::GroupPart(const Uuid& id, std::vector<CustomBotGroup>& groups,
                     CustomGroupsColumn& column, QObject* parent)
    : QObject(parent),
      id_(id),
      groups_(groups),
      column_(column),
      bots_(botRowNames),
      models_(modelRowNames),
      attachments_(chipNames),
      doctrine_(chipNames) {}

void GroupPart::effortLeft() {
    column_.stepEffort(id_, StepDirection::left);
}

void GroupPart::effortRight() {
    column_.stepEffort(id_, StepDirection::right);
}

void GroupPart::contextLeft() {
    column_.stepContext(id_, StepDirection::left);
}

void GroupPart::contextRight() {
    column_.stepContext(id_, StepDirection::right);
}

void GroupPart::dropOnBots(const QString& text) {
    column_.dropBots(dropped(text), id_);
}

void GroupPart::unassignBot(const QString& label) {
    column_.removeBot(id_, label.toStdString());
}

void GroupPart::dropOnModels(const QString& text) {
    column_.handleDrop(dropped(text), id_);
}

void GroupPart::dropOnTop(const QString& text) {
    column_.handleDrop(dropped(text), id_, 0);
}

QString GroupPart::startDrag(const QString& uid) {
    const AIModelItem* model = find(uid);
    return model == nullptr ? QString() : toQString(column_.startDrag(*model));
}

void GroupPart::rowEntered(const QString& uid) {
    if (const AIModelItem* model = find(uid)) {
        column_.dropDelegate(id_, *model).dropEntered();
    }
}

void GroupPart::rowDropped(const QString& uid) {
    if (const AIModelItem* model = find(uid)) {
        // Whether the drop belonged here or not, it ends at this row.
        static_cast<void>(column_.dropDelegate(id_, *model).performDrop());
    }
}

void GroupPart::removeModel(const QString& uid) {
    column_.removeModel(id_, uid.toStdString());
}

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

void GroupPart::sync(const CustomBotGroup& group, std::span<const int> contextLadder) {
    const auto attachments = column_.attachmentChips(group);
    const auto doctrine = column_.doctrineChips(group);
    bots_.sync(shownBots(column_.botsOf(group)));
    std::vector<KeyedListModel::Row> rows;
    for (const AIModelItem& model : group.models) {
        const bool isDragging =
            column_.draggingModel() && column_.draggingModel()->uid() == model.uid();
        rows.push_back(shownModel(model, isDragging, false));
    }
    models_.sync(std::move(rows));
    attachments_.sync(shownChips(attachments));
    doctrine_.sync(shownChips(doctrine));
    Shown now{.name = toQString(group.name),
              .ground = toQColor(group.pastelColor()),
              .effort = stepperState(effortRow(group)),
              .context = stepperState(contextRow(group, contextLadder)),
              .objectives = toQString(group.objectives),
              .expanded = column_.expandedObjectives().contains(id_),
              .chipSpacing =
                  attachments ? attachments->spacing : (doctrine ? doctrine->spacing : 0)};
    if (shown_ != now) {
        shown_ = std::move(now);
        emit shownChanged();
    }
}

const CustomBotGroup* GroupPart::find() const {
    return findGroup(groups_, id_);
}

const AIModelItem* GroupPart::find(const QString& uid) const {
    const CustomBotGroup* group = find();
    const auto row = group == nullptr ? std::nullopt : rowOf(group->models, uid.toStdString());
    return row ? &group->models[*row] : nullptr;
}

} // namespace varnhold
