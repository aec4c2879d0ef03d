#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "status/bars.h"
#include "status/main_menu.h"
#include "status/menu.h"
#include "status/notices.h"

// What the application object asks of whatever shows things. The views implement it; tests record
// it. Everything here is called on the main thread, and calls back there.
namespace varnhold {

// The one item in the menu bar, tray or strip. It is gone when the object is destroyed.
class StatusItem {
public:
    virtual ~StatusItem() = default;

    virtual void setImage(const BarImage& image) = 0;
    // `spoken` says the same in full words, for screen readers and tooltips.
    virtual void setTitle(const std::string& title, const std::string& spoken) = 0;
    // Something has crashed: to be marked where the text doesn't show.
    virtual void setAttention(bool needed) = 0;
    // A menu that is open stays open and usable; the new rows take its place once it has closed.
    virtual void setMenu(const std::vector<MenuRow>& rows) = 0;
};

// A transient panel under the status item. It is gone when the object is destroyed, and closes by
// itself as soon as the user presses a button elsewhere; when its time is over is for its owner to
// know.
class NoticePopover {
public:
    virtual ~NoticePopover() = default;
    virtual void close() = 0;
};

// The settings window. Closing hides it; it keeps its state for the life of the object.
class SettingsWindow {
public:
    virtual ~SettingsWindow() = default;
    virtual void bringToFront() = 0;
    virtual void close() = 0;
    virtual void presentCustomGroups() = 0;
    // Says something over the page that the user has to put away.
    virtual void presentAlert(const std::string& text) = 0;
};

// An accessory has no place among the running applications; a regular one has, while its window is
// open.
enum class ActivationPolicy { regular, accessory };

struct PresentationEvents {
    std::function<void(MenuAction action, const std::string& value)> onMenuChosen;
    std::function<void(MainMenuAction action)> onMainMenuChosen;
    std::function<void()> onStatusItemRemoved;
    std::function<void()> onWindowClosed;
};

class Presentation {
public:
    virtual ~Presentation() = default;

    // Before anything else; the events stay as they are from then on.
    virtual void connect(PresentationEvents events) = 0;

    virtual void installMainMenu(const std::vector<MainMenu>& menus) = 0;
    [[nodiscard]] virtual std::unique_ptr<StatusItem> createStatusItem() = 0;
    [[nodiscard]] virtual std::unique_ptr<SettingsWindow> createSettingsWindow() = 0;
    [[nodiscard]] virtual std::unique_ptr<NoticePopover>
    showNoticePopover(const NoticePanel& panel, const std::string& iconPath) = 0;

    // The file has to be one of which an image can be made.
    virtual void setApplicationIcon(const std::string& path) = 0;
    // True if an image can be made of the file.
    [[nodiscard]] virtual bool isImage(const std::string& path) = 0;
    virtual void setActivationPolicy(ActivationPolicy policy) = 0;
    virtual void activate() = 0;

    // Asks the application to end in an orderly way.
    virtual void terminate() = 0;
};

} // namespace varnhold
