#include "doctor/property_list_check.h"

namespace varnhold::doctor {

namespace {

void compareVariables(const PropertyList& old, const PropertyList& now,
                      std::vector<std::string>& out) {
    for (const auto& [name, value] : now.environmentVariables) {
        const auto before = old.environmentVariables.find(name);
        if (before == old.environmentVariables.end()) {
            out.push_back(name + " is new");
        } else if (before->second != value) {
            out.push_back(name + " has changed");
        }
    }
    for (const auto& [name, value] : old.environmentVariables) {
        if (!now.environmentVariables.contains(name)) {
            out.push_back(name + " is gone");
        }
    }
}

} // namespace

std::vector<std::string> differences(const PropertyList& old, const PropertyList& now) {
    std::vector<std::string> out;
    compareVariables(old, now, out);
    if (old.programArguments.empty() || now.programArguments.empty() ||
        old.programArguments.front() != now.programArguments.front()) {
        out.emplace_back("the interpreter is another");
    } else if (old.programArguments != now.programArguments) {
        out.emplace_back("the arguments are others");
    }
    if (old.workingDirectory != now.workingDirectory) {
        out.emplace_back("the daemon code lies elsewhere");
    }
    if (old.standardOutPath != now.standardOutPath ||
        old.standardErrorPath != now.standardErrorPath) {
        out.emplace_back("the logs lie elsewhere");
    }
    if (old.keepAlive != now.keepAlive || old.runAtLoad != now.runAtLoad) {
        out.emplace_back("when it is started has changed");
    }
    return out;
}

std::string enumerated(const std::vector<std::string>& texts) {
    std::string out;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        out += i == 0 ? "" : i + 1 == texts.size() ? " and " : ", ";
        out += texts[i];
    }
    return out;
}

} // namespace varnhold::doctor
