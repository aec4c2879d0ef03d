#include "views/desktop/live_scale.h"

#include <QApplication>
#include <QWidget>
#include <QWindow>
#include <chrono>

#include "views/desktop/screens.h"

namespace varnhold {

namespace {

using namespace std::chrono_literals;

constexpr auto untilTheLast = 200ms;           // of the sizes that a slider goes through
constexpr const char* ownHeight = "ownHeight"; // while it has another

bool hasFixedHeight(const QWidget& window) {
    return window.minimumHeight() == window.maximumHeight();
}

void giveHeight(QWidget& window, int height) {
    if (hasFixedHeight(window)) {
        window.setFixedHeight(height);
    } else {
        window.resize(window.width(), height);
    }
}

// Unless somebody else has given it another in the meantime, with which all is right as well.
void giveBackHeight(QWidget& window) {
    const int height = window.property(ownHeight).toInt();
    window.setProperty(ownHeight, QVariant());
    if (hasFixedHeight(window) || window.height() == height - 1) {
        giveHeight(window, height);
    }
}

// A window's size on the screen is worked out anew only with another one in points, and so is what
// is painted in it. So it gets that, and its own again once it has it. The desktop may change its
// mind in between.
void resizeOnScreen(QWidget& window) {
    if (window.property(ownHeight).isValid()) {
        return;
    }
    // What is still to come of an earlier change may have spoilt the height that it has.
    const int height = hasFixedHeight(window) ? window.minimumHeight() : window.height();
    window.setProperty(ownHeight, height);
    QObject::connect(
        window.windowHandle(), &QWindow::heightChanged, &window,
        [&window] { giveBackHeight(window); },
        static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
    giveHeight(window, height - 1);
}

void makeRight(QWidget& window) {
    constexpr Qt::WindowStates ofTheScreensSize = Qt::WindowMaximized | Qt::WindowFullScreen;
    const Qt::WindowStates states = window.windowState();
    if ((states & ofTheScreensSize) != 0) { // which the window manager knows better
        window.setWindowState(states & ~ofTheScreensSize);
        window.setWindowState(states);
        return;
    }
    resizeOnScreen(window);
}

} // namespace

LiveScale::LiveScale(QObject* parent) : QObject(parent), scale_(qGuiApp->devicePixelRatio()) {
    last_.setSingleShot(true);
    last_.setInterval(untilTheLast);
    connect(&last_, &QTimer::timeout, this, &LiveScale::follow);
    onScreensChanged(this, [this] { last_.start(); });
}

void LiveScale::follow() {
    if (scale_ == qGuiApp->devicePixelRatio()) {
        return;
    }
    scale_ = qGuiApp->devicePixelRatio();
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (!window->isVisible() || window->windowHandle() == nullptr) {
            continue;
        }
        if (window->windowType() == Qt::Popup) {
            window->close(); // it stands beside what is no longer there
        } else {
            makeRight(*window);
        }
    }
}

} // namespace varnhold
