#include "views/settings/dragging/edge_scroll.h"

#include <QCoreApplication>
#include <QDragMoveEvent>
#include <QQuickRenderControl>
#include <algorithm>
#include <chrono>

namespace varnhold {

namespace {

constexpr std::chrono::milliseconds tick{16};
constexpr qreal edge = 36;
constexpr qreal distanceForOnePixel = 3; // the nearer to the edge, the faster

struct Scrolling {
    QQuickItem* area = nullptr;
    qreal to = 0;
};

// How far the area would scroll for a pointer at that height in it.
qreal speedAt(qreal y, qreal height) {
    const qreal zone = std::min(edge, height / 3);
    if (y < zone) {
        return -(zone - y) / distanceForOnePixel;
    }
    return y > height - zone ? (y - height + zone) / distanceForOnePixel : 0;
}

Scrolling scrollingOf(QQuickItem* area, const QPointF& scenePoint) {
    const qreal top = area->property("originY").toReal();
    const qreal bottom =
        std::max(top, top + area->property("contentHeight").toReal() - area->height());
    const qreal now = area->property("contentY").toReal();
    const qreal to =
        std::clamp(now + speedAt(area->mapFromScene(scenePoint).y(), area->height()), top, bottom);
    return to == now ? Scrolling() : Scrolling{area, to};
}

// The innermost area under the point that still can scroll that way.
Scrolling scrollingAt(QQuickItem* under, const QPointF& scenePoint) {
    if (!under->isVisible() || !under->isEnabled() ||
        (under->clip() && !under->contains(under->mapFromScene(scenePoint)))) {
        return {};
    }
    const QList<QQuickItem*> children = under->childItems();
    for (auto child = children.rbegin(); child != children.rend(); ++child) {
        if (const Scrolling found = scrollingAt(*child, scenePoint); found.area != nullptr) {
            return found;
        }
    }
    const bool scrolls =
        under->inherits("QQuickFlickable") && under->contains(under->mapFromScene(scenePoint));
    return scrolls ? scrollingOf(under, scenePoint) : Scrolling();
}

} // namespace

EdgeScroll::EdgeScroll(QObject* parent) : QObject(parent) {
    timer_.setInterval(tick);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, &EdgeScroll::step);
}

void EdgeScroll::watch(QQuickWindow* window) {
    // A page within a widget is handed its drags by a call, out of a filter's sight.
    QWindow* onScreen = QQuickRenderControl::renderWindowFor(window);
    if (onScreen == nullptr) {
        onScreen = window;
    }
    if (window_ == window && onScreen_ == onScreen) {
        return;
    }
    if (onScreen_ != nullptr) {
        onScreen_->removeEventFilter(this);
    }
    window_ = window;
    onScreen_ = onScreen;
    onScreen->installEventFilter(this);
}

bool EdgeScroll::eventFilter(QObject*, QEvent* event) {
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
        if (!repeating_) {
            follow(*static_cast<QDropEvent*>(event));
        }
        break;
    case QEvent::DragLeave:
    case QEvent::Drop:
        stop();
        break;
    default:
        break;
    }
    return false;
}

void EdgeScroll::follow(const QDropEvent& event) {
    QPoint offset;
    if (window_ == nullptr) {
        return;
    }
    QQuickRenderControl::renderWindowFor(window_, &offset);
    pointer_ = event.position() - offset;
    actions_ = event.possibleActions();
    dragged_.setText(event.mimeData()->text());
    if (!timer_.isActive() && scrollingAt(window_->contentItem(), pointer_).area != nullptr) {
        timer_.start();
    }
}

void EdgeScroll::step() {
    const Scrolling scrolling =
        window_ == nullptr ? Scrolling() : scrollingAt(window_->contentItem(), pointer_);
    if (scrolling.area == nullptr) {
        timer_.stop();
        return;
    }
    scrolling.area->setProperty("contentY", scrolling.to);
    QDragMoveEvent moved(pointer_.toPoint(), actions_, &dragged_, Qt::LeftButton, Qt::NoModifier);
    repeating_ = true;
    QCoreApplication::sendEvent(window_, &moved);
    repeating_ = false;
}

void EdgeScroll::stop() {
    timer_.stop();
}

} // namespace varnhold
