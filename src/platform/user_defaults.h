#pragma once

#include <memory>
#include <string>

namespace varnhold::platform {

// Small values kept for the user between runs, by key. A value is seen as soon as it is set and
// reaches the disk in the platform's own time. Main thread only.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;

    // Empty where nothing is stored.
    [[nodiscard]] virtual std::string string(const std::string& key) const = 0;
    virtual void setString(const std::string& key, const std::string& value) = 0;

    // False where nothing is stored.
    [[nodiscard]] virtual bool boolean(const std::string& key) const = 0;
    virtual void setBoolean(const std::string& key, bool value) = 0;
};

// The user's own store of the system, as long as no other object of this program writes to it.
// `home`: the user's folder. Main thread. Each system implements it in its own way.
[[nodiscard]] std::unique_ptr<UserDefaults> makeUserDefaults(const std::string& home);

} // namespace varnhold::platform
