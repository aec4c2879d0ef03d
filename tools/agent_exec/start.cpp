#include "agent_exec/start.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <vector>

#include "agent_exec/log_file.h"
#include "jobs/signals.h"

namespace varnhold::services {

namespace {

constexpr const char* basePath = "/usr/bin:/bin:/usr/sbin:/sbin";
constexpr mode_t mask = 0022; // whatever that of the manager, or of who started it, may be

int refuse(const JobFiles& job, const std::string& what) {
    const std::string reason = what + ": " + std::system_category().message(errno);
    std::fprintf(stderr, "agent-exec: %s\n", reason.c_str());
    job.noteSpawnTrouble(reason);
    return cannotSpawn;
}

// Gives a line of why if the log can't be had; the stream then goes nowhere.
std::string sendTo(const std::string& key, const std::string& path, int target) {
    const auto log = path.empty() ? failure("") : openLog(path);
    const int file = log ? *log : ::open("/dev/null", O_WRONLY);
    if (file >= 0 && file != target) {
        ::dup2(file, target);
        ::close(file);
    }
    return log || path.empty() ? "" : key + ": " + log.error() + "\n";
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> out;
    out.reserve(texts.size() + 1);
    for (std::string& text : texts) {
        out.push_back(text.data());
    }
    out.push_back(nullptr);
    return out;
}

} // namespace

std::map<std::string, std::string> agentEnvironment(const PropertyList& list) {
    std::map<std::string, std::string> variables{{"PATH", basePath}};
    // NOLINTNEXTLINE(concurrency-mt-unsafe): this program has one thread
    if (const passwd* user = ::getpwuid(::getuid())) {
        variables["HOME"] = user->pw_dir;
        variables["SHELL"] = user->pw_shell;
        variables["USER"] = user->pw_name;
        variables["LOGNAME"] = user->pw_name;
    }
    for (const auto& [name, value] : list.environmentVariables) {
        variables.insert_or_assign(name, value);
    }
    return variables;
}

int becomeAgent(const PropertyList& list, const JobFiles& job) {
    std::vector<std::string> environment;
    for (const auto& [name, value] : agentEnvironment(list)) {
        environment.push_back(name + "=" + value);
    }
    std::vector<std::string> arguments = list.programArguments;
    const std::string program = arguments.front();

    ::setsid(); // fails where the manager has made a session already, which serves as well
    const std::string folder = list.workingDirectory.empty() ? "/" : list.workingDirectory;
    if (::chdir(folder.c_str()) != 0) {
        return refuse(job, folder);
    }
    resetSignals();
    ::umask(mask);
    // The standard error of the manager is kept for the one message that may still come.
    const int ownError = ::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 3);
    ::close(STDIN_FILENO);
    ::open("/dev/null", O_RDONLY); // takes the number that has just been freed
    job.noteLogTrouble(sendTo("StandardOutPath", list.standardOutPath, STDOUT_FILENO) +
                       sendTo("StandardErrorPath", list.standardErrorPath, STDERR_FILENO));
    ::close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
    ::execve(program.c_str(), pointers(arguments).data(), pointers(environment).data());
    const int error = errno;
    ::dup2(ownError, STDERR_FILENO);
    errno = error;
    return refuse(job, program);
}

} // namespace varnhold::services
