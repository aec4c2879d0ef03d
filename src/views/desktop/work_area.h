#pragma once

#include <QRect>
#include <functional>
#include <vector>

class QObject;
class QScreen;

// What panels leave of the screens. Main thread.
namespace varnhold {

// In points. The toolkit says it where there is one screen; beside others, on X11, it calls all of
// a screen free, so there it is told by what panels have asked for. Three round trips to the server
// at most.
[[nodiscard]] QRect freeArea(const QScreen& screen);

// Calls back when panels take more or less, of which the toolkit says nothing where there are
// several screens, for as long as the context lives.
void onPanelsChanged(QObject* context, const std::function<void()>& changed);

// What a panel keeps for itself, at one edge of all screens together.
struct KeptByPanel {
    Qt::Edge edge = Qt::TopEdge;
    QRect place;
};

// What is left of a screen. What would take more than half of it is kept at the edge of another.
[[nodiscard]] QRect areaBeside(const std::vector<KeptByPanel>& kept, const QRect& screen);

} // namespace varnhold
