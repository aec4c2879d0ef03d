// What an edit in the settings window holds the main thread up for, with the window's page on an
// unseen display: until the record, its files and the page's properties are as they should be, and
// until that has been drawn.
//
//     HOME=FOLDER bench_edits NAME [ROUNDS]
//
// The settings are those of the home, which it writes to.

#include <QApplication>
#include <QMainWindow>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "platform/qt/qt_user_defaults.h"
#include "quiet_platform.h"
#include "timing.h"
#include "views/settings/settings_page.h"

namespace {

using namespace varnhold;

// The window on the settings of this home.
struct Window {
    bench::QuietPlatform quiet;
    platform::QtUserDefaults defaults{platform::userDefaultsPath(quiet.system->homeDirectory())};
    platform::Platform platform{quiet.processes, quiet.queues, quiet.timers, quiet.clock,
                                *quiet.system,   defaults,     quiet.http};
    Constants constants{quiet.system->homeDirectory()};
    ModelSelectorView view{platform, constants};
    SettingsModel model{{view, {platform, constants}}};
    QMainWindow window;

    Window() {
        view.loadSettings();
        view.refresh();
        window.setCentralWidget(new SettingsPage(model, &window));
        window.resize(1200, 850);
        window.show();
        settle();
    }
    ~Window() { delete window.takeCentralWidget(); }
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    static void settle() {
        for (int turn = 0; turn < 20; ++turn) {
            QApplication::processEvents();
        }
    }
};

struct Measured {
    std::vector<double> held;
    std::vector<double> drawn;
};

void report(const std::string& what, const Measured& measured) {
    bench::report(what, measured.held);
    bench::report(what + ", drawn", measured.drawn);
}

Measured measure(int rounds, const std::function<void(int round)>& edit) {
    Measured measured;
    for (int round = 0; round < rounds; ++round) {
        measured.held.push_back(bench::timed([&] { edit(round); }));
        measured.drawn.push_back(measured.held.back() +
                                 bench::timed([] { QApplication::processEvents(); }));
        Window::settle();
    }
    return measured;
}

void edits(const std::string& name, int rounds) {
    Window shown;
    QString text = QStringLiteral("Be kind.");
    report(name + ": a keystroke in the master prompt", measure(rounds, [&](int) {
               text += QLatin1Char('x');
               shown.model.prompts()->setMasterPrompt(text);
           }));
    shown.model.bots()->select(1);
    report(name + ": a keystroke in a bot's prompt", measure(rounds, [&](int) {
               text += QLatin1Char('x');
               shown.model.prompts()->setBotPrompt(text);
           }));
    ChainPart* first = shown.model.chains().front();
    report(name + ": a hover over a chain",
           measure(rounds, [first](int round) { first->setBotsTargeted(round % 2 == 0); }));
}

void drags(const std::string& name, int rounds) {
    Window shown;
    std::vector<AIModelItem>& chain = shown.view.architectModels;
    const AIModelItem pattern = chain.front();
    chain.clear();
    for (int i = 0; i < 100; ++i) {
        chain.push_back(pattern);
        chain.back().uniqueId = "row-" + std::to_string(i);
    }
    shown.view.changed();
    Window::settle();
    ChainPart* architect = nullptr;
    for (ChainPart* each : shown.model.chains()) {
        architect = each->models()->count() == 100 ? each : architect;
    }
    architect->startDrag(QStringLiteral("row-0"));
    report(name + ": a step of a drag in a chain of 100", measure(rounds, [&](int round) {
               architect->rowEntered(QStringLiteral("row-%1").arg(1 + round % 99));
           }));
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fputs("Usage: bench_edits NAME [ROUNDS]\n", stderr);
        return EXIT_FAILURE;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    QApplication app(argc, argv);
    const int rounds = argc > 2 ? static_cast<int>(std::strtol(argv[2], nullptr, 10)) : 200;
    edits(argv[1], rounds);
    drags(argv[1], rounds);
    std::fflush(stdout);
    std::_Exit(EXIT_SUCCESS);
}
