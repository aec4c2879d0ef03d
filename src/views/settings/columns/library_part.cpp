#include "views/settings/columns/library_part.h"

#include "settings/chain_editing.h"
#include "settings/library_sections.h"
#include "settings/model_tag.h"
#include "views/text/qt_text.h"

namespace varnhold {

namespace {

KeyedListModel::Row shown(const QString& section, const ModelRow& row) {
    const QString uid = toQString(row.model.uid());
    return {uid,
            {section, uid, toQString(row.model.displayName()), toQString(modelTag(row.model)),
             toQString(name(row.model.themeColor())), row.isDragging, row.isDownloading,
             // No place takes a tool of this machine's, and the pointer should say so.
             row.model.type == "local" ? QStringLiteral("tool") : QStringLiteral("model")}};
}

} // namespace

LibraryPart::LibraryPart(const SettingsContext& context, QObject* parent)
    : SettingsPart(context, parent),
      rows_({"section", "uid", "name", "tag", "colour", "isDragging", "isDownloading", "kind"}) {}

void LibraryPart::sync(Animation animation) {
    if (const bool fading = animation == Animation::easeOut; fading_ != fading) {
        fading_ = fading; // before the rows, which then take their time
        emit fadingChanged();
    }
    std::vector<KeyedListModel::Row> wanted;
    models_.clear();
    for (const LibrarySection& section : librarySections(view())) {
        for (const AIModelItem& model : section.models) {
            wanted.push_back(shown(toQString(section.title), view().modelRow(model)));
            models_.push_back(model);
        }
    }
    rows_.sync(std::move(wanted));
    if (isTargeted_ != view().isLibraryTargeted) {
        isTargeted_ = view().isLibraryTargeted;
        emit isTargetedChanged();
    }
}

void LibraryPart::setTargeted(bool targeted) {
    if (view().isLibraryTargeted != targeted) {
        view().isLibraryTargeted = targeted;
        view().changed();
    }
}

QString LibraryPart::note(const QString& section) const {
    for (const LibrarySection& each : librarySections(view())) {
        if (toQString(each.title) == section) {
            return toQString(each.note);
        }
    }
    return {};
}

bool LibraryPart::isFirst(const QString& section) const {
    return toQString(librarySections(view()).front().title) == section;
}

const AIModelItem* LibraryPart::modelAt(int row) const {
    return row < 0 || static_cast<std::size_t>(row) >= models_.size()
               ? nullptr
               : &models_[static_cast<std::size_t>(row)];
}

void LibraryPart::startDrag(int row) {
    if (const AIModelItem* model = modelAt(row)) {
        // What it gives is the row's uid, which the row has as a value already.
        static_cast<void>(view().modelRow(*model).onDrag());
    }
}

void LibraryPart::drop(const QString& text) {
    view().handleLibraryDrop({platform::textPayload(text.toStdString())});
}

void LibraryPart::deleteModel(int row) {
    if (const AIModelItem* model = modelAt(row)) {
        view().modelRow(*model).onDelete();
    }
}

void LibraryPart::showAddModel() {
    view().showAddModelSheet = true;
    view().changed();
}

} // namespace varnhold
