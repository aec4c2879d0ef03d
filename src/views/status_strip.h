#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>

#include "status/presentation.h"
#include "views/status_menu.h"

namespace varnhold {

// The status item where there is no tray: a small bar above other windows that shows the bars and
// the text as a menu bar would, and drops the menu on a click. Dragging moves it.
class StatusStrip final : public QWidget {
    Q_OBJECT
public:
    StatusStrip(StatusMenu::Choose choose, std::function<void()> removed);

    void setImage(const BarImage& image);
    void setTitle(const QString& title, const QString& spoken);
    void setRows(std::vector<MenuRow> rows);

    // Shows it at the top right of the primary screen.
    void place();

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void openMenu();
    void fit();
    [[nodiscard]] QRectF imageRectangle() const;

    StatusMenu::Choose choose_;
    std::function<void()> removed_;
    BarImage image_;
    QString title_;
    std::vector<MenuRow> rows_;
    QPointer<StatusMenu> menu_;
    QPoint pressedAt_;
    bool moving_ = false;
};

} // namespace varnhold
