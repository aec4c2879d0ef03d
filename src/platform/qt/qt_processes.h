#pragma once

#include "platform/platform.h"

namespace varnhold::platform {

// Child processes on QProcess. Each call has a QProcess of its own, so any thread may call.
class QtProcesses final : public Processes {
public:
    ProcessResult run(const ProcessRequest& request) override;
    void start(const ProcessRequest& request) override;
};

} // namespace varnhold::platform
