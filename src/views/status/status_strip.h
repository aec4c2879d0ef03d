#pragma once

#include <QTimer>
#include <QWidget>
#include <functional>
#include <vector>

#include "views/status/menu_opener.h"
#include "views/status/status_display.h"
#include "views/status/strip_place.h"

namespace varnhold {

// The status item where there is no tray: a small bar above other windows that shows the bars and
// the text as a menu bar would, and drops the menu on a click or a key. Dragging moves it, and it
// is found there again; until then it keeps to a place where it covers nothing of use. Main thread.
//
// Beside a compositor that would tile it, frame it or give it the keyboard, and over a bar that is
// the shell's own, no window manager has a say in it.
class StatusStrip final : public QWidget, public StatusDisplay {
    Q_OBJECT
public:
    // `opener` and `defaults` must outlive it. `removed` is called when somebody closes it.
    StatusStrip(MenuOpener& opener, platform::UserDefaults& defaults,
                std::function<void()> removed);

    void setImage(const BarImage& image) override;
    void setTitle(const QString& title, const QString& spoken) override;
    void setAttention(bool) override {}                   // its text says so
    void setRows(const std::vector<MenuRow>&) override {} // the opener has them
    [[nodiscard]] QRect anchor() const override;

    // Shows it in its place.
    void place();
    // Drops the menu, as a click does.
    void openMenu();

    [[nodiscard]] QSize sizeHint() const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    enum class Press {
        none,
        click,      // as long as the pointer keeps still
        ownMove,    // the strip follows the pointer by itself
        systemMove, // the window manager moves it
    };

    void fit();
    void stayOnScreen();
    void putDown();
    void makeWay();
    void comeOut();
    [[nodiscard]] QPoint home() const;
    [[nodiscard]] bool mayCoverTopBar() const;
    [[nodiscard]] QRectF imageRectangle() const;

    MenuOpener& opener_;
    StripPlace place_;
    std::function<void()> removed_;
    const bool isUnmanaged_;
    QTimer moved_;
    QTimer fullScreen_;
    BarImage image_;
    QString title_;
    QPoint home_; // where it was last put by itself
    QPoint pressedAt_;
    Press press_ = Press::none;
    bool isBeingMoved_ = false; // by the window manager
};

} // namespace varnhold
