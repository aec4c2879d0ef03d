#pragma once

#include <QByteArrayList>
#include <QVariant>

#include "views/settings/keyed_list_model.h"

// The values of a list's rows, each with its name and with what it is taken from, in one place.
namespace varnhold {

template <class Item>
struct RowColumn {
    const char* name; // under which delegates know the value
    QVariant (*value)(const Item& item);
};

// Both take an array of columns.
template <class Columns>
[[nodiscard]] QByteArrayList columnNames(const Columns& columns) {
    QByteArrayList names;
    for (const auto& column : columns) {
        names.append(column.name);
    }
    return names;
}

template <class Columns, class Item>
[[nodiscard]] KeyedListModel::Row rowOf(const QString& key, const Item& item,
                                        const Columns& columns) {
    KeyedListModel::Row row{.key = key, .values = {}};
    for (const auto& column : columns) {
        row.values.append(column.value(item));
    }
    return row;
}

} // namespace varnhold
