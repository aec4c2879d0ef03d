#pragma once

class QMenu;
class QMenuBar;
class QString;

// The window's menu bar and its menus in the design of all our menus; on a Mac they are the
// system's own. Main thread.
namespace varnhold {

// Once, before the bar first shows.
void dressMenuBar(QMenuBar& bar);

// A menu at the bar's end, which owns it.
[[nodiscard]] QMenu* addMenu(QMenuBar& bar, const QString& title);

} // namespace varnhold
