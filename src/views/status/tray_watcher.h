#pragma once

#include <QTimer>

#include "views/desktop/embedded_tray.h"
#include "views/status/notifier_host.h"

namespace varnhold {

enum class TrayKind {
    none,
    embedded, // takes windows of ours in (XEmbed system tray, freedesktop.org)
    notifier, // shows what we describe over D-Bus (StatusNotifierItem, freedesktop.org)
};

// A tray that the item can be shown in. Where anything differs it is another tray.
struct Tray {
    TrayKind kind = TrayKind::none;
    quint32 number = 0; // of its window, if it has one
    int arrival = 0;

    bool operator==(const Tray&) const = default;
};

// Knows at any moment what tray the desktop has. Where there are both kinds, it is the one over the
// bus. Main thread.
class TrayWatcher final : public QObject {
    Q_OBJECT
public:
    explicit TrayWatcher(QObject* parent = nullptr);

    [[nodiscard]] const Tray& tray() const { return tray_; }

signals:
    void changed();

private:
    void decide();

    NotifierHost host_;
    EmbeddedTrayArrivals arrivals_;
    int arrival_ = 0;
    QTimer embeddedTimer_;
    Tray tray_;
};

} // namespace varnhold
