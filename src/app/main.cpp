#include <QApplication>
#include <QByteArray>
#include <cstdlib>
#include <optional>
#include <string>
#include <sys/prctl.h>

#include "app/activation.h"
#include "app/app_delegate.h"
#include "app/coming_forward.h"
#include "app/command_line.h"
#include "app/display_check.h"
#include "app/end_signals.h"
#include "app/guardian.h"
#include "app/session_client.h"
#include "app/single_instance.h"
#include "lifecycle/fleet.h"
#include "platform/inherited_state.h"
#include "platform/posix_system.h"
#include "platform/qt/qt_platform.h"
#include "shell/constants.h"
#include "shell/daemon_code.h"
#include "shell/roster.h"
#include "views/desktop/display_connection.h"
#include "views/desktop/near_scale.h"
#include "views/desktop/startup_notice.h"
#include "views/qt_presentation.h"

namespace {

// Under X11 the strip can be placed, even by a Wayland desktop's own X server. The toolkit is told
// so as it starts, and children must not inherit it: their toolkits know better.
class PreferX11 final {
public:
    PreferX11() {
        if (!userHasChosen_) {
            qputenv(variable, "xcb;wayland");
        }
    }
    ~PreferX11() {
        if (!userHasChosen_) {
            qunsetenv(variable);
        }
    }
    PreferX11(const PreferX11&) = delete;
    PreferX11& operator=(const PreferX11&) = delete;

private:
    static constexpr const char* variable = "QT_QPA_PLATFORM";
    const bool userHasChosen_ = qEnvironmentVariableIsSet(variable);
};

// What the toolkit is told as it starts.
struct Choices {
    PreferX11 system;
    varnhold::NearScale scale;
};

void describeApplication() {
    QApplication::setApplicationName(QStringLiteral("Varnhold"));
    QApplication::setDesktopFileName(QStringLiteral("com.ostrelleai.Varnhold"));
    // Closing the settings window must never take the fleet down.
    QApplication::setQuitOnLastWindowClosed(false);
}

// What is left to do where the program went with its display.
void takeFleetDown(int argc, char** argv, const varnhold::Constants& constants) {
    const QCoreApplication app(argc, argv);
    varnhold::platform::QtPlatform platform;
    varnhold::shutDownAll({platform.interfaces(), constants});
}

// By way of the queue, so that an early knock is answered after the launch.
void reopenLater(varnhold::AppDelegate& delegate, const varnhold::Activation& activation) {
    QMetaObject::invokeMethod(
        qApp,
        [&delegate, activation] {
            varnhold::withActivation(
                activation, [&delegate] { delegate.applicationShouldHandleReopen(false); });
        },
        Qt::QueuedConnection);
}

// The actions of the desktop entry, by their names there. Any other is left alone.
void act(varnhold::AppDelegate& delegate, varnhold::Presentation& presentation,
         const QString& action, const varnhold::Activation& activation) {
    if (action == QLatin1String("preferences")) {
        varnhold::withActivation(activation, [&delegate] { delegate.openModelSelector(); });
    } else if (action == QLatin1String("restart-all-agents")) {
        delegate.restartAllAgents();
    } else if (action == QLatin1String("quit")) {
        presentation.terminate();
    }
}

// By way of the queue, as above.
void actLater(varnhold::AppDelegate& delegate, varnhold::Presentation& presentation,
              const QString& action, const varnhold::Activation& activation) {
    QMetaObject::invokeMethod(
        qApp,
        [&delegate, &presentation, action, activation] {
            act(delegate, presentation, action, activation);
        },
        Qt::QueuedConnection);
}

void listen(varnhold::SingleInstance& instance, varnhold::AppDelegate& delegate,
            varnhold::Presentation& presentation) {
    instance.listen(
        [&delegate](const varnhold::Activation& right) { reopenLater(delegate, right); },
        [&delegate, &presentation](const QString& action, const varnhold::Activation& right) {
            actLater(delegate, presentation, action, right);
        });
}

// From the launch to the end, which is the process's own.
[[noreturn]] void supervise(varnhold::SingleInstance& instance, varnhold::Guardian& guardian,
                            const varnhold::Constants& constants,
                            const QByteArray& sessionStartupId) {
    varnhold::platform::QtPlatform platform;
    varnhold::QtPresentation presentation({platform.interfaces(), constants});
    presentation.setActivationPolicy(varnhold::ActivationPolicy::accessory);
    varnhold::AppDelegate delegate(platform.interfaces(), constants, presentation);
    listen(instance, delegate, presentation);
    varnhold::endOnSignals([&presentation] { presentation.terminate(); });
    const varnhold::SessionClient session(sessionStartupId,
                                          [&presentation] { presentation.terminate(); });
    QMetaObject::invokeMethod(
        qApp, [&delegate] { delegate.applicationDidFinishLaunching(); }, Qt::QueuedConnection);
    const auto end = [&instance, &delegate, &guardian] {
        instance.stopListening();
        delegate.applicationWillTerminate();
        guardian.dismiss();
    };
    varnhold::beforeSuddenExit(end);
    QApplication::exec();
    end();
    // Nothing waits for fleet operations that still run in the background.
    std::_Exit(EXIT_SUCCESS);
}

} // namespace

int main(int argc, char** argv) {
    varnhold::platform::shedInheritedState();
    ::prctl(PR_SET_NAME, "varnhold"); // what users know it by, in the lists of processes
    if (const auto answered = varnhold::answerWords(argc, argv)) {
        return *answered;
    }
    const auto system = varnhold::platform::makeSystem();
    const varnhold::Constants constants(system->homeDirectory());
    const varnhold::Roster roster;

    // For a later start to hand over: the first one shows no window by itself. The door has knocked
    // already; whoever has come since is found when the instance is claimed.
    const varnhold::Activation activation = varnhold::takeActivation();
    const QByteArray sessionStartupId = varnhold::takeSessionStartupId();
    varnhold::Guardian guardian(argc, argv, [&] { takeFleetDown(argc, argv, constants); });
    std::optional<Choices> choices(std::in_place);
    std::optional<varnhold::DisplayCheck> displayCheck(std::in_place);
    QApplication app(argc, argv);
    displayCheck.reset();
    choices.reset();
    describeApplication();

    varnhold::SingleInstance instance(system->runtimeDirectory(), activation);
    if (!instance.claim()) {
        return EXIT_SUCCESS;
    }
    varnhold::endStartup(activation.startupId); // no window belongs to it
    varnhold::warnOfMissingDaemonCode(*system);
    guardian.guard(varnhold::displayConnection(), instance.lock());
    supervise(instance, guardian, constants, sessionStartupId);
}
