#pragma once

#include <QStringList>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "settings/bot_row.h"
#include "settings/online_checks.h"
#include "views/settings/keyed_list_model.h"
#include "views/settings/settings_part.h"

namespace varnhold {

// The column of bots: a row for each, the form for a new one, and the switch for all.
//
// An agent is watched while a row of it can be seen, and no longer; what was last learned of it is
// kept until it leaves the list. Rows are named by their place in `rows`. Main thread.
class BotsPart final : public SettingsPart {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")
    Q_PROPERTY(varnhold::KeyedListModel* rows READ rows CONSTANT)
    Q_PROPERTY(bool allKeptAlive READ allKeptAlive NOTIFY keepaliveChanged)
    Q_PROPERTY(QString keepaliveSymbol READ keepaliveSymbol NOTIFY keepaliveChanged)
    Q_PROPERTY(QString keepaliveHelp READ keepaliveHelp NOTIFY keepaliveChanged)
    Q_PROPERTY(QStringList services READ services CONSTANT)
    Q_PROPERTY(QString newService READ newService WRITE setNewService NOTIFY newBotChanged)
    Q_PROPERTY(QString newRole READ newRole WRITE setNewRole NOTIFY newBotChanged)
    Q_PROPERTY(QString newToken READ newToken WRITE setNewToken NOTIFY newBotChanged)

public:
    BotsPart(const SettingsContext& context, QObject* parent);

    void sync(Animation animation) override;

    // Names: label, icon, title, role, presence, presenceHelp, isPaused, offersConnection, service,
    // keptAlive, keepaliveSymbol, keepaliveHelp, isSelected, outline.
    [[nodiscard]] KeyedListModel* rows() { return &rows_; }

    [[nodiscard]] bool allKeptAlive() const { return allKeptAlive_; }
    [[nodiscard]] QString keepaliveSymbol() const;
    [[nodiscard]] QString keepaliveHelp() const;

    [[nodiscard]] QStringList services() const;
    [[nodiscard]] QString newService() const { return newBot_.service; }
    void setNewService(const QString& service);
    [[nodiscard]] QString newRole() const { return newBot_.role; }
    void setNewRole(const QString& role);
    [[nodiscard]] QString newToken() const { return newBot_.token; }
    void setNewToken(const QString& token);

    // The row of the new one; -1 if the record took none.
    Q_INVOKABLE int addBot();
    Q_INVOKABLE void select(int row);
    Q_INVOKABLE void connectBot(int row);
    Q_INVOKABLE void toggleKeepalive(int row);
    Q_INVOKABLE void toggleKeepaliveForAll();

    // The row's menu as it is now, for a ContextMenu. What trigger() performs belongs to the menu
    // last asked for, whatever has become of the rows since.
    Q_INVOKABLE [[nodiscard]] QVariantList openMenu(int row);
    Q_INVOKABLE void trigger(int menuRow);

    // By label: a row that goes has no place any more. One call of each for every row.
    Q_INVOKABLE void rowAppeared(const QString& label);
    Q_INVOKABLE void rowDisappeared(const QString& label);

signals:
    void keepaliveChanged();
    void newBotChanged();

private:
    struct NewBot {
        QString service, role, token;

        bool operator==(const NewBot&) const = default;
    };
    struct Watch {
        Watch(const FleetContext& context, const std::string& label, std::function<void()> onAnswer)
            : check(context, label, std::move(onAnswer)) {}

        OnlineCheck check;
        int rows = 0; // that can be seen
    };

    void syncRows();
    void forgetWatches();
    [[nodiscard]] bool isOnline(const std::string& label) const;
    [[nodiscard]] KeyedListModel::Row shown(const BotRow& row, double hue) const;
    void perform(int row, const std::function<void(const BotRow& row)>& act);

    KeyedListModel rows_;
    bool allKeptAlive_ = false;
    NewBot newBot_;
    std::vector<BotMenuItem> menu_;
    std::map<std::string, Watch> watches_; // by label
};

} // namespace varnhold
