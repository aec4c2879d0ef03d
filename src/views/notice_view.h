#pragma once

#include <QPointer>
#include <QWidget>

#include "status/presentation.h"

namespace varnhold {

// The panel that tells of new models: a header with the icon, then each message and, where a chain
// in use is affected, a warning under it. Closes on a press outside it and on Escape.
class NoticeView final : public QWidget {
    Q_OBJECT
public:
    NoticeView(const NoticePanel& panel, const QPixmap& icon, QWidget* parent);

    // Shows it under the anchor, a rectangle on the screen, and within that screen.
    void showUnder(const QRect& anchor);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace varnhold
