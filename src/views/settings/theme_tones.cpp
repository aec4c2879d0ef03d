#include "views/settings/theme_tones.h"

#include "views/colors/colors.h"
#include "views/colors/model_grounds.h"

namespace varnhold {

bool ThemeTones::isDark(const QColor& ground) {
    return varnhold::isDark(ground);
}

QColor ThemeTones::readable(const QColor& color, const QColor& ground) {
    return varnhold::readable(color, ground);
}

QColor ThemeTones::modelGround(const QString& name, bool dark) {
    return varnhold::modelGround(name.toStdString(), dark);
}

QColor ThemeTones::window(bool dark) {
    return tones(dark).window;
}

QColor ThemeTones::text(bool dark) {
    return tones(dark).text;
}

QColor ThemeTones::secondaryText(bool dark) {
    return tones(dark).secondaryText;
}

QColor ThemeTones::field(bool dark) {
    return tones(dark).field;
}

QColor ThemeTones::accent(bool dark) {
    return tones(dark).accent;
}

QColor ThemeTones::red(bool dark) {
    return tones(dark).red;
}

QColor ThemeTones::orange(bool dark) {
    return tones(dark).orange;
}

} // namespace varnhold
