#include <QApplication>
#include <cstdlib>
#include <functional>
#include <string>

#include "app/activation.h"
#include "app/app_delegate.h"
#include "app/command_line.h"
#include "app/end_signals.h"
#include "app/single_instance.h"
#include "platform/inherited_state.h"
#include "platform/posix_system.h"
#include "platform/qt/qt_platform.h"
#include "shell/constants.h"
#include "shell/daemon_code.h"
#include "shell/roster.h"
#include "views/macos/mac_presentation.h"
#include "views/macos/native_application.h"

namespace {

// By way of the queue, so that an early request is answered after the launch.
void reopenLater(varnhold::AppDelegate& delegate, bool hasVisibleWindows) {
    QMetaObject::invokeMethod(
        qApp,
        [&delegate, hasVisibleWindows] {
            delegate.applicationShouldHandleReopen(hasVisibleWindows);
        },
        Qt::QueuedConnection);
}

// What the system tells before there is anybody to hear it goes to nobody.
struct Heard {
    std::function<void(bool hasVisibleWindows)> reopened = [](bool) {};
    std::function<void()> terminating = [] {};
};

// From the launch to the end, which is the process's own.
void supervise(varnhold::SingleInstance& instance, Heard& heard,
               const varnhold::Constants& constants) {
    varnhold::platform::QtPlatform platform;
    varnhold::MacPresentation presentation({platform.interfaces(), constants});
    presentation.setActivationPolicy(varnhold::ActivationPolicy::accessory);
    varnhold::AppDelegate delegate(platform.interfaces(), constants, presentation);

    heard.reopened = [&delegate](bool visible) { reopenLater(delegate, visible); };
    instance.listen([&delegate](const varnhold::Activation&) { reopenLater(delegate, false); },
                    [](const QString&, const varnhold::Activation&) {});
    varnhold::endOnSignals([&presentation] { presentation.terminate(); });
    QMetaObject::invokeMethod(
        qApp, [&delegate] { delegate.applicationDidFinishLaunching(); }, Qt::QueuedConnection);
    // Nothing waits for fleet operations that still run in the background.
    const auto end = [&instance, &delegate] {
        instance.stopListening();
        delegate.applicationWillTerminate();
        std::_Exit(EXIT_SUCCESS);
    };
    heard.terminating = end;
    varnhold::beforeSuddenExit(end);
    QApplication::exec();
    end();
}

} // namespace

int main(int argc, char** argv) {
    varnhold::platform::shedInheritedState();
    if (const auto answered = varnhold::answerWords(argc, argv)) {
        return *answered;
    }
    const auto system = varnhold::platform::makeSystem();
    const varnhold::Constants constants(system->homeDirectory());
    const varnhold::Roster roster;

    Heard heard;
    varnhold::watchApplication(
        {[&heard](bool visible) { heard.reopened(visible); }, [&heard] { heard.terminating(); }});
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Varnhold"));
    // Closing the settings window must never take the fleet down.
    QApplication::setQuitOnLastWindowClosed(false);

    varnhold::SingleInstance instance(system->runtimeDirectory(), {});
    if (!instance.claim()) {
        return EXIT_SUCCESS;
    }
    varnhold::warnOfMissingDaemonCode(*system);
    supervise(instance, heard, constants);
}
