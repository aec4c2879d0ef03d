#include "doctor/left_processes.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <utility>

#include "records/providers.h"

namespace varnhold::doctor {

namespace {

// A tool may be a script, and then its interpreter stands before it.
constexpr std::size_t wordsLookedAt = 2;

bool isUserManager(const Process& process) {
    return process.words.size() == 2 && process.words[1] == "--user" &&
           (process.words[0] == "systemd" || process.words[0].ends_with("/systemd"));
}

// Processes that take in those who have lost their parents.
std::set<std::int64_t> fosterParents(const std::vector<Process>& processes) {
    std::set<std::int64_t> parents{1};
    for (const Process& process : processes) {
        if (isUserManager(process)) {
            parents.insert(process.id);
        }
    }
    return parents;
}

bool isAt(const std::string& word, const std::string& tool) {
    return word.ends_with("/bin/" + tool) || word.ends_with("/.bin/" + tool) ||
           word.find("opt/homebrew/bin/" + tool) != std::string::npos ||
           word.find("/.local/share/" + tool + "/") != std::string::npos;
}

// None for what somebody runs by hand: that may have lost its parent and still be in use.
std::string toolOf(const Process& process) {
    for (std::size_t i = 0; i < std::min(process.words.size(), wordsLookedAt); ++i) {
        for (const Provider& provider : providers()) {
            std::string tool(provider.tool);
            if (!process.hasTerminal && !tool.empty() && isAt(process.words[i], tool)) {
                return tool;
            }
        }
    }
    return {};
}

} // namespace

std::vector<LeftProcess> orphanedTools(const std::vector<Process>& processes) {
    const auto parents = fosterParents(processes);
    std::vector<LeftProcess> left;
    for (const Process& process : processes) {
        std::string tool = parents.contains(process.parent) ? toolOf(process) : std::string();
        if (!tool.empty()) {
            left.push_back({process.id, std::move(tool)});
        }
    }
    return left;
}

std::vector<LeftProcess> strayDaemons(const std::vector<Process>& processes, const Jobs& jobs) {
    std::set<std::int64_t> known;
    for (const auto& [label, job] : jobs.byLabel) {
        known.insert(job.process.value_or(0));
    }
    std::vector<LeftProcess> left;
    for (const Process& process : processes) {
        const auto& words = process.words;
        const auto module = std::find(words.begin(), words.end(), "provider_telegramd");
        if (module == words.end() || module == words.begin() || *std::prev(module) != "-m" ||
            known.contains(process.id)) {
            continue;
        }
        const auto dept = std::find(module, words.end(), "--dept");
        const bool hasRole = dept != words.end() && std::next(dept) != words.end();
        left.push_back({process.id, hasRole ? *std::next(dept) : "?"});
    }
    return left;
}

} // namespace varnhold::doctor
