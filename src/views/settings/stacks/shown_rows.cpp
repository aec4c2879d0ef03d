#include "views/settings/stacks/shown_rows.h"

#include "settings/model_tag.h"
#include "views/text/qt_text.h"

namespace varnhold {

std::vector<KeyedListModel::Row> shownBots(const std::vector<BotConfig>& bots) {
    std::vector<KeyedListModel::Row> rows;
    for (const BotConfig& bot : bots) {
        const QString label = toQString(bot.launchdLabel);
        rows.push_back({label,
                        {label, toQString(bot.icon), toQString(bot.title), toQString(bot.role),
                         bot.paused()}});
    }
    return rows;
}

KeyedListModel::Row shownModel(const AIModelItem& model, bool isDragging, bool isDownloading) {
    const QString uid = toQString(model.uid());
    return {uid,
            {uid, toQString(model.displayName()), toQString(modelTag(model)),
             toQString(name(model.themeColor())), isDragging, isDownloading}};
}

QColor toQColor(const Color& color) {
    return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                            static_cast<float>(color.blue));
}

} // namespace varnhold
