#include "views/status/status_item_view.h"

#include <QGuiApplication>
#include <QScreen>

#include "views/desktop/placement.h"
#include "views/status/status_strip.h"
#include "views/status/tray_display.h"
#include "views/text/qt_text.h"

namespace varnhold {

StatusItemView::StatusItemView(StatusMenu::Choose choose, std::function<void()> removed)
    : choose_(std::move(choose)), removed_(std::move(removed)), opener_(choose_) {
    connect(&trays_, &TrayWatcher::changed, this, &StatusItemView::chooseDisplay);
    opener_.onClosed([this] {
        QMetaObject::invokeMethod(this, &StatusItemView::chooseDisplay, Qt::QueuedConnection);
    });
}

// The menu goes first: its end would call back here.
StatusItemView::~StatusItemView() {
    opener_.onClosed({});
}

void StatusItemView::chooseDisplay() {
    if (opener_.isOpen() || (display_ && shownIn_ == trays_.kind())) {
        return;
    }
    shownIn_ = trays_.kind();
    display_.reset(); // the old one first, so that there are never two
    if (shownIn_ == TrayKind::none || !QSystemTrayIcon::isSystemTrayAvailable()) {
        auto strip = std::make_unique<StatusStrip>(opener_, removed_);
        strip->setImage(image_);
        strip->setTitle(title_, spoken_);
        strip->place();
        display_ = std::move(strip);
        return;
    }
    display_ = std::make_unique<TrayDisplay>(shownIn_, opener_, choose_);
    display_->setTitle(title_, spoken_);
    display_->setRows(rows_);
    display_->setImage(image_);
}

void StatusItemView::setImage(const BarImage& image) {
    image_ = image;
    if (display_) {
        display_->setImage(image);
    }
}

void StatusItemView::setTitle(const std::string& title, const std::string& spoken) {
    title_ = toQString(title);
    spoken_ = toQString(spoken);
    if (display_) {
        display_->setTitle(title_, spoken_);
    } else {
        chooseDisplay(); // now that there is something to show
    }
}

void StatusItemView::setMenu(const std::vector<MenuRow>& rows) {
    rows_ = rows;
    opener_.setRows(rows);
    if (display_) {
        display_->setRows(rows);
    }
}

QRect StatusItemView::anchor() const {
    const QRect place = display_ ? display_->anchor() : QRect();
    if (!place.isEmpty()) {
        return place;
    }
    const QScreen* screen = QGuiApplication::primaryScreen();
    return panelCorner(screen->geometry(), screen->availableGeometry());
}

} // namespace varnhold
