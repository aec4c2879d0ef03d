#include "views/settings/dragging/edge_scroll.h"

#include <QCoreApplication>
#include <QDragMoveEvent>
#include <QQuickItem>
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

void EdgeScroll::serve(QQuickWindow* window) {
    if (window->findChild<EdgeScroll*>(QString(), Qt::FindDirectChildrenOnly) == nullptr) {
        new EdgeScroll(window);
    }
}

EdgeScroll::EdgeScroll(QQuickWindow* window) : QObject(window), window_(window) {
    timer_.setInterval(tick);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, &EdgeScroll::step);
    // A page within a widget is handed its drags by a call, out of a filter's sight, and the window
    // around it may come later and change.
    QCoreApplication::instance()->installEventFilter(this);
}

bool EdgeScroll::isShownIn(const QObject* candidate, QPoint* offset) const {
    const QWindow* around = QQuickRenderControl::renderWindowFor(window_, offset);
    return candidate == (around != nullptr ? around : window_);
}

bool EdgeScroll::eventFilter(QObject* watched, QEvent* event) {
    QPoint offset;
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
        if (!repeating_ && isShownIn(watched, &offset)) {
            follow(*static_cast<QDropEvent*>(event), offset);
        }
        break;
    case QEvent::DragLeave:
    case QEvent::Drop:
        if (isShownIn(watched, &offset)) {
            timer_.stop();
        }
        break;
    default:
        break;
    }
    return false;
}

void EdgeScroll::follow(const QDropEvent& event, const QPoint& offset) {
    pointer_ = event.position() - offset;
    actions_ = event.possibleActions();
    dragged_.setText(event.mimeData()->text());
    if (!timer_.isActive() && scrollingAt(window_->contentItem(), pointer_).area != nullptr) {
        timer_.start();
    }
}

void EdgeScroll::step() {
    const Scrolling scrolling = scrollingAt(window_->contentItem(), pointer_);
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

} // namespace varnhold
