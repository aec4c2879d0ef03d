#pragma once

#include <functional>
#include <optional>

#include "settings/first_run_keys.h"
#include "settings/settings_state.h"

// The two sheets that greet a new user: a welcome, and a tip on the library. Each comes on every
// appearing of the window until it has been dismissed once. Main thread; the settings record must
// outlive them.
namespace varnhold {

struct WelcomeSheet {
    std::function<void()> onDismiss;
};

struct LibraryTipSheet {
    std::function<void()> onDismiss; // opens nothing, whatever its button says
};

// None while the record doesn't want it shown.
[[nodiscard]] std::optional<WelcomeSheet> welcomeSheet(ModelSelectorView& view);
[[nodiscard]] std::optional<LibraryTipSheet> libraryTipSheet(ModelSelectorView& view);

} // namespace varnhold
