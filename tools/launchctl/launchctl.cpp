#include "launchctl/launchctl.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "base/files.h"
#include "launchctl/listing.h"

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

// Of a pipe or a device there may be no end.
Result<std::string> readPropertyList(const std::string& path) {
    std::error_code error;
    if (files::exists(path) && !fs::is_regular_file(path, error)) {
        return failure("not a file");
    }
    return files::read(path);
}

class Performer {
public:
    Performer(ServiceManager& manager, std::uint64_t userId, std::ostream& out, std::ostream& error)
        : manager_(manager), userId_(userId), out_(out), error_(error) {}

    int operator()(const Help&) {
        out_ << helpText();
        return exitDone;
    }

    int operator()(const Version&) {
        out_ << "launchctl of Varnhold 7.0.0\n";
        return exitDone;
    }

    int operator()(const List&) {
        const auto jobs = manager_.jobs();
        if (!jobs) {
            return unavailable(jobs.error());
        }
        out_ << jobTable(*jobs);
        return exitDone;
    }

    int operator()(const ListJob& command) {
        const auto state = manager_.job(command.label);
        const auto list = state ? manager_.definition(command.label) : failure("not loaded");
        if (!list) {
            return noSuchService(command.label);
        }
        out_ << jobProperties(*state, *list);
        return exitDone;
    }

    int operator()(const Bootstrap& command) {
        if (command.userId != userId_) {
            return wrongDomain("Bootstrap failed");
        }
        int first = exitDone;
        for (const std::string& path : command.paths) {
            for (const std::string& file : propertyListsAt(path)) {
                const int code = bootstrap(file);
                first = first == exitDone ? code : first;
            }
        }
        return first;
    }

    int operator()(const Bootout& command) {
        if (command.userId != userId_) {
            return wrongDomain("Boot-out failed");
        }
        const auto outcome = manager_.bootout(command.label);
        if (!outcome) {
            return unavailable(outcome.error());
        }
        return *outcome == Outcome::done ? static_cast<int>(exitDone)
                                         : noSuchProcess("Boot-out failed");
    }

    int operator()(const Kickstart& command) {
        if (command.userId != userId_) {
            return wrongDomain("Kickstart failed");
        }
        const auto outcome = manager_.kickstart(command.label, command.kill);
        if (!outcome) {
            return unavailable(outcome.error());
        }
        return *outcome == Outcome::done ? static_cast<int>(exitDone)
                                         : noSuchService(command.label);
    }

    int operator()(const Stop& command) {
        const auto outcome = manager_.stop(command.label);
        if (!outcome) {
            return unavailable(outcome.error());
        }
        return *outcome == Outcome::done ? static_cast<int>(exitDone)
                                         : noSuchProcess("Stop failed");
    }

private:
    int bootstrap(const std::string& path) {
        const Result<std::string> content = readPropertyList(path);
        const Result<PropertyList> list =
            content ? decodePropertyList(*content) : failure(content.error());
        const Result<Outcome> outcome =
            list ? manager_.bootstrap(*list, *content) : failure(list.error());
        if (outcome == Outcome::done) {
            return exitDone;
        }
        error_ << "Bootstrap failed: 5: Input/output error\n";
        if (outcome) {
            error_ << "Try re-running the command as root for richer errors.\n";
        } else {
            error_ << path << ": " << outcome.error() << "\n";
        }
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

    int noSuchService(const std::string& label) {
        error_ << "Could not find service \"" << label << "\" in domain for port\n";
        return exitNoSuchService;
    }

    ServiceManager& manager_;
    std::uint64_t userId_;
    std::ostream& out_;
    std::ostream& error_;
};

} // namespace

int perform(const Command& command, ServiceManager& manager, std::uint64_t userId,
            std::ostream& out, std::ostream& error) {
    return std::visit(Performer(manager, userId, out, error), command);
}

} // namespace varnhold::services
