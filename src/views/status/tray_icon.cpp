#include "views/status/tray_icon.h"

#include <QIconEngine>
#include <QPainter>
#include <algorithm>

#include "status/tray_bars.h"
#include "views/status/bar_painter.h"

namespace varnhold {

namespace {

constexpr int narrowestRounded = 4; // pixels; narrower bars keep their corners, or they would blur

class BarIconEngine final : public QIconEngine {
public:
    explicit BarIconEngine(BarImage image) : image_(std::move(image)) {}

    void paint(QPainter* painter, const QRect& place, QIcon::Mode, QIcon::State) override {
        const qreal scale = painter->device()->devicePixelRatio();
        const int side = qRound(std::min(place.width(), place.height()) * scale);
        painter->save();
        painter->translate(place.topLeft());
        painter->scale(1 / scale, 1 / scale);
        paintTrayBars(*painter, image_, side);
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode, QIcon::State) override {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paintTrayBars(painter, image_, std::min(size.width(), size.height()));
        return picture;
    }

    // Sizes that panels take their pick of.
    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override {
        return {{16, 16}, {22, 22}, {24, 24}, {32, 32}, {48, 48}, {64, 64}};
    }

    [[nodiscard]] QIconEngine* clone() const override { return new BarIconEngine(image_); }

private:
    BarImage image_;
};

} // namespace

void paintTrayBars(QPainter& painter, const BarImage& image, int side) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (const TrayBar& bar : trayBars(image, side)) {
        const QRect place(bar.x, bar.y, bar.width, bar.height);
        const qreal radius = bar.width < narrowestRounded ? 0 : bar.width / 3.0;
        painter.setBrush(barColour(bar.hue));
        painter.drawRoundedRect(place, radius, radius);
    }
}

QIcon trayIcon(const BarImage& image) {
    return QIcon(new BarIconEngine(image));
}

} // namespace varnhold
