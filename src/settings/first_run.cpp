#include "settings/first_run.h"

namespace varnhold {

std::optional<WelcomeSheet> welcomeSheet(ModelSelectorView& view) {
    if (!view.showWelcome) {
        return std::nullopt;
    }
    return WelcomeSheet{.onDismiss = [&view] { view.dismissWelcome(); }};
}

std::optional<LibraryTipSheet> libraryTipSheet(ModelSelectorView& view) {
    if (!view.showLibraryTip) {
        return std::nullopt;
    }
    return LibraryTipSheet{.onDismiss = [&view] { view.dismissLibraryTip(); }};
}

void ModelSelectorView::dismissWelcome() {
    platform_.defaults.setBoolean(welcomeSeenKey, true);
    showWelcome = false;
    changed();
}

void ModelSelectorView::dismissLibraryTip() {
    platform_.defaults.setBoolean(libraryTipSeenKey, true);
    showLibraryTip = false;
    changed();
}

} // namespace varnhold
