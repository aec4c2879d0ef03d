#pragma once

#include <QObject>
#include <QQmlListProperty>
#include <QtQml/qqmlregistration.h>
#include <vector>

#include "views/settings/chains/chain_part.h"
#include "views/settings/groups/groups_part.h"
#include "views/settings/settings_part.h"

namespace varnhold {

// The settings window's side of the bridge between the record and QML: it observes the record and
// has each part show what has changed. One for each record; main thread.
class SettingsModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")
    Q_PROPERTY(bool showHints READ showHints WRITE setShowHints NOTIFY showHintsChanged)
    Q_PROPERTY(bool springs READ springs NOTIFY springsChanged)
    // In the order of the window.
    Q_PROPERTY(QQmlListProperty<varnhold::ChainPart> chains READ chains CONSTANT)
    Q_PROPERTY(varnhold::GroupsPart* groups READ groups CONSTANT)

public:
    explicit SettingsModel(const SettingsContext& context, QObject* parent = nullptr);

    [[nodiscard]] bool showHints() const { return showHints_; }
    void setShowHints(bool show);

    // True once the first rows stand: only what changes later should move.
    [[nodiscard]] bool springs() const { return springs_; }

    [[nodiscard]] QQmlListProperty<ChainPart> chains() { return {this, &chains_}; }
    [[nodiscard]] GroupsPart* groups() { return groups_; }

    // Each time the window comes to be seen.
    void appear();
    // The record's request to make, name and delete groups.
    void openManageCustomGroups();

signals:
    void showHintsChanged();
    void springsChanged();

private:
    void sync(Animation animation);

    SettingsContext context_;
    std::vector<SettingsPart*> parts_;
    QList<ChainPart*> chains_;
    GroupsPart* groups_ = nullptr;
    bool showHints_ = false;
    bool springs_ = false;
};

} // namespace varnhold
