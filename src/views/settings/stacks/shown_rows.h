#pragma once

#include <QColor>

#include "records/bots.h"
#include "records/groups.h"
#include "views/settings/keyed_list_model.h"

// Rows of bots and models as chains and groups show them.
namespace varnhold {

// Names of the values in such rows, for the models' constructor.
inline const QByteArrayList botRowNames{"label", "icon", "title", "role", "paused"};
inline const QByteArrayList modelRowNames{"uid",    "name",       "tag",
                                          "ground", "isDragging", "isDownloading"};

[[nodiscard]] std::vector<KeyedListModel::Row> shownBots(const std::vector<BotConfig>& bots);
[[nodiscard]] KeyedListModel::Row shownModel(const AIModelItem& model, bool isDragging,
                                             bool isDownloading);

[[nodiscard]] QColor toQColor(const Color& color);

} // namespace varnhold
