#include "views/desktop/work_area.h"

#include <algorithm>

namespace varnhold {

QRect areaBeside(const std::vector<KeptByPanel>& kept, const QRect& screen) {
    QRect area = screen;
    for (const auto& [edge, place] : kept) {
        const QRect part = place & screen;
        const bool isFlat = edge == Qt::TopEdge || edge == Qt::BottomEdge;
        const bool isAnothers =
            isFlat ? part.height() > screen.height() / 2 : part.width() > screen.width() / 2;
        if (part.isEmpty() || isAnothers) {
            continue;
        }
        switch (edge) {
        case Qt::LeftEdge:
            area.setLeft(std::max(area.left(), part.right() + 1));
            break;
        case Qt::RightEdge:
            area.setRight(std::min(area.right(), part.left() - 1));
            break;
        case Qt::TopEdge:
            area.setTop(std::max(area.top(), part.bottom() + 1));
            break;
        case Qt::BottomEdge:
            area.setBottom(std::min(area.bottom(), part.top() - 1));
            break;
        }
    }
    return area;
}

} // namespace varnhold
