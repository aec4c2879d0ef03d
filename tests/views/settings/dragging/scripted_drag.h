#pragma once

#include <QCoreApplication>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QPixmap>
#include <QWindow>

namespace varnhold::testing {

// Tells a window of a drag with the events that a platform would send; the platform without a
// display has no drags of its own.
class ScriptedDrag {
public:
    ScriptedDrag(QWindow* window, const QMimeData& dragged) : window_(window), dragged_(dragged) {}

    // True if it would be taken there.
    bool over(const QPoint& at) {
        at_ = at;
        if (!inside_) {
            inside_ = true;
            QDragEnterEvent entered(at, both, &dragged_, Qt::LeftButton, {});
            QCoreApplication::sendEvent(window_, &entered);
        }
        QDragMoveEvent moved(at, both, &dragged_, Qt::LeftButton, {});
        QCoreApplication::sendEvent(window_, &moved);
        QCoreApplication::processEvents();
        return moved.isAccepted();
    }

    // Lets go there; true if it was taken.
    bool drop(const QPoint& at) {
        if (!over(at)) {
            leave();
            return false;
        }
        inside_ = false;
        QDropEvent dropped(at_, both, &dragged_, Qt::LeftButton, {});
        QCoreApplication::sendEvent(window_, &dropped);
        result_ = dropped.isAccepted() ? dropped.dropAction() : Qt::IgnoreAction;
        return result_ != Qt::IgnoreAction;
    }

    void leave() {
        if (inside_) {
            inside_ = false;
            QDragLeaveEvent left;
            QCoreApplication::sendEvent(window_, &left);
        }
    }

    Qt::DropAction end() {
        leave();
        return result_;
    }

    QPixmap picture;
    QPoint hotSpot;

private:
    static constexpr Qt::DropActions both = Qt::MoveAction | Qt::CopyAction;

    QWindow* window_;
    const QMimeData& dragged_;
    QPoint at_;
    bool inside_ = false;
    Qt::DropAction result_ = Qt::IgnoreAction;
};

} // namespace varnhold::testing
