#include "views/status/status_strip.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QWindow>
#include <chrono>
#include <cmath>
#include <optional>
#include <utility>

#include "views/desktop/panel.h"
#include "views/desktop/placement.h"
#include "views/desktop/screens.h"
#include "views/desktop/session_kind.h"
#include "views/desktop/work_area.h"
#include "views/desktop/x11_hints.h"
#include "views/status/accessibility.h"
#include "views/status/bar_painter.h"
#include "views/text/emoji_text.h"

namespace varnhold {

namespace {

using namespace std::chrono_literals;

constexpr int stripHeight = 28; // points, as all of these
constexpr int sidePadding = 10;
constexpr int textPixelSize = 13;
constexpr auto untilItLies = 400ms;
constexpr auto lookForFullScreen = 1s;

} // namespace

StatusStrip::StatusStrip(MenuOpener& opener, platform::UserDefaults& defaults,
                         std::function<void()> removed)
    : opener_(opener),
      place_(defaults),
      removed_(std::move(removed)),
      isUnmanaged_(hasX11() && (stripMayStandInTopBar() || !utilityWindowsAreLeftAlone())) {
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    setWindowFlag(Qt::BypassWindowManagerHint, isUnmanaged_);
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFocusPolicy(Qt::StrongFocus);
    QFont textFont; // of the desktop's family, whichever that comes to be
    textFont.setPixelSize(textPixelSize);
    setFont(textFont);
    describe(*this, QAccessible::ButtonMenu, [this] { openMenu(); });
    onScreensChanged(this, [this] { stayOnScreen(); });
    moved_.setSingleShot(true);
    moved_.setInterval(untilItLies);
    connect(&moved_, &QTimer::timeout, this, &StatusStrip::putDown);
    if (isUnmanaged_) {
        connect(&fullScreen_, &QTimer::timeout, this, &StatusStrip::makeWay);
        fullScreen_.start(lookForFullScreen);
        connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &StatusStrip::comeOut);
    }
}

// A poll brings the same image again and again: that is no reason to paint.
void StatusStrip::setImage(const BarImage& image) {
    if (image == image_) {
        return;
    }
    const bool resized = image.width != image_.width;
    image_ = image;
    if (resized) {
        fit();
    }
    update(); // all of it: within a clip, bars come out a little different
}

void StatusStrip::setTitle(const QString& title, const QString& spoken) {
    if (spoken != accessibleName()) {
        setAccessibleName(spoken);
        setWindowTitle(spoken);
        setToolTip(spoken);
    }
    if (title != title_) {
        title_ = title;
        fit();
        update();
    }
}

QRect StatusStrip::anchor() const {
    return geometry();
}

QSize StatusStrip::sizeHint() const {
    const qreal width = image_.width + emojiTextWidth(font(), title_) + 2.0 * sidePadding;
    return {static_cast<int>(std::ceil(width)), stripHeight};
}

// Grows and shrinks at its left edge, so that it keeps its distance from the screen's right one.
void StatusStrip::fit() {
    const bool isHome = pos() == home_;
    const QPoint wanted(x() + width() - sizeHint().width(), y());
    setFixedSize(sizeHint());
    if (!isVisible()) {
        return;
    }
    const QPoint kept = keptInside({wanted, size()}, screenAt(geometry()).geometry());
    home_ = isHome ? home() : home_;
    move(isHome ? home_ : kept);
}

QPoint StatusStrip::home() const {
    if (const auto kept = place_.kept()) {
        const QRect wanted(*kept - QPoint(width(), 0), size());
        return keptInside(wanted, screenAt(wanted).geometry());
    }
    const QScreen& screen = *QGuiApplication::primaryScreen();
    const auto inBar = mayCoverTopBar() ? placeInTopBar(size(), screen.geometry(), freeArea(screen))
                                        : std::nullopt;
    return inBar.value_or(freePlace(size(), freeArea(screen)));
}

// Only what no window manager has a say in may stand above the shell.
bool StatusStrip::mayCoverTopBar() const {
    return isUnmanaged_ && stripMayStandInTopBar();
}

// Where the user has let it go: the next one stands there too.
void StatusStrip::putDown() {
    isBeingMoved_ = false;
    const QScreen& screen = screenAt(geometry());
    const QPoint inside =
        keptInside(geometry(), mayCoverTopBar() ? screen.geometry() : freeArea(screen));
    if (inside != pos()) {
        move(inside);
    }
    home_ = pos();
    place_.keep(home_ + QPoint(width(), 0));
}

// No window manager puts it below what takes the whole screen.
void StatusStrip::makeWay() {
    const bool isInTheWay = hasX11FullScreenWindow();
    if (isInTheWay == isVisible() && !opener_.isOpen()) {
        setVisible(!isInTheWay);
    }
    comeOut();
}

// A compositor shows it above others whatever the X server beside it holds to be above, and it is
// that server which decides whose a press is.
void StatusStrip::comeOut() {
    if (isVisible() && !opener_.isOpen()) {
        raise();
    }
}

void StatusStrip::place() {
    setFixedSize(sizeHint());
    home_ = home();
    move(home_);
    create();
    setStripHints(*windowHandle());
    windowHandle()->installEventFilter(this);
    show();
}

// A window manager that takes the window into a frame may do so before it has put the frame in its
// place. Then the toolkit reads the place of that moment and is never told of the right one.
bool StatusStrip::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Expose && windowHandle()->isExposed()) {
        windowHandle()->removeEventFilter(this);
        QMetaObject::invokeMethod(
            this, [this] { move(home_); }, Qt::QueuedConnection);
    }
    return QWidget::eventFilter(watched, event);
}

void StatusStrip::stayOnScreen() {
    if (QGuiApplication::primaryScreen() == nullptr || !isVisible()) {
        return; // between the last screen and the next
    }
    home_ = home();
    move(home_);
}

QRectF StatusStrip::imageRectangle() const {
    return {static_cast<qreal>(sidePadding), (height() - image_.height) / 2, image_.width,
            image_.height};
}

void StatusStrip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    drawPanel(painter, rect(), palette(), stripRadius, hasFocus() ? focusFrame : usualFrame);
    const QRectF image = imageRectangle();
    paintBars(painter, image_, image.topLeft());
    painter.setPen(palette().color(QPalette::WindowText));
    painter.setFont(font());
    drawEmojiText(painter, QRectF(image.right(), 0, width() - image.right(), height()), title_);
}

void StatusStrip::mousePressEvent(QMouseEvent* event) {
    pressedAt_ = event->position().toPoint();
    press_ = opener_.pressHasClosedIt() ? Press::none : Press::click;
    if (event->button() == Qt::RightButton && press_ == Press::click) {
        press_ = Press::none;
        openMenu();
    }
}

void StatusStrip::mouseMoveEvent(QMouseEvent* event) {
    const QPoint way = event->position().toPoint() - pressedAt_;
    if (!event->buttons().testFlag(Qt::LeftButton) || press_ == Press::systemMove) {
        return;
    }
    if (press_ != Press::ownMove) {
        if (way.manhattanLength() < QApplication::startDragDistance()) {
            return;
        }
        // The window manager's own move knows screen edges and works where we may not place
        // windows; where it refuses, the strip follows the pointer by itself.
        isBeingMoved_ = !isUnmanaged_ && windowHandle()->startSystemMove();
        press_ = isBeingMoved_ ? Press::systemMove : Press::ownMove;
    }
    if (press_ == Press::ownMove) {
        move(pos() + way);
    }
}

void StatusStrip::mouseReleaseEvent(QMouseEvent* event) {
    const Press was = std::exchange(press_, Press::none);
    if (event->button() == Qt::LeftButton && was == Press::click) {
        openMenu();
    } else if (was == Press::ownMove) {
        putDown();
    }
}

// Nobody tells when the window manager's move is over; its press has long been by then.
void StatusStrip::moveEvent(QMoveEvent*) {
    if (isBeingMoved_) {
        moved_.start();
    }
}

void StatusStrip::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
    case Qt::Key_Down:
    case Qt::Key_Menu:
    case Qt::Key_F10:
        openMenu();
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

// Under Wayland the strip isn't where it wished to be. The compositor is told the menu's place by
// the distance from the strip, whose window the toolkit then holds to be at the origin.
void StatusStrip::openMenu() {
    const bool isWayland = QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
    opener_.open(isWayland ? rect() : geometry(), this);
}

void StatusStrip::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        fit();
        update();
    }
}

void StatusStrip::resizeEvent(QResizeEvent*) {
    chooseCorners(*this);
}

void StatusStrip::closeEvent(QCloseEvent* event) {
    event->accept();
    removed_();
}

} // namespace varnhold
