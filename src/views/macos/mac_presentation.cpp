#include "views/macos/mac_presentation.h"

#include <QApplication>
#include <QScreen>
#include <string>
#include <vector>

#include "views/desktop/application_icon.h"
#include "views/macos/menu_selectors.h"
#include "views/macos/native_application.h"

namespace varnhold {

namespace {

// What the text fields of our own window do by themselves: to the system they are no text fields.
bool isEditing(MainMenuAction action) {
    switch (action) {
    case MainMenuAction::undo:
    case MainMenuAction::redo:
    case MainMenuAction::cut:
    case MainMenuAction::copy:
    case MainMenuAction::paste:
    case MainMenuAction::selectAll:
        return true;
    default:
        return false;
    }
}

} // namespace

MacPresentation::MacPresentation(const FleetContext& fleet) : fleet_(fleet) {
    QApplication::setWindowIcon(defaultApplicationIcon());
}

MacPresentation::~MacPresentation() = default;

void MacPresentation::connect(PresentationEvents events) {
    events_ = std::move(events);
}

void MacPresentation::installMainMenu(const std::vector<MainMenu>& menus) {
    installNativeMainMenu(menus, [this](MainMenuAction action) { return choose(action); });
}

bool MacPresentation::choose(MainMenuAction action) {
    if (isEditing(action)) {
        return window_ != nullptr && window_->isActive() && window_->perform(action);
    }
    if (standardSelector(action) != nullptr) {
        return false;
    }
    events_.onMainMenuChosen(action);
    return true;
}

std::unique_ptr<StatusItem> MacPresentation::createStatusItem() {
    auto item = std::make_unique<NativeStatusItem>(events_.onMenuChosen);
    item_ = item.get();
    return item;
}

std::unique_ptr<SettingsWindow> MacPresentation::createSettingsWindow() {
    auto window = std::make_unique<WidgetWindow>(fleet_, std::vector<MainMenu>(), events_,
                                                 *QApplication::primaryScreen());
    window_ = window.get();
    return window;
}

std::unique_ptr<NoticePopover> MacPresentation::showNoticePopover(const NoticePanel& panel,
                                                                  const std::string& iconPath) {
    return item_->showPopover(panel, iconPath);
}

void MacPresentation::setApplicationIcon(const std::string& path) {
    setNativeApplicationIcon(path);
}

bool MacPresentation::isImage(const std::string& path) {
    return isNativeImage(path);
}

void MacPresentation::setActivationPolicy(ActivationPolicy policy) {
    setNativeActivationPolicy(policy);
}

void MacPresentation::activate() {
    activateNatively();
    activateSettingsWindow();
}

// Not quit(), which would first ask every window to close.
void MacPresentation::terminate() {
    QCoreApplication::exit(0);
}

} // namespace varnhold
