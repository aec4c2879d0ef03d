#include "views/settings/menu_bar.h"

#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleOptionMenuItem>

#include "views/colors/colors.h"
#include "views/desktop/panel.h"
#include "views/status/menu_style.h"

namespace varnhold {

namespace {

constexpr int titlePadding = 10; // points, as all of these
constexpr int titleHeight = 24;
constexpr int barMargin = 2;
constexpr qreal titleRadius = 5;

void drawTitle(const QStyleOptionMenuItem& title, QPainter& painter, const QStyle& style) {
    painter.fillRect(title.rect, title.palette.color(QPalette::Window));
    QColor color = title.palette.color(QPalette::WindowText);
    if (title.state.testFlag(QStyle::State_Selected)) {
        const Selection selection = selectionColors(title.palette);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(selection.ground);
        painter.drawRoundedRect(title.rect, titleRadius, titleRadius);
        color = selection.text;
    }
    painter.setPen(color);
    const bool showsKeys = style.styleHint(QStyle::SH_UnderlineShortcut, &title) != 0;
    painter.drawText(title.rect,
                     Qt::AlignCenter | Qt::TextSingleLine |
                         (showsKeys ? Qt::TextShowMnemonic : Qt::TextHideMnemonic),
                     title.text);
}

class BarMenu final : public QMenu {
public:
    BarMenu(const QString& title, QWidget* parent) : QMenu(title, parent) {
        setAttribute(Qt::WA_TranslucentBackground);
        setWindowFlag(Qt::FramelessWindowHint);
        auto* style = new MenuStyle;
        style->setParent(this);
        setStyle(style);
    }

protected:
    void resizeEvent(QResizeEvent* event) override {
        QMenu::resizeEvent(event);
        chooseCorners(*this);
    }
};

// Draws the bar on the window's own ground, without frames, and the chosen title on a rounded
// ground as rows of menus are.
class MenuBarStyle final : public QProxyStyle {
public:
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption* option,
                                         const QSize& size, const QWidget* widget) const override;
    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption* option,
                                  const QWidget* widget) const override;
};

void MenuBarStyle::drawControl(ControlElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const {
    if (element == CE_MenuBarEmptyArea) {
        painter->fillRect(option->rect, option->palette.color(QPalette::Window));
        return;
    }
    const auto* title = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (element != CE_MenuBarItem || title == nullptr) {
        QProxyStyle::drawControl(element, option, painter, widget);
        return;
    }
    painter->save();
    drawTitle(*title, *painter, *proxy());
    painter->restore();
}

void MenuBarStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                 QPainter* painter, const QWidget* widget) const {
    if (element != PE_PanelMenuBar && element != PE_FrameMenu) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

QSize MenuBarStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                     const QSize& size, const QWidget* widget) const {
    const auto* title = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    if (type != CT_MenuBarItem || title == nullptr) {
        return QProxyStyle::sizeFromContents(type, option, size, widget);
    }
    const int width = title->fontMetrics.size(Qt::TextShowMnemonic, title->text).width();
    return {width + 2 * titlePadding, titleHeight};
}

int MenuBarStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                              const QWidget* widget) const {
    switch (metric) {
    case PM_MenuBarHMargin:
    case PM_MenuBarVMargin:
    case PM_MenuBarItemSpacing:
        return barMargin;
    case PM_MenuBarPanelWidth:
        return 0;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

} // namespace

QMenu* addMenu(QMenuBar& bar, const QString& title) {
    auto* menu = new BarMenu(title, &bar);
    bar.addMenu(menu);
    return menu;
}

void dressMenuBar(QMenuBar& bar) {
    auto* style = new MenuBarStyle;
    style->setParent(&bar);
    bar.setStyle(style);
}

} // namespace varnhold
