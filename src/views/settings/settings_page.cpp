#include "views/settings/settings_page.h"

#include <QFocusEvent>
#include <QMoveEvent>
#include <QPaintEvent>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSGRendererInterface>

#include "views/desktop/screens.h"
#include "views/settings/symbol_provider.h"

namespace varnhold {

void prepareEngine(QQmlEngine& engine) {
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    // The engine's now.
    engine.addImageProvider(QStringLiteral("symbol"), new SymbolProvider);
    engine.addImageProvider(QStringLiteral("application"), new ApplicationIconProvider);
}

namespace {

// A page that stands still most of the time is drawn as well without a graphics card, and the
// drivers of one would more than double what the supervisor takes of memory. QT_QUICK_BACKEND has
// the last word.
QWidget* drawnBySoftware(QWidget* parent) {
    if (QQuickWindow::sceneGraphBackend().isEmpty() &&
        !qEnvironmentVariableIsSet("QT_QUICK_BACKEND")) {
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    }
    return parent;
}

} // namespace

SettingsPage::SettingsPage(SettingsModel& model, QWidget* parent)
    : QQuickWidget(drawnBySoftware(parent)) {
    const QUrl url(QStringLiteral("qrc:/qt/qml/Varnhold/SettingsView.qml"));
    setResizeMode(SizeRootObjectToView);
    setAcceptDrops(true);
    prepareEngine(*engine());
    auto* component = new QQmlComponent(engine(), url, this);
    if (!component->isReady()) {
        qFatal("%s", qPrintable(component->errorString())); // a file of our own is broken
    }
    QObject* root = component->createWithInitialProperties(
        {{QStringLiteral("settings"), QVariant::fromValue(&model)}});
    setContent(url, component, root);
}

// Where its items are on the screen, which screen readers ask for, the toolkit works out anew when
// the page moves within the window, and not when the window does.
void SettingsPage::showEvent(QShowEvent* event) {
    QQuickWidget::showEvent(event);
    window()->installEventFilter(this); // no matter how often
}

bool SettingsPage::eventFilter(QObject* watched, QEvent* event) {
    if (watched == window() && event->type() == QEvent::Move) {
        QMoveEvent moved(pos(), pos());
        QCoreApplication::sendEvent(this, &moved);
    }
    return QQuickWidget::eventFilter(watched, event);
}

// At a scale between whole numbers what has changed begins and ends within pixels. Copied piece by
// piece, its edges would be taken from their neighbours, and lines would stay behind.
void SettingsPage::paintEvent(QPaintEvent* event) {
    QPaintEvent all(isScaledByFraction(*this) ? QRegion(rect()) : event->region());
    QQuickWidget::paintEvent(&all);
}

// By the toolkit's own timer comes what is to be seen of a change.
void SettingsPage::timerEvent(QTimerEvent* event) {
    QQuickWidget::timerEvent(event);
    if (isScaledByFraction(*this)) {
        update();
    }
}

// A menu takes the keyboard only for as long as it is open: what is being edited stays so, for the
// menu's rows to work on and for what is typed next.
void SettingsPage::focusOutEvent(QFocusEvent* event) {
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::MenuBarFocusReason) {
        QQuickWidget::focusOutEvent(event);
    }
}

void SettingsPage::editFocused(const char* slot) {
    if (QQuickItem* item = quickWindow()->activeFocusItem();
        item != nullptr && item->metaObject()->indexOfMethod(QByteArray(slot) + "()") >= 0) {
        QMetaObject::invokeMethod(item, slot);
    }
}

} // namespace varnhold
