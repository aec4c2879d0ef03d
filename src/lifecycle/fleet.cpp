#include "lifecycle/fleet.h"

#include <chrono>

#include "lifecycle/launch_agent.h"
#include "lifecycle/service_control.h"
#include "shell/daemon_code.h"

namespace varnhold {

namespace {

using namespace std::chrono_literals;

// Long enough for the display to show each agent going down and coming up.
constexpr std::chrono::microseconds pauseBetweenAgents = 150ms;
// For unloaded jobs to end by themselves before what is left is killed.
constexpr std::chrono::microseconds graceAfterBootout = 900ms;
constexpr std::chrono::microseconds pauseAfterReset = 300ms;

void killDaemons(const FleetContext& context) {
    context.platform.processes.run(
        {.program = "/usr/bin/pkill", .arguments = {"-9", "-f", "provider_telegramd"}});
}

void sweepOrphans(const FleetContext& context) {
    const auto parent = context.platform.system.hasUserManager() ? OrphansGoTo::userManager
                                                                 : OrphansGoTo::firstProcess;
    context.platform.processes.run(
        {.program = "/bin/sh", .arguments = {"-c", orphanSweepScript(parent)}});
}

void resetChains(const FleetContext& context) {
    const std::string resources = daemonResourcesPath(context.platform.system.bundlePath());
    context.platform.processes.run({.program = findPython(),
                                    .arguments = {"-c", chainResetScript(resources)},
                                    .environment = platform::EnvironmentMap{
                                        {"DAEMON_DATA_DIR", context.constants.appSupportDir},
                                        {"DAEMON_RESOURCES", resources},
                                        {"HOME", context.constants.appHome}}});
}

} // namespace

std::string orphanSweepScript(OrphansGoTo parent) {
    const char* pickOrphans = "$2==1 && $0 ~ c {print $1}";
    if (parent == OrphansGoTo::userManager) {
        pickOrphans = "{p[NR]=$1;q[NR]=$2;l[NR]=$0} "
                      "$3 ~ /(^|\\/)systemd$/ && $4==\"--user\"{r[$1]=1} "
                      "END{r[1]=1;for(i=1;i<=NR;i++)if((q[i] in r)&&l[i]~c)print p[i]}";
    }
    return std::string("for cli in claude gemini qwen codex; do "
                       "ps -axo pid,ppid,command | awk -v c=\"opt/homebrew/bin/$cli\" '") +
           pickOrphans +
           "' | xargs -r kill -9 2>/dev/null; "
           "done";
}

std::string chainResetScript(const std::string& daemonResources) {
    return "import sys, os; sys.path.insert(0, os.environ.get('DAEMON_RESOURCES', '" +
           daemonResources +
           "')); from circular_failover import reset_all_chain_positions; "
           "reset_all_chain_positions()";
}

void startAll(const FleetContext& context) {
    for (const BotConfig& bot : activeBots(context.constants)) {
        if (const auto path = generatePlist(context, bot)) {
            bootstrap(context, *path);
        }
    }
}

std::vector<BotConfig> activeBots(const Constants& constants) {
    std::vector<BotConfig> bots = loadBots(constants);
    std::erase_if(bots, [](const BotConfig& bot) { return bot.paused(); });
    return bots;
}

void restartAll(const FleetContext& context, const std::vector<BotConfig>& bots,
                const std::function<void()>& onStep) {
    platform::Clock& clock = context.platform.clock;
    for (const BotConfig& bot : bots) {
        bootout(context, bot.launchdLabel);
        onStep();
        clock.sleep(pauseBetweenAgents);
    }
    onStep();
    clock.sleep(graceAfterBootout);
    killDaemons(context);
    sweepOrphans(context);
    resetChains(context);
    clock.sleep(pauseAfterReset);
    for (const BotConfig& bot : bots) {
        if (const auto path = generatePlist(context, bot)) {
            bootstrap(context, *path);
            onStep();
            clock.sleep(pauseBetweenAgents);
        }
    }
    onStep();
}

void shutDownAll(const FleetContext& context) {
    for (const BotConfig& bot : loadBots(context.constants)) {
        bootout(context, bot.launchdLabel);
    }
    killDaemons(context);
}

} // namespace varnhold
