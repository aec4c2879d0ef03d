#include "launchctl/s6_manager.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

extern "C" {
#include <s6/supervise.h>
}

#include "base/files.h"
#include "launchctl/label_name.h"
#include "launchctl/waiting.h"

namespace varnhold::services {

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

// An agent that ignores a polite end is killed after this; longer would hold up Quit.
constexpr const char* exitTimeout = "5000"; // milliseconds
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

bool linkExists(const std::string& path) {
    struct stat found {};
    return ::lstat(path.c_str(), &found) == 0;
}

bool isSupervised(const std::string& folder) {
    return s6_svc_ok(folder.c_str()) > 0;
}

} // namespace

S6Manager::S6Manager(std::string folder, std::string agentExec)
    : store_(std::move(folder)),
      agentExec_(std::move(agentExec)),
      scanner_(store_.folder() + "/scan") {}

std::string S6Manager::link(const std::string& name) const {
    return scanner_.folder() + "/" + name;
}

std::vector<std::string> S6Manager::linkedNames() const {
    std::vector<std::string> names;
    std::error_code error; // without the folder there are none
    for (const auto& entry : fs::directory_iterator(scanner_.folder(), error)) {
        std::string name = entry.path().filename().string();
        if (labelOfName(name)) {
            names.push_back(std::move(name));
        }
    }
    return names;
}

// A supervisor that has been killed is replaced within a second as long as the scanner runs, and
// one whose scanner has been killed works on; only with neither is the job gone.
bool S6Manager::isLoaded(const std::string& name) const {
    return linkExists(link(name)) &&
           (isSupervised(store_.job(name).folder()) || scanner_.isRunning());
}

JobState S6Manager::state(const std::string& name, const std::string& label) const {
    JobState job{.label = label};
    const JobFiles files = store_.job(name);
    s6_svstatus_t status = S6_SVSTATUS_ZERO;
    const bool known =
        isSupervised(files.folder()) && s6_svstatus_read(files.folder().c_str(), &status) != 0;
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
    for (const std::string& name : linkedNames()) {
        if (isLoaded(name)) {
            jobs.push_back(state(name, *labelOfName(name)));
        }
    }
    std::sort(jobs.begin(), jobs.end(),
              [](const JobState& a, const JobState& b) { return a.label < b.label; });
    return jobs;
}

bool S6Manager::hasJobs() const {
    const auto names = linkedNames();
    return std::any_of(names.begin(), names.end(),
                       [this](const std::string& name) { return isLoaded(name); });
}

std::optional<JobState> S6Manager::job(const std::string& label) {
    const auto name = nameOfLabel(label);
    if (!name || !isLoaded(*name)) {
        return std::nullopt;
    }
    return state(*name, label);
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
    then([&] { return files::writeInPlace(job.folder() + "/timeout-kill", exitTimeout); });
    then([&] { return files::writeInPlace(job.folder() + "/timeout-finish", "0"); }); // no limit
    then([&] { return starts ? Result<void>() : files::writeInPlace(job.folder() + "/down", ""); });
    return done;
}

// A scanner that is about to start would bring back whatever a killed session has left linked.
void S6Manager::forgetFormerJobs() const {
    for (const std::string& name : linkedNames()) {
        if (!isSupervised(store_.job(name).folder())) {
            ::unlink(link(name).c_str());
        }
    }
}

Result<void> S6Manager::load(const std::string& name, bool starts) const {
    {
        const auto alone =
            FileLock::take(store_.folder() + "/scanner-lock", FileLock::Kind::exclusive);
        if (alone && !scanner_.isRunning()) {
            forgetFormerJobs();
        }
        auto started = alone ? scanner_.start() : failure(alone.error());
        if (!started) {
            return started;
        }
    }
    if (::symlink(("../jobs/" + name).c_str(), link(name).c_str()) != 0) {
        return failure(systemError(link(name)));
    }
    scanner_.rescan();
    const std::string folder = store_.job(name).folder();
    if (!waitUntil(supervisorLimit, [&] { return isSupervised(folder); })) {
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
    ::unlink(link(*name).c_str()); // of a session that has ended
    auto done = writeJob(*name, list, content);
    if (done) {
        done = load(*name, list.runAtLoad || list.keepAlive);
    }
    if (!done) {
        static_cast<void>(unload(*name)); // the first failure is the one to tell
        return failure(done.error());
    }
    return Outcome::done;
}

void S6Manager::command(const std::string& name, const char* letters) const {
    s6_svc_writectl(store_.job(name).folder().c_str(), S6_SUPERVISE_CTLDIR, letters,
                    std::strlen(letters));
}

Result<void> S6Manager::unload(const std::string& name) const {
    const JobFiles job = store_.job(name);
    // First out of the scanner's sight, or it would replace the supervisor that ends.
    ::unlink(link(name).c_str());
    scanner_.rescan();
    job.hurry();
    command(name, "dx");
    const bool gone = waitUntil(unloadLimit, [&] { return !isSupervised(job.folder()); });
    if (!gone) {
        return failure("s6-supervise doesn't end");
    }
    store_.remove(name);
    return {};
}

Result<Outcome> S6Manager::bootout(const std::string& label) {
    const auto name = nameOfLabel(label);
    if (!name || !linkExists(link(*name))) {
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
    return unload(*name).map([] { return Outcome::done; });
}

Result<Outcome> S6Manager::kickstart(const std::string& label, bool kill) {
    const auto name = nameOfLabel(label);
    if (!name || !linkExists(link(*name))) {
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
    const bool running = state(*name, label).process.has_value();
    if (running && !kill) {
        return Outcome::done;
    }
    store_.job(*name).hurry();
    command(*name, running ? "ku" : "u");
    return Outcome::done;
}

Result<Outcome> S6Manager::stop(const std::string& label) {
    const auto name = nameOfLabel(label);
    if (!name || !isLoaded(*name)) {
        return Outcome::notLoaded;
    }
    command(*name, "t");
    return Outcome::done;
}

// After the last job nothing of ours is to be left running. Somebody else who is at work holds the
// tree's lock, and looks by himself when he is done.
void S6Manager::takeDownIfEmpty() const {
    const auto alone = store_.tryAlone();
    if (alone && linkedNames().empty() && scanner_.stop()) {
        store_.removeAll();
    }
}

} // namespace varnhold::services
