#pragma once

#include <QDBusServiceWatcher>
#include <QTimer>

namespace varnhold {

enum class TrayKind {
    none,
    embedded, // takes windows of ours in (XEmbed system tray, freedesktop.org)
    notifier, // shows what we describe over D-Bus (StatusNotifierItem, freedesktop.org)
};

// Knows at any moment what kind of tray the desktop has. Main thread.
//
// The toolkit decides once in a process which of the two it speaks. So the first kind of tray that
// appears is the only one that counts from then on.
class TrayWatcher final : public QObject {
    Q_OBJECT
public:
    explicit TrayWatcher(QObject* parent = nullptr);

    [[nodiscard]] TrayKind kind() const { return kind_; }

signals:
    void changed();

private slots:
    void askForHost();

private:
    void watchNotifiers();
    void hostAnswered(bool hasHost);
    void decide();

    QDBusServiceWatcher watcher_;
    QTimer embeddedTimer_;
    bool hasNotifierHost_ = false;
    TrayKind kind_ = TrayKind::none;
    TrayKind spoken_ = TrayKind::none; // what the toolkit has settled on
};

} // namespace varnhold
