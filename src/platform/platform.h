#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/http_client.h"
#include "platform/timers.h"
#include "platform/user_defaults.h"

// Everything the program asks of its surroundings, as small interfaces handed down by reference.
//
// The floors above know only this header. The real implementations stand in qt/ and, where systems
// differ, in linux/ and macos/; tests use fakes with virtual time and a record of every call.
// Unless a line says otherwise, an operation can be called on any thread.
namespace varnhold::platform {

// A child's environment as a whole, never an addition to the inherited one.
using EnvironmentMap = std::map<std::string, std::string>;

enum class Stream {
    inherited, // goes wherever the program's own output goes
    captured,  // comes back in ProcessResult
    discarded, // nobody will read it
};

struct ProcessRequest {
    std::string program; // absolute path
    std::vector<std::string> arguments;
    std::optional<EnvironmentMap> environment = std::nullopt; // absent: the program's own
    Stream standardOutput = Stream::inherited;
    Stream standardError = Stream::inherited;
    // How long run() waits; absent: as long as it takes. A child that takes longer is killed, and
    // what it has written is dropped.
    std::optional<std::chrono::milliseconds> deadline = std::nullopt;

    bool operator==(const ProcessRequest&) const = default;
};

struct ProcessResult {
    bool started = false;   // false: nothing ran, and the other fields are empty
    bool signalled = false; // ended by a signal
    int status = 0;         // exit code, or the signal's number
    std::string standardOutput;
    std::string standardError;
    std::string startError; // why nothing ran
};

class Processes {
public:
    virtual ~Processes() = default;

    // Blocks until the child has exited, or until the request's deadline.
    virtual ProcessResult run(const ProcessRequest& request) = 0;

    // Starts the child and returns; it outlives this program. Failure to start is dropped.
    virtual void start(const ProcessRequest& request) = 0;
};

enum class Priority { userInitiated, utility, background };

using Task = std::function<void()>;

class Queues {
public:
    virtual ~Queues() = default;

    // Runs the task later on the main thread, never inside this call.
    virtual void postMain(Task task) = 0;
    virtual void postMainAfter(std::chrono::milliseconds delay, Task task) = 0;

    // Runs the task on some other thread. Tasks may block for minutes without holding others up.
    virtual void postBackground(Priority priority, Task task) = 0;
};

class Clock {
public:
    virtual ~Clock() = default;

    [[nodiscard]] virtual std::chrono::system_clock::time_point now() = 0;

    // Holds up the calling thread alone.
    virtual void sleep(std::chrono::microseconds duration) = 0;
};

// Facts about the machine and the user. All but existence hold for the life of the process.
class System {
public:
    virtual ~System() = default;

    [[nodiscard]] virtual std::uint32_t userId() const = 0;

    // True if anything is at the path: a file, a folder, whatever. Asked anew at each call.
    [[nodiscard]] virtual bool exists(const std::string& path) const = 0;

    // The user's home folder without a trailing slash.
    [[nodiscard]] virtual std::string homeDirectory() const = 0;

    // What stands for the application's bundle: the folder beside or inside which the daemon code
    // is found. Without a trailing slash.
    [[nodiscard]] virtual std::string bundlePath() const = 0;

    // The service manager's command-line tool.
    [[nodiscard]] virtual std::string launchctlPath() const = 0;

    // Private folder for what is gone with the session: locks and sockets. It may not exist yet.
    [[nodiscard]] virtual std::string runtimeDirectory() const = 0;

    // A script for /bin/sh that kills the tools which daemons have left behind; see orphan_sweep.h.
    [[nodiscard]] virtual std::string orphanSweep() const = 0;

    // What to start, without waiting for it, so that the user sees a terminal window in which the
    // script runs with one argument. None where no terminal is known.
    [[nodiscard]] virtual std::optional<ProcessRequest>
    terminalRequest(const std::string& script, const std::string& argument) const = 0;
};

// One of each, by reference; the owner keeps them alive longer than anything that holds this.
struct Platform {
    Processes& processes;
    Queues& queues;
    Timers& timers;
    Clock& clock;
    System& system;
    UserDefaults& defaults;
    HttpClient& http;
};

} // namespace varnhold::platform
