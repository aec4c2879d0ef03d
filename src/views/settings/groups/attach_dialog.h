#pragma once

#include <QStringList>
#include <functional>

class QObject;

namespace varnhold {

enum class AttachKind { files, folder };

// Asks over the window in front, by the desktop's own dialog where it has one, for files, as many
// as one likes, or for a folder: the dialogs of most desktops offer but one of both at a time.
// Returns at once. `use` gets what was chosen, later, unless nothing was or `owner` has gone by
// then. Main thread.
void askForPaths(AttachKind kind, QObject* owner,
                 const std::function<void(const QStringList& paths)>& use);

} // namespace varnhold
