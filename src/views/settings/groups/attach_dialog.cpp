#include "views/settings/groups/attach_dialog.h"

#include <QApplication>
#include <QDBusConnection>
#include <QPointer>
#include <QWidget>

#include "platform/qt/session_bus.h"
#include "views/desktop/file_portal.h"
#include "views/settings/groups/toolkit_dialog.h"

namespace varnhold {

namespace {

// The dialog belongs to another program, which nothing keeps below the window or the only one: who
// asks again wants it in front.
void askPortal(const FileQuestion& question, const FilePortal::Answers& answers, QObject* owner) {
    static QPointer<FilePortal> asking;
    delete asking;
    asking = new FilePortal(QDBusConnection::sessionBus(), question, answers, owner);
}

} // namespace

void askForPaths(AttachKind kind, QObject* owner,
                 const std::function<void(const QStringList& paths)>& use) {
    const auto askToolkit = [kind, owner, use] { askToolkitForPaths(kind, owner, use); };
    if (!platform::hasSessionBus()) {
        askToolkit();
        return;
    }
    const QWidget* front = QApplication::activeWindow();
    askPortal({.title = QString::fromLatin1(attachTitle),
               .acceptLabel = QString::fromLatin1(attachLabel),
               .folder = kind == AttachKind::folder,
               .parentWindow = portalNameOf(front != nullptr ? front->windowHandle() : nullptr)},
              {.chosen = use, .cancelled = [] {}, .failed = askToolkit}, owner);
}

} // namespace varnhold
