#pragma once

#include <QSystemTrayIcon>
#include <memory>

#include "status/tray_bars.h"
#include "views/status/exported_menu.h"
#include "views/status/menu_opener.h"
#include "views/status/status_display.h"
#include "views/status/tray_watcher.h"

namespace varnhold {

// The status item as a tray icon. A tray shows no text beside it, so the text is its tooltip.
class TrayDisplay final : public StatusDisplay {
public:
    // `kind`: not none. `opener` must outlive it.
    TrayDisplay(TrayKind kind, MenuOpener& opener, StatusMenu::Choose choose);

    void setImage(const BarImage& image) override;
    void setTitle(const QString& title, const QString& spoken) override;
    void setRows(const std::vector<MenuRow>& rows) override;
    [[nodiscard]] QRect anchor() const override;

private:
    void activated(QSystemTrayIcon::ActivationReason reason);

    MenuOpener& opener_;
    std::unique_ptr<ExportedMenu> menu_; // only where the panel draws it; outlives the icon
    QSystemTrayIcon icon_;
    std::vector<TrayBar> shown_;
};

} // namespace varnhold
