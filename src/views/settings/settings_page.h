#pragma once

#include <QQuickWidget>

#include "views/settings/settings_model.h"

namespace varnhold {

// Teaches an engine what the window's QML needs of it.
void prepareEngine(QQmlEngine& engine);

// What the settings window shows, drawn by Qt Quick. The engine comes and goes with this object: a
// supervisor whose window was never opened carries none. Main thread.
class SettingsPage final : public QQuickWidget {
    Q_OBJECT

public:
    // The model must outlive the page.
    explicit SettingsPage(SettingsModel& model, QWidget* parent = nullptr);

    // Undo, cut, copy and the like, by the name of the text item's slot; nothing where no text has
    // the focus.
    void editFocused(const char* slot);

protected:
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace varnhold
