#pragma once

#include <string_view>

#include "base/result.h"
#include "launchctl/job_store.h"

namespace varnhold::services {

// The one s6-svscan process that keeps a supervisor running for every job linked into its folder.
//
// It is started detached from everything, with an environment of its own, so that agents outlive
// whoever loaded them, and nobody who reads our output waits for it.
class S6Scanner final {
public:
    // The store, in which its folder is, must outlive it.
    explicit S6Scanner(const JobStore& store) : store_(store) {}

    [[nodiscard]] bool isRunning() const;

    // Starts it unless it runs, and returns when it listens. Its folder must be there. One caller
    // at a time.
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
};

} // namespace varnhold::services
