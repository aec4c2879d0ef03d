#include "doctor/system_check.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "base/files.h"
#include "doctor/catalogue.h"
#include "doctor/event_table.h"
#include "doctor/left_processes.h"
#include "doctor/property_list_check.h"
#include "doctor/words.h"
#include "shell/daemon_code.h"
#include "status/menu.h"
#include "status/reauth_alerts.h"

namespace varnhold::doctor {

namespace {

using namespace std::chrono_literals;

constexpr auto slowListing = 500ms;
constexpr auto slowPoll = 500ms; // of the ten seconds between two
constexpr std::uint64_t largeLogs = 1'000'000'000;

class SystemCheck {
public:
    SystemCheck(const Surroundings& around, const Jobs& jobs) : around_(around), jobs_(jobs) {}

    [[nodiscard]] Section section() && {
        checkManager();
        checkInterpreter();
        checkDaemonCode();
        checkSupervisor();
        checkSession();
        checkProcesses();
        checkLogs();
        checkEvents();
        checkAlerts();
        const auto level = worst(section_);
        section_.summary = level.value_or(Level::note) == Level::note
                               ? "what the fleet stands on is there"
                               : "not all is as it should be";
        return std::move(section_);
    }

private:
    void checkManager() {
        const ListingRun& run = jobs_.run;
        if (!jobs_.answered) {
            add({.id = ids::jobsUnknown,
                 .level = Level::fault,
                 .subject = "launchctl",
                 .sentence = !run.started ? "Can't be run: " + run.error + "."
                             : run.timedOut
                                 ? "Hasn't answered within ten seconds."
                                 : "Has failed with " + endOf(run.exitCode) + saying(run) + ".",
                 .consequence = "Every bot reads as stopped, and none can be started.",
                 .remedy = run.started ? "Do what it says; see also docs/services.md."
                                       : "Install Varnhold again: the tool is a part of it.",
                 .place = Place{around_.launchctlPath}});
            fact("Service manager", "doesn't answer", false);
            return;
        }
        fact("Service manager",
             managers() + counted(jobs_.byLabel.size(), "job", "jobs") + ", answers in " +
                 std::to_string(run.took.count()) + " ms",
             true);
        if (run.took > slowListing) {
            add({.id = ids::jobsSlow,
                 .level = Level::warning,
                 .subject = "launchctl",
                 .sentence = "Takes " + std::to_string(run.took.count()) + " ms to list the jobs.",
                 .consequence = "The menu is late, and bots look stopped if it takes too long.",
                 .remedy = "See what else keeps the machine busy."});
        }
    }

    static std::string endOf(int exitCode) {
        return exitCode < 0 ? "signal " + std::to_string(-exitCode)
                            : "exit code " + std::to_string(exitCode);
    }

    static std::string saying(const ListingRun& run) {
        const std::string line = run.error.substr(0, run.error.find('\n'));
        return line.empty() ? "" : ": " + line;
    }

    [[nodiscard]] std::string managers() const {
        std::size_t units = 0;
        std::size_t folders = 0;
        for (const auto& [label, job] : jobs_.byLabel) {
            folders += job.folder ? 1U : 0U;
            units += job.folder && job.folder->isUnit ? 1U : 0U;
        }
        if (folders == 0) {
            return "";
        }
        return units == 0 ? "s6, " : units == folders ? "systemd, " : "systemd and s6, ";
    }

    void checkInterpreter() {
        const std::string python = findPython(files::exists);
        const bool hasPython = files::exists(python);
        fact("Interpreter", python, hasPython);
        if (!hasPython) {
            add({.id = ids::interpreterMissing,
                 .level = Level::fault,
                 .subject = "interpreter",
                 .sentence = "No Python was found; the last place to look is " + python + ".",
                 .consequence = "No daemon can be started.",
                 .remedy = "Install Python 3."});
        }
    }

    void checkDaemonCode() {
        const std::string code = daemonResourcesPath(around_.bundlePath, files::exists);
        const bool hasCode = files::exists(code + "/provider_telegramd");
        fact("Daemon code", code, hasCode);
        if (!hasCode) {
            add({.id = ids::daemonCodeMissing,
                 .level = Level::fault,
                 .subject = "daemon code",
                 .sentence = "There is no provider_telegramd in " + code + ".",
                 .consequence = "Every daemon ends as soon as it is started.",
                 .remedy = "Put the daemon code there."});
            return;
        }
        std::vector<std::string> missing;
        for (const char* script :
             {"circular_failover.py", "auto_setup_chains.py", "login_scout.sh"}) {
            if (!files::exists(code + "/" + script)) {
                missing.emplace_back(script);
            }
        }
        if (!missing.empty()) {
            add({.id = ids::daemonScriptMissing,
                 .level = Level::warning,
                 .subject = "daemon code",
                 .sentence = "Not there: " + enumerated(missing) + ".",
                 .consequence = "Restarts don't reset the chains, automatic set-up and logins do "
                                "nothing, as far as they need these.",
                 .remedy = "Put the whole of the daemon code in its place.",
                 .place = Place{code}});
        }
    }

    void checkSupervisor() {
        const std::string lock = around_.runtimeFolder + "/supervisor.lock";
        const auto holder = around_.lockHolder(lock);
        fact("Varnhold", holder ? "runs, pid " + std::to_string(*holder) : "isn't running",
             holder.has_value());
        if (!holder) {
            add({.id = ids::supervisorNotRunning,
                 .level = Level::note,
                 .subject = "Varnhold",
                 .sentence = "Isn't running in this session.",
                 .consequence = "Agents that are loaded run without it.",
                 .remedy = "Start it."});
        }
        fact("Runtime folder", around_.runtimeFolder, files::exists(around_.runtimeFolder));
    }

    [[nodiscard]] std::string variable(const char* name) const {
        const auto found = around_.environment.find(name);
        return found == around_.environment.end() ? "" : found->second;
    }

    void checkSession() {
        const std::string x11 = variable("DISPLAY");
        const std::string wayland = variable("WAYLAND_DISPLAY");
        const auto tray = around_.hasTray();
        fact("Session bus", tray ? "answers" : "doesn't answer", tray.has_value());
        const auto embedded = x11.empty() ? std::nullopt : around_.hasEmbeddedTray();
        const bool isSilent = !x11.empty() && !embedded;
        const bool hasDisplay = (!x11.empty() && !isSilent) || !wayland.empty();
        std::string display = x11 + (isSilent ? " (doesn't answer)" : "");
        if (!wayland.empty()) {
            display += (x11.empty() ? "" : ", ") + wayland + " (Wayland)";
        }
        fact("Display", display.empty() ? "none" : display, hasDisplay);
        fact("Status item", statusItem(hasDisplay, tray, embedded), hasDisplay);
        if (isSilent) {
            add({.id = ids::displaySilent,
                 .level = Level::warning,
                 .subject = "display",
                 .sentence = "The X server " + x11 + " refuses us or doesn't answer.",
                 .consequence = wayland.empty()
                                    ? "Varnhold can't be started here; agents run all the same."
                                    : "Varnhold goes by Wayland alone, where less can be had.",
                 .remedy = "See that DISPLAY and XAUTHORITY are those of the desktop."});
        } else if (!hasDisplay) {
            add({.id = ids::displayMissing,
                 .level = Level::note,
                 .subject = "display",
                 .sentence = "This session has none.",
                 .consequence = "Varnhold can't be started here; agents run all the same.",
                 .remedy = "Look at the fleet with varnhold-doctor watch."});
        }
    }

    // By the supervisor's own preference.
    static std::string statusItem(bool hasDisplay, std::optional<bool> tray,
                                  std::optional<bool> embedded) {
        if (!hasDisplay) {
            return "none, for want of a display";
        }
        if (tray.value_or(false)) {
            return "in the tray (StatusNotifierItem)";
        }
        return embedded.value_or(false) ? "in the tray (XEmbed)"
                                        : "a strip of its own, since there is no tray";
    }

    void checkProcesses() {
        const std::vector<Process> processes = around_.processes();
        for (const LeftProcess& left : orphanedTools(processes)) {
            add({.id = ids::orphanTool,
                 .level = Level::warning,
                 .subject = left.name,
                 .sentence = "Process " + std::to_string(left.id) + " has lost its parent.",
                 .consequence = "A daemon has left it behind; it may still use up tokens.",
                 .remedy = "\"Restart All Agents\" sweeps such processes away."});
        }
        if (!jobs_.answered) {
            return; // of no daemon it can be said that it has no job
        }
        for (const LeftProcess& left : strayDaemons(processes, jobs_)) {
            add({.id = ids::strayDaemon,
                 .level = Level::warning,
                 .subject = left.name,
                 .sentence = "Process " + std::to_string(left.id) +
                             " is a daemon of this role and belongs to no job.",
                 .consequence = "Two daemons with one token take each other's messages.",
                 .remedy = "\"Restart All Agents\" ends it."});
        }
    }

    void checkLogs() {
        std::uint64_t bytes = 0;
        std::size_t count = 0;
        std::error_code ignored; // of what can't be looked at nothing is said
        for (const auto& entry : std::filesystem::directory_iterator("/tmp", ignored)) {
            const std::string name = entry.path().filename().string();
            if (name.starts_with("vh-") && name.ends_with(".log") &&
                entry.symlink_status(ignored).type() == std::filesystem::file_type::regular) {
                bytes += entry.file_size(ignored);
                ++count;
            }
        }
        fact("Logs", counted(count, "file", "files") + " in /tmp, " + sizeInWords(bytes), true);
        section_.data["logBytes"] = bytes;
        if (bytes > largeLogs) {
            add({.id = ids::logsLarge,
                 .level = Level::warning,
                 .subject = "logs",
                 .sentence = "The logs in /tmp take " + sizeInWords(bytes) + ".",
                 .consequence = "Nobody shortens them, and a full disk stops every save.",
                 .remedy = "Empty the largest in place: the agents have them open.",
                 .command = "truncate -s 0 /tmp/vh-*.log"});
        }
    }

    void checkEvents() {
        const auto table = readEvents(around_.constants.governorDBPath);
        if (!table) {
            fact("Events", "can't be read", false);
            add({.id = ids::eventsUnreadable,
                 .level = Level::warning,
                 .subject = "governor.db",
                 .sentence = "The daemons' events can't be read: " + table.error() + ".",
                 .consequence = "The menu says \"Idle\" where it should name a model.",
                 .remedy = "If no daemon has it open, move the file away; they make it anew.",
                 .place = Place{around_.constants.governorDBPath}});
            return;
        }
        if (!*table) {
            fact("Events", "no database yet", true);
            return;
        }
        const EventTable& events = **table;
        fact("Events",
             "up to number " + std::to_string(events.events) + ", " + sizeInWords(events.bytes) +
                 ", a poll takes " + std::to_string(events.poll.count()) + " ms",
             true);
        section_.data["pollMilliseconds"] = events.poll.count();
        if (events.poll > slowPoll) {
            add({.id = ids::eventsSlow,
                 .level = Level::warning,
                 .subject = "governor.db",
                 .sentence = "A poll of the daemons' events takes " +
                             std::string(events.pollWasCut ? "more than " : "") +
                             std::to_string(events.poll.count()) + " ms.",
                 .consequence = "The models in the menu are late by as much.",
                 .remedy = "Have the daemons keep fewer events.",
                 .place = Place{around_.constants.governorDBPath}});
        }
    }

    void checkAlerts() {
        for (const ReauthAlert& alert : loadReauthAlerts(around_.constants)) {
            add({.id = ids::signInFailing,
                 .level = Level::warning,
                 .subject = providerDisplayName(alert.provider),
                 .sentence = "The daemons can't sign in" +
                             (alert.since.empty() ? "" : " since " + alert.since) + ".",
                 .consequence = "Its models fail, and chains go on to the next.",
                 .remedy = "Choose \"Re-login\" in the menu."});
        }
    }

    void fact(const std::string& name, const std::string& value, bool well) {
        section_.table.rows.push_back({std::nullopt, well, {name, value}});
        section_.data["facts"].push_back({{"name", name}, {"value", value}, {"well", well}});
    }

    void add(Finding finding) { section_.findings.push_back(std::move(finding)); }

    const Surroundings& around_;
    const Jobs& jobs_;
    Section section_{.check = "system", .summary = {}};
};

} // namespace

Section checkSystem(const Surroundings& surroundings, const Jobs& jobs) {
    return SystemCheck(surroundings, jobs).section();
}

} // namespace varnhold::doctor
