#pragma once

#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>
#include <vector>

#include "views/settings/dragging/drop_target.h"

namespace varnhold {

// A drag by keys alone, for those who can't use a pointer: arrows and Tab choose among the stops of
// all targets of the window that take the kind, Space or Enter drops, Escape gives up. Ends in the
// very same signals of the targets as a drag by pointer.
//
// While it is on, it takes the keys before anyone else does, so it survives the removal of the row
// that it began on; a press of the pointer, or leaving the window, ends it. One for each engine;
// main thread.
class KeyboardDrag final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool active READ active NOTIFY changed)
    Q_PROPERTY(QString payload READ payload NOTIFY changed)
    Q_PROPERTY(QString kind READ kind NOTIFY changed)
    // What a screen reader should say: where the dragged thing is, and how it ended.
    Q_PROPERTY(QString announcement READ announcement NOTIFY announcementChanged)

public:
    using QObject::QObject;

    [[nodiscard]] bool active() const { return active_; }
    [[nodiscard]] QString payload() const { return payload_; }
    [[nodiscard]] QString kind() const { return kind_; }
    [[nodiscard]] QString announcement() const { return announcement_; }

    // `source` must have a signal `began()`. It is given before each step: whoever notes what is
    // being dragged may forget it after a while, and keys take longer than a pointer.
    Q_INVOKABLE void pickUp(QQuickItem* source, const QString& payload, const QString& kind,
                            const QString& name);
    Q_INVOKABLE void giveUp();

signals:
    void changed();
    void announcementChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Stop {
        QPointer<DropTarget> target;
        int number = 0;
    };

    [[nodiscard]] std::vector<Stop> stops() const;
    void handle(int key, bool repeated);
    void choose(int by);
    void moveTo(const Stop& stop);
    void returnHome();
    void drop();
    void end(const QString& announcement);
    void remind();
    void announce(const QString& announcement);

    bool active_ = false;
    QString payload_;
    QString kind_;
    QString name_;
    QString announcement_;
    QPointer<QQuickItem> source_;
    QPointer<QQuickWindow> window_;
    Stop at_;
    Stop home_; // where the row stood at first; none if it comes from elsewhere
};

} // namespace varnhold
