#include "views/settings/settings_window_view.h"

#include <QCloseEvent>
#include <QMenuBar>
#include <QScreen>
#include <vector>

#include "views/desktop/own_frame.h"
#include "views/desktop/window_fit.h"
#include "views/desktop/window_system.h"
#include "views/settings/menu_bar.h"
#include "views/text/qt_text.h"

namespace varnhold {

namespace {

constexpr QSize contentSize{1200, 850}; // points
constexpr QSize leastContentSize{640, 480};

QKeySequence shortcut(const MainMenuRow& row) {
    if (row.key.empty()) {
        return {};
    }
    const QString key = toQString(row.key);
    const bool shift = row.shift || (key != key.toLower());
    return QKeySequence(QStringLiteral("Ctrl+") + (shift ? QStringLiteral("Shift+") : QString()) +
                        (row.option ? QStringLiteral("Alt+") : QString()) + key.toUpper());
}

// Slot of the text fields that an editing row stands for.
const char* editingSlot(MainMenuAction action) {
    switch (action) {
    case MainMenuAction::undo:
        return "undo";
    case MainMenuAction::redo:
        return "redo";
    case MainMenuAction::cut:
        return "cut";
    case MainMenuAction::copy:
        return "copy";
    case MainMenuAction::paste:
        return "paste";
    case MainMenuAction::selectAll:
        return "selectAll";
    default:
        return nullptr;
    }
}

// Other programs' windows are the window manager's here.
bool isOtherPrograms(MainMenuAction action) {
    return action == MainMenuAction::hideOtherApplications ||
           action == MainMenuAction::unhideAllApplications;
}

} // namespace

SettingsWindowView::SettingsWindowView(const std::vector<MainMenu>& menus, SettingsModel& model,
                                       const Choose& choose, std::function<void()> closed)
    : model_(model), page_(new SettingsPage(model, this)), closed_(std::move(closed)) {
    setWindowTitle(QStringLiteral("Varnhold"));
    setCentralWidget(page_);
    dressMenuBar(*menuBar());
    for (const MainMenu& menu : menus) {
        addMenu(menu, choose);
    }
    page_->setMinimumSize(leastContentSize);
    fit_ = new WindowFit(*this, [this](const QSize& room) { return sizeOn(room); });
    fit_->prepareFor(*screen());
}

void SettingsWindowView::appearOn(const QScreen& screen) {
    fit_->prepareFor(screen);
}

QSize SettingsWindowView::sizeOn(const QSize& screen) const {
    // Not menuBar(), which would make one.
    const auto* bar = qobject_cast<const QMenuBar*>(menuWidget());
    const bool isInside = bar != nullptr && !bar->isNativeMenuBar();
    return (contentSize + QSize(0, isInside ? bar->sizeHint().height() : 0)).boundedTo(screen);
}

void SettingsWindowView::addMenu(const MainMenu& menu, const Choose& choose) {
    QMenu* shown = varnhold::addMenu(*menuBar(), menuText(menu.title));
    for (const MainMenuRow& row : menu.rows) {
        if (row.action == MainMenuAction::none) {
            shown->addSeparator();
            continue;
        }
        QAction* action = shown->addAction(menuText(row.title));
        action->setShortcut(shortcut(row));
        action->setEnabled(!isOtherPrograms(row.action));
        connect(action, &QAction::triggered, this, [this, choose, wanted = row.action] {
            if (!perform(wanted)) {
                choose(wanted);
            }
        });
    }
}

bool SettingsWindowView::perform(MainMenuAction action) {
    if (const char* slot = editingSlot(action)) {
        page_->editFocused(slot);
        return true;
    }
    switch (action) {
    case MainMenuAction::orderFrontStandardAboutPanel:
        model_.sheets()->showAbout();
        return true;
    case MainMenuAction::hide:
        putAside();
        return true;
    case MainMenuAction::performClose:
        close();
        return true;
    default:
        return false;
    }
}

// To where the desktop keeps what is put aside. Where nobody keeps such, the window comes back like
// a closed one, though nothing has ended.
void SettingsWindowView::putAside() {
    if (hasWindowManager()) {
        showMinimized();
    } else {
        aside_ = true;
        hide();
    }
}

bool SettingsWindowView::bringToFront() {
    const bool wasClosed = !isVisible() && !aside_;
    aside_ = false;
    // Not showNormal(), which would also undo what the user has maximised.
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    return wasClosed;
}

void SettingsWindowView::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        renewOwnFrame(*this);
    }
}

void SettingsWindowView::closeEvent(QCloseEvent* event) {
    event->accept();
    aside_ = false;
    closed_();
}

} // namespace varnhold
