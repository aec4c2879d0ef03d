#include "platform/qt/qt_user_defaults.h"

#include <memory>

namespace varnhold::platform {

std::string userDefaultsPath(const std::string& home) {
    return home + "/.config/OstrelleAI/Varnhold.conf";
}

QtUserDefaults::QtUserDefaults(const std::string& path)
    : settings_(QString::fromStdString(path), QSettings::IniFormat) {}

std::unique_ptr<UserDefaults> makeUserDefaults(const std::string& home) {
    return std::make_unique<QtUserDefaults>(userDefaultsPath(home));
}

std::string QtUserDefaults::string(const std::string& key) const {
    return settings_.value(QString::fromStdString(key), QString()).toString().toStdString();
}

void QtUserDefaults::setString(const std::string& key, const std::string& value) {
    settings_.setValue(QString::fromStdString(key), QString::fromStdString(value));
}

bool QtUserDefaults::boolean(const std::string& key) const {
    return settings_.value(QString::fromStdString(key), false).toBool();
}

void QtUserDefaults::setBoolean(const std::string& key, bool value) {
    settings_.setValue(QString::fromStdString(key), value);
}

} // namespace varnhold::platform
