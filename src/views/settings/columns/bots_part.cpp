#include "views/settings/columns/bots_part.h"

#include <QColor>
#include <algorithm>
#include <array>

#include "settings/bot_editing.h"
#include "views/colors/colors.h"
#include "views/settings/row_columns.h"
#include "views/text/qt_text.h"

namespace varnhold {

namespace {

constexpr const char* checkmark = "checkmark";

QString kindName(BotMenuItem::Kind kind) {
    switch (kind) {
    case BotMenuItem::Kind::divider:
        return QStringLiteral("divider");
    case BotMenuItem::Kind::section:
        return QStringLiteral("section");
    case BotMenuItem::Kind::action:
        break;
    }
    return QStringLiteral("action");
}

QString presenceName(BotPresence presence) {
    switch (presence) {
    case BotPresence::paused:
        return QStringLiteral("paused");
    case BotPresence::online:
        return QStringLiteral("online");
    case BotPresence::offline:
        break;
    }
    return QStringLiteral("offline");
}

// What is shown of one bot.
struct ShownBot {
    const BotConfig& bot;
    BotPresence presence = BotPresence::offline;
    KeepaliveSwitch keepalive;
    bool isSelected = false;
    BotColor color;
};

using Shown = const ShownBot&;
using Column = RowColumn<ShownBot>;

constexpr std::array botColumns{
    Column{"label", [](Shown row) -> QVariant { return toQString(row.bot.launchdLabel); }},
    Column{"icon", [](Shown row) -> QVariant { return shownText(row.bot.icon); }},
    Column{"title", [](Shown row) -> QVariant { return shownText(row.bot.title); }},
    Column{"role", [](Shown row) -> QVariant { return shownText(row.bot.role); }},
    Column{"presence", [](Shown row) -> QVariant { return presenceName(row.presence); }},
    Column{"presenceHelp", [](Shown row) -> QVariant { return toQString(label(row.presence)); }},
    Column{"isPaused", [](Shown row) -> QVariant { return row.bot.paused(); }},
    Column{"offersConnection", [](Shown row) -> QVariant { return offersConnection(row.bot); }},
    Column{"service", [](Shown row) -> QVariant { return toQString(rawValue(row.bot.service)); }},
    Column{"keptAlive", [](Shown row) -> QVariant { return row.keepalive.isOn; }},
    Column{"keepaliveSymbol",
           [](Shown row) -> QVariant { return toQString(row.keepalive.symbol); }},
    Column{"keepaliveHelp", [](Shown row) -> QVariant { return toQString(row.keepalive.help); }},
    Column{"isSelected", [](Shown row) -> QVariant { return row.isSelected; }},
    Column{"outline",
           [](Shown row) -> QVariant {
               return fromHsv(row.color.hue, row.color.saturation, row.color.brightness);
           }},
};

} // namespace

BotsPart::BotsPart(const SettingsContext& context, QObject* parent)
    : SettingsPart(context, parent), rows_(columnNames(botColumns)) {}

void BotsPart::sync(Animation /*animation*/) {
    forgetWatches();
    syncRows();
    if (const bool all = varnhold::allKeptAlive(view().userBots); all != allKeptAlive_) {
        allKeptAlive_ = all;
        emit keepaliveChanged();
    }
    const NewBot now{.service = toQString(rawValue(view().newBotService)),
                     .role = toQString(view().newBotRole),
                     .token = toQString(view().newBotToken)};
    if (now != newBot_) {
        newBot_ = now;
        emit newBotChanged();
    }
}

void BotsPart::syncRows() {
    const std::vector<double> hues = botColorHues(fleet().constants, view().userBots);
    std::vector<KeyedListModel::Row> wanted;
    auto hue = hues.begin();
    for (const BotRow& row : botRows(view())) {
        wanted.push_back(shown(row, *hue++));
    }
    rows_.sync(std::move(wanted));
}

KeyedListModel::Row BotsPart::shown(const BotRow& row, double hue) const {
    const BotConfig& bot = row.bot;
    const ShownBot all{.bot = bot,
                       .presence = presenceOf(bot, isOnline(bot.launchdLabel)),
                       .keepalive = keepaliveSwitch(bot),
                       .isSelected = row.isSelected,
                       .color = botDisplayColor(hue)};
    return rowOf(toQString(bot.launchdLabel), all, botColumns);
}

// A bot that has left the list isn't watched any longer, even if its row fades for a while.
void BotsPart::forgetWatches() {
    std::erase_if(watches_, [this](const auto& watch) {
        return std::none_of(
            view().userBots.begin(), view().userBots.end(),
            [&watch](const BotConfig& bot) { return bot.launchdLabel == watch.first; });
    });
}

bool BotsPart::isOnline(const std::string& label) const {
    const auto watch = watches_.find(label);
    return watch != watches_.end() && watch->second.check.isOnline();
}

QString BotsPart::keepaliveSymbol() const {
    return toQString(keepaliveSwitchForAll(view().userBots).symbol);
}

QString BotsPart::keepaliveHelp() const {
    return toQString(keepaliveSwitchForAll(view().userBots).help);
}

QStringList BotsPart::services() const {
    QStringList names;
    for (const BotService service : allBotServices) {
        names.append(toQString(rawValue(service)));
    }
    return names;
}

void BotsPart::setNewService(const QString& service) {
    if (const auto known = botServiceFromRawValue(service.toStdString())) {
        view().newBotService = *known;
        view().changed();
    }
}

void BotsPart::setNewRole(const QString& role) {
    view().newBotRole = role.toStdString();
    view().changed();
}

void BotsPart::setNewToken(const QString& token) {
    view().newBotToken = token.toStdString();
    view().changed();
}

int BotsPart::addBot() {
    const int before = rows_.count();
    view().addBot();
    return rows_.count() > before ? rows_.count() - 1 : -1;
}

void BotsPart::perform(int row, const std::function<void(const BotRow& row)>& act) {
    const std::vector<BotRow> rows = botRows(view());
    if (row >= 0 && static_cast<std::size_t>(row) < rows.size()) {
        act(rows[static_cast<std::size_t>(row)]);
    }
}

void BotsPart::select(int row) {
    perform(row, [](const BotRow& chosen) { chosen.onSelect(); });
}

void BotsPart::connectBot(int row) {
    perform(row, [](const BotRow& chosen) { chosen.onConnect(chosen.bot); });
}

void BotsPart::toggleKeepalive(int row) {
    perform(row, [](const BotRow& chosen) { chosen.onToggleKeepalive(chosen.bot); });
}

void BotsPart::toggleKeepaliveForAll() {
    varnhold::toggleKeepaliveForAll(view());
}

QVariantList BotsPart::openMenu(int row) {
    menu_.clear();
    perform(row, [this](const BotRow& chosen) { menu_ = botMenu(chosen, fleet()); });
    QVariantList shown;
    for (const BotMenuItem& item : menu_) {
        shown.append(QVariantMap{{QStringLiteral("kind"), kindName(item.kind)},
                                 {QStringLiteral("title"), shownText(item.title)},
                                 {QStringLiteral("symbol"), toQString(item.symbol)},
                                 {QStringLiteral("destructive"), item.destructive},
                                 {QStringLiteral("checked"), item.symbol == checkmark}});
    }
    return shown;
}

void BotsPart::trigger(int menuRow) {
    if (menuRow < 0 || static_cast<std::size_t>(menuRow) >= menu_.size()) {
        return;
    }
    // A copy: what it does may open a menu.
    if (const auto act = menu_[static_cast<std::size_t>(menuRow)].perform) {
        act();
    }
}

void BotsPart::rowAppeared(const QString& label) {
    const std::string key = label.toStdString();
    auto watch = watches_.find(key);
    if (watch == watches_.end()) {
        watch = watches_.try_emplace(key, fleet(), key, [this] { syncRows(); }).first;
    }
    if (watch->second.rows++ == 0) {
        watch->second.check.rowAppeared();
    }
}

void BotsPart::rowDisappeared(const QString& label) {
    const auto watch = watches_.find(label.toStdString());
    if (watch != watches_.end() && watch->second.rows > 0 && --watch->second.rows == 0) {
        watch->second.check.rowDisappeared();
    }
}

} // namespace varnhold
