#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "jobs/job_store.h"

namespace varnhold::services {

// The one s6-svscan process that keeps a supervisor running for every job linked into its folder.
//
// It is started detached from everything, with an environment of its own, so that agents outlive
// whoever loaded them, and nobody who reads our output waits for it.
class S6Scanner final {
public:
    // The store, in which its folder is, must outlive it.
    explicit S6Scanner(const JobStore& store, std::vector<std::string> programs = places())
        : store_(store), programs_(std::move(programs)) {}
    // Where s6-svscan may be installed.
    [[nodiscard]] static std::vector<std::string> places();

    [[nodiscard]] bool isRunning() const;

    // Starts it unless it runs, and returns when it listens, or at once if it can't be executed.
    // Its folder must be there. One caller at a time.
    [[nodiscard]] Result<void> start() const;

    // Makes it look at its folder again: a link that is new gets a supervisor, and the supervisor
    // of one that is gone is not replaced any more when it ends.
    void rescan() const;

    // Ends it and returns when it is gone. Jobs must have been unlinked before.
    [[nodiscard]] Result<void> stop() const;

private:
    [[nodiscard]] int openControl() const;
    void command(std::string_view letters) const;

    const JobStore& store_;
    std::vector<std::string> programs_;
};

} // namespace varnhold::services
