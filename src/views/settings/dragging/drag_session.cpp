#include "views/settings/dragging/drag_session.h"

#include <QGuiApplication>
#include <QMimeData>
#include <QPixmap>
#include <QQuickRenderControl>
#include <QQuickWindow>
#include <chrono>
#include <utility>

namespace varnhold {

namespace {

// A window that isn't drawn just now gives no picture of its items.
constexpr std::chrono::milliseconds longestWait{200};

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
    const Qt::DropAction action = carrier_(*drag);
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
