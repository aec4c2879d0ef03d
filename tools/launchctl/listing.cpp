#include "launchctl/listing.h"

#include <string_view>
#include <sys/wait.h>

#include "base/unicode.h"

namespace varnhold::services {

namespace {

std::string inQuotes(std::string_view text) {
    std::string out = "\"";
    // A reader that finds anything but UTF-8 gives up the whole listing.
    for (const char c : unicode::repaired(text)) {
        switch (c) {
        case '"':
            out += "\\\"";
            break;
        case '\\':
            out += "\\\\";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        default:
            out += c;
        }
    }
    return out + "\"";
}

std::string line(std::string_view key, const std::string& value) {
    return "\t" + inQuotes(key) + " = " + value + ";\n";
}

} // namespace

int lastStatus(int waitStatus) {
    return WIFSIGNALED(waitStatus) ? -WTERMSIG(waitStatus) : WEXITSTATUS(waitStatus);
}

std::string jobTable(const std::vector<JobState>& jobs) {
    std::string table = "PID\tStatus\tLabel\n";
    for (const JobState& job : jobs) {
        table += (job.process ? std::to_string(*job.process) : "-") + "\t" +
                 std::to_string(lastStatus(job.lastEnd)) + "\t" + job.label.text + "\n";
    }
    return table;
}

std::string jobProperties(const JobState& state, const PropertyList& list) {
    std::string out = "{\n";
    out += line("StandardOutPath", inQuotes(list.standardOutPath));
    out += line("LimitLoadToSessionType", inQuotes("Aqua"));
    out += line("StandardErrorPath", inQuotes(list.standardErrorPath));
    out += line("Label", inQuotes(state.label.text));
    out += line("OnDemand", list.keepAlive ? "false" : "true");
    out += line("LastExitStatus", std::to_string(state.lastEnd));
    if (state.process) {
        out += line("PID", std::to_string(*state.process));
    }
    out += line("Program", inQuotes(list.programArguments.front()));
    out += "\t\"ProgramArguments\" = (\n";
    for (const std::string& argument : list.programArguments) {
        out += "\t\t" + inQuotes(argument) + ";\n";
    }
    return out + "\t);\n};\n";
}

} // namespace varnhold::services
