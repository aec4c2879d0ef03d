#include "views/settings/theme_tones.h"

#include "views/colors/colors.h"
#include "views/colors/model_grounds.h"

namespace varnhold {

bool ThemeTones::isDark(const QColor& ground) {
    return varnhold::isDark(ground);
}

bool ThemeTones::isStrong(const QColor& ground, const QColor& text) {
    return isHighContrast(ground, text);
}

QColor ThemeTones::readable(const QColor& color, const QColor& ground, bool strong) {
    return varnhold::readable(color, ground, strong ? strongContrast : readableContrast);
}

QColor ThemeTones::modelGround(const QString& name, bool dark, bool strong) {
    return varnhold::modelGround(name.toStdString(), {dark, strong});
}

QColor ThemeTones::window(bool dark, bool strong) {
    return tones({dark, strong}).window;
}

QColor ThemeTones::text(bool dark, bool strong) {
    return tones({dark, strong}).text;
}

QColor ThemeTones::secondaryText(bool dark, bool strong) {
    return tones({dark, strong}).secondaryText;
}

QColor ThemeTones::field(bool dark, bool strong) {
    return tones({dark, strong}).field;
}

QColor ThemeTones::accent(bool dark, bool strong) {
    return tones({dark, strong}).accent;
}

QColor ThemeTones::accentText(bool dark, bool strong) {
    return tones({dark, strong}).accentText;
}

QColor ThemeTones::red(bool dark, bool strong) {
    return tones({dark, strong}).red;
}

QColor ThemeTones::orange(bool dark, bool strong) {
    return tones({dark, strong}).orange;
}

} // namespace varnhold
