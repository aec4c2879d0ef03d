#include "launchctl/choose_manager.h"

#include <chrono>

#include "jobs/job_store.h"
#include "jobs/unit_marks.h"
#include "launchctl/known_jobs.h"
#include "launchctl/s6_manager.h"
#include "launchctl/systemd_manager.h"
#include "launchctl/waiting.h"

namespace varnhold::services {

namespace {

using namespace std::chrono_literals;

constexpr auto absenceLimit = 5s; // far longer than a user manager is away by itself
constexpr auto pauseBetweenAttempts = 50ms;
// How long one answer may take. Whoever lists is shown what is known instead, and somebody waits
// for that with a menu in his hand.
constexpr std::chrono::microseconds answerLimitOfLists = 1s;
constexpr std::chrono::microseconds answerLimitOfChanges = 25s;

} // namespace

Result<std::unique_ptr<ServiceManager>>
chooseManager(const std::string& folder, const std::string& agentExec, Purpose purpose) {
    auto store = JobStore::open(folder);
    if (!store) {
        return failure(store.error());
    }
    auto s6 = JobStore::open(folder).and_then(
        [&](JobStore own) { return S6Manager::open(std::move(own), agentExec); });
    if (!s6 || (*s6)->hasJobs()) {
        return s6;
    }
    // Whoever asks, from a terminal, a timer or another session, finds the same manager by the
    // runtime folder; variables of the caller have no say in it.
    const std::string session = folder.substr(0, folder.rfind('/'));
    const auto limit = purpose == Purpose::list ? answerLimitOfLists : answerLimitOfChanges;
    auto manager = UserManager::connect(session, limit);
    const auto isAway = [&] { return !manager && hasUnits(*store); };
    const auto isBack = [&] {
        if (isAway()) {
            manager = UserManager::connect(session, limit);
        }
        return !isAway();
    };
    const auto absence = purpose == Purpose::list ? 0s : absenceLimit;
    if (!waitUntil(absence, isBack, pauseBetweenAttempts)) {
        return std::make_unique<KnownJobs>(
            *std::move(store), "the user manager that has the loaded jobs doesn't answer; should "
                               "it be gone for good, remove " +
                                   folder + "/jobs");
    }
    if (!manager) {
        return s6;
    }
    return std::make_unique<SystemdManager>(*std::move(manager), *std::move(store), agentExec);
}

} // namespace varnhold::services
