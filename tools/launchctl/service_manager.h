#pragma once

#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

#include "base/result.h"
#include "jobs/label_name.h"
#include "lifecycle/property_list.h"

// What launchctl needs of whatever really runs the services.
//
// A job is loaded from bootstrap to bootout, whether or not its agent runs; what is loaded keeps
// the definition it was loaded with. Any number of processes may use one manager at the same time.
namespace varnhold::services {

// How a job stands at one moment.
struct JobState {
    Label label;
    std::optional<pid_t> process; // absent while its agent doesn't run
    int lastEnd = 0;              // wait status of its last end, 0 before the first
};

// The order of listings.
[[nodiscard]] inline bool precedes(const JobState& left, const JobState& right) {
    return left.label < right.label;
}

enum class Outcome {
    done,
    alreadyLoaded,
    notLoaded,
};

class ServiceManager {
public:
    virtual ~ServiceManager() = default;

    // Every loaded job, sorted by label.
    [[nodiscard]] virtual Result<std::vector<JobState>> jobs() = 0;
    // None if no such job is loaded.
    [[nodiscard]] virtual Result<std::optional<JobState>> job(const Label& label) = 0;
    // The definition that a loaded job was loaded with.
    [[nodiscard]] virtual Result<PropertyList> definition(const Label& label) = 0;

    // Loads a job; starts it if its definition says so. `content` is the property list as it was
    // read and `list` what it says. A loaded job is left as it is.
    virtual Result<Outcome> bootstrap(const PropertyList& list, const std::string& content) = 0;

    // Ends the agent, politely first and with force after five seconds, and forgets the job.
    // Returns when the process is gone. Child processes of the agent are left alone.
    virtual Result<Outcome> bootout(const Label& label) = 0;

    // Starts a job that doesn't run, at once; with `kill`, ends a running instance first, with
    // force.
    virtual Result<Outcome> kickstart(const Label& label, bool kill) = 0;

    // Asks the agent to end; the job stays loaded, and is started again if it is kept alive.
    virtual Result<Outcome> stop(const Label& label) = 0;
};

} // namespace varnhold::services
