#pragma once

#include <QObject>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/user_defaults.h"
#include "status/presentation.h"
#include "views/status/menu_opener.h"
#include "views/status/status_display.h"
#include "views/status/tray_watcher.h"

namespace varnhold {

// The one status item: a tray icon as long as the desktop has a tray, and otherwise the strip.
//
// It keeps what was last shown, so that it can move from one to the other at any time. Losing the
// tray isn't removal of the item: the strip takes over. A menu that is open is left to close first.
class StatusItemView final : public QObject, public StatusItem {
    Q_OBJECT
public:
    // `removed`: the user or the window manager has done away with the item.
    // `defaults` must outlive it.
    StatusItemView(StatusMenu::Choose choose, platform::UserDefaults& defaults,
                   std::function<void()> removed);
    ~StatusItemView() override;

    void setImage(const BarImage& image) override;
    void setTitle(const std::string& title, const std::string& spoken) override;
    void setAttention(bool needed) override;
    void setMenu(const std::vector<MenuRow>& rows) override;

    // Where popovers belong, on the screen; a corner of it where nobody tells.
    [[nodiscard]] QRect anchor() const;

private:
    void chooseDisplay();
    [[nodiscard]] std::unique_ptr<StatusDisplay> makeDisplay();

    StatusMenu::Choose choose_;
    platform::UserDefaults& defaults_;
    std::function<void()> removed_;
    TrayWatcher trays_;
    MenuOpener opener_;
    Tray shownIn_;
    std::unique_ptr<StatusDisplay> display_;
    BarImage image_;
    QString title_;
    QString spoken_;
    bool attention_ = false;
    std::vector<MenuRow> rows_;
};

} // namespace varnhold
