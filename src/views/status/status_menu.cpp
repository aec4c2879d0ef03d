#include "views/status/status_menu.h"

#include <QGuiApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolTip>
#include <algorithm>

#include "views/desktop/panel.h"
#include "views/desktop/placement.h"
#include "views/status/menu_style.h"
#include "views/text/qt_text.h"

namespace varnhold {

namespace {

constexpr int gapBesideAnchor = 2; // points

} // namespace

QKeySequence menuKey(const MenuRow& row) {
    return row.key.empty() ? QKeySequence()
                           : QKeySequence(QStringLiteral("Ctrl+") + toQString(row.key).toUpper());
}

StatusMenu::StatusMenu(const std::vector<MenuRow>& rows, Choose choose, QWidget* parent)
    : QMenu(parent), choose_(std::move(choose)), style_(new MenuStyle) {
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_TranslucentBackground);
    setWindowFlag(Qt::FramelessWindowHint);
    setAccessibleName(QStringLiteral("Varnhold"));
    setWindowTitle(QStringLiteral("Varnhold menu")); // where desktops list windows, and for tests
    style_->setParent(this);
    setStyle(style_);
    for (const MenuRow& row : rows) {
        append(row);
    }
}

void StatusMenu::append(const MenuRow& row) {
    if (row.kind == MenuRow::Kind::separator) {
        addSeparator();
        return;
    }
    QString text = menuText(row.title);
    const QKeySequence key = menuKey(row);
    if (!key.isEmpty()) {
        text += QLatin1Char('\t') + key.toString(QKeySequence::NativeText);
    }
    QAction* action = addAction(text);
    action->setEnabled(row.kind == MenuRow::Kind::item);
    action->setProperty(MenuStyle::alertProperty, row.red);
    if (!key.isEmpty()) {
        keys_.emplace_back(key, action);
    }
    connect(action, &QAction::triggered, this,
            [this, chosen = row.action, value = row.value] { choose_(chosen, value); });
}

void StatusMenu::popupBeside(const QRect& anchor, const QRect& area) {
    int widestKey = 0;
    for (const auto& [key, action] : keys_) {
        widestKey = std::max(
            widestKey, fontMetrics().horizontalAdvance(key.toString(QKeySequence::NativeText)));
    }
    // The toolkit adds the widest key to the widest row.
    style_->setWidestRow(area.width() / 2 - widestKey);
    wanted_ = fittedBeside(anchor, QMenu::sizeHint(), area, Alignment::left, gapBesideAnchor);
    if (QGuiApplication::platformName().startsWith(QLatin1String("wayland"))) {
        // The compositor alone knows the screen, and opens nothing that doesn't touch its parent.
        wanted_.moveTopLeft(anchor.bottomLeft());
    }
    popup(wanted_.topLeft());
}

// A menu scrolls only where its screen is too low for it, though there may be less room than that.
QSize StatusMenu::sizeHint() const {
    const QSize whole = QMenu::sizeHint();
    const bool cut = !wanted_.isNull() && wanted_.height() < whole.height();
    return cut ? QSize(whole.width(), QWIDGETSIZE_MAX) : whole;
}

void StatusMenu::showEvent(QShowEvent* event) {
    if (!wanted_.isNull()) {
        setGeometry(wanted_);
    }
    QMenu::showEvent(event);
}

bool StatusMenu::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        showWhole(*static_cast<QHelpEvent*>(event));
        return true;
    }
    return QMenu::event(event);
}

// Of a title that has been cut.
void StatusMenu::showWhole(const QHelpEvent& asked) {
    const QAction* row = actionAt(asked.pos());
    if (row == nullptr || menuRowWidth(font(), row->text()) <= width()) {
        QToolTip::hideText();
        return;
    }
    // As rich text it wraps, and what looks like markup in it is none.
    QToolTip::showText(asked.globalPos(),
                       QStringLiteral("<qt>%1</qt>").arg(menuRowTitle(row->text()).toHtmlEscaped()),
                       this);
}

void StatusMenu::resizeEvent(QResizeEvent* event) {
    QMenu::resizeEvent(event);
    chooseCorners(*this);
}

void StatusMenu::mousePressEvent(QMouseEvent* event) {
    if (!rect().contains(event->position().toPoint())) {
        emit pressedOutside();
    }
    QMenu::mousePressEvent(event);
}

void StatusMenu::keyPressEvent(QKeyEvent* event) {
    const QKeySequence pressed(event->keyCombination());
    const auto found = std::find_if(keys_.begin(), keys_.end(),
                                    [&](const auto& each) { return each.first == pressed; });
    if (found == keys_.end()) {
        QMenu::keyPressEvent(event);
        return;
    }
    found->second->trigger();
    close();
}

} // namespace varnhold
