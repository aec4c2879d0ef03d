#pragma once

#include <QIcon>

namespace varnhold {

// Our own icon, for those who haven't put one of theirs in its place. Main thread.
[[nodiscard]] QIcon defaultApplicationIcon();

} // namespace varnhold
