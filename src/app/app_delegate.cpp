#include "app/app_delegate.h"

#include <chrono>
#include <latch>
#include <utility>

#include "base/files.h"
#include "lifecycle/fleet.h"
#include "lifecycle/service_control.h"
#include "settings/sign_in.h"
#include "shell/daemon_code.h"
#include "shell/migration.h"

namespace varnhold {

namespace {

using namespace std::chrono_literals;

constexpr auto pollInterval = 10s;
constexpr auto sampleInterval = 2s;
constexpr auto animationInterval = 60ms;
constexpr auto noticeInterval = 8s;
constexpr auto noticeDuration = 14s;
// The window needs a moment on screen before a sheet can slide down from it.
constexpr auto sheetDelay = 300ms;
// For the first answer of the service manager; the menu has to be there even if none comes.
constexpr auto longestBlank = 1s;
// For a child of the background at the end; a job takes 5 seconds to be unloaded at the most.
constexpr auto longestWaitForChildren = 10s;

} // namespace

AppDelegate::AppDelegate(platform::Platform& platform, const Constants& constants,
                         Presentation& presentation)
    : platform_(platform),
      constants_(constants),
      presentation_(presentation),
      context_{platform, constants},
      fleetChildren_(platform.processes),
      fleetPlatform_{fleetChildren_,  platform.queues,   platform.timers, platform.clock,
                     platform.system, platform.defaults, platform.http},
      fleet_{fleetPlatform_, constants},
      sources_(std::make_shared<FleetSources>(constants)) {
    presentation_.connect({
        .onMenuChosen = [this](MenuAction action,
                               const std::string& value) { choose(action, value); },
        .onMainMenuChosen = [this](MainMenuAction action) { choose(action); },
        .onStatusItemRemoved = [this] { presentation_.terminate(); },
        .onWindowClosed = [this] { windowWillClose(); },
    });
}

void AppDelegate::applicationDidFinishLaunching() {
    ensureAppSupportDirs(constants_);
    migrateFromLegacyPathIfNeeded(constants_);
    installMainMenu();
    statusItem_ = presentation_.createStatusItem();
    setApplicationIcon();
    // The fleet is started only after it has been looked at as it was.
    const auto listed = std::make_shared<std::latch>(1);
    ask([listed] { listed->count_down(); });
    platform_.queues.postMainAfter(longestBlank, [this] {
        if (!hasPicture_) {
            show(pictureOfFiles(constants_));
        }
    });
    startTimer(pollInterval, &AppDelegate::poll);
    startTimer(sampleInterval, &AppDelegate::sampleBotActivity);
    startTimer(animationInterval, &AppDelegate::animateBars);
    barAnimTimer_ = timers_.back().get();
    checkModelNotices();
    startTimer(noticeInterval, &AppDelegate::checkModelNotices);
    platform_.queues.postBackground(platform::Priority::userInitiated, [this, listed] {
        listed->wait();
        startAll(fleet_);
        platform_.queues.postMain([this] { refreshStatus(); });
    });
}

void AppDelegate::startTimer(std::chrono::milliseconds interval, void (AppDelegate::*operation)()) {
    timers_.push_back(
        platform_.timers.repeat(interval, [this, operation] { (this->*operation)(); }));
}

void AppDelegate::applicationWillTerminate() {
    const bool atRest = fleetChildren_.stop(longestWaitForChildren);
    shutDownAll(context_);
    if (!atRest) {
        shutDownAll(context_); // what was still under way may have loaded an agent meanwhile
    }
}

void AppDelegate::installMainMenu() {
    presentation_.installMainMenu(mainMenus());
}

void AppDelegate::refreshStatus() {
    isToAskAgain_ = isAsking_;
    if (!isAsking_) {
        ask();
    }
}

void AppDelegate::poll() {
    if (!isAsking_) {
        ask();
    }
}

void AppDelegate::ask(const std::function<void()>& onListed) {
    isAsking_ = true;
    platform::background(
        platform_.queues, platform::Priority::userInitiated, alive_,
        [context = context_, sources = sources_, onListed] {
            return gather(context, *sources, onListed);
        },
        [this](FleetPicture picture) {
            isAsking_ = false;
            if (std::exchange(isToAskAgain_, false)) {
                ask();
            }
            show(std::move(picture));
        });
}

void AppDelegate::show(FleetPicture picture) {
    hasPicture_ = true;
    picture_ = std::move(picture);
    updateCounts();
    updateTitle();
    rebuildMenu();
}

void AppDelegate::updateCounts() {
    counts_ = countBots(picture_.bots, picture_.statuses);
}

AppDelegate::DaemonStatus AppDelegate::getStatus(const std::string& label) const {
    return statusOf(picture_.statuses, label);
}

void AppDelegate::updateTitle() {
    setOrder(bars_, rolesOf(picture_.bots));
    letBarsMove();
    statusItem_->setImage(drawBarImage());
    statusItem_->setTitle(statusTitle(counts_), spokenStatus(counts_));
    statusItem_->setAttention(counts_.crashedCount > 0);
}

void AppDelegate::sampleBotActivity() {
    platform_.queues.postBackground(
        platform::Priority::utility, [this, roles = bars_.botOrder, statuses = picture_.statuses,
                                      previous = bars_.lastActivityMarks, logs = bars_.logs] {
            ActivitySample sample = sampleActivity(roles, statuses, previous, logs);
            platform_.queues.postMain([this, roles, sample = std::move(sample)] {
                apply(bars_, roles, sample);
                letBarsMove();
            });
        });
}

void AppDelegate::animateBars() {
    if (animate(bars_)) {
        statusItem_->setImage(drawBarImage());
    } else if (barAnimTimer_ != nullptr) {
        barAnimTimer_->pause();
    }
}

// Whoever has given them a target or their order.
void AppDelegate::letBarsMove() {
    if (barAnimTimer_ != nullptr && !areAtRest(bars_)) {
        barAnimTimer_->resume();
    }
}

BarImage AppDelegate::drawBarImage() const {
    return barImage(bars_, constants_.RAINBOW_END);
}

void AppDelegate::checkModelNotices() {
    const std::vector<ModelNotice> notices =
        takeModelNotices(constants_.appSupportDir + "/pending_model_notices.json");
    if (!notices.empty()) {
        showModelNoticePopover(notices);
    }
}

void AppDelegate::showModelNoticePopover(const std::vector<ModelNotice>& notices) {
    if (noticePopover_) {
        noticePopover_->close();
    }
    noticePopover_ = presentation_.showNoticePopover(noticePanel(notices), appIconImage());
    platform_.queues.postMainAfter(noticeDuration,
                                   [popover = std::weak_ptr<NoticePopover>(noticePopover_)] {
                                       if (const auto shown = popover.lock()) {
                                           shown->close();
                                       }
                                   });
}

std::string AppDelegate::appIconImage() const {
    for (const std::string& candidate :
         {platform_.system.bundlePath() + "/Contents/Resources/AppIcon.icns",
          constants_.appIconFile}) {
        if (files::exists(candidate) && presentation_.isImage(candidate)) {
            return candidate;
        }
    }
    return {};
}

void AppDelegate::setApplicationIcon() {
    if (const std::string icon = appIconImage(); !icon.empty()) {
        presentation_.setApplicationIcon(icon);
    }
}

std::vector<BotConfig> AppDelegate::loadBots() const {
    return varnhold::loadBots(constants_);
}

void AppDelegate::rebuildMenu() {
    statusItem_->setMenu(statusMenuRows(picture_));
}

void AppDelegate::reloginProvider(const std::string& provider) {
    if (!startSignIn(platform_, provider)) {
        openModelSelector();
        modelWindow_->presentAlert(noTerminalAlert);
    }
}

void AppDelegate::openModelSelector() {
    if (!modelWindow_) {
        modelWindow_ = presentation_.createSettingsWindow();
    }
    presentation_.setActivationPolicy(ActivationPolicy::regular);
    setApplicationIcon();
    modelWindow_->bringToFront();
    presentation_.activate();
    // Once more at the next turn: a window that has only just been mapped may not take the focus
    // yet.
    platform_.queues.postMain([this] { presentation_.activate(); });
}

void AppDelegate::closePrefsWindow() {
    if (modelWindow_) {
        modelWindow_->close();
        presentation_.setActivationPolicy(ActivationPolicy::accessory);
    }
}

void AppDelegate::windowWillClose() {
    presentation_.setActivationPolicy(ActivationPolicy::accessory);
}

bool AppDelegate::applicationShouldHandleReopen(bool) {
    openModelSelector();
    return true;
}

void AppDelegate::openManageCustomGroups() {
    openModelSelector();
    platform_.queues.postMainAfter(sheetDelay, [this] { modelWindow_->presentCustomGroups(); });
}

void AppDelegate::startAllAgents() {
    startAll(context_);
    refreshStatus();
}

void AppDelegate::restartAllAgents() {
    platform_.queues.postBackground(
        platform::Priority::userInitiated, [this, bots = activeBots(constants_)] {
            restartAll(fleet_, bots,
                       [this] { platform_.queues.postMain([this] { refreshStatus(); }); });
        });
}

void AppDelegate::toggleDaemon(const std::string& label) {
    varnhold::toggleDaemon(context_, label, getStatus(label) == DaemonStatus::running);
    refreshStatus();
}

void AppDelegate::choose(MenuAction action, const std::string& value) {
    switch (action) {
    case MenuAction::none:
        return;
    case MenuAction::openModelSelector:
        return openModelSelector();
    case MenuAction::startAllAgents:
        return startAllAgents();
    case MenuAction::restartAllAgents:
        return restartAllAgents();
    case MenuAction::toggleDaemon:
        return toggleDaemon(value);
    case MenuAction::reloginProvider:
        return reloginProvider(value);
    case MenuAction::terminate:
        return presentation_.terminate();
    }
}

void AppDelegate::choose(MainMenuAction action) {
    switch (action) {
    case MainMenuAction::openModelSelector:
        return openModelSelector();
    case MainMenuAction::closePrefsWindow:
        return closePrefsWindow();
    case MainMenuAction::openManageCustomGroups:
        return openManageCustomGroups();
    case MainMenuAction::terminate:
        return presentation_.terminate();
    default:
        return; // the views see to the rest by themselves: it concerns the window alone
    }
}

} // namespace varnhold
