#include "views/settings/keyed_list_model.h"

#include <algorithm>

namespace varnhold {

namespace {

constexpr int firstRole = Qt::UserRole + 1;

// Rows of one key become distinct by their order among each other.
void makeKeysUnique(std::vector<KeyedListModel::Row>& rows) {
    QHash<QString, int> seen;
    for (auto& row : rows) {
        const int earlier = seen[row.key]++;
        if (earlier > 0) {
            row.key += QChar(0x1f) + QString::number(earlier + 1);
        }
    }
}

// Marks a longest run of numbers that rises already: the rows that needn't move.
std::vector<bool> longestRise(const std::vector<int>& numbers) {
    std::vector<std::size_t> ends; // of the best rise of each length
    std::vector<std::ptrdiff_t> before(numbers.size(), -1);
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const auto end = std::lower_bound(
            ends.begin(), ends.end(), numbers[i],
            [&numbers](std::size_t index, int number) { return numbers[index] < number; });
        if (end != ends.begin()) {
            before[i] = static_cast<std::ptrdiff_t>(*std::prev(end));
        }
        if (end == ends.end()) {
            ends.push_back(i);
        } else {
            *end = i;
        }
    }
    std::vector<bool> marked(numbers.size(), false);
    for (std::ptrdiff_t i = ends.empty() ? -1 : static_cast<std::ptrdiff_t>(ends.back()); i >= 0;
         i = before[static_cast<std::size_t>(i)]) {
        marked[static_cast<std::size_t>(i)] = true;
    }
    return marked;
}

} // namespace

KeyedListModel::KeyedListModel(const QByteArrayList& names, QObject* parent)
    : QAbstractListModel(parent) {
    for (int i = 0; i < names.size(); ++i) {
        names_.insert(firstRole + i, names[i]);
    }
}

int KeyedListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant KeyedListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || !names_.contains(role)) {
        return {};
    }
    return rows_[static_cast<std::size_t>(index.row())].values.value(role - firstRole);
}

int KeyedListModel::rowOf(const QString& key) const {
    const auto found =
        std::find_if(rows_.begin(), rows_.end(), [&key](const Row& row) { return row.key == key; });
    return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

QVariant KeyedListModel::value(int row, const QString& name) const {
    const int role = names_.key(name.toUtf8(), -1);
    return role < 0 || row < 0 || row >= count() ? QVariant() : data(index(row), role);
}

void KeyedListModel::sync(std::vector<Row> wanted) {
    makeKeysUnique(wanted);
    const int formerCount = count();
    QHash<QString, int> places;
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        places.insert(wanted[i].key, static_cast<int>(i));
    }
    removeAllBut(places);
    arrange(wanted, places);
    update(wanted);
    if (count() != formerCount) {
        emit countChanged();
    }
}

void KeyedListModel::removeAllBut(const QHash<QString, int>& wanted) {
    for (int row = count() - 1; row >= 0; --row) {
        if (!wanted.contains(rows_[static_cast<std::size_t>(row)].key)) {
            beginRemoveRows({}, row, row);
            rows_.erase(rows_.begin() + row);
            endRemoveRows();
        }
    }
}

// From the front on, each row that is new or out of line goes behind the one that comes before it.
void KeyedListModel::arrange(const std::vector<Row>& wanted, const QHash<QString, int>& places) {
    std::vector<int> order;
    for (const Row& row : rows_) {
        order.push_back(places.value(row.key));
    }
    const std::vector<bool> stays = longestRise(order);
    std::vector<bool> inLine(wanted.size(), false);
    std::vector<bool> known(wanted.size(), false);
    for (std::size_t i = 0; i < order.size(); ++i) {
        inLine[static_cast<std::size_t>(order[i])] = stays[i];
        known[static_cast<std::size_t>(order[i])] = true;
    }
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        if (inLine[i]) {
            continue;
        }
        const int place = i == 0 ? 0 : rowOf(wanted[i - 1].key) + 1;
        if (!known[i]) {
            beginInsertRows({}, place, place);
            rows_.insert(rows_.begin() + place, wanted[i]);
            endInsertRows();
            continue;
        }
        const int from = rowOf(wanted[i].key);
        if (from == place || !beginMoveRows({}, from, from, {}, place)) {
            continue;
        }
        const auto first = rows_.begin() + std::min(from, place);
        if (from < place) {
            std::rotate(first, first + 1, rows_.begin() + place);
        } else {
            std::rotate(first, rows_.begin() + from, rows_.begin() + from + 1);
        }
        endMoveRows();
    }
}

void KeyedListModel::update(const std::vector<Row>& wanted) {
    for (int row = 0; row < count(); ++row) {
        Row& shown = rows_[static_cast<std::size_t>(row)];
        const Row& now = wanted[static_cast<std::size_t>(row)];
        QList<int> touched;
        for (int i = 0; i < now.values.size(); ++i) {
            if (i >= shown.values.size() || shown.values[i] != now.values[i]) {
                touched.append(firstRole + i);
            }
        }
        if (!touched.isEmpty()) {
            shown = now;
            emit dataChanged(index(row), index(row), touched);
        }
    }
}

} // namespace varnhold
