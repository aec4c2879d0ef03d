#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "lifecycle/fleet_context.h"
#include "platform/background.h"
#include "platform/stoppable_processes.h"
#include "records/bots.h"
#include "shell/constants.h"
#include "status/bars.h"
#include "status/counts.h"
#include "status/fleet_picture.h"
#include "status/last_models.h"
#include "status/presentation.h"

namespace varnhold {

// The one application object: it owns the status item, the picture of the fleet and every action on
// it, and lives until the process ends.
//
// Its methods read the platform, call the functions of the floors below and show the result. All of
// them belong to the main thread. The state of the fleet and the logs are read in the background,
// with copies; loading and unloading agents from the menu, and at the end, holds the main thread
// up. The bots file is read anew at every use.
class AppDelegate final {
public:
    using DaemonStatus = varnhold::DaemonStatus;

    // Opens the event database and does nothing else. All three must outlive the object.
    AppDelegate(platform::Platform& platform, const Constants& constants,
                Presentation& presentation);
    AppDelegate(const AppDelegate&) = delete;
    AppDelegate& operator=(const AppDelegate&) = delete;

    // Brings everything up, in an order that others rely on: folders, old settings, menus, the
    // item, a first poll, the timers, and last the fleet itself, in the background.
    void applicationDidFinishLaunching();

    // Takes the fleet down; blocks until the last agent has been unloaded.
    void applicationWillTerminate();

    void installMainMenu();

    // Asks for the state of the fleet as of now, elsewhere, and shows it once it is known. While an
    // earlier question is still open, another follows its answer at once.
    void refreshStatus();
    // The same by the clock: nothing to do while a question is open.
    void poll();
    [[nodiscard]] DaemonStatus getStatus(const std::string& label) const;

    void sampleBotActivity();
    void animateBars();
    [[nodiscard]] BarImage drawBarImage() const;

    void checkModelNotices();
    void showModelNoticePopover(const std::vector<ModelNotice>& notices);
    // Path of the first candidate that gives an image; empty for the application's own icon.
    [[nodiscard]] std::string appIconImage() const;

    [[nodiscard]] std::vector<BotConfig> loadBots() const;
    void rebuildMenu();
    void reloginProvider(const std::string& provider);

    void openModelSelector();
    void closePrefsWindow();
    void windowWillClose();
    // A second start, or a click on the icon. Always true: it has been dealt with.
    bool applicationShouldHandleReopen(bool hasVisibleWindows);
    void openManageCustomGroups();

    // Blocks until the last agent has been loaded, then asks for the state.
    void startAllAgents();
    // Returns at once; the work goes on in the background and polls after each step.
    void restartAllAgents();
    void toggleDaemon(const std::string& label);

    // The picture of the fleet as of the last poll.
    [[nodiscard]] const FleetCounts& counts() const { return counts_; }
    [[nodiscard]] const BarState& bars() const { return bars_; }
    [[nodiscard]] const StatusMap& globalStatusMap() const { return picture_.statuses; }
    [[nodiscard]] const std::map<std::string, std::string>& agentModelMap() const {
        return picture_.models;
    }

private:
    void ask(const std::function<void()>& onListed = nullptr);
    void show(FleetPicture picture);
    void updateCounts();
    void updateTitle();
    void letBarsMove();
    void choose(MenuAction action, const std::string& value);
    void choose(MainMenuAction action);
    void setApplicationIcon();
    void startTimer(std::chrono::milliseconds interval, void (AppDelegate::*operation)());

    platform::Platform& platform_;
    const Constants& constants_;
    Presentation& presentation_;
    FleetContext context_;
    // What works on the fleet in the background stops at the end.
    platform::StoppableProcesses fleetChildren_;
    platform::Platform fleetPlatform_;
    FleetContext fleet_;

    std::unique_ptr<StatusItem> statusItem_;
    std::unique_ptr<SettingsWindow> modelWindow_;
    std::shared_ptr<NoticePopover> noticePopover_; // shared only with its own 14 seconds
    std::shared_ptr<FleetSources> sources_;        // shared with the question that is open
    bool isAsking_ = false;
    bool isToAskAgain_ = false;
    bool hasPicture_ = false;
    FleetCounts counts_;
    BarState bars_;
    FleetPicture picture_;
    std::vector<std::unique_ptr<platform::Timer>> timers_;
    platform::Timer* barAnimTimer_ = nullptr; // of those; paused while no bar moves
    platform::Alive alive_;
};

} // namespace varnhold
