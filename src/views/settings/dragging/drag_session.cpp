#include "views/settings/dragging/drag_session.h"

#include <QGuiApplication>
#include <QMimeData>
#include <QPainter>
#include <QPixmap>
#include <QQuickRenderControl>
#include <QQuickWindow>
#include <chrono>
#include <numbers>
#include <utility>

#include "views/colors/colors.h"

namespace varnhold {

namespace {

// A window that isn't drawn just now gives no picture of its items.
constexpr std::chrono::milliseconds longestWait{200};

// What the pointer becomes where a drop does nothing, to be seen on any ground.
QPixmap forbiddingSign(qreal scale) {
    constexpr qreal size = 22; // points, as pointers are
    constexpr qreal line = 3;
    constexpr qreal halo = 5; // white, around the red line
    constexpr qreal margin = 3.5;
    QPixmap sign(QSizeF(size * scale, size * scale).toSize());
    sign.setDevicePixelRatio(scale);
    sign.fill(Qt::transparent);
    QPainter painter(&sign);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF ring(margin, margin, size - 2 * margin, size - 2 * margin);
    const QPointF middle = ring.center();
    const qreal reach = ring.width() / 2 / std::numbers::sqrt2;
    for (const auto& [color, width] : {std::pair(QColor(Qt::white), halo), {tones({}).red, line}}) {
        painter.setPen(QPen(color, width));
        painter.drawEllipse(ring);
        painter.drawLine(middle - QPointF(reach, reach), middle + QPointF(reach, reach));
    }
    return sign;
}

// A page within a widget has no window on the screen; the widget's has.
QWindow* windowOnScreen(QQuickWindow* window) {
    QWindow* real = QQuickRenderControl::renderWindowFor(window);
    return real != nullptr ? real : window;
}

} // namespace

DragSession::DragSession(QObject* parent) : QObject(parent) {
    grabTimeout_.setSingleShot(true);
    grabTimeout_.setInterval(longestWait);
    connect(&grabTimeout_, &QTimer::timeout, this, &DragSession::run);
    carrier_ = [](QDrag& drag) {
        return drag.exec(Qt::MoveAction | Qt::CopyAction, Qt::MoveAction);
    };
}

void DragSession::start(QQuickItem* item, const QString& payload, const QString& kind, qreal hotX,
                        qreal hotY) {
    if (active() || item == nullptr || item->window() == nullptr) {
        return;
    }
    active_ = true;
    payload_ = payload;
    kind_ = kind;
    window_ = item->window();
    size_ = item->size();
    hot_ = {hotX, hotY};
    grab_ = item->grabToImage();
    if (grab_ != nullptr) {
        connect(grab_.data(), &QQuickItemGrabResult::ready, this, &DragSession::run,
                Qt::QueuedConnection);
    }
    grabTimeout_.start();
    emit changed();
}

// The drag itself: returns when it is over.
void DragSession::run() {
    if (!grabTimeout_.isActive() && grab_ == nullptr) {
        return; // the picture came after all, too late
    }
    grabTimeout_.stop();
    const auto grab = std::exchange(grab_, nullptr);
    // Whoever has let go meanwhile is not dragging: the platform would wait for a second release.
    if (window_ == nullptr || !(QGuiApplication::mouseButtons() & Qt::LeftButton)) {
        end(false);
        return;
    }
    auto* text = new QMimeData;
    text->setText(payload_);
    auto* drag = new QDrag(windowOnScreen(window_)); // the platform may need it a while longer
    drag->setMimeData(text);
    if (grab != nullptr && !grab->image().isNull()) {
        QPixmap picture = QPixmap::fromImage(grab->image());
        picture.setDevicePixelRatio(picture.width() / size_.width());
        drag->setPixmap(picture);
        drag->setHotSpot(hot_.toPoint());
    }
    sign_ = forbiddingSign(window_->effectiveDevicePixelRatio());
    drag->setDragCursor(sign_, Qt::IgnoreAction); // where no place is: one sign for both
    drag_ = drag;
    const Qt::DropAction action = carrier_(*drag);
    drag_ = nullptr;
    drag->deleteLater();
    end(action != Qt::IgnoreAction);
}

void DragSession::end(bool taken) {
    active_ = false;
    const QString payload = std::exchange(payload_, QString());
    kind_.clear();
    source_ = nullptr;
    emit changed();
    emit finished(payload, taken);
}

void DragSession::remind() {
    if (active() && source_ != nullptr) {
        QMetaObject::invokeMethod(source_, "began");
    }
}

Qt::DropAction DragSession::answer(bool useful, Qt::DropAction proposed) {
    if (drag_ == nullptr) {
        return proposed;
    }
    // A place that refuses is told nothing more, not even that the drag has ended there. So what
    // has no use for it takes it too, by an action of which the pointer looks as if it were
    // refused.
    drag_->setDragCursor(useful ? QPixmap() : sign_, Qt::CopyAction);
    return useful ? Qt::MoveAction : Qt::CopyAction;
}

bool DragSession::suits(const QStringList& kinds) const {
    return !active() || kinds.contains(kind_);
}

QString DragSession::textOf(const QString& dropped) {
    QString text = dropped;
    if (text.endsWith(QLatin1Char('\n'))) {
        text.chop(1);
    }
    if (text.endsWith(QLatin1Char('\r'))) {
        text.chop(1);
    }
    return text;
}

} // namespace varnhold
