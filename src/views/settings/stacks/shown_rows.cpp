#include "views/settings/stacks/shown_rows.h"

#include <array>
#include <vector>

#include "settings/model_tag.h"
#include "views/settings/row_columns.h"
#include "views/text/qt_text.h"

namespace varnhold {

namespace {

using BotColumn = RowColumn<BotConfig>;
using ModelColumn = RowColumn<ShownModel>;

constexpr std::array botColumns{
    BotColumn{"label",
              [](const BotConfig& bot) -> QVariant { return toQString(bot.launchdLabel); }},
    BotColumn{"icon", [](const BotConfig& bot) -> QVariant { return shownText(bot.icon); }},
    BotColumn{"title", [](const BotConfig& bot) -> QVariant { return shownText(bot.title); }},
    BotColumn{"role", [](const BotConfig& bot) -> QVariant { return shownText(bot.role); }},
    BotColumn{"paused", [](const BotConfig& bot) -> QVariant { return bot.paused(); }},
};

constexpr std::array modelColumns{
    ModelColumn{"uid",
                [](const ShownModel& row) -> QVariant { return toQString(row.model.uid()); }},
    ModelColumn{
        "name",
        [](const ShownModel& row) -> QVariant { return shownText(row.model.displayName()); }},
    ModelColumn{"tag",
                [](const ShownModel& row) -> QVariant { return shownText(modelTag(row.model)); }},
    ModelColumn{
        "ground",
        [](const ShownModel& row) -> QVariant { return toQString(name(row.model.themeColor())); }},
    ModelColumn{"isDragging", [](const ShownModel& row) -> QVariant { return row.isDragging; }},
    ModelColumn{"isDownloading",
                [](const ShownModel& row) -> QVariant { return row.isDownloading; }},
};

} // namespace

QByteArrayList botRowNames() {
    return columnNames(botColumns);
}

QByteArrayList modelRowNames() {
    return columnNames(modelColumns);
}

std::vector<KeyedListModel::Row> shownBots(const std::vector<BotConfig>& bots) {
    std::vector<KeyedListModel::Row> rows;
    rows.reserve(bots.size());
    for (const BotConfig& bot : bots) {
        rows.push_back(rowOf(toQString(bot.launchdLabel), bot, botColumns));
    }
    return rows;
}

KeyedListModel::Row shownModel(const ShownModel& shown) {
    return rowOf(toQString(shown.model.uid()), shown, modelColumns);
}

QColor toQColor(const Color& color) {
    return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                            static_cast<float>(color.blue));
}

} // namespace varnhold
