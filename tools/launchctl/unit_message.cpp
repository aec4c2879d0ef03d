#include "launchctl/unit_message.h"

#include <limits>
#include <string_view>

namespace varnhold::services {

namespace {

constexpr std::uint64_t second = 1'000'000; // in the manager's unit
constexpr std::uint64_t never = std::numeric_limits<std::uint64_t>::max();
// An agent that ignores a polite end is killed after this; longer would hold up Quit.
constexpr std::uint64_t exitTimeout = 5 * second;
// The throttle is kept by the command that runs first. This only spares the machine if that command
// itself can't be run.
constexpr std::uint64_t pauseBeforeRestart = second / 10;

void appendCommand(sd_bus_message* message, const char* property,
                   const std::vector<std::string>& command) {
    sdBus().message_open_container(message, 'r', "sv");
    sdBus().message_append(message, "s", property);
    sdBus().message_open_container(message, 'v', "a(sasb)");
    sdBus().message_open_container(message, 'a', "(sasb)");
    sdBus().message_open_container(message, 'r', "sasb");
    sdBus().message_append(message, "s", command.front().c_str());
    sdBus().message_open_container(message, 'a', "s");
    for (const std::string& word : command) {
        sdBus().message_append(message, "s", word.c_str());
    }
    sdBus().message_close_container(message);
    sdBus().message_append(message, "b", 0); // a failure is one
    sdBus().message_close_container(message);
    sdBus().message_close_container(message);
    sdBus().message_close_container(message);
    sdBus().message_close_container(message);
}

} // namespace

void appendTexts(const Message& message, const std::vector<std::string>& texts) {
    sdBus().message_open_container(message.get(), 'a', "s");
    for (const std::string& text : texts) {
        sdBus().message_append(message.get(), "s", text.c_str());
    }
    sdBus().message_close_container(message.get());
}

void appendTransientUnit(const Message& message, const ServiceUnit& unit) {
    sd_bus_message* raw = message.get();
    sdBus().message_append(raw, "ss", unit.name.c_str(), "fail");
    sdBus().message_open_container(raw, 'a', "(sv)");
    sdBus().message_append(raw, "(sv)", "Description", "s", unit.description.c_str());
    // Started counts as up only once the process is really there.
    sdBus().message_append(raw, "(sv)", "Type", "s", "exec");
    sdBus().message_append(raw, "(sv)", "Restart", "s", unit.keepAlive ? "always" : "no");
    sdBus().message_append(raw, "(sv)", "RestartUSec", "t", pauseBeforeRestart);
    sdBus().message_append(raw, "(sv)", "StartLimitIntervalUSec", "t", std::uint64_t{0});
    // Keeps a job loaded that has run to its end.
    sdBus().message_append(raw, "(sv)", "RemainAfterExit", "b", unit.keepAlive ? 0 : 1);
    sdBus().message_append(raw, "(sv)", "TimeoutStartUSec", "t", never);
    sdBus().message_append(raw, "(sv)", "TimeoutStopUSec", "t", exitTimeout);
    sdBus().message_append(raw, "(sv)", "KillMode", "s", "process");
    appendCommand(raw, "ExecStartPre", unit.before);
    appendCommand(raw, "ExecStart", unit.main);
    appendCommand(raw, "ExecStopPost", unit.after);
    sdBus().message_close_container(raw);
    sdBus().message_append(raw, "a(sa(sv))", 0);
}

Result<std::vector<Unit>> readUnits(const Message& reply) {
    std::vector<Unit> units;
    if (sdBus().message_enter_container(reply.get(), 'a', "(ssssssouso)") < 0) {
        return failure("the user manager's answer can't be read");
    }
    const char* name = nullptr;
    const char* active = nullptr;
    const char* sub = nullptr;
    const char* path = nullptr;
    std::uint32_t job = 0;
    while (sdBus().message_read(reply.get(), "(ssssssouso)", &name, nullptr, nullptr, &active, &sub,
                                nullptr, &path, &job, nullptr, nullptr) > 0) {
        // One that has ended well and is asked to run again is inactive until its start begins.
        if (std::string_view(active) != "inactive" || job != 0) {
            units.push_back({.name = name, .sub = sub, .path = path});
        }
    }
    return units;
}

void readNumber(sd_bus_message* reply, std::int64_t& number) {
    char type = 0;
    const char* content = nullptr;
    if (sdBus().message_is_method_error(reply, nullptr) > 0 ||
        sdBus().message_peek_type(reply, &type, &content) <= 0 || type != 'v' ||
        sdBus().message_enter_container(reply, 'v', content) < 0) {
        return;
    }
    if (content[0] == 'u') {
        std::uint32_t value = 0;
        sdBus().message_read_basic(reply, 'u', &value);
        number = value;
    } else if (content[0] == 'i') {
        std::int32_t value = 0;
        sdBus().message_read_basic(reply, 'i', &value);
        number = value;
    } else if (content[0] == 't') {
        std::uint64_t value = 0;
        sdBus().message_read_basic(reply, 't', &value);
        number = static_cast<std::int64_t>(value);
    }
}

} // namespace varnhold::services
