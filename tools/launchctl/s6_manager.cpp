#include "launchctl/s6_manager.h"

#include <algorithm>
#include <cerrno>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

extern "C" {
#include <s6/supervise.h>
}

#include "base/files.h"
#include "launchctl/label_name.h"
#include "launchctl/process_handle.h"
#include "launchctl/waiting.h"

namespace varnhold::services {

namespace {

using namespace std::chrono_literals;

// An agent that ignores a polite end is killed after this; longer would hold up Quit.
constexpr const char* killTimeout = "5000"; // milliseconds
constexpr auto supervisorLimit = 10s;
constexpr auto unloadLimit = 30s; // the exit timeout and a loaded machine

std::string systemError(const std::string& path) {
    return path + ": " + std::system_category().message(errno);
}

std::string shellQuoted(const std::string& text) {
    std::string out = "'";
    for (const char c : text) {
        out += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return out + "'";
}

Result<void> writeScript(const std::string& path, const std::string& command) {
    return files::writeInPlace(path, "#!/bin/sh\nexec " + command + "\n")
        .and_then([&]() -> Result<void> {
            if (::chmod(path.c_str(), 0700) != 0) {
                return failure(systemError(path));
            }
            return {};
        });
}

} // namespace

S6Manager::S6Manager(std::string folder, std::string agentExec)
    : store_(std::move(folder)),
      agentExec_(std::move(agentExec)),
      tree_(store_.folder()),
      scanner_(tree_.scanFolder()) {}

// A supervisor that has been killed is replaced within a second as long as the scanner runs and
// sees the job, and one whose scanner has been killed works on. A job that never had a supervisor
// is one that somebody is about to load, or was when he was killed.
bool S6Manager::isLoaded(const std::string& name) const {
    switch (tree_.linkOf(name)) {
    case S6Tree::Link::none:
        return false;
    case S6Tree::Link::outOfSight:
        return tree_.isSupervised(name);
    case S6Tree::Link::inSight:
        break;
    }
    return tree_.isSupervised(name) || (scanner_.isRunning() && tree_.wasSupervised(name));
}

JobState S6Manager::state(const std::string& name, const std::string& label) const {
    JobState job{.label = label};
    const JobFiles files = store_.job(name);
    s6_svstatus_t status = S6_SVSTATUS_ZERO;
    const bool known =
        tree_.isSupervised(name) && s6_svstatus_read(files.folder().c_str(), &status) != 0;
    // While it finishes, the process it tells of is the one that waits for the next start.
    if (known && status.pid != 0 && status.flagfinishing == 0) {
        job.process = status.pid;
    }
    const auto noted = files.lastEnd();
    job.lastEnd = known && !job.process ? status.wstat : noted.value_or(0);
    return job;
}

Result<std::vector<JobState>> S6Manager::jobs() {
    std::vector<JobState> jobs;
    for (const std::string& name : tree_.linkedJobs()) {
        if (isLoaded(name)) {
            jobs.push_back(state(name, labelOfName(name).value()));
        }
    }
    std::sort(jobs.begin(), jobs.end(),
              [](const JobState& a, const JobState& b) { return a.label < b.label; });
    return jobs;
}

bool S6Manager::hasJobs() const {
    const auto names = tree_.linkedJobs();
    return std::any_of(names.begin(), names.end(),
                       [this](const std::string& name) { return isLoaded(name); });
}

Result<std::optional<JobState>> S6Manager::job(const std::string& label) {
    const auto name = nameOfLabel(label);
    const bool loaded = name && isLoaded(*name);
    return loaded ? std::optional(state(*name, label)) : std::nullopt;
}

Result<PropertyList> S6Manager::definition(const std::string& label) {
    return nameOfLabel(label).and_then(
        [this](const std::string& name) { return store_.job(name).definition(); });
}

Result<void> S6Manager::writeJob(const std::string& name, const PropertyList& list,
                                 const std::string& content) const {
    const JobFiles job = store_.job(name);
    const std::string helper = shellQuoted(agentExec_);
    const std::string folder = shellQuoted(job.folder());
    const bool starts = list.runAtLoad || list.keepAlive;
    Result<void> done = store_.make(name, content);
    const auto then = [&done](auto step) {
        if (done) {
            done = step();
        }
    };
    then([&] { return writeScript(job.folder() + "/run", helper + " " + folder); });
    then([&] {
        return writeScript(job.folder() + "/finish",
                           helper + " --ended " + folder + " \"$1\" \"$2\"");
    });
    then([&] { return files::writeInPlace(job.folder() + "/timeout-kill", killTimeout); });
    then([&] { return files::writeInPlace(job.folder() + "/timeout-finish", "0"); }); // no limit
    then([&] { return job.askToListen(); });
    then([&] { return starts ? Result<void>() : files::writeInPlace(job.folder() + "/down", ""); });
    return done;
}

// Ends what a tool that was killed half-way has left: jobs that it hadn't quite loaded or had half
// forgotten. Whoever is still at work on a job holds its lock. Doesn't wait for agents to end.
void S6Manager::tidyUp() const {
    for (const std::string& name : tree_.allJobs()) {
        const auto alone = isLoaded(name) ? std::nullopt : store_.tryLock(name);
        if (!alone || isLoaded(name)) {
            continue;
        }
        tree_.unlink(name);
        if (tree_.isSupervised(name)) {
            tellToEnd(name);
        } else {
            tree_.remove(name); // or else by whoever tidies up next
        }
    }
}

Result<void> S6Manager::startScanner() const {
    const auto alone = FileLock::take(store_.folder() + "/scanner-lock", FileLock::Kind::exclusive);
    if (!alone) {
        return failure(alone.error());
    }
    if (scanner_.isRunning()) {
        return {};
    }
    for (const std::string& name : tree_.linkedJobs()) {
        tree_.hide(name);
    }
    return scanner_.start();
}

Result<void> S6Manager::load(const std::string& name, bool starts) const {
    auto linked = startScanner().and_then([&] { return tree_.link(name); });
    if (!linked) {
        return linked;
    }
    scanner_.rescan();
    const std::string folder = tree_.jobFolder(name);
    if (!waitUntil(supervisorLimit, [&] { return tree_.isSupervised(name); })) {
        return failure("s6-supervise can't be started");
    }
    // Whoever asks right after us should see the agent that we started.
    if (starts) {
        waitUntil(supervisorLimit, [&] {
            s6_svstatus_t status = S6_SVSTATUS_ZERO;
            return s6_svstatus_read(folder.c_str(), &status) != 0 &&
                   (status.pid != 0 || status.wstat != 0);
        });
    }
    return {};
}

Result<Outcome> S6Manager::bootstrap(const PropertyList& list, const std::string& content) {
    const auto name = nameOfLabel(list.label);
    if (!name) {
        return failure(name.error());
    }
    const TakeDownAtEnd atEnd{*this};
    const auto locks = store_.lock(*name);
    if (!locks) {
        return failure(locks.error());
    }
    if (isLoaded(*name)) {
        return Outcome::alreadyLoaded;
    }
    tidyUp();                 // or the scanner would bring up what is found there
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
void S6Manager::tellToEnd(const std::string& name) const {
    tree_.command(name, "dx");
    store_.job(name).hurry();
}

// Once more if a supervisor came up while the folder went.
Result<void> S6Manager::unload(const std::string& name) const {
    if (tree_.linkOf(name) != S6Tree::Link::none) {
        // First out of the scanner's sight, or it would replace the supervisor that ends.
        tree_.unlink(name);
        scanner_.rescan();
    }
    for (int attempt = 0; attempt < 3; ++attempt) {
        if (tree_.isSupervised(name)) {
            tellToEnd(name);
        }
        if (!waitUntil(unloadLimit, [&] { return !tree_.isSupervised(name); })) {
            return failure("s6-supervise doesn't end");
        }
        if (tree_.remove(name)) {
            return {};
        }
    }
    return failure(tree_.jobFolder(name) + " can't be removed");
}

Result<Outcome> S6Manager::bootout(const std::string& label) {
    const auto name = nameOfLabel(label);
    if (!name || tree_.linkOf(*name) == S6Tree::Link::none) {
        return Outcome::notLoaded;
    }
    const TakeDownAtEnd atEnd{*this};
    const auto locks = store_.lock(*name);
    if (!locks) {
        return failure(locks.error());
    }
    if (!isLoaded(*name)) {
        return Outcome::notLoaded;
    }
    if (const auto done = unload(*name); !done) {
        return failure(done.error());
    }
    return Outcome::done;
}

Result<Outcome> S6Manager::kickstart(const std::string& label, bool kill) {
    const auto name = nameOfLabel(label);
    if (!name || tree_.linkOf(*name) == S6Tree::Link::none) {
        return Outcome::notLoaded;
    }
    const TakeDownAtEnd atEnd{*this};
    const auto locks = store_.lock(*name);
    if (!locks) {
        return failure(locks.error());
    }
    if (!isLoaded(*name)) {
        return Outcome::notLoaded;
    }
    const auto running = state(*name, label).process;
    if (running && !kill) {
        return Outcome::done;
    }
    const JobFiles job = store_.job(*name);
    if (running) {
        const ProcessHandle agent(*running);
        const bool same = state(*name, label).process == running;
        job.hurry();
        if (same) { // and not a new one, which is what was asked for
            agent.kill();
        }
    } else {
        job.hurry();
    }
    tree_.command(*name, "u");
    return Outcome::done;
}

Result<Outcome> S6Manager::stop(const std::string& label) {
    const auto name = nameOfLabel(label);
    if (!name || !isLoaded(*name)) {
        return Outcome::notLoaded;
    }
    tree_.command(*name, "t");
    return Outcome::done;
}

// After the last job nothing of ours is to be left running. Somebody else who is at work holds the
// tree's lock, and looks by himself when he is done.
void S6Manager::takeDownIfEmpty() const {
    const auto alone = store_.tryAlone();
    if (!alone) {
        return;
    }
    tidyUp();
    if (!tree_.linkedJobs().empty()) {
        return;
    }
    for (const std::string& name : tree_.allJobs()) {
        if (!unload(name)) {
            return; // its agent can't be ended; the next tool tries again
        }
    }
    if (scanner_.stop()) {
        store_.removeAll();
    }
}

} // namespace varnhold::services
