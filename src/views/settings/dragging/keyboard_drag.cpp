#include "views/settings/dragging/keyboard_drag.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QQuickWindow>
#include <algorithm>

namespace varnhold {

namespace {

// The targets under the item, as they stand on the page.
void collect(QQuickItem* under, const QString& kind, std::vector<DropTarget*>& found) {
    if (!under->isVisible() || !under->isEnabled()) {
        return;
    }
    if (auto* target = qobject_cast<DropTarget*>(under);
        target != nullptr && target->kinds.contains(kind)) {
        found.push_back(target);
    }
    const QList<QQuickItem*> children = under->childItems();
    for (QQuickItem* child : children) {
        collect(child, kind, found);
    }
}

// How far a stretch is beyond what is seen of a length; its beginning counts more than its end.
qreal distance(qreal begin, qreal end, qreal seen) {
    const qreal beyond = std::max<qreal>(0, end - seen);
    return begin - beyond < 0 ? begin : beyond;
}

void scrollBy(QQuickItem& area, const char* content, qreal by) {
    if (by != 0) {
        area.setProperty(content, area.property(content).toReal() + by);
    }
}

// Scrolls every area around the item as little as shows the rectangle.
void reveal(QQuickItem* item, const QRectF& area) {
    for (QQuickItem* around = item->parentItem(); around != nullptr;
         around = around->parentItem()) {
        if (!around->inherits("QQuickFlickable")) {
            continue;
        }
        const QRectF seen = item->mapRectToItem(around, area);
        scrollBy(*around, "contentX", distance(seen.left(), seen.right(), around->width()));
        scrollBy(*around, "contentY", distance(seen.top(), seen.bottom(), around->height()));
    }
}

} // namespace

void KeyboardDrag::pickUp(QQuickItem* source, const QString& payload, const QString& kind,
                          const QString& name) {
    if (active() || source == nullptr || source->window() == nullptr) {
        return;
    }
    source_ = source;
    window_ = source->window();
    active_ = true;
    payload_ = payload;
    kind_ = kind;
    name_ = name;
    emit changed();
    const std::vector<Stop> places = stops();
    if (places.empty()) {
        end(QStringLiteral("%1 can't be moved anywhere").arg(name_));
        return;
    }
    const auto home = std::find_if(places.begin(), places.end(), [](const Stop& stop) {
        return stop.target->home == stop.number;
    });
    QCoreApplication::instance()->installEventFilter(this);
    remind();
    home_ = home == places.end() ? Stop() : *home;
    moveTo(home == places.end() ? places.front() : *home);
}

void KeyboardDrag::giveUp() {
    if (active()) {
        returnHome();
        end(QStringLiteral("%1 not moved").arg(name_));
    }
}

// A list has made way for the row wherever it was tried.
void KeyboardDrag::returnHome() {
    const QPointer<DropTarget> home = home_.target;
    if (home == nullptr || home->home < 0 || home->home == home_.number ||
        home_.number >= home->stops) {
        return;
    }
    remind();
    if (at_.target != nullptr && at_.target != home) {
        at_.target->mark(-1);
    }
    at_ = home_;
    home->mark(home_.number);
    emit home->stopEntered(home_.number);
}

bool KeyboardDrag::eventFilter(QObject*, QEvent* event) {
    switch (event->type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
    case QEvent::KeyRelease: {
        auto* press = static_cast<QKeyEvent*>(event);
        if (press->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) {
            giveUp();
            return false;
        }
        event->accept(); // or keys that are shortcuts too would never come here as presses
        if (event->type() == QEvent::KeyPress) {
            handle(press->key(), press->isAutoRepeat());
        }
        return true;
    }
    case QEvent::MouseButtonPress:
    case QEvent::TouchBegin:
    case QEvent::WindowDeactivate:
        giveUp();
        return false;
    default:
        return false;
    }
}

void KeyboardDrag::handle(int key, bool repeated) {
    switch (key) {
    case Qt::Key_Down:
    case Qt::Key_Right:
    case Qt::Key_Tab:
        choose(1);
        break;
    case Qt::Key_Up:
    case Qt::Key_Left:
    case Qt::Key_Backtab:
        choose(-1);
        break;
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!repeated) {
            drop();
        }
        break;
    case Qt::Key_Escape:
        giveUp();
        break;
    default:
        break;
    }
}

std::vector<KeyboardDrag::Stop> KeyboardDrag::stops() const {
    std::vector<Stop> found;
    if (window_ == nullptr) {
        return found;
    }
    std::vector<DropTarget*> targets;
    collect(window_->contentItem(), kind_, targets);
    for (DropTarget* target : targets) {
        for (int number = 0; number < target->stops; ++number) {
            found.push_back({target, number});
        }
    }
    return found;
}

void KeyboardDrag::choose(int by) {
    const std::vector<Stop> places = stops();
    if (places.empty()) {
        giveUp();
        return;
    }
    const auto here = std::find_if(places.begin(), places.end(), [this](const Stop& stop) {
        return stop.target == at_.target && stop.number == at_.number;
    });
    const auto count = static_cast<std::ptrdiff_t>(places.size());
    // A stop that has gone meanwhile leaves the first one.
    const std::ptrdiff_t next =
        here == places.end() ? 0 : (here - places.begin() + by + count) % count;
    remind();
    moveTo(places[static_cast<std::size_t>(next)]);
}

void KeyboardDrag::moveTo(const Stop& stop) {
    if (at_.target != nullptr && at_.target != stop.target) {
        at_.target->mark(-1);
    }
    at_ = stop;
    at_.target->mark(at_.number);
    const QPointer<DropTarget> target = at_.target;
    announce(QStringLiteral("%1: %2").arg(name_, target->markedName));
    reveal(target, target->markedArea);
    emit target->stopEntered(stop.number);
}

void KeyboardDrag::drop() {
    const QPointer<DropTarget> target = at_.target;
    if (target == nullptr || at_.number >= target->stops) {
        giveUp();
        return;
    }
    remind();
    const int number = at_.number;
    const QString payload = payload_;
    end(QStringLiteral("%1 dropped: %2").arg(name_, target->markedName));
    emit target->stopDropped(number, payload);
}

void KeyboardDrag::end(const QString& announcement) {
    QCoreApplication::instance()->removeEventFilter(this);
    if (at_.target != nullptr) {
        at_.target->mark(-1);
    }
    at_ = {};
    home_ = {};
    source_ = nullptr;
    active_ = false;
    payload_.clear();
    kind_.clear();
    announce(announcement);
    emit changed();
}

void KeyboardDrag::remind() {
    if (source_ != nullptr) {
        QMetaObject::invokeMethod(source_, "began");
    }
}

void KeyboardDrag::announce(const QString& announcement) {
    if (announcement_ != announcement) {
        announcement_ = announcement;
        emit announcementChanged();
    }
}

} // namespace varnhold
