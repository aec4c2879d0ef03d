#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QList>
#include <QString>

// What a described tray icon is made of on the bus (StatusNotifierItem, freedesktop.org).
namespace varnhold {

struct NotifierPixmap {
    int width = 0; // pixels
    int height = 0;
    QByteArray pixels; // alpha, red, green and blue of each, row by row
};

using NotifierPixmaps = QList<NotifierPixmap>;

struct NotifierToolTip {
    QString icon;
    NotifierPixmaps pixmaps;
    QString title;
    QString text;
};

QDBusArgument& operator<<(QDBusArgument& out, const NotifierPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& in, NotifierPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& out, const NotifierToolTip& tip);
const QDBusArgument& operator>>(const QDBusArgument& in, NotifierToolTip& tip);

// Once before any of them goes over the bus; again does nothing.
void registerNotifierTypes();

} // namespace varnhold
