#pragma once

#include <QSettings>
#include <string>

#include "platform/user_defaults.h"

namespace varnhold::platform {

// The user's file for the program's few values, whatever the environment says about folders.
[[nodiscard]] std::string userDefaultsPath(const std::string& home);

// User defaults in an INI file, written as a whole at the next turn of the event loop and when the
// object goes. Parent folders are made at need. A file that can't be read is an empty store, and
// one that can't be written keeps its values for the run alone.
class QtUserDefaults final : public UserDefaults {
public:
    explicit QtUserDefaults(const std::string& path);

    [[nodiscard]] std::string string(const std::string& key) const override;
    void setString(const std::string& key, const std::string& value) override;
    [[nodiscard]] bool boolean(const std::string& key) const override;
    void setBoolean(const std::string& key, bool value) override;

private:
    QSettings settings_;
};

} // namespace varnhold::platform
