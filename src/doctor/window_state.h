#pragma once

#include <memory>

#include "doctor/surroundings.h"
#include "settings/settings_fields.h"

namespace varnhold::doctor {

// What the settings window would hold if it were opened now, by its own rules of loading. Nothing
// is saved, asked or started by it. One thread.
class WindowState final {
public:
    explicit WindowState(const Surroundings& surroundings);
    ~WindowState();
    WindowState(const WindowState&) = delete;
    WindowState& operator=(const WindowState&) = delete;

    [[nodiscard]] const SettingsFields& fields() const;

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

} // namespace varnhold::doctor
