#include <gtest/gtest.h>

#include <QApplication>
#include <QEvent>
#include <chrono>
#include <filesystem>
#include <string>
#include <unistd.h>
#include <vector>

#include "app/app_delegate.h"
#include "support/fake_platform.h"
#include "support/records.h"
#include "support/temporary_home.h"
#include "views/qt_presentation.h"
#include "views/status/status_strip.h"
#include "waiting.h"

namespace varnhold::testing {
namespace {

using namespace std::chrono_literals;

class PaintCounter final : public QObject {
public:
    PaintCounter() { qApp->installEventFilter(this); }
    int paints = 0;

    bool eventFilter(QObject*, QEvent* event) override {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

// The whole supervisor with its real views over a fleet on paper; time is virtual.
struct ShownSupervisor {
    TemporaryHome home;
    FakePlatform platform;
    Constants constants{home.path()};
    QtPresentation presentation{{platform.interfaces, constants}};
    std::string role = "idle-test-" + std::to_string(::getpid());
    std::string log = "/tmp/vh-" + role + ".log";
    std::string label = "com.ostrelleai." + role + ".telegramd";
    AppDelegate delegate{platform.interfaces, constants, presentation};

    ShownSupervisor() {
        platform.home = home.path();
        platform.answer = [this](const platform::ProcessRequest& request) {
            platform::ProcessResult result;
            result.started = true;
            if (request.arguments == std::vector<std::string>{"list"}) {
                result.standardOutput = "PID\tStatus\tLabel\n10\t0\t" + label + "\n";
            }
            return result;
        };
        home.write(constants.botsConfigFile, encodeBots({bot(role, {.label = label})}));
        delegate.applicationDidFinishLaunching();
        platform.settle();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(strip()));
        QCoreApplication::processEvents();
    }
    ~ShownSupervisor() { std::filesystem::remove(log); }
    ShownSupervisor(const ShownSupervisor&) = delete;
    ShownSupervisor& operator=(const ShownSupervisor&) = delete;

    [[nodiscard]] static StatusStrip* strip() {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (auto* found = qobject_cast<StatusStrip*>(window)) {
                return found;
            }
        }
        return nullptr;
    }

    // Lets the time pass with everything that happens in it, painting included.
    void pass(std::chrono::milliseconds time) {
        for (auto passed = 0ms; passed < time; passed += 20ms) {
            platform.advance(20ms);
            platform.settle();
            QCoreApplication::processEvents();
        }
    }
};

TEST(IdleFleet, PaintsNothingThroughAllItsTicksAndPolls) {
    ShownSupervisor supervisor;
    supervisor.pass(3s);
    const PaintCounter counter;
    supervisor.pass(61s);
    EXPECT_EQ(counter.paints, 0);
}

TEST(BusyFleet, PaintsTheStripUntilItsBarsStandStillAgain) {
    ShownSupervisor supervisor;
    supervisor.pass(3s);
    const PaintCounter counter;
    supervisor.home.write(supervisor.log, "[MSG] [PROCESS]\n");
    supervisor.pass(2s);
    EXPECT_GT(counter.paints, 5);
    EXPECT_GT(supervisor.delegate.bars().barCurrent.at(supervisor.role), 0.5);
    supervisor.pass(20s);
    EXPECT_EQ(supervisor.delegate.bars().barCurrent.at(supervisor.role), 0.0);
    const int afterwards = counter.paints;
    supervisor.pass(20s);
    EXPECT_EQ(counter.paints, afterwards);
}

} // namespace
} // namespace varnhold::testing
