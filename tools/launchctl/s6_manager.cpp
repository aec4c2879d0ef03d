#include "launchctl/s6_manager.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "jobs/job_names.h"
#include "jobs/s6_readiness.h"
#include "jobs/tree_names.h"
#include "launchctl/lost_supervisors.h"
#include "launchctl/process_handle.h"

namespace varnhold::services {

namespace {

using namespace std::chrono_literals;

// An agent that ignores a polite end is killed after this; longer would hold up Quit.
constexpr const char* killTimeout = "5000"; // milliseconds
constexpr mode_t scriptMode = 0700;
constexpr mode_t fileMode = 0600;
constexpr unsigned filesOfJob = 32; // 22, and 5 more with the first
constexpr auto supervisorLimit = 10s;
constexpr std::size_t longestLine = 127; // of a script's first; newer systems take twice as many
constexpr auto unloadLimit = 30s;        // the exit timeout and a loaded machine

std::string shellQuoted(const std::string& text) {
    std::string out = "'";
    for (const char c : text) {
        out += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return out + "'";
}

// A script that has agent-exec for its interpreter, and so needs no shell, of which each start and
// each end would pay for one. The system takes no blanks in its path and not much of a line: then a
// shell reads it after all.
std::string scriptOf(const std::string& agentExec, const std::string& way,
                     const std::string& folder, const std::string& words) {
    const std::string line = "#!" + agentExec + " " + folder + "\n";
    const bool fits = line.size() <= longestLine &&
                      agentExec.find_first_of(" \t\n") == std::string::npos &&
                      folder.find('\n') == std::string::npos;
    return fits ? line
                : "#!/bin/sh\nexec " + shellQuoted(agentExec) + way + " " + shellQuoted(folder) +
                      words + "\n";
}

} // namespace

S6Manager::S6Manager(JobStore store, std::string agentExec)
    : LockingManager(std::move(store), std::move(agentExec)),
      tree_(this->store()),
      scanner_(this->store()) {}

Result<std::unique_ptr<S6Manager>> S6Manager::open(JobStore store, std::string agentExec) {
    std::unique_ptr<S6Manager> manager(new S6Manager(std::move(store), std::move(agentExec)));
    return manager->tree_.look().map([&] { return std::move(manager); });
}

// A supervisor that has been killed is replaced within a second as long as the scanner runs and
// sees the job, and one whose scanner has been killed works on. A job that never had a supervisor
// is one that somebody is about to load, or was when he was killed.
bool S6Manager::isLoaded(const JobName& name) const {
    const S6Service service = tree_.service(name);
    return isLoaded(name, service, {service.isSupervised(), service.wasSupervised(), {}});
}

bool S6Manager::isLoaded(const JobName& name, const S6Service& service, const S6Look& seen) const {
    const S6Tree::Link link = tree_.linkOf(name);
    if (link == S6Tree::Link::none || service.files().isLeaving()) {
        return false;
    }
    return seen.isSupervised ||
           (link == S6Tree::Link::inSight && seen.wasSupervised && scanner_.isRunning());
}

JobState S6Manager::state(const S6Service& service, const S6Look& seen, const Label& label) {
    JobState job{.label = label};
    if (seen.status) {
        job.process = seen.status->process;
    }
    job.lastEnd =
        seen.status && !job.process ? seen.status->lastEnd : service.files().lastEnd().value_or(0);
    return job;
}

Result<std::vector<JobState>> S6Manager::jobs() {
    std::vector<JobState> jobs;
    for (const JobName& name : tree_.linkedJobs()) {
        const S6Service service = tree_.service(name);
        if (const S6Look seen = service.look(); isLoaded(name, service, seen)) {
            jobs.push_back(state(service, seen, name.label()));
        }
    }
    std::sort(jobs.begin(), jobs.end(), precedes);
    return jobs;
}

bool S6Manager::hasJobs() const {
    return tree_.anyLinked([this](const JobName& name) { return isLoaded(name); });
}

Result<std::optional<JobState>> S6Manager::job(const Label& label) {
    const auto name = nameOfLabel(label);
    if (!name) {
        return std::nullopt;
    }
    const S6Service service = tree_.service(*name);
    const S6Look seen = service.look();
    return isLoaded(*name, service, seen) ? std::optional(state(service, seen, label))
                                          : std::nullopt;
}

Result<void> S6Manager::writeJob(const JobName& name, const PropertyList& list,
                                 const std::string& content) const {
    // A supervisor that can't make its own files only tries again and again, and tells nobody.
    if (auto room = store().checkRoom(filesOfJob); !room) {
        return room;
    }
    const auto job = store().make(name, content);
    if (!job) {
        return failure(job.error());
    }
    const bool starts = list.runAtLoad || list.keepAlive;
    Result<void> done = askToListen(*job);
    const auto write = [&](const char* file, const std::string& text, mode_t mode) {
        if (done) {
            done = job->write(file, text, mode);
        }
    };
    write(job::run, scriptOf(agentExec(), "", job->path(), ""), scriptMode);
    write(job::finish, scriptOf(agentExec(), " --ended", job->path(), " \"$1\" \"$2\""),
          scriptMode);
    write(job::timeoutKill, killTimeout, fileMode);
    write(job::timeoutFinish, "0", fileMode); // no limit
    if (!starts) {
        write(job::down, "", fileMode);
    }
    return done;
}

// Ends what a tool that was killed half-way has left of a job that it hadn't quite loaded or had
// half forgotten. Whoever is still at work on it holds its lock. Doesn't wait for its agent to end.
void S6Manager::tidyUp(const JobName& name) const {
    if (isLoaded(name)) {
        return;
    }
    auto alone = store().tryLock(name);
    if (!alone || isLoaded(name)) {
        return;
    }
    if (tree_.linkOf(name) != S6Tree::Link::none) {
        tree_.unlink(name);
        scanner_.rescan();
    }
    if (tree_.service(name).isSupervised()) {
        tellToEnd(name);
        alone->leaveMark(); // for whoever comes next to take the folder away
    } else {
        tree_.remove(name);
    }
}

void S6Manager::tidyUpMarked() const {
    for (const JobName& name : store().marked()) {
        if (isLoaded(name)) {
            static_cast<void>(store().tryLock(name)); // its mark says nothing any more
        } else {
            tidyUp(name);
        }
    }
}

void S6Manager::tidyUpAll() const {
    for (const JobName& name : tree_.allJobs()) {
        tidyUp(name);
    }
}

Result<void> S6Manager::startScanner() {
    if (scanner_.isRunning()) {
        return {};
    }
    const auto alone =
        FileLock::take(*store().folder(), tree::scannerLock, FileLock::Kind::exclusive);
    if (!alone) {
        return failure(alone.error());
    }
    if (auto made = tree_.make(); !made || scanner_.isRunning()) {
        return made;
    }
    endLostSupervisors(store().path());
    tidyUpAll(); // or the scanner would bring up what is found there
    for (const JobName& name : tree_.linkedJobs()) {
        tree_.hide(name);
    }
    return scanner_.start();
}

Result<void> S6Manager::load(const JobName& name, bool starts) {
    const S6Service service = tree_.service(name);
    // A scanner that somebody who was killed has told to end may go on for a moment.
    for (int attempt = 0; attempt < 3; ++attempt) {
        auto linked = startScanner().and_then([&] { return tree_.link(name); });
        if (!linked) {
            return linked;
        }
        scanner_.rescan();
        // Whoever asks right after us should see the agent that we started.
        service.waitUntilSupervised(supervisorLimit, starts,
                                    [this] { return !scanner_.isRunning(); });
        if (service.isSupervised()) {
            return {};
        }
        if (scanner_.isRunning()) {
            break;
        }
        tree_.unlink(name);
    }
    return failure("s6-supervise can't be started");
}

Result<Outcome> S6Manager::bootstrap(const PropertyList& list, const std::string& content) {
    const auto name = nameOfLabel({list.label});
    if (!name) {
        return failure(name.error());
    }
    const TakeDownAtEnd atEnd{*this};
    const auto locks = lock(*name);
    if (!locks) {
        return failure(locks.error());
    }
    if (isLoaded(*name)) {
        return Outcome::alreadyLoaded;
    }
    tidyUpMarked();
    auto done = unload(*name) // what a session that has ended or a tool that was killed has left
                    .and_then([&] { return writeJob(*name, list, content); })
                    .and_then([&] { return load(*name, list.runAtLoad || list.keepAlive); });
    if (!done) {
        static_cast<void>(unload(*name)); // the first failure is the one to tell
        return failure(done.error());
    }
    return Outcome::done;
}

// The order first and the wake-up then: the other way round, a job that is woken from its wait
// could start its agent once more before it is told to end.
void S6Manager::tellToEnd(const JobName& name) const {
    const S6Service service = tree_.service(name);
    service.command("dx");
    service.files().markLeaving();
    service.files().skipThrottle();
}

// In this order, so that whoever is killed at it leaves an agent that ends by itself or a job that
// is as loaded as before. A supervisor that ends before the scanner has lost sight of it is
// replaced by one that finds the job leaving, starts nothing, and is told to end as well.
Result<void> S6Manager::unload(const JobName& name) const {
    for (int attempt = 0; attempt < 3; ++attempt) {
        const S6Service service = tree_.service(name);
        const pid_t told = service.supervisor();
        if (service.isSupervised()) {
            tellToEnd(name);
        }
        if (tree_.linkOf(name) != S6Tree::Link::none) {
            tree_.unlink(name);
            scanner_.rescan();
        }
        // From here on none can follow; but whoever was held up on the way has told one that has
        // been replaced since. Nobody is told twice, for that would ask his agent twice.
        if (service.isSupervised() && service.supervisor() != told) {
            tellToEnd(name);
        }
        if (!service.waitUntilUnsupervised(unloadLimit)) {
            return failure("s6-supervise doesn't end");
        }
        if (tree_.remove(name)) {
            return {};
        }
    }
    return failure("the supervisor of " + name.text() + " comes up again and again");
}

Result<bool> S6Manager::mayBeLoaded(const JobName& name) {
    return tree_.linkOf(name) != S6Tree::Link::none;
}

Result<Outcome>
S6Manager::changeLoaded(const Label& label,
                        const std::function<Result<Outcome>(const JobName& name)>& work) {
    return change(label, [&](const JobName& name) {
        return isLoaded(name) ? work(name) : Outcome::notLoaded;
    });
}

Result<Outcome> S6Manager::bootout(const Label& label) {
    // With no job at all, its folder may have been removed under it.
    const auto lost = nameOfLabel(label);
    if (lost && !tree_.isThere() && endLostSupervisor(store().path(), *lost)) {
        return Outcome::done;
    }
    return changeLoaded(label, [this](const JobName& name) {
        return unload(name).map([] { return Outcome::done; });
    });
}

Result<Outcome> S6Manager::kickstart(const Label& label, bool kill) {
    return changeLoaded(label, [&](const JobName& name) -> Result<Outcome> {
        const S6Service service = tree_.service(name);
        const auto processNow = [&] { return state(service, service.look(), label).process; };
        const auto running = processNow();
        if (running && !kill) {
            return Outcome::done;
        }
        if (running) {
            const auto before = identify(*running);
            const ProcessHandle agent(*running);
            const bool same = before && identify(*running) == before && processNow() == running;
            service.files().skipThrottle();
            if (same) { // and not a new one, which is what was asked for
                agent.kill();
            }
            service.command("u");
        } else {
            service.start();
        }
        return Outcome::done;
    });
}

Result<Outcome> S6Manager::stop(const Label& label) {
    const auto name = nameOfLabel(label);
    if (!name || !isLoaded(*name)) {
        return Outcome::notLoaded;
    }
    tree_.service(*name).command("t");
    return Outcome::done;
}

bool S6Manager::endRemains() {
    tidyUpMarked();
    if (!scanner_.isRunning()) {
        tidyUpAll();
    }
    if (tree_.anyLinked([](const JobName&) { return true; })) {
        return false;
    }
    for (const JobName& name : tree_.allJobs()) {
        if (!unload(name)) {
            return false; // its agent can't be ended; the next tool tries again
        }
    }
    return scanner_.stop().has_value();
}

} // namespace varnhold::services
