#include "views/settings/columns/library_part.h"

#include "settings/chain_editing.h"
#include "settings/library_sections.h"
#include "views/settings/stacks/shown_rows.h"
#include "views/text/qt_text.h"

namespace varnhold {

namespace {

// What every model's row has, with the section's title before it and the kind behind.
KeyedListModel::Row shown(const QString& section, const ModelRow& row) {
    KeyedListModel::Row all = shownModel({row.model, row.isDragging, row.isDownloading});
    all.values.prepend(section);
    // No place takes a tool of this machine's, and the pointer should say so.
    all.values.append(row.model.type == "local" ? QStringLiteral("tool") : QStringLiteral("model"));
    return all;
}

} // namespace

LibraryPart::LibraryPart(const SettingsContext& context, QObject* parent)
    : SettingsPart(context, parent),
      rows_(QByteArrayList{"section"} + modelRowNames() + QByteArrayList{"kind"}) {}

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

bool LibraryPart::takes(const QString& text) const {
    return view().isInAnyChain(text.toStdString());
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
