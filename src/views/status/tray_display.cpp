#include "views/status/tray_display.h"

#include <QCursor>

#include "views/status/tray_icon.h"

namespace varnhold {

namespace {

constexpr int largestSide = 64; // pixels; what can't be told apart there can't be anywhere

} // namespace

TrayDisplay::TrayDisplay(TrayKind kind, MenuOpener& opener, StatusMenu::Choose choose)
    : opener_(opener) {
    if (kind == TrayKind::notifier) {
        menu_ = std::make_unique<ExportedMenu>(std::move(choose));
        icon_.setContextMenu(menu_.get());
    }
    QObject::connect(&icon_, &QSystemTrayIcon::activated, &icon_,
                     [this](QSystemTrayIcon::ActivationReason reason) { activated(reason); });
}

// A tray icon travels to another process. A glide has many steps that change no pixel of it.
void TrayDisplay::setImage(const BarImage& image) {
    std::vector<TrayBar> bars = trayBars(image, largestSide);
    if (bars == shown_) {
        return;
    }
    shown_ = std::move(bars);
    icon_.setIcon(trayIcon(image));
    icon_.show(); // with its first image: a tray refuses an icon that is empty
}

void TrayDisplay::setTitle(const QString& title, const QString& spoken) {
    const QString tip = title.trimmed() + QLatin1Char('\n') + spoken;
    if (tip != icon_.toolTip()) {
        icon_.setToolTip(tip);
    }
}

void TrayDisplay::setRows(const std::vector<MenuRow>& rows) {
    if (menu_) {
        menu_->setRows(rows);
    }
}

QRect TrayDisplay::anchor() const {
    return icon_.geometry();
}

void TrayDisplay::activated(QSystemTrayIcon::ActivationReason reason) {
    const bool panelShowsIt = menu_ != nullptr && reason == QSystemTrayIcon::Context;
    if (panelShowsIt || opener_.pressHasClosedIt()) {
        return;
    }
    const QRect place = anchor();
    opener_.open(place.isEmpty() ? QRect(QCursor::pos(), QSize(1, 1)) : place, nullptr);
}

} // namespace varnhold
