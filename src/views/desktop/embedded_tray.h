#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>

class QWindow;

// Panels that take windows of other programs in (XEmbed system tray, freedesktop.org). Main thread;
// nothing is there where there is no X server.
namespace varnhold {

// The window of the panel that offers it; 0 if none does. One round trip to the server.
[[nodiscard]] quint32 embeddedTray();

// Tells of every panel that begins to offer it, also of one that takes the place, and maybe the
// window's number, of one that has just died.
class EmbeddedTrayArrivals final : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT
public:
    explicit EmbeddedTrayArrivals(QObject* parent = nullptr);
    ~EmbeddedTrayArrivals() override;
    EmbeddedTrayArrivals(const EmbeddedTrayArrivals&) = delete;
    EmbeddedTrayArrivals& operator=(const EmbeddedTrayArrivals&) = delete;

    bool nativeEventFilter(const QByteArray& kind, void* message, qintptr* result) override;

signals:
    void arrived();

private:
    quint32 managerAtom_ = 0;
    quint32 trayAtom_ = 0;
};

// Name to give to the widget that is to be taken in and isn't blended: the toolkit then makes its
// window of the screen's usual kind, which can show what is behind it. One with an alpha channel it
// would make so as well, though it paints as if it had not.
[[nodiscard]] QString embeddedWindowName();

// Whether what such a window leaves out shows the panel.
[[nodiscard]] bool trayIsBlended();

// Asks the tray to take the window in.
void dockIntoTray(QWindow& window);

// Clears the window to what the panel shows behind it.
void showTrayBehind(QWindow& window);

} // namespace varnhold
