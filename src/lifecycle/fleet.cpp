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
    context.platform.processes.run(
        {.program = "/bin/sh", .arguments = {"-c", context.platform.system.orphanSweep()}});
}

void resetChains(const FleetContext& context) {
    const std::string resources = daemonResourcesPath(context.platform.system);
    context.platform.processes.run({.program = findPython(context.platform.system),
                                    .arguments = {"-c", chainResetScript(resources)},
                                    .environment = platform::EnvironmentMap{
                                        {"DAEMON_DATA_DIR", context.constants.appSupportDir},
                                        {"DAEMON_RESOURCES", resources},
                                        {"HOME", context.constants.appHome}}});
}

} // namespace

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
