#include "doctor/command_line.h"

#include <algorithm>

namespace varnhold::doctor {

namespace {

// The value of an option that is given as "--data DIR" or "--data=DIR".
Result<bool> takeValue(const std::string& option, const std::vector<std::string>& arguments,
                       std::size_t& at, std::string& value) {
    const std::string& argument = arguments[at];
    if (argument.starts_with(option + "=")) {
        value = argument.substr(option.size() + 1);
    } else if (argument == option) {
        if (++at >= arguments.size()) {
            return failure(option + " needs a value");
        }
        value = arguments[at];
    } else {
        return false;
    }
    if (value.empty()) {
        return failure(option + " needs a value");
    }
    return true;
}

bool takeFlag(const std::string& argument, Command& command) {
    if (argument == "--help" || argument == "help") {
        command.kind = Command::Kind::help;
    } else if (argument == "--version") {
        command.kind = Command::Kind::version;
    } else if (argument == "--json") {
        command.json = true;
    } else if (argument == "--no-colour" || argument == "--no-color") {
        command.color = false;
    } else {
        return false;
    }
    return true;
}

// A word that is no option: "watch" or a check's name.
Result<void> takeWord(const std::string& word, Command& command, std::vector<std::string>& asked) {
    if (word.starts_with('-')) {
        return failure("there is no option \"" + word + "\"");
    }
    if (word == "watch") {
        command.kind = Command::Kind::watch;
        return {};
    }
    const auto& checks = allChecks();
    if (std::find(checks.begin(), checks.end(), word) == checks.end()) {
        return failure("there is no check \"" + word + "\"");
    }
    asked.push_back(word);
    return {};
}

// In the order in which they are always reported.
std::vector<std::string> chosenChecks(const std::vector<std::string>& asked,
                                      const std::string& without) {
    std::vector<std::string> chosen;
    for (const std::string& check : allChecks()) {
        if ((asked.empty() && without.empty()) ||
            std::find(asked.begin(), asked.end(), check) != asked.end()) {
            chosen.push_back(check);
        }
    }
    if (!without.empty()) {
        chosen.emplace_back("without");
    }
    return chosen;
}

} // namespace

const std::vector<std::string>& allChecks() {
    static const std::vector<std::string> checks{"files", "fleet", "chains", "keepalive", "system"};
    return checks;
}

Result<Command> parseCommandLine(const std::vector<std::string>& arguments) {
    Command command;
    std::vector<std::string> asked;
    for (std::size_t at = 0; at < arguments.size(); ++at) {
        const std::string& argument = arguments[at];
        if (takeFlag(argument, command)) {
            continue;
        }
        Result<bool> taken = takeValue("--data", arguments, at, command.data);
        if (taken && !*taken) {
            taken = takeValue("--without", arguments, at, command.without);
        }
        if (!taken) {
            return failure(taken.error());
        }
        if (*taken) {
            continue;
        }
        if (const Result<void> word = takeWord(argument, command, asked); !word) {
            return failure(word.error());
        }
    }
    const bool asksForReport = !asked.empty() || !command.without.empty() || command.json;
    if (command.kind == Command::Kind::watch && asksForReport) {
        return failure("watch shows the fleet alone");
    }
    command.checks = chosenChecks(asked, command.without);
    while (command.data.size() > 1 && command.data.ends_with('/')) {
        command.data.pop_back();
    }
    return command;
}

std::string helpText() {
    return R"(Usage: varnhold-doctor [--json] [--data DIR] [--no-colour] [CHECK...]
       varnhold-doctor --without PROVIDER
       varnhold-doctor watch

Tells why a bot is down or a list is empty. Only reads: nothing is changed, started or ended.

Checks, all of them where none is named:
  files        the settings files: what can't be read, where, and what comes of it
  fleet        each bot: why it isn't running, how it last ended, what it was started with
  chains       chains and groups: which models can answer, and why the others can't
  keepalive    which chains are kept warm, and why the others never are
  system       service manager, daemon code, session, processes left behind, logs, events

  watch        the fleet as a table that is kept up to date, in a terminal; q ends it

Options:
  --json       the report for programs
  --data DIR   look at the settings files in DIR
  --without PROVIDER
               who answers for each chain and bot while that provider fails
  --no-colour  no colours, also in a terminal
  --help, --version

Exit codes:
  0    all is well
  1    there are warnings
  2    there are faults
  64   wrong use, or watch without a terminal
)";
}

} // namespace varnhold::doctor
