#include <gmock/gmock.h>
#include <string>
#include <utility>
#include <vector>

#include <QImage>
#include <QSignalSpy>

#include "fleets.h"
#include "status/fleet_picture.h"
#include "views/status/exported_menu.h"
#include "views/status/exported_row.h"
#include "waiting.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Choice = std::pair<MenuAction, std::string>;

// The menu with a panel that reads it and clicks on it.
struct ShownMenu {
    std::vector<Choice> choices;
    ExportedMenu menu{[this](MenuAction action, const std::string& value) {
        choices.emplace_back(action, value);
    }};
    QSignalSpy layouts{&menu, &ExportedMenu::LayoutUpdated};
    QSignalSpy updates{&menu, &ExportedMenu::ItemsPropertiesUpdated};

    [[nodiscard]] QList<MenuLayout> rows() const {
        MenuLayout layout;
        static_cast<void>(menu.GetLayout(0, -1, {}, layout));
        return layout.rows;
    }
    [[nodiscard]] QList<int> ids() const {
        QList<int> all;
        for (const MenuLayout& row : rows()) {
            all.append(row.id);
        }
        return all;
    }
    [[nodiscard]] QString label(qsizetype row) const {
        return rows().at(row).properties[QStringLiteral("label")].toString();
    }
    void show() { static_cast<void>(menu.AboutToShow(0)); }
    void hide() { menu.Event(0, QStringLiteral("closed"), QDBusVariant(QString()), 0); }
    void click(int id) { menu.Event(id, QStringLiteral("clicked"), QDBusVariant(QString()), 0); }
};

QVariantMap botRow(const char* title) {
    return exportedRow({.kind = MenuRow::Kind::item, .title = title});
}

QColor middleOf(const QVariantMap& row) {
    const QImage picture = QImage::fromData(row[QStringLiteral("icon-data")].toByteArray());
    return picture.pixelColor(picture.width() / 2, picture.height() * 3 / 5);
}

TEST(ExportedMenu, ChangesTextsInPlaceEvenWhileItIsOpen) {
    ShownMenu shown;
    std::vector<MenuRow> rows = menuRows();
    shown.menu.setRows(rows);
    const QList<int> ids = shown.ids();
    shown.show();
    rows[8].title = "changed";
    shown.menu.setRows(rows);
    EXPECT_EQ(shown.ids(), ids);
    EXPECT_EQ(shown.label(8), QStringLiteral("changed"));
    EXPECT_EQ(shown.layouts.count(), 1);
    ASSERT_EQ(shown.updates.count(), 1);
    const auto updated = shown.updates[0][0].value<QList<MenuProperties>>();
    ASSERT_EQ(updated.size(), 1);
    EXPECT_EQ(updated[0].id, ids[8]);
    const auto removed = shown.updates[0][1].value<QList<MenuPropertyNames>>();
    ASSERT_EQ(removed.size(), 1); // the sign that stood there
    EXPECT_EQ(removed[0].names, QStringList{QStringLiteral("icon-data")});
}

TEST(ExportedMenu, SaysNothingWhereNothingHasChanged) {
    ShownMenu shown;
    shown.menu.setRows(menuRows());
    shown.menu.setRows(menuRows());
    EXPECT_EQ(shown.layouts.count(), 1);
    EXPECT_EQ(shown.updates.count(), 0);
}

TEST(ExportedMenu, KeepsItsRowsWhileItIsOpenAndTakesTheNewOnesWhenItCloses) {
    ShownMenu shown;
    shown.menu.setRows(menuRows());
    const QList<int> ids = shown.ids();
    shown.show();
    shown.menu.setRows(statusMenuRows({}));
    EXPECT_EQ(shown.ids(), ids);
    shown.hide();
    WAIT_UNTIL(shown.rows().size() == 7);
}

TEST(ExportedMenu, TakesAChoiceThatComesAfterThePanelHasClosedIt) {
    ShownMenu shown;
    shown.menu.setRows(menuRows());
    const int alert = shown.ids().at(2);
    shown.show();
    shown.menu.setRows(statusMenuRows({}));
    shown.hide();
    shown.menu.setRows(statusMenuRows({.bots = {{.title = "another poll"}}}));
    shown.click(alert);
    WAIT_UNTIL(!shown.choices.empty());
    EXPECT_THAT(shown.choices, ElementsAre(Choice(MenuAction::reloginProvider, "gemini")));
    WAIT_UNTIL(!shown.ids().contains(alert));
    shown.click(alert); // too late by far: it is nobody's number now
    QCoreApplication::processEvents();
    EXPECT_EQ(shown.choices.size(), 1U);
}

TEST(ExportedMenu, OpenedAgainSoonAfterItsClosingStillKeepsItsRows) {
    ShownMenu shown;
    ShownMenu closedLater;
    for (ShownMenu* each : {&shown, &closedLater}) {
        each->menu.setRows(menuRows());
        each->show();
        each->hide();
    }
    shown.show();
    const QList<int> ids = shown.ids();
    shown.menu.setRows(statusMenuRows({}));
    closedLater.menu.setRows(statusMenuRows({}));
    WAIT_UNTIL(closedLater.rows().size() == 7);
    EXPECT_EQ(shown.ids(), ids);
}

TEST(ExportedMenu, CarriesTheValueOfARow) {
    ShownMenu shown;
    shown.menu.setRows(menuRows());
    shown.click(shown.ids().at(2));
    EXPECT_THAT(shown.choices, IsEmpty()); // the panel isn't kept waiting
    WAIT_UNTIL(!shown.choices.empty());
    EXPECT_THAT(shown.choices, ElementsAre(Choice(MenuAction::reloginProvider, "gemini")));
}

TEST(ExportedMenu, TakesNoChoiceOfARowThatCantBeChosen) {
    ShownMenu shown;
    shown.menu.setRows(menuRows());
    for (const MenuLayout& row : shown.rows()) {
        if (row.properties.value(QStringLiteral("enabled"), true) == false ||
            row.properties.contains(QStringLiteral("type"))) {
            shown.click(row.id);
        }
    }
    QCoreApplication::processEvents();
    EXPECT_THAT(shown.choices, IsEmpty());
}

TEST(ExportedMenu, GivesPanelsWhatTheyAskFor) {
    ShownMenu shown;
    shown.menu.setRows(menuRows());
    const int first = shown.ids().first();
    const QStringList label{QStringLiteral("label")};
    const auto group = shown.menu.GetGroupProperties({first}, label);
    ASSERT_EQ(group.size(), 1);
    EXPECT_EQ(group[0].properties.keys(), label);
    EXPECT_EQ(shown.menu.GetProperty(first, label[0]).variant(), shown.label(0));
    MenuLayout layout;
    static_cast<void>(shown.menu.GetLayout(0, 0, {}, layout));
    EXPECT_TRUE(layout.rows.isEmpty());
    static_cast<void>(shown.menu.GetLayout(first, -1, label, layout));
    EXPECT_EQ(layout.id, first);
    EXPECT_TRUE(layout.rows.isEmpty());
    EXPECT_EQ(shown.menu.EventGroup({{.id = 100000, .name = QStringLiteral("clicked")}}),
              QList<int>{100000});
}

TEST(ExportedRow, ShowsAStateAsAPictureAndNotASecondTimeInItsText) {
    for (const char* title :
         {"🟢 🤖 Bot (Idle)", "🔴 🤖 Bot (Idle)", "⚪️ 🤖 Bot (Idle)"}) {
        EXPECT_EQ(botRow(title)[QStringLiteral("label")], QString::fromUtf8("🤖 Bot (Idle)"));
    }
    const QColor running = middleOf(botRow("🟢 x"));
    const QColor crashed = middleOf(botRow("🔴 x"));
    const QColor stopped = middleOf(botRow("⚪️ x"));
    EXPECT_GT(running.green(), running.red() + 80);
    EXPECT_GT(crashed.red(), crashed.green() + 80);
    EXPECT_LT(stopped.saturation(), 20);
    EXPECT_EQ(stopped.alpha(), 255);
    EXPECT_FALSE(botRow("Quit").contains(QStringLiteral("icon-data")));
}

TEST(ExportedRow, OfAnAlertIsRed) {
    const QVariantMap row = exportedRow({.kind = MenuRow::Kind::item,
                                         .title = "⚠️ Re-login to Gemini (Google)",
                                         .action = MenuAction::reloginProvider,
                                         .value = "gemini",
                                         .red = true});
    EXPECT_EQ(row[QStringLiteral("label")], QStringLiteral("Re-login to Gemini (Google)"));
    EXPECT_EQ(row[QStringLiteral("disposition")], QStringLiteral("alert"));
    const QImage picture = QImage::fromData(row[QStringLiteral("icon-data")].toByteArray());
    const QColor corner = picture.pixelColor(picture.width() / 4, picture.height() * 3 / 4);
    EXPECT_GT(corner.red(), corner.green() + 80);
}

TEST(ExportedRow, NamesNoKey) {
    for (const MenuRow& row : menuRows()) {
        EXPECT_FALSE(exportedRow(row).contains(QStringLiteral("shortcut")));
    }
}

} // namespace
} // namespace varnhold::testing
