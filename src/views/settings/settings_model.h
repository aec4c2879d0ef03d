#pragma once

#include <QObject>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>
#include <vector>

#include "views/settings/chains/chain_part.h"
#include "views/settings/columns/bots_part.h"
#include "views/settings/columns/library_part.h"
#include "views/settings/columns/prompts_part.h"
#include "views/settings/columns/providers_part.h"
#include "views/settings/groups/groups_part.h"
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
    Q_PROPERTY(varnhold::BotsPart* bots READ bots CONSTANT)
    Q_PROPERTY(varnhold::LibraryPart* library READ library CONSTANT)
    Q_PROPERTY(varnhold::ProvidersPart* providers READ providers CONSTANT)
    Q_PROPERTY(varnhold::PromptsPart* prompts READ prompts CONSTANT)
    Q_PROPERTY(varnhold::SheetsPart* sheets READ sheets CONSTANT)
    Q_PROPERTY(varnhold::ChainPart* governorChain READ governorChain CONSTANT)
    // The other chains, a list for each row of the window.
    Q_PROPERTY(QVariantList chainRows READ chainRows CONSTANT)
    Q_PROPERTY(varnhold::GroupsPart* groups READ groups CONSTANT)

public:
    explicit SettingsModel(const SettingsContext& context, QObject* parent = nullptr);

    [[nodiscard]] bool showHints() const { return showHints_; }
    void setShowHints(bool show);

    // True once the first rows stand: only what changes later should move.
    [[nodiscard]] bool springs() const { return springs_; }

    [[nodiscard]] BotsPart* bots() { return &bots_; }
    [[nodiscard]] LibraryPart* library() { return &library_; }
    [[nodiscard]] ProvidersPart* providers() { return &providers_; }
    [[nodiscard]] PromptsPart* prompts() { return &prompts_; }
    [[nodiscard]] SheetsPart* sheets() { return &sheets_; }
    // All of them, in the order of the window.
    [[nodiscard]] const QList<ChainPart*>& chains() const { return chains_; }
    [[nodiscard]] ChainPart* governorChain() const;
    [[nodiscard]] QVariantList chainRows() const;
    [[nodiscard]] GroupsPart* groups() { return groups_; }

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
    BotsPart bots_{context_, nullptr};
    LibraryPart library_{context_, nullptr};
    ProvidersPart providers_{context_, nullptr};
    PromptsPart prompts_{context_, nullptr};
    SheetsPart sheets_{context_, nullptr};
    std::vector<SettingsPart*> parts_{&bots_, &library_, &providers_, &prompts_, &sheets_};
    QList<ChainPart*> chains_;
    GroupsPart* groups_ = nullptr;
    bool showHints_ = false;
    bool springs_ = false;
};

} // namespace varnhold
