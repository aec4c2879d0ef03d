// Operations that the supervisor does again and again, one by name and as often as it is told to:
// instructions.py counts what each takes.
//
//     bench_core NAME TIMES

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "lifecycle/property_list.h"
#include "records/bots.h"
#include "records/models.h"
#include "status/bars.h"
#include "status/fleet_picture.h"
#include "status/job_list.h"
#include "status/menu.h"

namespace {

using namespace varnhold;

constexpr int fleet = 200;
constexpr int library = 500;

std::vector<BotConfig> bots() {
    std::vector<BotConfig> all;
    for (int i = 0; i < fleet; ++i) {
        const std::string role = "bot-" + std::to_string(i);
        all.push_back({.icon = "🦊",
                       .title = "Bot " + std::to_string(i),
                       .role = role,
                       .launchdLabel = labelOfRole(role)});
    }
    return all;
}

std::string listing() {
    std::string text = "PID\tStatus\tLabel\n";
    for (const BotConfig& bot : bots()) {
        text += "4711\t0\t" + bot.launchdLabel + "\n";
    }
    return text;
}

ModelLibrary models() {
    ModelLibrary all;
    for (int i = 0; i < library; ++i) {
        const std::string id = "model-" + std::to_string(i);
        all.models.push_back({.uniqueId = id,
                              .id = id,
                              .name = id,
                              .family = "Anthropic",
                              .color = "purple",
                              .type = "cli"});
    }
    return all;
}

PropertyList definition() {
    return {
        .label = "com.ostrelleai.worker.telegramd",
        .keepAlive = true,
        .runAtLoad = true,
        .environmentVariables = {{"HOME", "/home/user"},
                                 {"PATH", "/usr/bin:/bin"},
                                 {"PYTHONPATH", "/usr/lib/varnhold/daemon"},
                                 {"TELEGRAM_BOT_TOKEN", "123456:abcdef"}},
        .programArguments = {"/usr/bin/python3", "-m", "provider_telegramd", "--dept", "worker"},
        .workingDirectory = "/usr/lib/varnhold/daemon",
        .standardOutPath = "/tmp/vh-worker.log",
        .standardErrorPath = "/tmp/vh-worker-error.log"};
}

BarState bars() {
    BarState state;
    setOrder(state, rolesOf(bots()));
    for (auto& [role, target] : state.barTarget) {
        target = 1;
    }
    return state;
}

using Operation = std::function<std::size_t()>;

// Each holds what it works on, so that only the work is done again and again.
Operation parseListing() {
    return [text = listing()] { return parseJobList(text).size(); };
}

Operation decodeAllBots() {
    return [text = encodeBots(bots())] { return decodeBots(text)->size(); };
}

Operation encodeAllBots() {
    return [all = bots()] { return encodeBots(all).size(); };
}

Operation decodeModels() {
    return [text = encodeLibrary(models())] { return decodeLibrary(text)->models.size(); };
}

Operation encodeDefinition() {
    return [list = definition()] { return encodePropertyList(list)->size(); };
}

Operation decodeDefinition() {
    return [text = *encodePropertyList(definition())] {
        return decodePropertyList(text)->label.size();
    };
}

Operation countMarks() {
    std::string log;
    while (log.size() < 6144) {
        log += "2026-03-04 05:06:07 [MSG] reply sent in 812 ms\n";
    }
    return [log] { return static_cast<std::size_t>(countMarkers(log)); };
}

Operation moveBars() {
    return [state = bars()]() mutable {
        animate(state);
        return barImage(state, 0.83).bars.size();
    };
}

Operation makeMenu() {
    return [picture = FleetPicture{.bots = bots(), .statuses = parseJobList(listing())}] {
        return statusMenuRows(picture).size();
    };
}

const std::map<std::string_view, Operation (*)()> operations{
    {"parse-a-job-list-of-200", parseListing},    {"decode-200-bots", decodeAllBots},
    {"encode-200-bots", encodeAllBots},           {"decode-500-models", decodeModels},
    {"encode-a-property-list", encodeDefinition}, {"decode-a-property-list", decodeDefinition},
    {"count-markers-in-a-log", countMarks},       {"move-and-draw-200-bars", moveBars},
    {"make-a-menu-of-200-bots", makeMenu},
};

} // namespace

int main(int argc, char** argv) {
    const auto found = argc == 3 ? operations.find(argv[1]) : operations.end();
    if (found == operations.end()) {
        for (const auto& [name, make] : operations) {
            std::puts(name.data());
        }
        return argc == 1 ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    const Operation operation = found->second();
    std::size_t sum = 0;
    for (long left = std::strtol(argv[2], nullptr, 10); left > 0; --left) {
        sum += operation();
    }
    std::printf("%zu\n", sum);
    return EXIT_SUCCESS;
}
