#pragma once

#include <QColor>
#include <vector>

#include "records/bots.h"
#include "records/groups.h"
#include "records/models.h"
#include "views/settings/keyed_list_model.h"

// Rows of bots and models as stacks show them.
namespace varnhold {

// What is shown of one model.
struct ShownModel {
    const AIModelItem& model;
    bool isDragging = false;
    bool isDownloading = false;
};

// Names of the values in such rows, for the models' constructor.
[[nodiscard]] QByteArrayList botRowNames();
[[nodiscard]] QByteArrayList modelRowNames();

[[nodiscard]] std::vector<KeyedListModel::Row> shownBots(const std::vector<BotConfig>& bots);
[[nodiscard]] KeyedListModel::Row shownModel(const ShownModel& shown);

[[nodiscard]] QColor toQColor(const Color& color);

} // namespace varnhold
