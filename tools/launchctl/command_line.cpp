#include "launchctl/command_line.h"

#include <optional>
#include <string_view>

#include "base/text.h"

namespace varnhold::services {

namespace {

constexpr std::string_view domainPrefix = "gui/";

struct Target {
    std::uint64_t userId = 0;
    std::string label; // empty for a domain
};

// "gui/501" or "gui/501/LABEL"; a label may hold slashes of its own.
std::optional<Target> parseTarget(std::string_view text) {
    if (!text.starts_with(domainPrefix)) {
        return std::nullopt;
    }
    text.remove_prefix(domainPrefix.size());
    const std::size_t slash = text.find('/');
    const auto userId = text::parseUnsigned(text.substr(0, slash));
    if (!userId) {
        return std::nullopt;
    }
    if (slash == std::string_view::npos) {
        return Target{*userId, {}};
    }
    const std::string_view label = text.substr(slash + 1);
    return label.empty() ? std::nullopt : std::optional(Target{*userId, std::string(label)});
}

Result<Target> serviceTarget(const std::string& text) {
    const auto target = parseTarget(text);
    if (!target || target->label.empty()) {
        return failure("\"" + text + "\" isn't a service target; one looks like gui/501/LABEL");
    }
    return *target;
}

Result<Command> parseBootstrap(const std::vector<std::string>& rest) {
    if (rest.size() < 2) {
        return failure("bootstrap needs a domain and at least one property list");
    }
    const auto domain = parseTarget(rest.front());
    if (!domain || !domain->label.empty()) {
        return failure("\"" + rest.front() + "\" isn't a domain; one looks like gui/501");
    }
    return Bootstrap{domain->userId, {rest.begin() + 1, rest.end()}};
}

Result<Command> parseBootout(const std::vector<std::string>& rest) {
    if (rest.size() != 1) {
        return failure("bootout needs one service target");
    }
    return serviceTarget(rest.front()).map([](const Target& target) -> Command {
        return Bootout{target.userId, {target.label}};
    });
}

Result<Command> parseKickstart(std::vector<std::string> rest) {
    const bool kill = !rest.empty() && rest.front() == "-k";
    if (kill) {
        rest.erase(rest.begin());
    }
    if (rest.size() != 1) {
        return failure("kickstart needs one service target");
    }
    return serviceTarget(rest.front()).map([kill](const Target& target) -> Command {
        return Kickstart{target.userId, {target.label}, kill};
    });
}

Result<Command> parseList(const std::vector<std::string>& rest) {
    if (rest.size() > 1) {
        return failure("list takes one label at most");
    }
    return rest.empty() ? Command(List{}) : Command(ListJob{rest.front()});
}

Result<Command> parseStop(const std::vector<std::string>& rest) {
    if (rest.size() != 1) {
        return failure("stop needs one label");
    }
    return Stop{rest.front()};
}

} // namespace

Result<Command> parseCommandLine(const std::vector<std::string>& arguments) {
    if (arguments.empty()) {
        return failure("what is to be done?");
    }
    const std::string& verb = arguments.front();
    const std::vector<std::string> rest(arguments.begin() + 1, arguments.end());
    if (verb == "--help" || verb == "help") {
        return Help{};
    }
    if (verb == "--version" || verb == "version") {
        return Version{};
    }
    if (verb == "list") {
        return parseList(rest);
    }
    if (verb == "bootstrap") {
        return parseBootstrap(rest);
    }
    if (verb == "bootout") {
        return parseBootout(rest);
    }
    if (verb == "kickstart") {
        return parseKickstart(rest);
    }
    if (verb == "stop") {
        return parseStop(rest);
    }
    return failure("there is no verb \"" + verb + "\"");
}

std::string helpText() {
    return R"(Usage: launchctl VERB [ARGUMENT...]

Loads, starts and ends a user's services from their property lists.

  list                          every loaded job: process id or "-", last status, label
  list LABEL                    one job's properties
  bootstrap gui/UID PATH...     load property lists, or all in a folder whose names end in
                                .plist, and start what is to run at load
  bootout gui/UID/LABEL         end a job's process and forget the job
  kickstart [-k] gui/UID/LABEL  start a loaded job; with -k, end a running instance first
  stop LABEL                    ask a job's process to end; the job stays loaded
  --help, --version

The last status is an exit code, or a signal's number as a negative one. A job that is kept alive is
started again after any end, but not more often than once in 10 seconds.

Exit codes:
  0    done
  3    bootout, stop: no such job is loaded
  5    bootstrap: the job is loaded already, or its property list can't be used
  64   wrong use; nothing was changed
  69   the services can't be reached or run
  113  list LABEL, kickstart: no such job is loaded
  125  the domain belongs to another user
)";
}

} // namespace varnhold::services
