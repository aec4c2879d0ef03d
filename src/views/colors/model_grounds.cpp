#include "views/colors/model_grounds.h"

#include <algorithm>

namespace varnhold {

QColor modelGround(std::string_view name, const Look& look) {
    const auto named = [](std::string_view wanted) {
        return std::find_if(modelGrounds.begin(), modelGrounds.end(),
                            [wanted](const ModelGround& each) { return each.name == wanted; });
    };
    const auto* found = named(name);
    const ModelGround& ground = found != modelGrounds.end() ? *found : *named("indigo");
    if (look.highContrast) {
        return readable(QColor::fromRgb(ground.onLight), Qt::white, strongContrast);
    }
    return QColor::fromRgb(look.dark ? ground.onDark : ground.onLight);
}

} // namespace varnhold
