#include <QApplication>
#include <cstdlib>
#include <unistd.h>

#include "app/app_delegate.h"
#include "app/end_signals.h"
#include "app/single_instance.h"
#include "platform/posix_system.h"
#include "platform/qt/qt_platform.h"
#include "shell/constants.h"
#include "shell/roster.h"
#include "views/qt_presentation.h"

int main(int argc, char** argv) {
    // A column count inherited from a terminal would make ps cut the lines that the orphan sweep
    // reads.
    ::unsetenv("COLUMNS");
    const auto system = varnhold::platform::makeSystem();
    const varnhold::Constants constants(system->homeDirectory());
    const varnhold::Roster roster;

    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Varnhold"));
    QApplication::setDesktopFileName(QStringLiteral("varnhold"));
    // Closing the settings window must never take the fleet down.
    QApplication::setQuitOnLastWindowClosed(false);

    varnhold::SingleInstance instance(system->runtimeDirectory());
    if (!instance.claim()) {
        return EXIT_SUCCESS;
    }

    varnhold::platform::QtPlatform platform;
    varnhold::QtPresentation presentation;
    varnhold::AppDelegate delegate(platform.interfaces(), constants, presentation);
    instance.listen([&delegate] { delegate.applicationShouldHandleReopen(false); });
    varnhold::endOnSignals([&presentation] { presentation.terminate(); });
    QMetaObject::invokeMethod(
        &app, [&delegate] { delegate.applicationDidFinishLaunching(); }, Qt::QueuedConnection);
    QApplication::exec();
    delegate.applicationWillTerminate();
    // Nothing waits for fleet operations that still run in the background.
    std::_Exit(EXIT_SUCCESS);
}
