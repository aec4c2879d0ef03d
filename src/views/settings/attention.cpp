#include "views/settings/attention.h"

#include <QCoreApplication>
#include <QEvent>

namespace varnhold {

Attention::Attention(QObject* parent) : QObject(parent) {
    QCoreApplication::instance()->installEventFilter(this);
}

void Attention::menuOpened() {
    if (++menus_ == 1) {
        emit menuOpenChanged();
    }
}

void Attention::menuClosed() {
    if (--menus_ == 0) {
        emit menuOpenChanged();
    }
}

bool Attention::eventFilter(QObject*, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::TouchBegin:
    case QEvent::KeyPress:
    case QEvent::Wheel:
    case QEvent::DragEnter:
        ++acts_;
        emit actsChanged();
        break;
    default:
        break;
    }
    return false;
}

} // namespace varnhold
