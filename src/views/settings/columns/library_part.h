#pragma once

#include <QtQml/qqmlregistration.h>
#include <vector>

#include "records/models.h"
#include "views/settings/keyed_list_model.h"
#include "views/settings/settings_part.h"

namespace varnhold {

// The column of models that chains are made of: one list, its rows told into sections by the name
// of theirs. Rows are named by their place in `rows`. Main thread.
class LibraryPart final : public SettingsPart {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")
    Q_PROPERTY(varnhold::KeyedListModel* rows READ rows CONSTANT)
    Q_PROPERTY(bool isTargeted READ isTargeted WRITE setTargeted NOTIFY isTargetedChanged)
    // What was dragged comes back gently.
    Q_PROPERTY(bool fading READ fading NOTIFY fadingChanged)

public:
    LibraryPart(const SettingsContext& context, QObject* parent);

    void sync(Animation animation) override;

    // Names: section, uid, name, tag, ground, isDragging, isDownloading, kind.
    [[nodiscard]] KeyedListModel* rows() { return &rows_; }

    // True while a drag hovers over the column.
    [[nodiscard]] bool isTargeted() const { return isTargeted_; }
    void setTargeted(bool targeted);
    [[nodiscard]] bool fading() const { return fading_; }

    // What stands beside a section's title; mostly nothing.
    Q_INVOKABLE [[nodiscard]] QString note(const QString& section) const;
    // Sections below another begin with a divider.
    Q_INVOKABLE [[nodiscard]] bool isFirst(const QString& section) const;

    // Tells the record that the row is being dragged.
    Q_INVOKABLE void startDrag(int row);
    // Whether a drop of the text on the column would come to anything.
    Q_INVOKABLE [[nodiscard]] bool takes(const QString& text) const;
    // A text was dropped on the column.
    Q_INVOKABLE void drop(const QString& text);
    Q_INVOKABLE void deleteModel(int row);
    Q_INVOKABLE void showAddModel();

signals:
    void isTargetedChanged();
    void fadingChanged();

private:
    [[nodiscard]] const AIModelItem* modelAt(int row) const;

    KeyedListModel rows_;
    std::vector<AIModelItem> models_; // of the rows
    bool isTargeted_ = false;
    bool fading_ = false;
};

} // namespace varnhold
