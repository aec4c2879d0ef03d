#pragma once

#include <QObject>
#include <QSize>
#include <functional>

class QScreen;
class QWidget;

namespace varnhold {

// Keeps a window with all of its frame on its screen: as it first shows, in the middle and as large
// as it wants to be or the screen has room for; later only where screens or panels change under it.
// Beside or under a compositor it first fits every screen, since nobody tells on which it will be.
// What a frame takes is known once the window manager has made it, so what was guessed before is
// then set right. A window manager that gives the window a size of its own, as those do that tile,
// has its way: it would only refuse another, and the toolkit go by what it has asked for. Main
// thread; it belongs to the window.
class WindowFit final : public QObject {
    Q_OBJECT
public:
    // `wanted`: the size that the window would like to have without frame, in so much room.
    WindowFit(QWidget& window, std::function<QSize(const QSize& room)> wanted);

    // Before the window first shows.
    void prepareFor(const QScreen& screen);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fit();

    QWidget& window_;
    std::function<QSize(const QSize& room)> wanted_;
    QSize prepared_; // what it was given before it first showed
    QSize wish_;     // what it had before the screen had no room for it
    QSize given_;    // what it then got
    bool isFresh_ = true;
};

} // namespace varnhold
