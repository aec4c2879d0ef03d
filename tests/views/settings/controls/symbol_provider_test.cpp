#include "views/settings/symbol_provider.h"

#include "shown_item.h"

namespace varnhold::testing {
namespace {

TEST(SymbolProvider, DrawsInTheColourAndAtTheSizeAskedFor) {
    SymbolProvider provider;
    QSize size;
    const QImage image =
        provider.requestImage(QStringLiteral("stop-fill?ff0000"), &size, QSize(48, 48));
    EXPECT_EQ(image.size(), QSize(48, 48));
    EXPECT_EQ(size, QSize(48, 48));
    EXPECT_EQ(image.pixelColor(24, 24), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
}

TEST(SymbolProvider, DrawsInTranslucentColours) {
    SymbolProvider provider;
    const QImage image =
        provider.requestImage(QStringLiteral("stop-fill?80ffffff"), nullptr, QSize(48, 48));
    EXPECT_EQ(image.pixelColor(24, 24).alpha(), 0x80);
}

TEST(SymbolProvider, KnowsEverySignOfTheRecord) {
    ShownItem shown(R"(Item { property var names: Object.values(Theme.symbols) })");
    SymbolProvider provider;
    const QStringList names = shown.root()->property("names").toStringList();
    EXPECT_GE(names.size(), 15);
    for (const QString& name : names) {
        const QImage image =
            provider.requestImage(name + QStringLiteral("?000000"), nullptr, QSize(32, 32));
        bool drawn = false;
        for (int y = 0; y < image.height() && !drawn; ++y) {
            for (int x = 0; x < image.width() && !drawn; ++x) {
                drawn = image.pixelColor(x, y).alpha() > 0;
            }
        }
        EXPECT_TRUE(drawn) << qPrintable(name);
    }
}

TEST(Symbol, IsDrawnForTheScreensPixels) {
    ShownItem shown(R"(Item { Symbol { objectName: "sign"; name: "trash"; size: 20 } })");
    const auto* sign = shown.root()->findChild<QQuickItem*>(QStringLiteral("sign"));
    EXPECT_EQ(sign->size(), QSizeF(24, 24));
    EXPECT_EQ(sign->implicitWidth(), 24);
}

} // namespace
} // namespace varnhold::testing
