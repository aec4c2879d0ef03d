#pragma once

#include <QPixmap>
#include <QWidget>
#include <vector>

#include "status/tray_bars.h"
#include "views/status/menu_opener.h"
#include "views/status/status_display.h"

namespace varnhold {

// The status item as a window of ours inside a panel of the older kind (XEmbed system tray,
// freedesktop.org). A tray shows no text beside it, so the text is its tooltip. Main thread.
class EmbeddedDisplay final : public QWidget, public StatusDisplay {
    Q_OBJECT
public:
    // `opener` must outlive it.
    explicit EmbeddedDisplay(MenuOpener& opener);

    // Asks the tray to take it in.
    void dock();

    void setImage(const BarImage& image) override;
    void setTitle(const QString& title, const QString& spoken) override;
    void setAttention(bool needed) override;
    void setRows(const std::vector<MenuRow>&) override {} // the opener has them
    [[nodiscard]] QRect anchor() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    MenuOpener& opener_;
    BarImage image_;
    bool attention_ = false;
    QPixmap ground_; // the panel's own, where it can't shine through
};

} // namespace varnhold
