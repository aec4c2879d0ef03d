#pragma once

#include <string>
#include <vector>

#include "base/result.h"

// The folders and links of the s6 tree, and the pipe through which a job's supervisor is told what
// to do. Jobs are named as in label_name.h. No locks here: whoever changes a job holds its lock.
namespace varnhold::services {

class S6Tree final {
public:
    // Where the link to a job stands. A scanner starts a supervisor for all that is in its sight,
    // and would try in vain, once a second, for a job whose supervisor has outlived the scanner
    // before: such a job is kept out of its sight.
    enum class Link { none, inSight, outOfSight };

    explicit S6Tree(std::string folder) : folder_(std::move(folder)) {}

    [[nodiscard]] std::string scanFolder() const { return folder_ + "/scan"; }
    [[nodiscard]] std::string jobsFolder() const { return folder_ + "/jobs"; }
    [[nodiscard]] std::string jobFolder(const std::string& name) const;

    [[nodiscard]] Link linkOf(const std::string& name) const;
    [[nodiscard]] Result<void> link(const std::string& name) const;
    void unlink(const std::string& name) const;
    void hide(const std::string& name) const;

    [[nodiscard]] std::vector<std::string> linkedJobs() const;
    // Also those of which nothing but the folder is left, or not more is there yet. Folders of
    // another service manager's jobs aren't ours.
    [[nodiscard]] std::vector<std::string> allJobs() const;

    [[nodiscard]] bool isSupervised(const std::string& name) const;
    // Also true in the second before a supervisor that was killed is replaced.
    [[nodiscard]] bool wasSupervised(const std::string& name) const;

    // Letters as of s6-svc. Nothing happens if there is no supervisor to read them.
    void command(const std::string& name, const char* letters) const;

    // Takes the folder away with all in it. False if something is left.
    bool remove(const std::string& name) const;

private:
    [[nodiscard]] std::string linkInSight(const std::string& name) const;
    [[nodiscard]] std::string linkOutOfSight(const std::string& name) const;

    std::string folder_;
};

} // namespace varnhold::services
