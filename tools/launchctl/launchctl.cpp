#include "launchctl/launchctl.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <system_error>
#include <type_traits>
#include <variant>
#include <vector>

#include "base/files.h"
#include "jobs/label_name.h"
#include "launchctl/listing.h"
#include "lifecycle/property_list_check.h"
#include "shell/version.h"

namespace varnhold::services {

namespace {

namespace fs = std::filesystem;

// The path itself, or if it is a folder, the property lists in it by name.
std::vector<std::string> propertyListsAt(const std::string& path) {
    if (!files::isDirectory(path)) {
        return {path};
    }
    std::vector<std::string> lists;
    std::error_code unreadable; // holds no list for us
    for (const auto& entry : fs::directory_iterator(path, unreadable)) {
        if (entry.path().extension() == ".plist" && !files::isDirectory(entry.path())) {
            lists.push_back(entry.path().string());
        }
    }
    std::sort(lists.begin(), lists.end());
    return lists;
}

// Of a pipe or a device there may be no end, and of a file it may be far away.
Result<std::string> readPropertyList(const std::string& path) {
    std::error_code error;
    if (files::exists(path) && !fs::is_regular_file(path, error)) {
        return failure("not a file");
    }
    const auto size = fs::file_size(path, error);
    if (!error && size > largestPropertyList) {
        return failure("a property list can't be larger than a megabyte");
    }
    return files::read(path);
}

Result<PropertyList> usablePropertyList(const std::string& content) {
    return decodePropertyList(content).and_then([](PropertyList list) -> Result<PropertyList> {
        const auto name = nameOfLabel({list.label});
        return name ? Result<PropertyList>(std::move(list)) : failure(name.error());
    });
}

class Performer {
public:
    Performer(const ChooseManager& choose, std::uint64_t userId, std::ostream& out,
              std::ostream& error)
        : choose_(choose), userId_(userId), out_(out), error_(error) {}

    int operator()(const Help&) {
        out_ << helpText();
        return exitDone;
    }

    int operator()(const Version&) {
        out_ << "launchctl of Varnhold " << version << "\n";
        return exitDone;
    }

    template <class Other>
    int operator()(const Other& command) {
        constexpr bool lists = std::is_same_v<Other, List> || std::is_same_v<Other, ListJob>;
        const auto manager = choose_(lists ? Purpose::list : Purpose::change);
        return manager ? run(command, **manager) : unavailable(manager.error());
    }

private:
    int run(const List&, ServiceManager& manager) {
        const auto jobs = manager.jobs();
        if (!jobs) {
            return unavailable(jobs.error());
        }
        out_ << jobTable(*jobs);
        return exitDone;
    }

    int run(const ListJob& command, ServiceManager& manager) {
        const auto state = manager.job(command.label);
        if (!state) {
            return unavailable(state.error());
        }
        const auto list = *state ? manager.definition(command.label) : failure("not loaded");
        if (!list) {
            return noSuchService(command.label);
        }
        out_ << jobProperties(**state, *list);
        return exitDone;
    }

    int run(const Bootstrap& command, ServiceManager& manager) {
        if (command.userId != userId_) {
            return wrongDomain("Bootstrap failed");
        }
        int first = exitDone;
        for (const std::string& path : command.paths) {
            for (const std::string& file : propertyListsAt(path)) {
                const int code = bootstrap(file, manager);
                first = first == exitDone ? code : first;
            }
        }
        return first;
    }

    int run(const Bootout& command, ServiceManager& manager) {
        if (command.userId != userId_) {
            return wrongDomain("Boot-out failed");
        }
        const auto outcome = manager.bootout(command.label);
        if (!outcome) {
            return unavailable(outcome.error());
        }
        return *outcome == Outcome::done ? static_cast<int>(exitDone)
                                         : noSuchProcess("Boot-out failed");
    }

    int run(const Kickstart& command, ServiceManager& manager) {
        if (command.userId != userId_) {
            return wrongDomain("Kickstart failed");
        }
        const auto outcome = manager.kickstart(command.label, command.kill);
        if (!outcome) {
            return unavailable(outcome.error());
        }
        return *outcome == Outcome::done ? static_cast<int>(exitDone)
                                         : noSuchService(command.label);
    }

    int run(const Stop& command, ServiceManager& manager) {
        const auto outcome = manager.stop(command.label);
        if (!outcome) {
            return unavailable(outcome.error());
        }
        return *outcome == Outcome::done ? static_cast<int>(exitDone)
                                         : noSuchProcess("Stop failed");
    }

    int bootstrap(const std::string& path, ServiceManager& manager) {
        const Result<std::string> content = readPropertyList(path);
        const Result<PropertyList> list = content.and_then(usablePropertyList);
        if (!list) {
            return bootstrapFailed(path + ": " + list.error());
        }
        const auto outcome = manager.bootstrap(*list, *content);
        if (!outcome) {
            return unavailable(path + ": " + outcome.error());
        }
        return *outcome == Outcome::done
                   ? static_cast<int>(exitDone)
                   : bootstrapFailed("Try re-running the command as root for richer errors.");
    }

    int bootstrapFailed(const std::string& why) {
        error_ << "Bootstrap failed: 5: Input/output error\n" << why << "\n";
        return exitInputOutput;
    }

    int unavailable(const std::string& reason) {
        error_ << "launchctl: " << reason << "\n";
        return exitUnavailable;
    }

    int wrongDomain(const std::string& what) {
        error_ << what << ": 125: Domain does not support specified action\n";
        return exitWrongDomain;
    }

    int noSuchProcess(const std::string& what) {
        error_ << what << ": 3: No such process\n";
        return exitNoSuchProcess;
    }

    int noSuchService(const Label& label) {
        error_ << "Could not find service \"" << label.text << "\" in domain for port\n";
        return exitNoSuchService;
    }

    const ChooseManager& choose_;
    std::uint64_t userId_;
    std::ostream& out_;
    std::ostream& error_;
};

} // namespace

int perform(const Command& command, const ChooseManager& choose, std::uint64_t userId,
            std::ostream& out, std::ostream& error) {
    return std::visit(Performer(choose, userId, out, error), command);
}

} // namespace varnhold::services
