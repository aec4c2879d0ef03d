#pragma once

#include <QQuickItem>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace varnhold {

// An item on which things are dropped, as the keyboard sees it: a row of places to stop at.
//
// The item says in bindings how many stops it has and where and what the marked one is; a keyboard
// drag marks one stop after the other and drops on the last. The order of targets is that of the
// items on the page. Main thread.
class DropTarget : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QStringList kinds MEMBER kinds NOTIFY kindsChanged)
    Q_PROPERTY(QString name MEMBER name NOTIFY nameChanged)
    Q_PROPERTY(int stops MEMBER stops NOTIFY stopsChanged)
    // Where the dragged thing itself stands; -1 if it doesn't stand here.
    Q_PROPERTY(int home MEMBER home NOTIFY homeChanged)
    // -1 while no stop of this target is chosen.
    Q_PROPERTY(int marked READ marked NOTIFY markedChanged)
    Q_PROPERTY(QRectF markedArea MEMBER markedArea NOTIFY markedAreaChanged)
    // How the marked stop is announced.
    Q_PROPERTY(QString markedName MEMBER markedName NOTIFY markedNameChanged)

public:
    using QQuickItem::QQuickItem;

    QStringList kinds;
    QString name;
    int stops = 0;
    int home = -1;
    QRectF markedArea;
    QString markedName;

    [[nodiscard]] int marked() const { return marked_; }
    void mark(int stop);

protected:
    void itemChange(ItemChange change, const ItemChangeData& value) override;

signals:
    void kindsChanged();
    void nameChanged();
    void stopsChanged();
    void homeChanged();
    void markedChanged();
    void markedAreaChanged();
    void markedNameChanged();
    void stopEntered(int stop);
    void stopDropped(int stop, const QString& text);

private:
    int marked_ = -1;
};

} // namespace varnhold
