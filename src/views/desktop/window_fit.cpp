#include "views/desktop/window_fit.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QStyle>
#include <QWidget>
#include <QWindow>
#include <cstdlib>

#include "views/desktop/placement.h"
#include "views/desktop/screens.h"
#include "views/desktop/session_kind.h"
#include "views/desktop/work_area.h"

namespace varnhold {

namespace {

constexpr QMargins usualFrame(4, 36, 4, 4); // points
constexpr int usualPanel = 40;

bool isWayland() {
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

// Wayland tells nobody what panels take.
QRect roomOn(const QScreen& screen) {
    return freeArea(screen).adjusted(0, 0, 0, isWayland() ? -usualPanel : 0);
}

// Nor does a compositor tell on which screen a window will be: it has to fit each of them.
QRect roomToOpenOn(const QScreen& screen) {
    QRect room = roomOn(screen);
    if (desktopIsWayland()) {
        for (const QScreen* each : QGuiApplication::screens()) {
            room.setSize(room.size().boundedTo(roomOn(*each).size()));
        }
    }
    return room;
}

// What is given in points comes back so, but for what a scale rounds.
bool isNear(const QSize& one, const QSize& other) {
    const QSize apart = one - other;
    return std::abs(apart.width()) <= 1 && std::abs(apart.height()) <= 1;
}

} // namespace

WindowFit::WindowFit(QWidget& window, std::function<QSize(const QSize& room)> wanted)
    : QObject(&window), window_(window), wanted_(std::move(wanted)) {
    window.installEventFilter(this);
    onScreensChanged(this, [this] { fit(); });
}

void WindowFit::prepareFor(const QScreen& screen) {
    const QRect area = roomToOpenOn(screen);
    const QRect room = area.marginsRemoved(usualFrame);
    window_.setGeometry(
        QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, wanted_(room.size()), room));
    prepared_ = window_.size();
}

bool WindowFit::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &window_ && event->type() == QEvent::Show && isFresh_) {
        window_.windowHandle()->installEventFilter(this);
    } else if (watched == window_.windowHandle() && event->type() == QEvent::Expose) {
        watched->removeEventFilter(this);
        QMetaObject::invokeMethod(this, &WindowFit::fit, Qt::QueuedConnection);
    }
    return false;
}

void WindowFit::fit() {
    if (!window_.isVisible() || window_.isMaximized() || window_.isFullScreen() ||
        window_.isMinimized() || QGuiApplication::primaryScreen() == nullptr) {
        return;
    }
    // A frame of whole pixels may end within a point, which the toolkit leaves out.
    const int cut = isScaledByFraction(window_) ? 1 : 0;
    // The window's own record of its frame is of the time before a change of scale.
    const QMargins frame = window_.windowHandle()->frameMargins();
    const QRect now = window_.geometry().marginsAdded(frame);
    isFresh_ = isFresh_ && window_.size() == prepared_;
    // Wayland tells which screen shows a window, but not where.
    const QScreen& screen = isWayland() ? *window_.windowHandle()->screen() : screenAt(now);
    const QRect area =
        (isFresh_ ? roomToOpenOn(screen) : roomOn(screen)).adjusted(0, 0, -cut, -cut);
    // Not every compositor tells an X server's windows of the frames that it draws.
    const bool frameIsUntold = frame.isNull() && desktopIsWayland() && !isWayland();
    const QSize room = area.marginsRemoved(frameIsUntold ? usualFrame : frame).size();
    if (!isNear(window_.size(), given_)) {
        wish_ = window_.size();
    }
    given_ = isFresh_ ? wanted_(room) : wish_.boundedTo(room);
    const QSize framed = given_.grownBy(frame);
    const QRect place = isFresh_
                            ? QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, framed, area)
                            : QRect(keptInside({now.topLeft(), framed}, area), framed);
    isFresh_ = false;
    if (place != now) {
        window_.setGeometry(place.marginsRemoved(frame));
    }
}

} // namespace varnhold
