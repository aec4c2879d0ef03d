#pragma once

#include <memory>
#include <string>
#include <vector>

#include "lifecycle/fleet_context.h"
#include "status/presentation.h"
#include "views/macos/native_status_item.h"
#include "views/widget_window.h"

namespace varnhold {

// Shows everything on a Mac: status item, menu, popover and menu bar with the system's own, the
// settings window as everywhere. Main thread; make it after the application object.
class MacPresentation final : public Presentation {
public:
    // What the settings window works on; it must outlive the object.
    explicit MacPresentation(const FleetContext& fleet);
    ~MacPresentation() override;
    MacPresentation(const MacPresentation&) = delete;
    MacPresentation& operator=(const MacPresentation&) = delete;

    void connect(PresentationEvents events) override;
    void installMainMenu(const std::vector<MainMenu>& menus) override;
    std::unique_ptr<StatusItem> createStatusItem() override;
    std::unique_ptr<SettingsWindow> createSettingsWindow() override;
    std::unique_ptr<NoticePopover> showNoticePopover(const NoticePanel& panel,
                                                     const std::string& iconPath) override;
    void setApplicationIcon(const std::string& path) override;
    bool isImage(const std::string& path) override;
    void setActivationPolicy(ActivationPolicy policy) override;
    void activate() override;
    void terminate() override;

private:
    [[nodiscard]] bool choose(MainMenuAction action);

    FleetContext fleet_;
    PresentationEvents events_;
    NativeStatusItem* item_ = nullptr; // the application object's
    WidgetWindow* window_ = nullptr;   // likewise
};

} // namespace varnhold
