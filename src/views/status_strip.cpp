#include "views/status_strip.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QWindow>
#include <cmath>

#include "views/bar_painter.h"
#include "views/colours.h"
#include "views/emoji_text.h"
#include "views/x11_hints.h"

namespace varnhold {

namespace {

constexpr int stripHeight = 28; // points, as all of these
constexpr int sidePadding = 10;
constexpr int screenMargin = 8;
constexpr int textPixelSize = 13;

} // namespace

StatusStrip::StatusStrip(StatusMenu::Choose choose, std::function<void()> removed)
    : choose_(std::move(choose)), removed_(std::move(removed)) {
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFocusPolicy(Qt::StrongFocus);
    QFont textFont = font();
    textFont.setPixelSize(textPixelSize);
    setFont(textFont);
}

void StatusStrip::setImage(const BarImage& image) {
    const bool resized = image.width != image_.width;
    image_ = image;
    if (resized) {
        fit();
    }
    update(imageRectangle().toAlignedRect());
}

void StatusStrip::setTitle(const QString& title, const QString& spoken) {
    setAccessibleName(spoken);
    setWindowTitle(spoken);
    setToolTip(spoken);
    if (title == title_) {
        return;
    }
    title_ = title;
    fit();
    update();
}

void StatusStrip::setRows(std::vector<MenuRow> rows) {
    rows_ = std::move(rows);
}

QSize StatusStrip::sizeHint() const {
    const qreal width = image_.width + emojiTextWidth(font(), title_) + 2.0 * sidePadding;
    return {static_cast<int>(std::ceil(width)), stripHeight};
}

// Grows and shrinks at its left edge, so that it keeps its distance from the screen's right one.
void StatusStrip::fit() {
    const int right = geometry().right();
    setFixedSize(sizeHint());
    if (isVisible()) {
        move(right - width() + 1, y());
    }
}

void StatusStrip::place() {
    setFixedSize(sizeHint());
    const QRect area = screen()->availableGeometry();
    move(area.right() - width() - screenMargin, area.top() + screenMargin);
    create();
    setStripHints(*windowHandle());
    show();
}

QRectF StatusStrip::imageRectangle() const {
    return {static_cast<qreal>(sidePadding), (height() - image_.height) / 2, image_.width,
            image_.height};
}

void StatusStrip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    drawPanel(painter, rect(), palette(), stripRadius, hasFocus() ? 0.5F : 0.18F);
    const QRectF image = imageRectangle();
    paintBars(painter, image_, image.topLeft(), devicePixelRatioF());
    painter.setPen(palette().color(QPalette::WindowText));
    drawEmojiText(painter, QRectF(image.right(), 0, width() - image.right(), height()), title_);
}

void StatusStrip::mousePressEvent(QMouseEvent* event) {
    pressedAt_ = event->position().toPoint();
    moving_ = false;
    if (event->button() == Qt::RightButton) {
        openMenu();
    }
}

void StatusStrip::mouseMoveEvent(QMouseEvent* event) {
    const QPoint way = event->position().toPoint() - pressedAt_;
    if (!event->buttons().testFlag(Qt::LeftButton) ||
        (!moving_ && way.manhattanLength() < QApplication::startDragDistance())) {
        return;
    }
    // The window manager's own move knows screen edges and works where we may not place windows;
    // where it refuses, the strip follows the pointer by itself.
    if (!moving_ && windowHandle()->startSystemMove()) {
        return;
    }
    moving_ = true;
    move(pos() + way);
}

void StatusStrip::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && !moving_) {
        openMenu();
    }
    moving_ = false;
}

void StatusStrip::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
    case Qt::Key_Down:
        openMenu();
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

void StatusStrip::openMenu() {
    if (menu_) {
        return;
    }
    menu_ = new StatusMenu(rows_, choose_, this);
    const QPoint below = mapToGlobal(QPoint(0, height() + 2));
    const QRect area = screen()->availableGeometry();
    const int left = std::min(below.x(), area.right() - menu_->sizeHint().width());
    menu_->popup({std::max(area.left(), left), below.y()});
}

void StatusStrip::resizeEvent(QResizeEvent*) {
    roundCorners(*this, stripRadius);
}

void StatusStrip::closeEvent(QCloseEvent* event) {
    event->accept();
    removed_();
}

} // namespace varnhold
