#pragma once

#include <QDBusArgument>
#include <QDBusVariant>
#include <QList>
#include <QString>
#include <QVariantMap>

// What a menu is made of on the bus (com.canonical.dbusmenu).
namespace varnhold {

struct MenuLayout {
    int id = 0;
    QVariantMap properties;
    QList<MenuLayout> rows;
};

struct MenuProperties {
    int id = 0;
    QVariantMap properties;
};

struct MenuPropertyNames {
    int id = 0;
    QStringList names;
};

struct MenuEvent {
    int id = 0;
    QString name;
    QDBusVariant data;
    uint time = 0;
};

QDBusArgument& operator<<(QDBusArgument& out, const MenuLayout& layout);
const QDBusArgument& operator>>(const QDBusArgument& in, MenuLayout& layout);
QDBusArgument& operator<<(QDBusArgument& out, const MenuProperties& row);
const QDBusArgument& operator>>(const QDBusArgument& in, MenuProperties& row);
QDBusArgument& operator<<(QDBusArgument& out, const MenuPropertyNames& row);
const QDBusArgument& operator>>(const QDBusArgument& in, MenuPropertyNames& row);
QDBusArgument& operator<<(QDBusArgument& out, const MenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& in, MenuEvent& event);

// Once before any of them goes over the bus; again does nothing.
void registerMenuTypes();

} // namespace varnhold
