#include "views/qt_presentation.h"

#include <QApplication>
#include <QPointer>
#include <QScreen>
#include <string>
#include <vector>

#include "platform/qt/session_bus.h"
#include "views/desktop/appearance.h"
#include "views/desktop/application_icon.h"
#include "views/desktop/live_scale.h"
#include "views/desktop/screens.h"
#include "views/desktop/x11_hints.h"
#include "views/status/desktop_notice.h"
#include "views/status/model_notice_view.h"
#include "views/status/status_item_view.h"
#include "views/text/qt_text.h"
#include "views/widget_window.h"

namespace varnhold {

namespace {

class WidgetPopover final : public NoticePopover {
public:
    explicit WidgetPopover(ModelNoticeView* view) : view_(view) {}
    ~WidgetPopover() override { close(); }
    WidgetPopover(const WidgetPopover&) = delete;
    WidgetPopover& operator=(const WidgetPopover&) = delete;

    void close() override {
        if (view_) {
            view_->close();
        }
    }

private:
    QPointer<ModelNoticeView> view_; // deletes itself as it closes
};

} // namespace

struct QtPresentation::Parts {
    explicit Parts(const FleetContext& context) : fleet(context) {}

    FleetContext fleet;
    PresentationEvents events;
    std::vector<MainMenu> menus;
    QPointer<StatusItemView> item;
    Appearance appearance;
    LiveScale scale;
};

QtPresentation::QtPresentation(const FleetContext& fleet) : parts_(std::make_unique<Parts>(fleet)) {
    QApplication::setWindowIcon(defaultApplicationIcon());
}

QtPresentation::~QtPresentation() = default;

void QtPresentation::connect(PresentationEvents events) {
    parts_->events = std::move(events);
}

// There is no menu bar without a window here; the window gets it when it is made.
void QtPresentation::installMainMenu(const std::vector<MainMenu>& menus) {
    parts_->menus = menus;
}

std::unique_ptr<StatusItem> QtPresentation::createStatusItem() {
    auto item = std::make_unique<StatusItemView>(parts_->events.onMenuChosen,
                                                 parts_->fleet.platform.defaults,
                                                 parts_->events.onStatusItemRemoved);
    parts_->item = item.get();
    return item;
}

std::unique_ptr<SettingsWindow> QtPresentation::createSettingsWindow() {
    return std::make_unique<WidgetWindow>(
        parts_->fleet, parts_->menus, parts_->events,
        screenAt(parts_->item ? parts_->item->anchor() : QRect()));
}

std::unique_ptr<NoticePopover> QtPresentation::showNoticePopover(const NoticePanel& panel,
                                                                 const std::string& iconPath) {
    const QPixmap icon =
        iconPath.empty() ? QApplication::windowIcon().pixmap(64) : QPixmap(toQString(iconPath));
    const auto showOwn = [parts = parts_.get(), panel, icon]() -> std::unique_ptr<NoticePopover> {
        auto* view = new ModelNoticeView(panel, icon);
        view->showUnder(parts->item ? parts->item->anchor() : QRect());
        return std::make_unique<WidgetPopover>(view);
    };
    if (hasX11() || !platform::hasSessionBus()) {
        return showOwn();
    }
    // Nothing of ours has a place on such a screen.
    return std::make_unique<DesktopNotice>(panel, iconPath, showOwn);
}

void QtPresentation::setApplicationIcon(const std::string& path) {
    QApplication::setWindowIcon(QIcon(QPixmap(toQString(path))));
}

bool QtPresentation::isImage(const std::string& path) {
    return !QPixmap(toQString(path)).isNull();
}

// Desktops here list a program while it has a window, which is just what is wanted.
void QtPresentation::setActivationPolicy(ActivationPolicy) {}

void QtPresentation::activate() {
    activateSettingsWindow();
}

// Not quit(), which would first ask every window to close, and a closing strip asks to end.
void QtPresentation::terminate() {
    QCoreApplication::exit(0);
}

} // namespace varnhold
