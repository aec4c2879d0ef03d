#include "views/status/exported_menu.h"

#include <QDBusConnection>
#include <QGuiApplication>
#include <algorithm>
#include <chrono>
#include <vector>

#include "views/status/exported_row.h"

namespace varnhold {

namespace {

using namespace std::chrono_literals;

// Some panels say when they open a menu and never when they close it.
constexpr auto nobodyReadsThatLong = 60s;
// Some panels say first that the menu is closed, and only then what was chosen in it.
constexpr auto choiceComesWithin = 500ms;

constexpr int root = 0;

QVariantMap rootProperties() {
    return {{QStringLiteral("children-display"), QStringLiteral("submenu")}};
}

// Those of the names; all if none is named.
QVariantMap wanted(QVariantMap properties, const QStringList& names) {
    if (!names.isEmpty()) {
        properties.removeIf([&](const auto& each) { return !names.contains(each.key()); });
    }
    return properties;
}

// Whether rows differ in nothing but what they say.
bool isSameRow(const MenuRow& one, MenuRow other) {
    other.title = one.title;
    return one == other;
}

} // namespace

ExportedMenu::ExportedMenu(StatusMenu::Choose choose) : choose_(std::move(choose)) {
    registerMenuTypes();
    forgotten_.setSingleShot(true);
    connect(&forgotten_, &QTimer::timeout, this, &ExportedMenu::closed);
    settled_.setSingleShot(true);
    connect(&settled_, &QTimer::timeout, this, &ExportedMenu::settled);
    QDBusConnection::sessionBus().registerObject(path(), this, QDBusConnection::ExportAllContents);
}

ExportedMenu::~ExportedMenu() {
    QDBusConnection::sessionBus().unregisterObject(path());
}

QString ExportedMenu::textDirection() {
    return QGuiApplication::isRightToLeft() ? QStringLiteral("rtl") : QStringLiteral("ltr");
}

void ExportedMenu::opened() {
    isOpen_ = true;
    settled_.stop();
    forgotten_.start(nobodyReadsThatLong);
}

void ExportedMenu::closed() {
    forgotten_.stop();
    settled_.start(choiceComesWithin);
}

void ExportedMenu::settled() {
    isOpen_ = false;
    setRows(rows_);
}

void ExportedMenu::setRows(const std::vector<MenuRow>& rows) {
    rows_ = rows;
    const bool inPlace =
        std::equal(shown_.begin(), shown_.end(), rows_.begin(), rows_.end(),
                   [](const Row& shown, const MenuRow& row) { return isSameRow(shown.row, row); });
    if (inPlace) {
        updateInPlace();
    } else if (!isOpen_) {
        rebuild();
    }
}

void ExportedMenu::updateInPlace() {
    QList<MenuProperties> updated;
    QList<MenuPropertyNames> removed;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        Row& shown = shown_[i];
        if (shown.row == rows_[i]) {
            continue;
        }
        const QVariantMap before = exportedRow(shown.row);
        shown.row = rows_[i];
        const QVariantMap now = exportedRow(shown.row);
        updated.append({shown.id, now});
        QStringList gone = before.keys();
        gone.removeIf([&](const QString& name) { return now.contains(name); });
        if (!gone.isEmpty()) {
            removed.append({shown.id, gone});
        }
    }
    if (!updated.isEmpty()) {
        emit ItemsPropertiesUpdated(updated, removed);
    }
}

void ExportedMenu::rebuild() {
    shown_.clear();
    for (const MenuRow& row : rows_) {
        shown_.push_back({++lastId_, row});
    }
    emit LayoutUpdated(++revision_, root);
}

const ExportedMenu::Row* ExportedMenu::find(int id) const {
    const auto found =
        std::find_if(shown_.begin(), shown_.end(), [id](const Row& row) { return row.id == id; });
    return found != shown_.end() ? &*found : nullptr;
}

// NOLINTBEGIN(readability-identifier-naming): the interface's own names
uint ExportedMenu::GetLayout(int parent, int depth, const QStringList& names,
                             MenuLayout& layout) const {
    if (const Row* row = find(parent); row != nullptr) {
        layout = {parent, wanted(exportedRow(row->row), names), {}};
        return revision_;
    }
    layout = {root, wanted(rootProperties(), names), {}};
    if (depth != 0) {
        for (const Row& row : shown_) {
            layout.rows.append({row.id, wanted(exportedRow(row.row), names), {}});
        }
    }
    return revision_;
}

QList<MenuProperties> ExportedMenu::GetGroupProperties(const QList<int>& ids,
                                                       const QStringList& names) const {
    QList<MenuProperties> all;
    if (ids.isEmpty() || ids.contains(root)) {
        all.append({root, wanted(rootProperties(), names)});
    }
    for (const Row& row : shown_) {
        if (ids.isEmpty() || ids.contains(row.id)) {
            all.append({row.id, wanted(exportedRow(row.row), names)});
        }
    }
    return all;
}

QDBusVariant ExportedMenu::GetProperty(int id, const QString& name) const {
    const Row* row = find(id);
    const QVariant value = (row != nullptr ? exportedRow(row->row) : rootProperties()).value(name);
    return QDBusVariant(value.isValid() ? value : QVariant(QString()));
}

void ExportedMenu::Event(int id, const QString& name, const QDBusVariant&, uint) {
    if (id == root && name == QLatin1String("opened")) {
        opened();
    } else if (id == root && name == QLatin1String("closed")) {
        closed();
    }
    const Row* row = find(id);
    if (row == nullptr || row->row.kind != MenuRow::Kind::item ||
        name != QLatin1String("clicked")) {
        return;
    }
    // Queued, so that the panel isn't kept waiting by a slow action.
    QMetaObject::invokeMethod(
        this, [choose = choose_, row = row->row] { choose(row.action, row.value); },
        Qt::QueuedConnection);
}

QList<int> ExportedMenu::EventGroup(const QList<MenuEvent>& events) {
    QList<int> unknown;
    for (const MenuEvent& event : events) {
        if (event.id != root && find(event.id) == nullptr) {
            unknown.append(event.id);
        }
        Event(event.id, event.name, event.data, event.time);
    }
    return unknown;
}

// What it will show has been told already.
bool ExportedMenu::AboutToShow(int id) {
    if (id == root) {
        opened();
    }
    return false;
}

QList<int> ExportedMenu::AboutToShowGroup(const QList<int>& ids, QList<int>& unknown) {
    for (const int id : ids) {
        if (id != root && find(id) == nullptr) {
            unknown.append(id);
        }
        static_cast<void>(AboutToShow(id));
    }
    return {};
}
// NOLINTEND(readability-identifier-naming)

} // namespace varnhold
