#pragma once

#include <QWidget>
#include <functional>

#include "views/status/menu_opener.h"
#include "views/status/status_display.h"

namespace varnhold {

// The status item where there is no tray: a small bar above other windows that shows the bars and
// the text as a menu bar would, and drops the menu on a click or a key. Dragging moves it; until
// then it keeps to the top right of the primary screen. Main thread.
class StatusStrip final : public QWidget, public StatusDisplay {
    Q_OBJECT
public:
    // `opener` must outlive it. `removed` is called when somebody closes it.
    StatusStrip(MenuOpener& opener, std::function<void()> removed);

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
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
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
    [[nodiscard]] QPoint home() const;
    [[nodiscard]] QRectF imageRectangle() const;

    MenuOpener& opener_;
    std::function<void()> removed_;
    BarImage image_;
    QString title_;
    QPoint home_; // where it was last put by itself
    QPoint pressedAt_;
    Press press_ = Press::none;
};

} // namespace varnhold
