#include "launchctl/systemd_manager.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <optional>
#include <string_view>
#include <sys/wait.h>
#include <vector>

#include "base/unicode.h"
#include "jobs/unit_marks.h"
#include "launchctl/known_jobs.h"
#include "launchctl/process_handle.h"
#include "launchctl/unit_name.h"

namespace varnhold::services {

namespace {

constexpr unsigned mostGenerations = 1000; // each is a former load with processes left behind

// States of a unit in which its main process may be there.
bool mayRun(const Unit& unit) {
    constexpr std::array<std::string_view, 9> subs{"start",         "start-post",   "running",
                                                   "reload",        "stop",         "reload-signal",
                                                   "stop-watchdog", "stop-sigterm", "stop-sigkill"};
    return std::find(subs.begin(), subs.end(), unit.sub) != subs.end();
}

int waitStatus(std::int64_t code, std::int64_t status) {
    return static_cast<int>(code == CLD_EXITED ? status << 8 : status);
}

// A running unit is asked for its process; one that isn't, for the end of its last.
void addQuestions(const Unit& unit, std::vector<Question>& questions) {
    questions.push_back({unit.path, "MainPID"});
    if (!mayRun(unit)) {
        questions.push_back({unit.path, "ExecMainCode"});
        questions.push_back({unit.path, "ExecMainStatus"});
    }
}

// Takes the answers that belong to the unit, from `next` on.
JobState stateOf(const Unit& unit, const JobFiles& files, const std::vector<Question>& questions,
                 std::size_t& next) {
    JobState state{.label = jobOfUnit(unit.name)->label()};
    const std::int64_t process = questions[next++].answer;
    std::int64_t code = 0;
    std::int64_t status = 0;
    if (!mayRun(unit)) {
        code = questions[next++].answer;
        status = questions[next++].answer;
    }
    if (isHeld(files)) {
        return state;
    }
    if (mayRun(unit) && process > 0) {
        state.process = static_cast<pid_t>(process);
    }
    state.lastEnd = code != 0 ? waitStatus(code, status) : files.lastEnd().value_or(0);
    return state;
}

} // namespace

SystemdManager::SystemdManager(UserManager manager, JobStore store, std::string agentExec)
    : LockingManager(std::move(store), std::move(agentExec)), manager_(std::move(manager)) {}

Result<std::vector<JobState>> SystemdManager::states(const std::vector<std::string>& patterns) {
    auto units = manager_.units(patterns);
    if (!units) {
        return failure(units.error());
    }
    const auto filesOf = [this](const Unit& unit) { return store().job(*jobOfUnit(unit.name)); };
    std::erase_if(*units, [&](const Unit& unit) {
        return !jobOfUnit(unit.name) || filesOf(unit).isLeaving();
    });
    std::vector<Question> questions;
    for (const Unit& unit : *units) {
        addQuestions(unit, questions);
    }
    if (const auto asked = manager_.ask(questions); !asked) {
        return failure(asked.error());
    }
    std::vector<JobState> jobs;
    std::size_t next = 0;
    for (const Unit& unit : *units) {
        jobs.push_back(stateOf(unit, filesOf(unit), questions, next));
    }
    std::sort(jobs.begin(), jobs.end(), precedes);
    return jobs;
}

Result<std::vector<JobState>> SystemdManager::jobs() {
    auto jobs = states({patternOfAllUnits});
    return jobs ? std::move(jobs) : knownJobs(store()); // of a manager that is up and silent
}

Result<std::optional<JobState>> SystemdManager::job(const Label& label) {
    const auto name = nameOfLabel(label);
    if (!name) {
        return std::optional<JobState>();
    }
    const auto found = states({unitOfJob(*name), patternOfGenerations(*name)});
    if (!found) {
        return knownJob(store(), *name);
    }
    return found->empty() ? std::nullopt : std::optional(found->front());
}

Result<std::vector<Unit>> SystemdManager::unitsOf(const JobName& name) {
    return manager_.units({unitOfJob(name), patternOfGenerations(name)});
}

// None if the job isn't loaded, or is on its way out.
Result<std::optional<SystemdManager::Loaded>> SystemdManager::find(const JobName& name) {
    const auto units = unitsOf(name);
    if (!units) {
        return failure(units.error());
    }
    JobFiles files = store().job(name);
    if (units->empty() || files.isLeaving()) {
        return std::optional<Loaded>();
    }
    return std::optional<Loaded>(std::in_place, name, units->front(), std::move(files));
}

Result<Outcome> SystemdManager::start(const JobName& name, const PropertyList& list,
                                      const std::string& folder) {
    if (folder.find('$') != std::string::npos) {
        // It would be taken for a variable, and the way round that doesn't survive a reload.
        return failure("a user manager can't be given a path with \"$\" in it: " + folder);
    }
    ServiceUnit unit{.description = unicode::isValidUtf8(list.label) ? list.label : folder,
                     .before = {agentExec(), "--wait", folder},
                     .main = {agentExec(), "--unit", folder},
                     .after = {agentExec(), "--note", folder},
                     .keepAlive = list.keepAlive};
    for (unsigned generation = 0; generation < mostGenerations; ++generation) {
        unit.name = unitOfJob(name, generation);
        const auto started = manager_.startTransient(unit);
        if (!started) {
            return failure(started.error());
        }
        if (*started == Reply::done) {
            return Outcome::done;
        }
        // The manager may only now have read the wish of somebody who was killed meanwhile.
        const auto units = unitsOf(name);
        if (!units || !units->empty()) {
            return units.map([](const auto&) { return Outcome::alreadyLoaded; });
        }
    }
    return failure("too many former units of this job have left processes behind");
}

Result<Outcome> SystemdManager::bootstrap(const PropertyList& list, const std::string& content) {
    const auto name = nameOfLabel({list.label});
    if (!name) {
        return failure(name.error());
    }
    TakeDownAtEnd atEnd{*this};
    auto outcome = bootstrapAlone(*name, list, content);
    atEnd.isNeeded = !outcome; // of a tree with a job in it there is nothing to be asked
    return outcome;
}

Result<Outcome> SystemdManager::bootstrapAlone(const JobName& name, const PropertyList& list,
                                               const std::string& content) {
    const auto locks = lock(name);
    if (!locks) {
        return failure(locks.error());
    }
    const auto units = unitsOf(name);
    if (!units) {
        return failure(units.error());
    }
    if (!units->empty() && !store().job(name).isLeaving()) {
        return Outcome::alreadyLoaded;
    }
    for (const Unit& unit : *units) { // somebody who unloaded it was killed half-way
        if (const auto done = unload(unit, name); !done) {
            return failure(done.error());
        }
    }
    const bool held = !list.runAtLoad && !list.keepAlive;
    auto outcome = store().make(name, content).and_then([&](const JobFiles& files) {
        return markAsUnit(files)
            .and_then([&] { return held ? hold(files) : Result<void>(); })
            .and_then([&] { return start(name, list, files.path()); });
    });
    if (!outcome) {
        takeBack(name);
    }
    return outcome;
}

// After a start that has failed. The manager may have the unit all the same and would start it
// again for ever, in vain once its folder has gone. So the folder stays where the unit can't be
// ended, and the job is listed as loaded.
void SystemdManager::takeBack(const JobName& name) {
    const auto units = unitsOf(name);
    const bool gone = units && std::all_of(units->begin(), units->end(),
                                           [&](const Unit& unit) { return end(unit).has_value(); });
    if (gone) {
        store().remove(name);
    }
}

// The wish first and the mark then, so that whoever is killed on the way leaves a job that is as
// loaded as before, or one that ends by itself.
Result<void> SystemdManager::unload(const Unit& unit, const JobName& name) {
    return end(unit, [&] { store().job(name).markLeaving(); }).map([&] { store().remove(name); });
}

Result<void> SystemdManager::end(const Unit& unit, const std::function<void()>& onTaken) {
    return manager_.stop(unit.name, onTaken).map([&](Reply) {
        // One that had to be killed would stay as a failure; one that is gone already has none.
        static_cast<void>(manager_.forgetFailure(unit.name));
    });
}

Result<bool> SystemdManager::mayBeLoaded(const JobName& name) {
    return find(name).map([](const auto& loaded) { return loaded.has_value(); });
}

Result<Outcome>
SystemdManager::changeLoaded(const Label& label,
                             const std::function<Result<Outcome>(const Loaded&)>& work) {
    return change(label, [&](const JobName& name) -> Result<Outcome> {
        const auto loaded = find(name);
        return loaded && *loaded ? work(**loaded)
                                 : loaded.map([](const auto&) { return Outcome::notLoaded; });
    });
}

Result<Outcome> SystemdManager::bootout(const Label& label) {
    return changeLoaded(label, [this](const Loaded& loaded) {
        return unload(loaded.unit, loaded.name).map([] { return Outcome::done; });
    });
}

Result<SystemdManager::MainProcess> SystemdManager::mainProcess(const Unit& unit) {
    std::vector<Question> questions{{unit.path, "MainPID"},
                                    {unit.path, "ExecMainStartTimestampMonotonic"}};
    return manager_.ask(questions).map([&] {
        return MainProcess{static_cast<pid_t>(questions[0].answer), questions[1].answer};
    });
}

Result<Outcome> SystemdManager::kickstart(const Label& label, bool kill) {
    return changeLoaded(label, [&](const Loaded& loaded) -> Result<Outcome> {
        const auto state = job(label);
        if (!state || !*state) {
            return state.map([](const auto&) { return Outcome::notLoaded; });
        }
        const auto running = (*state)->process;
        if (running && !kill) {
            return Outcome::done;
        }
        if (running) {
            if (const auto killed = killAgent(loaded, *running); !killed) {
                return failure(killed.error());
            }
        } else {
            loaded.files.skipThrottle();
        }
        const auto list = loaded.files.definition();
        if (list && list->keepAlive) {
            return Outcome::done;
        }
        release(loaded.files);
        // Nobody else would start it.
        return manager_.restart(loaded.unit.name).map([](Reply) { return Outcome::done; });
    });
}

// Only this one, and not one that has come since, which is what was asked for.
Result<void> SystemdManager::killAgent(const Loaded& loaded, pid_t running) {
    const auto noted = mainProcess(loaded.unit);
    const ProcessHandle agent(running);
    const auto now = mainProcess(loaded.unit);
    if (!noted || !now) {
        return failure(noted ? now.error() : noted.error());
    }
    loaded.files.skipThrottle();
    if (*now == *noted && now->process == running) {
        agent.kill();
    }
    return {};
}

Result<Outcome> SystemdManager::stop(const Label& label) {
    const auto name = nameOfLabel(label);
    if (!name) {
        return Outcome::notLoaded;
    }
    const auto loaded = find(*name);
    if (!loaded || !*loaded) {
        return loaded.map([](const auto&) { return Outcome::notLoaded; });
    }
    if (isHeld((*loaded)->files)) {
        return Outcome::done;
    }
    return manager_.kill((*loaded)->unit.name, SIGTERM).map([](Reply) { return Outcome::done; });
}

// Of a fleet one job is asked for: the first that the manager has ends the question, and folders of
// those that it doesn't have are remains.
bool SystemdManager::endRemains() {
    for (const JobName& name : store().names()) {
        const auto units = unitsOf(name);
        if (!units || !units->empty()) {
            return false;
        }
        store().remove(name);
    }
    return true;
}

} // namespace varnhold::services
