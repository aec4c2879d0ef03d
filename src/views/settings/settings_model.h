#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>
#include <vector>

#include "views/settings/settings_part.h"
#include "views/settings/sheets/sheets_part.h"

namespace varnhold {

// The settings window's side of the bridge between the record and QML: it observes the record and
// has each part show what has changed. One for each record; main thread.
class SettingsModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")
    Q_PROPERTY(bool showHints READ showHints WRITE setShowHints NOTIFY showHintsChanged)
    Q_PROPERTY(bool springs READ springs NOTIFY springsChanged)
    Q_PROPERTY(SheetsPart* sheets READ sheets CONSTANT)

public:
    explicit SettingsModel(const SettingsContext& context, QObject* parent = nullptr);

    [[nodiscard]] bool showHints() const { return showHints_; }
    void setShowHints(bool show);

    // True once the first rows stand: only what changes later should move.
    [[nodiscard]] bool springs() const { return springs_; }

    [[nodiscard]] SheetsPart* sheets() { return sheets_; }

    // Each time the window comes to be seen.
    void appear();
    // The record's request to make, name and delete groups.
    void openManageCustomGroups();
    // Empties the chains, without asking.
    Q_INVOKABLE void reset();

signals:
    void showHintsChanged();
    void springsChanged();

private:
    void sync(Animation animation);

    SettingsContext context_;
    std::vector<SettingsPart*> parts_;
    SheetsPart* sheets_ = nullptr;
    bool showHints_ = false;
    bool springs_ = false;
};

} // namespace varnhold
