#include "views/status/embedded_display.h"

#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <algorithm>

#include "views/desktop/embedded_tray.h"
#include "views/status/tray_icon.h"

namespace varnhold {

namespace {

constexpr int usualSide = 22; // points; the tray has the last word

} // namespace

EmbeddedDisplay::EmbeddedDisplay(MenuOpener& opener)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint),
      opener_(opener) {
    setAttribute(Qt::WA_AlwaysShowToolTips);
    if (trayIsBlended()) {
        setAttribute(Qt::WA_TranslucentBackground);
    } else {
        setObjectName(embeddedWindowName());
    }
    setAttribute(Qt::WA_ShowWithoutActivating);
    setMinimumSize(usualSide, usualSide);
    resize(usualSide, usualSide);
}

void EmbeddedDisplay::dock() {
    winId();
    dockIntoTray(*windowHandle());
    show();
}

void EmbeddedDisplay::setImage(const BarImage& image) {
    if (image != image_) {
        image_ = image;
        update();
    }
}

void EmbeddedDisplay::setTitle(const QString& title, const QString& spoken) {
    setToolTip(title.trimmed() + QLatin1Char('\n') + spoken);
    setAccessibleName(spoken);
}

void EmbeddedDisplay::setAttention(bool needed) {
    if (needed != attention_) {
        attention_ = needed;
        update();
    }
}

QRect EmbeddedDisplay::anchor() const {
    return {mapToGlobal(QPoint(0, 0)), size()};
}

bool EmbeddedDisplay::event(QEvent* event) {
    switch (event->type()) {
    case QEvent::Show:
    case QEvent::Move:
    case QEvent::Resize:
        ground_ = {};
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

void EmbeddedDisplay::paintEvent(QPaintEvent*) {
    if (!testAttribute(Qt::WA_TranslucentBackground) && ground_.isNull()) {
        showTrayBehind(*windowHandle());
        ground_ = screen()->grabWindow(winId(), 0, 0, width(), height());
    }
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(rect(), Qt::transparent);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.drawPixmap(QPoint(0, 0), ground_);
    const qreal scale = devicePixelRatioF();
    const int side = qRound(std::min(width(), height()) * scale);
    QImage icon = trayImage(image_, side, attention_);
    icon.setDevicePixelRatio(scale);
    painter.drawImage(QPointF(qRound((width() * scale - side) / 2) / scale,
                              qRound((height() * scale - side) / 2) / scale),
                      icon);
}

void EmbeddedDisplay::mousePressEvent(QMouseEvent*) {
    if (!opener_.pressHasClosedIt()) {
        opener_.open(anchor(), nullptr);
    }
}

} // namespace varnhold
