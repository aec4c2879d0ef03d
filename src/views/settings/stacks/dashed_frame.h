#pragma once

#include <QColor>
#include <QQuickPaintedItem>

namespace varnhold {

// A rounded ground with a dashed outline: painted, so that it is round at every scale of
// the display, also where no graphics card draws. Main thread.
// Not final: the engine derives what it makes.
class DashedFrame : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor fill MEMBER fill_ NOTIFY looksChanged)
    Q_PROPERTY(QColor stroke MEMBER stroke_ NOTIFY looksChanged)
    // All in points.
    Q_PROPERTY(double radius MEMBER radius_ NOTIFY looksChanged)
    Q_PROPERTY(double lineWidth MEMBER lineWidth_ NOTIFY looksChanged)
    Q_PROPERTY(double dash MEMBER dash_ NOTIFY looksChanged)

public:
    explicit DashedFrame(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

signals:
    void looksChanged();

private:
    QColor fill_ = Qt::transparent;
    QColor stroke_ = Qt::black;
    double radius_ = 0;
    double lineWidth_ = 1;
    double dash_ = 4;
};

} // namespace varnhold
