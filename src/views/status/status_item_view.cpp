#include "views/status/status_item_view.h"

#include <QCursor>
#include <QScreen>
#include <string>
#include <vector>

#include "views/desktop/placement.h"
#include "views/desktop/screens.h"
#include "views/desktop/work_area.h"
#include "views/status/embedded_display.h"
#include "views/status/notifier_display.h"
#include "views/status/status_strip.h"
#include "views/text/qt_text.h"

namespace varnhold {

StatusItemView::StatusItemView(StatusMenu::Choose choose, platform::UserDefaults& defaults,
                               std::function<void()> removed)
    : choose_(std::move(choose)),
      defaults_(defaults),
      removed_(std::move(removed)),
      opener_(choose_) {
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
    if (opener_.isOpen() || (display_ && shownIn_ == trays_.tray())) {
        return;
    }
    shownIn_ = trays_.tray();
    display_.reset(); // the old one first, so that there are never two
    display_ = makeDisplay();
}

// Each is told what it shows before it shows itself.
std::unique_ptr<StatusDisplay> StatusItemView::makeDisplay() {
    const auto tell = [this](StatusDisplay& display) {
        display.setTitle(title_, spoken_);
        display.setAttention(attention_);
        display.setRows(rows_);
        display.setImage(image_);
    };
    switch (shownIn_.kind) {
    case TrayKind::notifier: {
        auto icon = std::make_unique<NotifierDisplay>(opener_, choose_);
        tell(*icon);
        return icon;
    }
    case TrayKind::embedded: {
        auto icon = std::make_unique<EmbeddedDisplay>(opener_);
        tell(*icon);
        icon->dock();
        return icon;
    }
    case TrayKind::none:
        break;
    }
    auto strip = std::make_unique<StatusStrip>(opener_, defaults_, removed_);
    tell(*strip);
    strip->place();
    return strip;
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

void StatusItemView::setAttention(bool needed) {
    attention_ = needed;
    if (display_) {
        display_->setAttention(needed);
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
    // The screen where somebody is at work.
    const QScreen& screen = screenAt(QRect(QCursor::pos(), QSize(1, 1)));
    return panelCorner(screen.geometry(), freeArea(screen));
}

} // namespace varnhold
