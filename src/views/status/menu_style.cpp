#include "views/status/menu_style.h"

#include <QAction>
#include <QMenu>
#include <QPainter>
#include <QStyleOptionMenuItem>
#include <algorithm>
#include <cmath>

#include "views/colors/colors.h"
#include "views/desktop/panel.h"
#include "views/text/emoji_text.h"

namespace varnhold {

namespace {

constexpr int rowHeight = 26; // points, as all of these
constexpr int separatorHeight = 9;
constexpr int sidePadding = 14;
constexpr int keyGap = 28;
constexpr int framePadding = 5;
constexpr int scrollerHeight = 18;
constexpr qreal selectionInset = 5;
constexpr qreal selectionRadius = 5;

struct RowText {
    QString title;
    QString key;
};

RowText textOf(const QString& row) {
    const qsizetype tab = row.indexOf(QLatin1Char('\t'));
    QString title = row.left(tab);
    title.replace(QLatin1String("&&"), QLatin1String("&"));
    return {title, tab < 0 ? QString() : row.mid(tab + 1)};
}

// What a row's key takes of its width, with the distance to the title.
qreal keyRoom(const QFont& font, const RowText& text) {
    return text.key.isEmpty() ? 0 : std::ceil(emojiTextWidth(font, text.key)) + keyGap;
}

bool isAlert(const QStyleOptionMenuItem& row, const QWidget* widget) {
    const auto* menu = qobject_cast<const QMenu*>(widget);
    const QAction* action = menu != nullptr ? menu->actionAt(row.rect.center()) : nullptr;
    return action != nullptr && action->property(MenuStyle::alertProperty).toBool();
}

void drawSeparator(const QStyleOptionMenuItem& row, QPainter& painter) {
    QColor line = row.palette.color(QPalette::WindowText);
    line.setAlphaF(isHighContrast(row.palette) ? 0.6F : 0.15F);
    const int middle = row.rect.center().y();
    painter.fillRect(
        QRect(row.rect.left() + sidePadding, middle, row.rect.width() - 2 * sidePadding, 1), line);
}

void drawRow(const QStyleOptionMenuItem& row, QPainter& painter, bool alert) {
    const bool enabled = row.state.testFlag(QStyle::State_Enabled);
    const bool selected = enabled && row.state.testFlag(QStyle::State_Selected);
    QColor color = row.palette.color(QPalette::WindowText);
    if (selected) {
        const Selection selection = selectionColors(row.palette);
        painter.setPen(Qt::NoPen);
        painter.setBrush(selection.ground);
        painter.drawRoundedRect(QRectF(row.rect).adjusted(selectionInset, 0, -selectionInset, 0),
                                selectionRadius, selectionRadius);
        color = selection.text;
    } else if (alert) {
        color = alertColor(row.palette);
    } else if (!enabled) {
        color = quietColor(row.palette);
    }
    const RowText text = textOf(row.text);
    const QRectF place = QRectF(row.rect).adjusted(sidePadding, 0, -sidePadding, 0);
    painter.setFont(row.font);
    painter.setPen(color);
    drawEmojiText(painter, place,
                  elidedEmojiText(row.font, text.title, place.width() - keyRoom(row.font, text)));
    painter.setPen(selected ? color : quietColor(row.palette));
    drawEmojiText(painter, place, text.key, Qt::AlignRight);
}

} // namespace

QString menuRowTitle(const QString& row) {
    return textOf(row).title;
}

int menuRowWidth(const QFont& font, const QString& row) {
    const RowText text = textOf(row);
    return static_cast<int>(
        std::ceil(emojiTextWidth(font, text.title) + keyRoom(font, text) + 2 * sidePadding));
}

void MenuStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
    const auto* row = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (element != CE_MenuItem || row == nullptr) {
        QProxyStyle::drawControl(element, option, painter, widget);
        return;
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (row->menuItemType == QStyleOptionMenuItem::Separator) {
        drawSeparator(*row, *painter);
    } else {
        drawRow(*row, *painter, isAlert(*row, widget));
    }
    painter->restore();
}

void MenuStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                              QPainter* painter, const QWidget* widget) const {
    if (element == PE_PanelMenu) {
        drawPanel(*painter, option->rect, option->palette, menuRadius);
        return;
    }
    if (element != PE_FrameMenu) { // the panel has its frame already
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

QSize MenuStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                  const QWidget* widget) const {
    const auto* row = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (type != CT_MenuItem || row == nullptr) {
        return QProxyStyle::sizeFromContents(type, option, size, widget);
    }
    if (row->menuItemType == QStyleOptionMenuItem::Separator) {
        return {2 * sidePadding, separatorHeight};
    }
    return {std::min(menuRowWidth(row->font, row->text), widestRow_), rowHeight};
}

int MenuStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                           const QWidget* widget) const {
    switch (metric) {
    case PM_MenuVMargin:
        return framePadding;
    case PM_MenuScrollerHeight:
        return scrollerHeight;
    case PM_MenuHMargin:
    case PM_MenuPanelWidth:
        return 0;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int MenuStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* result) const {
    if (hint == SH_Menu_AllowActiveAndDisabled) {
        return 0; // arrow keys pass headers over
    }
    if (hint == SH_Menu_Scrollable) {
        return 1; // rather than a second column
    }
    return QProxyStyle::styleHint(hint, option, widget, result);
}

} // namespace varnhold
