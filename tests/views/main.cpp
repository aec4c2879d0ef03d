// The views' tests run without a display, with fonts and colours of their own: what they see
// doesn't depend on whose desktop they run on.

#include <QApplication>
#include <QCursor>
#include <QFont>
#include <QStyleFactory>
#include <cstdio>
#include <gmock/gmock.h>

#include "views/colors/colors.h"

namespace {

// The platform without a display says of much that it can't do it, which is what it is there for.
void printUnlessExpected(QtMsgType, const QMessageLogContext&, const QString& message) {
    if (!message.startsWith(QStringLiteral("This plugin does not support"))) {
        std::fprintf(stderr, "%s\n", qPrintable(message));
    }
}

// What a test leaves under the pointer would be under it in the next one's window too.
class PointerOutside final : public ::testing::EmptyTestEventListener {
    void OnTestStart(const ::testing::TestInfo&) override { QCursor::setPos(-100, -100); }
};

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("FONTCONFIG_FILE", VIEWS_TESTS "/fonts.conf");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "none:");
    qputenv("QT_QUICK_BACKEND", "software");
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "XDG_SESSION_TYPE",
                                 "XDG_CURRENT_DESKTOP", "QT_STYLE_OVERRIDE", "QT_FONT_DPI"}) {
        qunsetenv(variable);
    }
    qInstallMessageHandler(printUnlessExpected);
    ::testing::InitGoogleMock(&argc, argv);
    if (GTEST_FLAG_GET(list_tests)) {
        return RUN_ALL_TESTS(); // as the build asks after every link; names need no display
    }
    QApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 10));
    QApplication::setPalette(varnhold::lightPalette());
    ::testing::UnitTest::GetInstance()->listeners().Append(new PointerOutside); // owned there
    return RUN_ALL_TESTS();
}
