#include "views/settings/sheets/parting_picture.h"

#include <QQuickWindow>
#include <QSGImageNode>

namespace varnhold {

PartingPicture::PartingPicture(QQuickItem* parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
}

void PartingPicture::take() {
    if (window() == nullptr || size().isEmpty()) {
        return;
    }
    drop(); // or it would be in its own picture
    picture_ = window()->grabWindow();
    isFresh_ = true;
    update();
}

void PartingPicture::drop() {
    picture_ = {};
    update();
}

QSGNode* PartingPicture::updatePaintNode(QSGNode* node, UpdatePaintNodeData*) {
    if (picture_.isNull()) {
        delete node;
        return nullptr;
    }
    auto* image = static_cast<QSGImageNode*>(node);
    if (image == nullptr) {
        image = window()->createImageNode();
        image->setOwnsTexture(true);
        isFresh_ = true;
    }
    if (isFresh_) {
        isFresh_ = false;
        image->setTexture(window()->createTextureFromImage(picture_));
    }
    image->setRect(boundingRect());
    return image;
}

} // namespace varnhold
