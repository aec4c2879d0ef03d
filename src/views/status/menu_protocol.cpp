#include "views/status/menu_protocol.h"

#include <QDBusMetaType>

namespace varnhold {

// Rows go as variants, since a signature can't hold itself.
QDBusArgument& operator<<(QDBusArgument& out, const MenuLayout& layout) {
    out.beginStructure();
    out << layout.id << layout.properties;
    out.beginArray(QMetaType::fromType<QDBusVariant>());
    for (const MenuLayout& row : layout.rows) {
        out << QDBusVariant(QVariant::fromValue(row));
    }
    out.endArray();
    out.endStructure();
    return out;
}

const QDBusArgument& operator>>(const QDBusArgument& in, MenuLayout& layout) {
    in.beginStructure();
    in >> layout.id >> layout.properties;
    layout.rows.clear();
    in.beginArray();
    while (!in.atEnd()) {
        QDBusVariant row;
        in >> row;
        layout.rows.append(qdbus_cast<MenuLayout>(row.variant()));
    }
    in.endArray();
    in.endStructure();
    return in;
}

QDBusArgument& operator<<(QDBusArgument& out, const MenuProperties& row) {
    out.beginStructure();
    out << row.id << row.properties;
    out.endStructure();
    return out;
}

const QDBusArgument& operator>>(const QDBusArgument& in, MenuProperties& row) {
    in.beginStructure();
    in >> row.id >> row.properties;
    in.endStructure();
    return in;
}

QDBusArgument& operator<<(QDBusArgument& out, const MenuPropertyNames& row) {
    out.beginStructure();
    out << row.id << row.names;
    out.endStructure();
    return out;
}

const QDBusArgument& operator>>(const QDBusArgument& in, MenuPropertyNames& row) {
    in.beginStructure();
    in >> row.id >> row.names;
    in.endStructure();
    return in;
}

QDBusArgument& operator<<(QDBusArgument& out, const MenuEvent& event) {
    out.beginStructure();
    out << event.id << event.name << event.data << event.time;
    out.endStructure();
    return out;
}

const QDBusArgument& operator>>(const QDBusArgument& in, MenuEvent& event) {
    in.beginStructure();
    in >> event.id >> event.name >> event.data >> event.time;
    in.endStructure();
    return in;
}

void registerMenuTypes() {
    qDBusRegisterMetaType<MenuLayout>();
    qDBusRegisterMetaType<MenuProperties>();
    qDBusRegisterMetaType<QList<MenuProperties>>();
    qDBusRegisterMetaType<MenuPropertyNames>();
    qDBusRegisterMetaType<QList<MenuPropertyNames>>();
    qDBusRegisterMetaType<MenuEvent>();
    qDBusRegisterMetaType<QList<MenuEvent>>();
    qDBusRegisterMetaType<QList<int>>();
}

} // namespace varnhold
