#pragma once

#include <QDrag>
#include <QPixmap>
#include <QPointer>
#include <QQuickItem>
#include <QQuickItemGrabResult>
#include <QTimer>
#include <QtQml/qqmlregistration.h>
#include <functional>

namespace varnhold {

// What a pointer drags at the moment, out of this window and into any other.
//
// The platform's drag runs in an event loop of its own, in which the dragged row may be moved,
// renamed or removed. So nothing of a delegate takes part in it: the row asks for the drag, has
// its picture taken, and may go. One for each engine; main thread.
class DragSession final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool active READ active NOTIFY changed)
    Q_PROPERTY(QString payload READ payload NOTIFY changed)
    Q_PROPERTY(QString kind READ kind NOTIFY changed)
    // What is reminded, if it still stands; it must have a signal `began()`.
    Q_PROPERTY(QQuickItem* source READ source WRITE setSource)

public:
    explicit DragSession(QObject* parent = nullptr);

    // From the request for a drag until its end. False for what other programs drag here.
    [[nodiscard]] bool active() const { return active_; }
    [[nodiscard]] QString payload() const { return payload_; }
    // "model" or "bot"; empty while nothing of ours is dragged.
    [[nodiscard]] QString kind() const { return kind_; }

    [[nodiscard]] QQuickItem* source() const { return source_; }
    void setSource(QQuickItem* source) { source_ = source; }
    // Has whoever notes what is being dragged note it anew. Does nothing while nothing of ours is
    // dragged.
    Q_INVOKABLE void remind();

    // Drags the text with a picture of the item, held at the point given in the item's coordinates.
    // Returns at once; does nothing while another drag is on. The text may be empty, as an identity
    // in a file made by hand may be.
    Q_INVOKABLE void start(QQuickItem* item, const QString& payload, const QString& kind,
                           qreal hotX, qreal hotY);

    // Has the drag carried out by someone else than the platform. It returns when the drag is over,
    // with what became of it.
    void setCarrier(std::function<Qt::DropAction(QDrag&)> carrier) {
        carrier_ = std::move(carrier);
    }

    // Whether a target of these kinds takes what is dragged. Text of other programs has no kind.
    Q_INVOKABLE [[nodiscard]] bool suits(const QStringList& kinds) const;

    // What a place under the pointer answers the platform, which shows the pointer that goes with
    // it: one that forbids where a drop of ours would come to nothing. What others drag is answered
    // as they propose.
    Q_INVOKABLE [[nodiscard]] Qt::DropAction answer(bool useful, Qt::DropAction proposed);

    // The text as it was meant: programs like to add a line break.
    Q_INVOKABLE [[nodiscard]] static QString textOf(const QString& dropped);

signals:
    void changed();
    void finished(const QString& payload, bool taken);

private:
    void run();
    void end(bool taken);

    bool active_ = false;
    QString payload_;
    QString kind_;
    QPointer<QQuickWindow> window_;
    QPointer<QQuickItem> source_;
    QPointer<QDrag> drag_;
    QSharedPointer<QQuickItemGrabResult> grab_;
    QSizeF size_;
    QPointF hot_;
    QPixmap sign_; // that forbids
    std::function<Qt::DropAction(QDrag&)> carrier_;
    QTimer grabTimeout_;
};

} // namespace varnhold
