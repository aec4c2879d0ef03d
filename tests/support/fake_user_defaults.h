#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/user_defaults.h"

namespace varnhold::testing {

// User defaults in memory; the order of writing is recorded.
class FakeUserDefaults final : public platform::UserDefaults {
public:
    [[nodiscard]] std::string string(const std::string& key) const override;
    void setString(const std::string& key, const std::string& value) override;
    [[nodiscard]] bool boolean(const std::string& key) const override;
    void setBoolean(const std::string& key, bool value) override;

    std::map<std::string, std::string> strings;
    std::map<std::string, bool> booleans;
    std::vector<std::string> written; // keys, each time one was set
};

} // namespace varnhold::testing
