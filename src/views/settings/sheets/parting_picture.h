#pragma once

#include <QImage>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace varnhold {

// A picture of the whole window as it was, laid over it: what goes is seen to go, while the thing
// itself is gone already and takes no keys and no presses. Fill the window with it. Main thread.
class PartingPicture : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT

public:
    explicit PartingPicture(QQuickItem* parent = nullptr);

    // Without a window that can be seen there is nothing to take.
    Q_INVOKABLE void take();
    // Gives back the memory, too.
    Q_INVOKABLE void drop();

protected:
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;

private:
    QImage picture_;
    bool isFresh_ = false;
};

} // namespace varnhold
