#include "views/status/menu_opener.h"

#include <QGuiApplication>
#include <string>

#include "views/desktop/screens.h"
#include "views/desktop/session_kind.h"
#include "views/desktop/work_area.h"

namespace varnhold {

namespace {

constexpr int edgeGap = 4;           // points
constexpr qint64 samePressFor = 250; // milliseconds in which the press that closed the menu arrives

} // namespace

MenuOpener::MenuOpener(StatusMenu::Choose choose)
    : choose_([this, choose = std::move(choose)](MenuAction action, const std::string& value) {
          QMetaObject::invokeMethod(
              &choices_, [choose, action, value] { choose(action, value); }, Qt::QueuedConnection);
      }) {}

void MenuOpener::open(const QRect& anchor, QWidget* parent) {
    if (menu_) {
        return;
    }
    menu_ = new StatusMenu(rows_, choose_, parent);
    QObject::connect(menu_, &StatusMenu::pressedOutside, menu_,
                     [this] { sincePressOutside_.start(); });
    QObject::connect(menu_, &QObject::destroyed, [this] {
        if (closed_) {
            closed_();
        }
    });
    // Beside a compositor nobody tells us of a press on other programs' windows, but the keyboard
    // goes with it.
    if (desktopIsWayland()) {
        QObject::connect(qGuiApp, &QGuiApplication::applicationStateChanged, menu_,
                         [this](Qt::ApplicationState state) {
                             if (state != Qt::ApplicationActive && menu_) {
                                 menu_->close();
                             }
                         });
    }
    menu_->popupBeside(anchor,
                       freeArea(screenAt(anchor)).adjusted(edgeGap, edgeGap, -edgeGap, -edgeGap));
}

bool MenuOpener::pressHasClosedIt() const {
    return sincePressOutside_.isValid() && sincePressOutside_.elapsed() < samePressFor;
}

} // namespace varnhold
