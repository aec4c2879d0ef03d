#include "views/notice_view.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>

#include "views/colours.h"
#include "views/qt_text.h"
#include "views/text_block.h"

namespace varnhold {

namespace {

constexpr int padding = 16; // points, as all of these
constexpr int spacing = 12;
constexpr int headerSpacing = 9;
constexpr int iconSize = 26;
constexpr int titleSize = 14;
constexpr int messageSize = 12;
constexpr int warningSize = 11;
constexpr int gapUnderAnchor = 6;

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

NoticeView::NoticeView(const NoticePanel& panel, const QPixmap& icon, QWidget* parent)
    : QWidget(parent, Qt::Popup | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint) {
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_DeleteOnClose);
    setAccessibleName(toQString(panel.title));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(padding, padding, padding, padding);
    column->setSpacing(spacing);
    column->addLayout(header(toQString(panel.title), icon));
    for (const ModelNotice& notice : panel.notices) {
        auto* entry = new QVBoxLayout;
        entry->setSpacing(2);
        entry->addWidget(textBlock(toQString(notice.message), messageSize));
        if (notice.inChain) {
            TextBlock* warning = textBlock(QString::fromUtf8(chainWarning), warningSize);
            QPalette colours = warning->palette();
            colours.setColor(QPalette::WindowText, warningColour(palette()));
            warning->setPalette(colours);
            entry->addWidget(warning);
        }
        column->addLayout(entry);
    }
    column->addStretch(1);
    setFixedWidth(panel.width);
    // Long messages wrap and must not be cut, so the panel may grow beyond its wanted height.
    setFixedHeight(std::max(panel.height, column->heightForWidth(panel.width)));
}

void NoticeView::showUnder(const QRect& anchor) {
    const QScreen* screen = QGuiApplication::screenAt(anchor.center());
    const QRect area =
        (screen != nullptr ? screen : QGuiApplication::primaryScreen())->availableGeometry();
    const int wanted = anchor.center().x() - width() / 2;
    const int left = std::clamp(wanted, area.left() + gapUnderAnchor,
                                std::max(area.left(), area.right() - width() - gapUnderAnchor));
    const int below = anchor.bottom() + gapUnderAnchor;
    const int top =
        below + height() <= area.bottom() ? below : anchor.top() - height() - gapUnderAnchor;
    move(left, top);
    show();
}

void NoticeView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    drawPanel(painter, rect(), palette(), popoverRadius);
}

void NoticeView::resizeEvent(QResizeEvent*) {
    roundCorners(*this, popoverRadius);
}

void NoticeView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
        return;
    }
    QWidget::keyPressEvent(event);
}

} // namespace varnhold
