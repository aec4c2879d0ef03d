#include <gtest/gtest.h>

#include "views/status/exported_menu.h"
#include "views/text/qt_text.h"

namespace varnhold::testing {
namespace {

// What a panel shows of an exported label: "__" is a sign, a single "_" marks the letter behind it.
QString asThePanelShowsIt(QString label) {
    // The toolkit turns the first "&" that isn't the last sign into "_" on its way out.
    const qsizetype first = label.indexOf(QLatin1Char('&'));
    if (first >= 0 && first != label.size() - 1) {
        label[first] = QLatin1Char('_');
    }
    QString shown;
    for (qsizetype i = 0; i < label.size(); ++i) {
        if (label[i] == QLatin1Char('_')) {
            ++i; // and what follows it is shown, a sign or a marked letter
        }
        if (i < label.size()) {
            shown += label[i];
        }
    }
    return shown;
}

TEST(MenuText, KeepsAmpersandsAndShowsTabsAsSpace) {
    EXPECT_EQ(menuText("Health & Wealth && more"), QStringLiteral("Health && Wealth &&&& more"));
    EXPECT_EQ(menuText("a\tb"), QStringLiteral("a\u2003b"));
    EXPECT_EQ(menuText("a_b"), QStringLiteral("a_b"));
}

TEST(ExportedText, ComesOutAsTypedWhereAPanelShowsIt) {
    for (const char* typed : {"plain", "a_b", "__init__", "A & B", "A & B & C", "&", "A&", "&A",
                              "_&_", "x && y", "Q&A_1 & Q&A_2", ""}) {
        EXPECT_EQ(asThePanelShowsIt(exportedText(typed)), QString::fromUtf8(typed)) << typed;
    }
}

TEST(ToQString, KeepsWhatIsBeyondAscii) {
    EXPECT_EQ(toQString("Wächterin 夜警 🔴"), QString::fromUtf8("Wächterin 夜警 🔴"));
}

} // namespace
} // namespace varnhold::testing
