#pragma once

class QWidget;

namespace varnhold {

// Draws a top-level widget's frame anew in the colours of this moment, where the toolkit draws it:
// under a compositor that leaves that to programs. It takes its colours once and keeps them. Does
// nothing elsewhere. Main thread.
void renewOwnFrame(const QWidget& window);

} // namespace varnhold
