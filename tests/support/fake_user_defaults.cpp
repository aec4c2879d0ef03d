#include "support/fake_user_defaults.h"

namespace varnhold::testing {

std::string FakeUserDefaults::string(const std::string& key) const {
    const auto found = strings.find(key);
    return found == strings.end() ? std::string() : found->second;
}

void FakeUserDefaults::setString(const std::string& key, const std::string& value) {
    strings[key] = value;
    written.push_back(key);
}

bool FakeUserDefaults::boolean(const std::string& key) const {
    const auto found = booleans.find(key);
    return found != booleans.end() && found->second;
}

void FakeUserDefaults::setBoolean(const std::string& key, bool value) {
    booleans[key] = value;
    written.push_back(key);
}

} // namespace varnhold::testing
