#include "process_table.h"

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "base/files.h"
#include "base/text.h"

namespace varnhold::doctor {

namespace {

constexpr std::size_t parentColumn = 1; // counted from the state, which follows the name
constexpr std::size_t terminalColumn = 4;
constexpr std::size_t startColumn = 19;

// Of the table's line only what stands behind the name: a name may hold anything.
std::optional<std::int64_t> statColumn(std::int64_t process, std::size_t column) {
    const auto line = files::read("/proc/" + std::to_string(process) + "/stat");
    const std::size_t name = line ? line->rfind(')') : std::string::npos;
    if (name == std::string::npos) {
        return std::nullopt;
    }
    const auto columns = text::columns(std::string_view(*line).substr(name + 1));
    return columns.size() > column ? text::parseInteger(columns[column]) : std::nullopt;
}

} // namespace

std::optional<std::chrono::system_clock::time_point> startOfProcess(std::int64_t process) {
    const auto ticks = statColumn(process, startColumn);
    timespec sinceBoot{};
    if (!ticks || ::clock_gettime(CLOCK_BOOTTIME, &sinceBoot) != 0) {
        return std::nullopt;
    }
    const std::chrono::milliseconds now = std::chrono::seconds(sinceBoot.tv_sec) +
                                          std::chrono::duration_cast<std::chrono::milliseconds>(
                                              std::chrono::nanoseconds(sinceBoot.tv_nsec));
    const std::chrono::milliseconds start(*ticks * 1000 / ::sysconf(_SC_CLK_TCK));
    return std::chrono::system_clock::now() - (now - start);
}

std::vector<Process> ownProcesses() {
    std::vector<Process> processes;
    std::error_code ignored; // a process may end while it is looked at
    for (const auto& entry : std::filesystem::directory_iterator("/proc", ignored)) {
        const auto id = text::parseUnsigned(entry.path().filename().string());
        struct stat owner {};
        if (!id || ::stat(entry.path().c_str(), &owner) != 0 || owner.st_uid != ::getuid()) {
            continue;
        }
        const std::string line = valueOrEmpty(files::read(entry.path().string() + "/cmdline"));
        Process process{.id = static_cast<std::int64_t>(*id)};
        for (const std::string_view word : text::split(line, '\0')) {
            process.words.emplace_back(word);
        }
        if (!line.empty()) {
            process.words.pop_back(); // each word has its end, and nothing follows the last
            process.parent = statColumn(process.id, parentColumn).value_or(0);
            process.hasTerminal = statColumn(process.id, terminalColumn).value_or(0) != 0;
            processes.push_back(std::move(process));
        }
    }
    return processes;
}

// "7: FLOCK  ADVISORY  WRITE 4711 00:2b:1234 0 EOF"
std::optional<std::int64_t> holderOfLock(const std::string& path) {
    constexpr std::size_t kind = 1;
    constexpr std::size_t holder = 4;
    constexpr std::size_t file = 5;
    struct stat found {};
    if (::stat(path.c_str(), &found) != 0) {
        return std::nullopt;
    }
    const std::string locks = valueOrEmpty(files::read("/proc/locks"));
    for (const std::string_view line : text::split(locks, '\n')) {
        const auto columns = text::columns(line);
        // Some file systems give a lock another device than the file, so the number decides.
        if (columns.size() > file && columns[kind] == "FLOCK" &&
            columns[file].ends_with(":" + std::to_string(found.st_ino))) {
            return text::parseInteger(columns[holder]);
        }
    }
    return std::nullopt;
}

} // namespace varnhold::doctor
