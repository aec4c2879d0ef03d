#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <functional>

class QWindow;

namespace varnhold {

// What a dialog for files asks.
struct FileQuestion {
    QString title;
    QString acceptLabel;
    bool folder = false;  // one, rather than files, as many as one likes
    QString parentWindow; // over which it is asked, as portals name it
};

// Asks by the desktop's own dialog, which its portal shows (org.freedesktop.portal.FileChooser,
// freedesktop.org). Exactly one of these is called, and nothing where its parent has gone before:
// `chosen` with at least one absolute path, `cancelled`, or `failed` where no portal could ask or
// it went while it did. Then it is over; it deletes itself. Deleted before, it takes its dialog
// away.
//
// Nothing that is no local file is told, nor a file whose name is no text. Main thread.
class FilePortal final : public QObject {
    Q_OBJECT
public:
    struct Answers {
        std::function<void(const QStringList& paths)> chosen;
        std::function<void()> cancelled;
        std::function<void()> failed;
    };

    FilePortal(const QDBusConnection& bus, const FileQuestion& question, Answers answers,
               QObject* parent);
    ~FilePortal() override;
    FilePortal(const FilePortal&) = delete;
    FilePortal& operator=(const FilePortal&) = delete;

private slots:
    void responded(uint code, const QVariantMap& results);

private:
    void askFor(const FileQuestion& question);
    void listenAt(const QString& request);
    void finish(const std::function<void()>& answer);

    QDBusConnection bus_;
    Answers answers_;
    QString request_; // the portal's object for this question
};

// How a portal names a window of ours; empty where nobody can.
[[nodiscard]] QString portalNameOf(const QWindow* window);

// The paths of local files, in order; others are left out.
[[nodiscard]] QStringList localPaths(const QStringList& uris);

} // namespace varnhold
