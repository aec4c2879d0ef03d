#pragma once

#include <QMainWindow>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWidget>
#include <QQuickWindow>
#include <QTest>
#include <functional>
#include <gtest/gtest.h>
#include <initializer_list>

#include "scripted_drag.h"
#include "views/settings/dragging/drag_session.h"
#include "views/settings/dragging/keyboard_drag.h"
#include "views/settings/keyed_list_model.h"

namespace varnhold::testing {

// A page with a library to drag from, two lists in zones, a list without one, and a zone for bots;
// shown in a widget as the settings window is. What it is told of drops stands in `told`.
class Board : public QObject {
    Q_OBJECT

public:
    explicit Board(const QSize& size = {700, 400});
    ~Board() override;

    Q_INVOKABLE void tell(const QString& what) {
        told.append(what);
        emit heard(what);
    }
    // As the record does: a row that is dragged over another one of its list takes its place.
    Q_INVOKABLE void reorder(varnhold::KeyedListModel* list, const QString& over);
    Q_INVOKABLE void note(const QString& uid) { dragged = uid; }

    static void fill(KeyedListModel& list, const QStringList& uids);
    [[nodiscard]] static QStringList uids(const KeyedListModel& list);
    [[nodiscard]] QQuickItem* find(const QString& name) const;
    // The middle of a list's row, or of an item, on the window.
    [[nodiscard]] QPoint row(const QString& list, int number) const;
    [[nodiscard]] QQuickItem* source(const QString& uid, QQuickItem* under = nullptr) const;
    [[nodiscard]] QPoint middle(const QString& item) const;
    [[nodiscard]] DragSession& session() const;
    [[nodiscard]] KeyboardDrag& keyboard() const;

    void press(const QPoint& at);
    void moveTo(const QPoint& at);
    void release();
    // Drags what is there: a real press and a real move, then what the script does with it. True
    // if the drag ended in a drop that was taken.
    bool drag(const QPoint& from, const std::function<void(ScriptedDrag& drag)>& script,
              const QPoint& by = {12, 0});
    // Gives the focus as Tab would, then presses the keys one after the other.
    void keys(QQuickItem* from, std::initializer_list<Qt::Key> keys) const;

    QStringList told;
    QString dragged;
    QMainWindow window;
    QQuickWidget* page = nullptr;
    KeyedListModel library{{"uid", "name"}};
    KeyedListModel first{{"uid", "name"}};
    KeyedListModel second{{"uid", "name"}};

signals:
    void heard(const QString& what);

private:
    QPoint pointer_;
};

} // namespace varnhold::testing
