#pragma once

#include <QMimeData>
#include <QPointF>
#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTimer>
#include <memory>

namespace varnhold {

// Scrolls the areas of a window while something is dragged near their upper or lower edge, be it
// over a target or not. What comes to lie under the resting pointer is told of it as if the pointer
// had moved. Main thread.
class EdgeScroll final : public QObject {
    Q_OBJECT

public:
    explicit EdgeScroll(QObject* parent = nullptr);

    // Idempotent.
    void watch(QQuickWindow* window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void follow(const QDropEvent& event);
    void step();
    void stop();

    QPointer<QQuickWindow> window_;
    QPointer<QWindow> onScreen_;
    QPointF pointer_; // on the window
    QMimeData dragged_;
    Qt::DropActions actions_;
    bool repeating_ = false;
    QTimer timer_;
};

} // namespace varnhold
