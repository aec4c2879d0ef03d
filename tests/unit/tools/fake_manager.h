#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "launchctl/service_manager.h"

namespace varnhold::services {

// A service manager in memory: keeps jobs, records changes, and fails on demand.
class FakeManager final : public ServiceManager {
public:
    Result<std::vector<JobState>> jobs() override {
        if (!broken.empty()) {
            return failure(broken);
        }
        std::vector<JobState> out;
        for (const auto& [label, job] : loaded) {
            out.push_back(job.state);
        }
        return out;
    }

    Result<std::optional<JobState>> job(const Label& label) override {
        if (!broken.empty()) {
            return failure(broken);
        }
        const auto found = loaded.find(label.text);
        return found == loaded.end() ? std::nullopt : std::optional(found->second.state);
    }

    Result<PropertyList> definition(const Label& label) override {
        const auto found = loaded.find(label.text);
        return found == loaded.end() ? failure("not loaded")
                                     : Result<PropertyList>(found->second.list);
    }

    Result<Outcome> bootstrap(const PropertyList& list, const std::string& content) override {
        if (!broken.empty()) {
            return failure(broken);
        }
        if (loaded.contains(list.label)) {
            return Outcome::alreadyLoaded;
        }
        calls.push_back("bootstrap " + list.label);
        contents.push_back(content);
        loaded[list.label] = {JobState{.label = {list.label}}, list};
        return Outcome::done;
    }

    Result<Outcome> bootout(const Label& label) override { return change("bootout", label); }

    Result<Outcome> kickstart(const Label& label, bool kill) override {
        return change(kill ? "kickstart -k" : "kickstart", label);
    }

    Result<Outcome> stop(const Label& label) override { return change("stop", label); }

    struct Loaded {
        JobState state;
        PropertyList list;
    };
    std::map<std::string, Loaded> loaded;
    std::vector<std::string> calls; // those that changed something
    std::vector<std::string> contents;
    std::string broken; // why nothing works; empty while it does

private:
    Result<Outcome> change(const std::string& verb, const Label& label) {
        if (!broken.empty()) {
            return failure(broken);
        }
        if (!loaded.contains(label.text)) {
            return Outcome::notLoaded;
        }
        calls.push_back(verb + " " + label.text);
        return Outcome::done;
    }
};

} // namespace varnhold::services
