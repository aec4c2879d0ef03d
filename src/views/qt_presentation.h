#pragma once

#include <memory>
#include <string>
#include <vector>

#include "lifecycle/fleet_context.h"
#include "status/presentation.h"

namespace varnhold {

// Shows everything: the status item with Qt Widgets, the settings window with Qt Quick in a widget.
// Main thread; make it after the application object.
class QtPresentation final : public Presentation {
public:
    // What the settings window works on; it must outlive the object.
    explicit QtPresentation(const FleetContext& fleet);
    ~QtPresentation() override;
    QtPresentation(const QtPresentation&) = delete;
    QtPresentation& operator=(const QtPresentation&) = delete;

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
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

} // namespace varnhold
