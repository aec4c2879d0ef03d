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

// What an area calls its measures in one direction.
struct Axis {
    const char* origin;
    const char* content;
    const char* extent;
    const char* marginBefore;
    const char* marginAfter;
    qreal (*place)(const QPointF&);
    qreal (*length)(const QQuickItem*);
};

constexpr Axis upAndDown{"originY",
                         "contentY",
                         "contentHeight",
                         "topMargin",
                         "bottomMargin",
                         [](const QPointF& point) { return point.y(); },
                         [](const QQuickItem* item) { return item->height(); }};
constexpr Axis sideways{"originX",
                        "contentX",
                        "contentWidth",
                        "leftMargin",
                        "rightMargin",
                        [](const QPointF& point) { return point.x(); },
                        [](const QQuickItem* item) { return item->width(); }};

struct Scrolling {
    QQuickItem* area = nullptr;
    qreal to = 0;
};

// How far an area of that length would scroll for a pointer at that place in it.
qreal speedAt(qreal place, qreal length) {
    const qreal zone = std::min(edge, length / 3);
    if (place < zone) {
        return -(zone - place) / distanceForOnePixel;
    }
    return place > length - zone ? (place - length + zone) / distanceForOnePixel : 0;
}

Scrolling scrollingOf(QQuickItem* area, const QPointF& scenePoint, const Axis& axis) {
    const auto measure = [&](const char* name) { return area->property(name).toReal(); };
    const qreal length = axis.length(area);
    const qreal first = measure(axis.origin) - measure(axis.marginBefore);
    const qreal last = std::max(first, measure(axis.origin) + measure(axis.extent) +
                                           measure(axis.marginAfter) - length);
    const qreal now = measure(axis.content);
    const qreal speed = speedAt(axis.place(area->mapFromScene(scenePoint)), length);
    // An area that has got beyond its end otherwise isn't brought back by a drag.
    const qreal to = speed == 0 ? now : std::clamp(now + speed, first, last);
    return to == now ? Scrolling() : Scrolling{area, to};
}

// The innermost area under the point that still can scroll that way.
Scrolling scrollingAt(QQuickItem* under, const QPointF& scenePoint, const Axis& axis) {
    if (!under->isVisible() || !under->isEnabled() ||
        (under->clip() && !under->contains(under->mapFromScene(scenePoint)))) {
        return {};
    }
    const QList<QQuickItem*> children = under->childItems();
    // NOLINTNEXTLINE(modernize-loop-convert): this clang can't read the library's reversed ranges
    for (auto child = children.crbegin(); child != children.crend(); ++child) {
        if (const Scrolling found = scrollingAt(*child, scenePoint, axis); found.area != nullptr) {
            return found;
        }
    }
    const bool scrolls =
        under->inherits("QQuickFlickable") && under->contains(under->mapFromScene(scenePoint));
    return scrolls ? scrollingOf(under, scenePoint, axis) : Scrolling();
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
    if (timer_.isActive()) {
        return;
    }
    for (const Axis& axis : {upAndDown, sideways}) {
        if (scrollingAt(window_->contentItem(), pointer_, axis).area != nullptr) {
            timer_.start();
        }
    }
}

void EdgeScroll::step() {
    bool scrolls = false;
    for (const Axis& axis : {upAndDown, sideways}) {
        if (const Scrolling found = scrollingAt(window_->contentItem(), pointer_, axis);
            found.area != nullptr) {
            found.area->setProperty(axis.content, found.to);
            scrolls = true;
        }
    }
    if (!scrolls) {
        timer_.stop();
        return;
    }
    QDragMoveEvent moved(pointer_.toPoint(), actions_, &dragged_, Qt::LeftButton, Qt::NoModifier);
    repeating_ = true;
    QCoreApplication::sendEvent(window_, &moved);
    repeating_ = false;
}

} // namespace varnhold
