#include "views/status/model_notice_view.h"

#include <QAccessible>
#include <QCursor>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include "views/colors/colors.h"
#include "views/desktop/panel.h"
#include "views/desktop/placement.h"
#include "views/desktop/screens.h"
#include "views/desktop/work_area.h"
#include "views/desktop/x11_hints.h"
#include "views/status/accessibility.h"
#include "views/status/text_block.h"
#include "views/text/qt_text.h"

namespace varnhold {

namespace {

using namespace noticeStyle;

constexpr int edgeGap = 6; // points, to the anchor and to the screen's edges

TextBlock* textBlock(const QString& text, int size, QFont::Weight weight = QFont::Normal) {
    auto* made = new TextBlock(text);
    QFont font = made->font();
    font.setPixelSize(size);
    font.setWeight(weight);
    made->setFont(font);
    return made;
}

QHBoxLayout* header(const QString& title, const QPixmap& icon) {
    auto* line = new QHBoxLayout;
    line->setSpacing(headerSpacing);
    if (!icon.isNull()) {
        auto* picture = new QLabel;
        picture->setFixedSize(iconSize, iconSize);
        picture->setScaledContents(true);
        picture->setPixmap(icon);
        line->addWidget(picture);
    }
    line->addWidget(textBlock(title, titleSize, QFont::DemiBold), 1);
    return line;
}

} // namespace

// A tool tip's window has no frame, is nobody's focus and stands above all. Only where no server
// tells us of presses elsewhere must it take them in itself, as a pop-up does.
ModelNoticeView::ModelNoticeView(const NoticePanel& panel, const QPixmap& icon)
    : QWidget(nullptr, (hasX11() ? Qt::ToolTip : Qt::Popup) | Qt::FramelessWindowHint |
                           Qt::NoDropShadowWindowHint) {
    describe(*this, QAccessible::AlertMessage);
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_DeleteOnClose);
    setAccessibleName(toQString(panel.title));
    setWindowTitle(toQString(panel.title));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(padding, padding, padding, padding);
    column->setSpacing(spacing);
    column->addLayout(header(toQString(panel.title), icon));
    area_ = messages(panel);
    column->addWidget(area_, 1);
    colorWarnings();
    setFixedWidth(panel.width);
    // Long messages wrap and must not be cut, so the panel may want more than its usual height.
    heightBeside_ = 2 * padding + spacing + column->itemAt(0)->sizeHint().height();
    wantedHeight_ = std::max(panel.height,
                             heightBeside_ + messages_->heightForWidth(panel.width - 2 * padding));
    takeHeight(wantedHeight_);
    connect(&outside_, &OutsideInput::pressed, this, [this] {
        if (!geometry().contains(QCursor::pos())) {
            close();
        }
    });
    connect(&outside_, &OutsideInput::escaped, this, [this] {
        if (geometry().contains(QCursor::pos()) || QGuiApplication::focusWindow() != nullptr) {
            close();
        }
    });
}

// All that is told, in an area that scrolls where the screen has no room for it.
QScrollArea* ModelNoticeView::messages(const NoticePanel& panel) {
    auto* area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setFocusPolicy(Qt::NoFocus);
    auto* content = new QWidget;
    messages_ = new QVBoxLayout(content);
    messages_->setContentsMargins(0, 0, 0, 0);
    messages_->setSpacing(spacing);
    for (const ModelNotice& notice : panel.notices) {
        addNotice(notice, *messages_);
    }
    if (!panel.rest.empty()) {
        messages_->addWidget(textBlock(toQString(panel.rest), messageSize));
    }
    messages_->addStretch(1);
    area->setWidget(content);
    for (QWidget* ground : {static_cast<QWidget*>(content), area->viewport()}) {
        ground->setAutoFillBackground(false); // the panel is painted below them
    }
    return area;
}

// The messages' area grows and shrinks with it; what doesn't fit there leaves room for a scroll
// bar.
void ModelNoticeView::takeHeight(int height) {
    setFixedHeight(height);
    const int seen = height - heightBeside_;
    int across = width() - 2 * padding;
    if (messages_->heightForWidth(across) > seen) {
        across -= area_->verticalScrollBar()->sizeHint().width();
    }
    area_->widget()->setFixedSize(across, std::max(seen, messages_->heightForWidth(across)));
}

void ModelNoticeView::addNotice(const ModelNotice& notice, QVBoxLayout& column) {
    auto* entry = new QVBoxLayout;
    entry->setSpacing(lineSpacing);
    entry->addWidget(textBlock(toQString(notice.message), messageSize));
    if (notice.inChain) {
        warnings_.push_back(textBlock(QString::fromUtf8(chainWarning), warningSize));
        entry->addWidget(warnings_.back());
    }
    column.addLayout(entry);
}

void ModelNoticeView::colorWarnings() {
    for (TextBlock* warning : warnings_) {
        QPalette colors = palette();
        colors.setColor(QPalette::WindowText, warningColor(palette()));
        warning->setPalette(colors);
    }
}

void ModelNoticeView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        colorWarnings();
    }
}

void ModelNoticeView::showUnder(const QRect& anchor) {
    const QRect area = freeArea(screenAt(anchor)).adjusted(edgeGap, edgeGap, -edgeGap, -edgeGap);
    const QRect place =
        fittedBeside(anchor, {width(), wantedHeight_}, area, Alignment::centre, edgeGap);
    takeHeight(place.height());
    move(place.topLeft());
    show();
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void ModelNoticeView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    drawPanel(painter, rect(), palette(), popoverRadius);
}

void ModelNoticeView::resizeEvent(QResizeEvent*) {
    chooseCorners(*this);
}

void ModelNoticeView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
        return;
    }
    QWidget::keyPressEvent(event);
}

} // namespace varnhold
