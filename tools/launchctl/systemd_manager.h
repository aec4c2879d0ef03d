#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "jobs/job_store.h"
#include "launchctl/locking_manager.h"
#include "launchctl/user_manager.h"

namespace varnhold::services {

// Services under a systemd user manager.
//
// Each job is a transient unit that runs agent-exec on the job's folder, where a private copy of
// its property list stands; the unit itself holds no more than that folder's path. A job is loaded
// while its unit is in the manager's memory: running, waiting for its next start, or over. So
// nothing survives the manager.
class SystemdManager final : public LockingManager {
public:
    SystemdManager(UserManager manager, JobStore store, std::string agentExec);

    Result<std::vector<JobState>> jobs() override;
    Result<std::optional<JobState>> job(const Label& label) override;
    Result<Outcome> bootstrap(const PropertyList& list, const std::string& content) override;
    Result<Outcome> bootout(const Label& label) override;
    Result<Outcome> kickstart(const Label& label, bool kill) override;
    Result<Outcome> stop(const Label& label) override;

private:
    // A job's unit and the folder that belongs to it.
    struct Loaded {
        JobName name;
        Unit unit;
        JobFiles files;
        Loaded(JobName itsName, Unit itsUnit, JobFiles itsFiles)
            : name(std::move(itsName)), unit(std::move(itsUnit)), files(std::move(itsFiles)) {}
    };

    // As the manager itself knows it.
    struct MainProcess {
        pid_t process = 0;
        std::int64_t start = 0;
        bool operator==(const MainProcess&) const = default;
    };

    [[nodiscard]] Result<MainProcess> mainProcess(const Unit& unit);
    [[nodiscard]] Result<std::vector<JobState>> states(const std::vector<std::string>& patterns);
    [[nodiscard]] Result<std::vector<Unit>> unitsOf(const JobName& name);
    [[nodiscard]] Result<std::optional<Loaded>> find(const JobName& name);
    [[nodiscard]] Result<bool> mayBeLoaded(const JobName& name) override;
    [[nodiscard]] bool endRemains() override;
    [[nodiscard]] Result<Outcome> bootstrapAlone(const JobName& name, const PropertyList& list,
                                                 const std::string& content);
    [[nodiscard]] Result<Outcome> start(const JobName& name, const PropertyList& list,
                                        const std::string& folder);
    // Does the work on a loaded job while nobody else changes it.
    [[nodiscard]] Result<Outcome>
    changeLoaded(const Label& label, const std::function<Result<Outcome>(const Loaded&)>& work);
    [[nodiscard]] Result<void> killAgent(const Loaded& loaded, pid_t running);
    void takeBack(const JobName& name);
    [[nodiscard]] Result<void> unload(const Unit& unit, const JobName& name);
    [[nodiscard]] Result<void> end(const Unit& unit, const std::function<void()>& onTaken = {});

    UserManager manager_;
};

} // namespace varnhold::services
