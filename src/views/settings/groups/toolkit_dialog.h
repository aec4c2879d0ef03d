#pragma once

#include <functional>

#include "views/settings/groups/attach_dialog.h"

namespace varnhold {

inline constexpr const char* attachTitle = "Attach File / Folder";
inline constexpr const char* attachLabel = "Attach"; // of the button that takes what is chosen

// As askForPaths, by the toolkit's own dialog. Main thread.
void askToolkitForPaths(AttachKind kind, QObject* owner,
                        const std::function<void(const QStringList& paths)>& use);

} // namespace varnhold
