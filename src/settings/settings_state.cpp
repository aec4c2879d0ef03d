#include "settings/settings_state.h"

#include <chrono>
#include <utility>

#include "settings/first_run_keys.h"

namespace varnhold {

using namespace std::chrono_literals;

namespace {

// Lets the window come up before a sheet covers it.
constexpr auto firstRunDelay = 400ms;

} // namespace

void ModelSelectorView::observe(ChangeObserver observer) {
    observer_ = std::move(observer);
}

void ModelSelectorView::changed(Animation animation) const {
    if (observer_) {
        observer_(animation);
    }
}

void ModelSelectorView::appear() {
    loadSettings();
    refresh();
    fetchNames();
    if (!platform_.defaults.boolean(welcomeSeenKey)) {
        laterAfter(firstRunDelay, [this] {
            showWelcome = true;
            changed();
        });
    }
    if (!platform_.defaults.boolean(libraryTipSeenKey)) {
        laterAfter(firstRunDelay, [this] {
            showLibraryTip = true;
            changed();
        });
    }
    startKeepaliveTimer();
}

void ModelSelectorView::later(std::function<void()> task) {
    platform_.queues.postMain(alive_.whileAlive(std::move(task)));
}

void ModelSelectorView::laterAfter(std::chrono::milliseconds delay, std::function<void()> task) {
    platform_.queues.postMainAfter(delay, alive_.whileAlive(std::move(task)));
}

} // namespace varnhold
