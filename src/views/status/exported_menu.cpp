#include "views/status/exported_menu.h"

#include <algorithm>
#include <chrono>

#include "views/text/qt_text.h"

namespace varnhold {

namespace {

using namespace std::chrono_literals;

// Some panels say when they open a menu and never when they close it.
constexpr auto nobodyReadsThatLong = 60s;
// Some panels say first that the menu is closed, and only then what was chosen in it.
constexpr auto choiceComesWithin = 500ms;

// Whether the rows differ in nothing but their texts.
bool sameRows(const std::vector<MenuRow>& one, const std::vector<MenuRow>& other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](const MenuRow& a, MenuRow b) {
                          b.title = a.title;
                          return a == b;
                      });
}

} // namespace

QString exportedText(std::string_view text) {
    QString shown = menuText(text);
    shown.replace(QLatin1String("&&"), QLatin1String("&"));
    shown.replace(QLatin1Char('_'), QLatin1String("__"));
    // The toolkit turns the first sign into the mark of the letter behind it; so that letter is
    // another sign. Those after it stay as they are.
    const qsizetype first = shown.indexOf(QLatin1Char('&'));
    if (first >= 0) {
        shown.insert(first, QLatin1Char('&'));
    }
    return shown;
}

ExportedMenu::ExportedMenu(StatusMenu::Choose choose) : choose_(std::move(choose)) {
    connect(this, &QMenu::aboutToShow, this, &ExportedMenu::opened);
    connect(this, &QMenu::aboutToHide, this, &ExportedMenu::closed);
    forgotten_.setSingleShot(true);
    connect(&forgotten_, &QTimer::timeout, this, &ExportedMenu::closed);
    settled_.setSingleShot(true);
    connect(&settled_, &QTimer::timeout, this, &ExportedMenu::settled);
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
    if (rows_ != shown_) {
        rebuild();
    }
}

void ExportedMenu::setRows(const std::vector<MenuRow>& rows) {
    rows_ = rows;
    if (rows_ == shown_) {
        return;
    }
    if (!sameRows(rows_, shown_)) {
        if (!isOpen_) {
            rebuild();
        }
        return;
    }
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        if (rows_[i].title != shown_[i].title) {
            actions().at(static_cast<qsizetype>(i))->setText(exportedText(rows_[i].title));
        }
    }
    shown_ = rows_;
}

void ExportedMenu::rebuild() {
    clear();
    for (const MenuRow& row : rows_) {
        append(row);
    }
    shown_ = rows_;
}

void ExportedMenu::append(const MenuRow& row) {
    if (row.kind == MenuRow::Kind::separator) {
        addSeparator();
        return;
    }
    QAction* action = addAction(exportedText(row.title));
    action->setEnabled(row.kind == MenuRow::Kind::item);
    // Panels show it beside the title. It works in no window of ours: the menu is in none.
    action->setShortcut(menuKey(row));
    action->setShortcutContext(Qt::WidgetShortcut);
    // Queued, so that the panel isn't kept waiting by a slow action.
    connect(
        action, &QAction::triggered, this,
        [choose = choose_, chosen = row.action, value = row.value] { choose(chosen, value); },
        Qt::QueuedConnection);
}

} // namespace varnhold
