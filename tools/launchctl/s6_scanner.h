#pragma once

#include <string>

#include "base/result.h"

namespace varnhold::services {

// The one s6-svscan process that keeps a supervisor running for every job linked into its folder.
//
// It is started detached from everything, with an environment of its own, so that agents outlive
// whoever loaded them, and nobody who reads our output waits for it.
class S6Scanner final {
public:
    // `folder`: the scan folder; its parent must be there.
    explicit S6Scanner(std::string folder) : folder_(std::move(folder)) {}

    [[nodiscard]] bool isRunning() const;

    // Starts it unless it runs, and returns when it listens. One caller at a time.
    [[nodiscard]] Result<void> start() const;

    // Makes it look at its folder again: a link that is new gets a supervisor, and the supervisor
    // of one that is gone is not replaced any more when it ends.
    void rescan() const;

    // Ends it and returns when it is gone. Jobs must have been unlinked before.
    [[nodiscard]] Result<void> stop() const;

private:
    void command(const char* letters) const;

    std::string folder_;
};

} // namespace varnhold::services
