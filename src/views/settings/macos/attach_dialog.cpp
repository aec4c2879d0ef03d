#include "views/settings/groups/attach_dialog.h"

#include <functional>

#include "views/settings/groups/toolkit_dialog.h"

namespace varnhold {

// The toolkit's is the system's own here.
void askForPaths(AttachKind kind, QObject* owner,
                 const std::function<void(const QStringList& paths)>& use) {
    askToolkitForPaths(kind, owner, use);
}

} // namespace varnhold
