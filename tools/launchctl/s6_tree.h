#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/result.h"
#include "jobs/job_store.h"
#include "launchctl/s6_service.h"

// The links by which a scanner knows its jobs, and the jobs' folders. No locks here: whoever
// changes a job holds its lock.
namespace varnhold::services {

class S6Tree final {
public:
    // Where the link to a job stands. A scanner starts a supervisor for all that is in its sight,
    // and would try in vain, once a second, for a job whose supervisor has outlived the scanner
    // before: such a job is kept out of its sight.
    enum class Link { none, inSight, outOfSight };

    // The store must outlive it.
    explicit S6Tree(const JobStore& store) : store_(store) {}

    // Fails if the folder of the links is none that can be believed.
    [[nodiscard]] Result<void> look();
    // Makes the folder of the links if it is missing, and looks.
    [[nodiscard]] Result<void> make();

    // Whether there is a folder of links at all, and so any job.
    [[nodiscard]] bool isThere() const { return links_.has_value(); }
    [[nodiscard]] Link linkOf(const JobName& name) const;
    [[nodiscard]] Result<void> link(const JobName& name) const;
    void unlink(const JobName& name) const;
    void hide(const JobName& name) const;

    [[nodiscard]] std::vector<JobName> linkedJobs() const;
    // Whether one of them passes the test; in no order, and none after the first that does.
    [[nodiscard]] bool anyLinked(const std::function<bool(const JobName& name)>& test) const;
    // Also those of which nothing but the folder is left, or not more is there yet. Folders of
    // another service manager's jobs aren't ours.
    [[nodiscard]] std::vector<JobName> allJobs() const;

    [[nodiscard]] S6Service service(const JobName& name) const;

    // Takes the job's files away. False if a supervisor has come up there meanwhile.
    bool remove(const JobName& name) const;
    // Takes away all links, and what a scanner that has ended has left. The tree must be locked.
    static void removeLinks(const JobStore& store);

private:
    const JobStore& store_;
    JobFiles::Folder links_;
};

} // namespace varnhold::services
