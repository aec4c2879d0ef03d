#pragma once

#include <QWidget>
#include <vector>

#include "status/notices.h"
#include "views/desktop/outside_input.h"

class QScrollArea;
class QVBoxLayout;

namespace varnhold {

class TextBlock;

// The panel that tells of new models: a header with the icon, then each message and, where a chain
// in use is affected, a warning under it. Main thread.
//
// It comes unasked, so it takes neither the pointer nor the keyboard from whatever the user is
// doing. A press anywhere else closes it, and so does Escape while the pointer is over it or a
// window of ours has the keyboard.
class ModelNoticeView final : public QWidget {
    Q_OBJECT
public:
    ModelNoticeView(const NoticePanel& panel, const QPixmap& icon);

    // Shows it under the anchor, a rectangle on the screen, or above it, within that screen. What
    // there is no room for is scrolled to.
    void showUnder(const QRect& anchor);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] QScrollArea* messages(const NoticePanel& panel);
    void takeHeight(int height);
    void addNotice(const ModelNotice& notice, QVBoxLayout& column);
    void colorWarnings();

    QVBoxLayout* messages_ = nullptr; // of a child
    QScrollArea* area_ = nullptr;
    int wantedHeight_ = 0;
    int heightBeside_ = 0; // of all but the messages
    std::vector<TextBlock*> warnings_;
    OutsideInput outside_;
};

} // namespace varnhold
