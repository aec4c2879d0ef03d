#include "launchctl/lost_supervisors.h"

#include <chrono>
#include <filesystem>
#include <optional>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <vector>

#include "base/text.h"
#include "jobs/tree_names.h"
#include "launchctl/process_handle.h"
#include "launchctl/s6_service.h"

namespace varnhold::services {

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr auto exitTimeout = 5s; // as for any agent
constexpr auto lastMoment = 3s;  // from the kill of an agent to the end of its supervisor

std::string linkOf(pid_t process, const char* name) {
    std::error_code gone;
    return fs::read_symlink("/proc/" + std::to_string(process) + "/" + name, gone).string();
}

bool isOurs(pid_t process) {
    struct stat found {};
    return ::stat(("/proc/" + std::to_string(process)).c_str(), &found) == 0 &&
           found.st_uid == ::getuid();
}

// One of s6's programs whose folder was in the given one and isn't there any more.
bool isLost(pid_t process, const std::string& program, const std::string& folder) {
    const std::string place = linkOf(process, "cwd");
    return isOurs(process) && linkOf(process, "exe").ends_with("/" + program) &&
           place.starts_with(folder) && place.ends_with(" (deleted)");
}

std::vector<pid_t> lost(const std::string& program, const std::string& folder) {
    std::vector<pid_t> found;
    std::error_code unreadable;
    for (const auto& entry : fs::directory_iterator("/proc", unreadable)) {
        const auto number = text::parseInteger(entry.path().filename().string());
        if (number && isLost(static_cast<pid_t>(*number), program, folder)) {
            found.push_back(static_cast<pid_t>(*number));
        }
    }
    return found;
}

void end(pid_t supervisor, const std::string& folder) {
    const ProcessHandle handle(supervisor);
    if (!isLost(supervisor, "s6-supervise", folder)) {
        return; // another has got the number
    }
    handle.askToEnd();
    handle.waitForEnd(exitTimeout);
    const auto agent = handle.hasEnded() ? std::nullopt : S6Service::agentOf(supervisor);
    if (!agent) {
        return;
    }
    const ProcessHandle deaf(*agent);
    if (S6Service::agentOf(supervisor) == agent) {
        deaf.kill();
    }
    handle.waitForEnd(lastMoment);
}

// First who would replace them.
void killLostScanners(const std::string& folder) {
    const std::string scan = folder + "/" + tree::scan;
    for (const pid_t scanner : lost("s6-svscan", scan)) {
        const ProcessHandle handle(scanner);
        if (isLost(scanner, "s6-svscan", scan)) {
            handle.kill();
        }
    }
}

bool endSupervisors(const std::string& folder) {
    const auto found = lost("s6-supervise", folder);
    for (const pid_t supervisor : found) {
        end(supervisor, folder);
    }
    return !found.empty();
}

} // namespace

void endLostSupervisors(const std::string& folder) {
    killLostScanners(folder);
    endSupervisors(folder + "/" + tree::jobs + "/");
}

bool endLostSupervisor(const std::string& folder, const JobName& name) {
    killLostScanners(folder);
    // With the blank before what the system says of a folder that is gone, for names may begin
    // alike.
    return endSupervisors(folder + "/" + tree::jobs + "/" + name.text() + " ");
}

} // namespace varnhold::services
