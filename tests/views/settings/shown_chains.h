#pragma once

#include <QDrag>
#include <QMainWindow>
#include <QQuickItem>
#include <QQuickWidget>
#include <QTest>
#include <functional>

#include "announced.h"
#include "modelled_settings.h"

namespace varnhold::testing {

// What is announced: sections by their titles, steppers by their labels.
inline const QString governor = QStringLiteral("⚖️ Governor Chain");
inline const QString architect = QStringLiteral("Architect Chain");
inline const QString coding = QStringLiteral("Coding Chain");
inline const QString photo = QStringLiteral("Photo Chain");
inline const QString audio = QStringLiteral("Audio Chain");
inline const QString crew = QStringLiteral("Crew"); // the group that tests make
inline const QString effort = QStringLiteral("Effort");
inline const QString context = QStringLiteral("Context");

// The chains and groups on a record of their own, shown. Fill the record before show().
struct ShownChains : ModelledSettings {
    QMainWindow window;
    QQuickWidget* page = nullptr;

    ShownChains() = default;
    ~ShownChains();
    ShownChains(const ShownChains&) = delete;
    ShownChains& operator=(const ShownChains&) = delete;

    void show(const QSize& size = {920, 1700});
    // Lets springs swing out and rows come and go.
    void settle();

    // The first item, from the front, that is announced under this name; null if there is none.
    // `under` is such a name too, of something around it, which isn't meant itself.
    [[nodiscard]] QQuickItem* named(const QString& name, const QString& under = {}) const;
    [[nodiscard]] QQuickItem* focused() const;
    // A colour or measure of the window's theme.
    [[nodiscard]] QVariant theme(const char* property) const;

    void click(const QString& name, const QString& under = {},
               Qt::MouseButton button = Qt::LeftButton);
    void focus(const QString& name, const QString& under = {});
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {});

    // A press and a pull on the row, as far as its being noted that it is dragged.
    void lift(const QString& name, const QString& under);
    // A whole drag of the row: a press and a pull, and while the drag is on what the script does
    // with it, which may call carryTo() and dropAt().
    void drag(const QString& name, const QString& under,
              const std::function<void(const QDrag& drag)>& script);
    // What a platform's drag does to the page, from coming over it to the drop.
    // Gives what the page has answered.
    Qt::DropAction carryTo(const QPoint& at, const QString& text);
    void dropAt(const QPoint& at, const QString& text);
    // From coming over the item to the drop in its middle.
    void drop(const QString& text, const QString& name, const QString& under = {});
    void leave();

private:
    bool carrying_ = false;
};

} // namespace varnhold::testing
