#include <QApplication>
#include <QQmlContext>
#include <QQmlExpression>
#include <QRegularExpression>
#include <memory>
#include <string>

#include "shown_item.h"
#include "views/colors/colors.h"

namespace varnhold::testing {
namespace {

// The six sections' tints.
const QStringList tints{QStringLiteral("1.0, 0.93, 0.55"), QStringLiteral("0.85, 0.92, 1.0"),
                        QStringLiteral("0.88, 1.0, 0.88"), QStringLiteral("1.0, 0.95, 0.82"),
                        QStringLiteral("1.0, 0.88, 0.95"), QStringLiteral("0.88, 0.95, 1.0")};

class ThemeContrast : public ::testing::TestWithParam<Look> {
protected:
    ThemeContrast() {
        QApplication::setPalette(paletteOf(GetParam()));
        shown_ = std::make_unique<ShownItem>("Item {}");
    }
    ~ThemeContrast() override { QApplication::setPalette(lightPalette()); }

    // A colour of the theme's, by its name or any expression.
    QColor color(const QString& expression) {
        QQmlExpression asked(qmlContext(shown_->root()), shown_->root(),
                             QString(expression).replace(names_, QStringLiteral("Theme.\\1")));
        const QVariant value = asked.evaluate();
        EXPECT_FALSE(asked.hasError()) << qPrintable(asked.error().toString());
        EXPECT_TRUE(value.canConvert<QColor>()) << qPrintable(expression);
        return value.value<QColor>();
    }

    void expectReadable(const QString& text, const QString& ground) {
        const QString seen = QStringLiteral("over(%1, %2)").arg(text, ground);
        EXPECT_GE(contrast(color(seen), color(ground)),
                  GetParam().highContrast ? strongContrast : readableContrast)
            << qPrintable(text) << " on " << qPrintable(ground);
    }

    // Signs and lines needn't be read, only seen.
    void expectSeen(const QStringList& signs, const QStringList& grounds) {
        for (const QString& ground : grounds) {
            for (const QString& sign : signs) {
                const QString seen = QStringLiteral("over(%1, %2)").arg(sign, ground);
                EXPECT_GE(contrast(color(seen), color(ground)), 3.0)
                    << qPrintable(sign) << " on " << qPrintable(ground);
            }
        }
    }

    void expectReadable(const QStringList& texts, const QStringList& grounds) {
        for (const QString& ground : grounds) {
            for (const QString& text : texts) {
                expectReadable(text, ground);
            }
        }
    }

    static QStringList sections() {
        QStringList grounds;
        for (const QString& tint : tints) {
            grounds.append(QStringLiteral("chainGround(Qt.rgba(%1, 1))").arg(tint));
        }
        return grounds;
    }

    // What groups have as their colours.
    static QStringList groups() {
        QStringList grounds;
        for (const char* pastel : {"FFD6D6", "FFE8CC", "FFFACC", "D6FFD6", "CCF0FF", "E8D6FF",
                                   "FFD6F5", "D6F5E8", "F5D6FF", "D6E8FF", "F0F0F0"}) {
            grounds.append(
                QStringLiteral("pastelGround(\"#%1\", 0.55)").arg(QString::fromLatin1(pastel)));
        }
        return grounds;
    }

    static QStringList plainGrounds() {
        return {QStringLiteral("window"), QStringLiteral("pane"), QStringLiteral("card"),
                QStringLiteral("fieldBackground"), QStringLiteral("raised")};
    }

    static QStringList under(const QString& veil, const QStringList& grounds) {
        QStringList veiled;
        for (const QString& ground : grounds) {
            veiled.append(QStringLiteral("over(%1, %2)").arg(veil, ground));
        }
        return veiled;
    }

    static QStringList words() { return {QStringLiteral("text"), QStringLiteral("secondaryText")}; }

private:
    const QRegularExpression names_{QStringLiteral(R"((?<![\w."])([a-z]\w*)(?![\w"]))")};
    std::unique_ptr<ShownItem> shown_;
};

TEST_P(ThemeContrast, TextIsReadableOnAllPlainGrounds) {
    expectReadable(words(), plainGrounds());
    expectReadable({QStringLiteral("text")}, {QStringLiteral("control")});
}

TEST_P(ThemeContrast, TextIsReadableOnEverySectionAndGroup) {
    expectReadable(words(), sections() + groups());
    expectReadable({QStringLiteral("blue")}, sections() + groups());
}

TEST_P(ThemeContrast, TextIsReadableOnWhatLiesInASection) {
    const QStringList grounds = sections() + groups();
    expectReadable(words(), under(QStringLiteral("faded(secondaryText, 0.08)"), grounds));
    expectReadable(words(), under(QStringLiteral("faded(blue, 0.12)"), grounds));
    expectReadable(words(), under(QStringLiteral("faded(teal, 0.08)"), grounds));
}

TEST_P(ThemeContrast, TextIsReadableOnRowsThatAreChosenOrHovered) {
    const QStringList grounds = plainGrounds();
    for (const char* veil : {"faded(accent, 0.12)", "hover", "faded(text, 0.03)"}) {
        expectReadable(words(), under(QString::fromLatin1(veil), grounds));
    }
    expectReadable({QStringLiteral("text")}, under(QStringLiteral("pressed"), grounds));
    expectReadable({QStringLiteral("text")}, under(QStringLiteral("trough"), grounds + sections()));
}

TEST_P(ThemeContrast, ModelsAreReadableOnEveryGroundOfTheirs) {
    for (const char* name : {"purple", "blue", "green", "orange", "cyan", "red", "teal", "indigo",
                             "pink", "yellow", "mint", "brown", "gray", "something else"}) {
        expectReadable({QStringLiteral("modelText"), QStringLiteral("modelTag")},
                       {QStringLiteral("modelGround(\"%1\")").arg(QString::fromLatin1(name))});
    }
}

TEST_P(ThemeContrast, ColouredWordsAreReadable) {
    const QStringList grounds{QStringLiteral("window"), QStringLiteral("pane"),
                              QStringLiteral("card"), QStringLiteral("raised"),
                              QStringLiteral("over(faded(accent, 0.12), pane)")};
    expectReadable({QStringLiteral("blue"), QStringLiteral("green"), QStringLiteral("red"),
                    QStringLiteral("teal"), QStringLiteral("slackPurple")},
                   grounds);
    expectReadable({QStringLiteral("red")}, {QStringLiteral("control")});
    expectReadable(QStringLiteral("yellow"), QStringLiteral("over(faded(yellow, 0.15), pane)"));
}

TEST_P(ThemeContrast, TheAccentsTextIsReadableOnFilledGrounds) {
    expectReadable(QStringLiteral("accentText"), QStringLiteral("accent")); // the toast's, too
    for (const char* name : {"orange", "red", "green", "blue"}) {
        expectReadable(QStringLiteral("accentText"),
                       QStringLiteral("filled(%1)").arg(QString::fromLatin1(name)));
    }
}

TEST_P(ThemeContrast, BadgesAreReadable) {
    for (const char* name : {"blue", "slackPurple", "green", "orange"}) {
        for (const char* below : {"card", "pane", "window", "over(faded(accent, 0.12), pane)"}) {
            const QString ground = QStringLiteral("over(faded(%1, 0.13), %2)")
                                       .arg(QString::fromLatin1(name), QString::fromLatin1(below));
            expectReadable(
                QStringLiteral("readable(%1, %2)").arg(QString::fromLatin1(name), ground), ground);
        }
    }
}

TEST_P(ThemeContrast, DotsStandOutFromTheirGrounds) {
    expectSeen({QStringLiteral("green"), QStringLiteral("orange"), QStringLiteral("red"),
                QStringLiteral("gray"), QStringLiteral("teal"), QStringLiteral("focusRing")},
               plainGrounds() + sections() + groups());
}

// One of the six tints, one of the groups', and one that a bot may have.
TEST_P(ThemeContrast, EdgesAreSeenWhereItIsStrong) {
    if (!GetParam().highContrast) {
        GTEST_SKIP() << "elsewhere they are faint";
    }
    expectSeen({QStringLiteral("separator"), QStringLiteral("fieldStroke"),
                QStringLiteral("editorStroke"), QStringLiteral("line(text, 0.16)"),
                QStringLiteral("line(gray, 0.4)"), QStringLiteral("line(\"#ffee80\", 0.25)"),
                QStringLiteral("groundEdge(Qt.rgba(1.0, 0.93, 0.55, 1))"),
                QStringLiteral("groundEdge(\"#D6FFD6\")"),
                QStringLiteral("groundEdge(\"#F0F0F0\")")},
               plainGrounds() + sections() + groups());
    EXPECT_EQ(color(QStringLiteral("text")), GetParam().dark ? QColor(Qt::white) : Qt::black);
    for (const QString& ground : plainGrounds() + sections() + groups()) {
        EXPECT_EQ(color(ground), GetParam().dark ? QColor(Qt::black) : Qt::white);
    }
}

constexpr Look looks[] = {{.dark = false, .highContrast = false},
                          {.dark = true, .highContrast = false},
                          {.dark = false, .highContrast = true},
                          {.dark = true, .highContrast = true}};

INSTANTIATE_TEST_SUITE_P(All, ThemeContrast, ::testing::ValuesIn(looks), [](const auto& which) {
    return std::string(which.param.highContrast ? "Strong" : "") +
           (which.param.dark ? "Dark" : "Light");
});

TEST(Theme, FollowsThePaletteWhileItRuns) {
    ShownItem shown("Rectangle { property bool dark: Theme.dark; color: Theme.window }");
    EXPECT_FALSE(shown.root()->property("dark").toBool());
    QApplication::setPalette(darkPalette());
    QCoreApplication::processEvents();
    EXPECT_TRUE(shown.root()->property("dark").toBool());
    EXPECT_TRUE(isDark(QPalette(shown.root()->property("color").value<QColor>())));
    QApplication::setPalette(lightPalette());
    QCoreApplication::processEvents();
    EXPECT_FALSE(shown.root()->property("dark").toBool());
    QApplication::setPalette(paletteOf({.highContrast = true}));
    QCoreApplication::processEvents();
    EXPECT_EQ(shown.root()->property("color").value<QColor>(), QColor(Qt::white));
    QApplication::setPalette(lightPalette());
}

} // namespace
} // namespace varnhold::testing
