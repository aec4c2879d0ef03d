#pragma once

#include <QQuickImageProvider>

namespace varnhold {

// Draws the window's signs in the colour and at the size that are asked for, so that they are crisp
// at every scale: "NAME?COLOUR", the colour as rrggbb or aarrggbb. Called on the engine's thread.
class SymbolProvider final : public QQuickImageProvider {
public:
    SymbolProvider() : QQuickImageProvider(Image) {}

    QImage requestImage(const QString& id, QSize* size, const QSize& requested) override;
};

// Draws the program's icon: "icon". Called on the engine's thread.
class ApplicationIconProvider final : public QQuickImageProvider {
public:
    ApplicationIconProvider() : QQuickImageProvider(Pixmap) {}

    QPixmap requestPixmap(const QString& id, QSize* size, const QSize& requested) override;
};

} // namespace varnhold
