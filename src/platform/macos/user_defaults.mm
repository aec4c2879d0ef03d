#import <Foundation/Foundation.h>

#include "platform/user_defaults.h"

namespace varnhold::platform {

namespace {

NSString* text(const std::string& utf8) {
    return [NSString stringWithUTF8String:utf8.c_str()];
}

// The application's own domain, which bears the bundle's identifier.
class NativeUserDefaults final : public UserDefaults {
public:
    [[nodiscard]] std::string string(const std::string& key) const override {
        NSString* found = [store_ stringForKey:text(key)];
        return found == nil ? std::string() : std::string([found UTF8String]);
    }
    void setString(const std::string& key, const std::string& value) override {
        [store_ setObject:text(value) forKey:text(key)];
    }
    [[nodiscard]] bool boolean(const std::string& key) const override {
        return [store_ boolForKey:text(key)];
    }
    void setBoolean(const std::string& key, bool value) override {
        [store_ setBool:value forKey:text(key)];
    }

private:
    NSUserDefaults* store_ = [NSUserDefaults standardUserDefaults];
};

} // namespace

std::unique_ptr<UserDefaults> makeUserDefaults(const std::string&) {
    return std::make_unique<NativeUserDefaults>();
}

} // namespace varnhold::platform
