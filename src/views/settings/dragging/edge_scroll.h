#pragma once

#include <QDropEvent>
#include <QMimeData>
#include <QPointF>
#include <QQuickWindow>
#include <QTimer>

namespace varnhold {

// Scrolls the areas of a window while something is dragged near one of their edges, be it over a
// target or not. What comes to lie under the resting pointer is told of it as if the pointer
// had moved. Main thread.
class EdgeScroll final : public QObject {
    Q_OBJECT

public:
    // From now on, and as long as the window lives. Idempotent.
    static void serve(QQuickWindow* window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    explicit EdgeScroll(QQuickWindow* window);

    [[nodiscard]] bool isShownIn(const QObject* candidate, QPoint* offset) const;
    void follow(const QDropEvent& event, const QPoint& offset);
    void step();

    QQuickWindow* window_; // the parent
    QPointF pointer_;      // on the window
    QMimeData dragged_;
    Qt::DropActions actions_;
    bool repeating_ = false;
    QTimer timer_;
};

} // namespace varnhold
