#include "doctor/jobs.h"

#include <csignal>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "base/files.h"
#include "base/text.h"
#include "base/unicode.h"
#include "doctor/file_state.h"

namespace varnhold::doctor {

namespace {

std::string firstLine(const std::string& text) {
    constexpr std::size_t longest = 500;
    return text.substr(0, std::min(text.find('\n'), longest));
}

JobFolder readFolder(const std::string& path) {
    JobFolder folder;
    folder.isUnit = files::exists(path + "/is-unit");
    const auto content = [&path](const char* name) {
        return fileStateOf(path + "/" + name).content; // empty if there is none
    };
    if (const auto definition = decodePropertyList(content("job.plist"))) {
        folder.loaded = *definition;
    }
    folder.starts = text::parseInteger(content("starts"));
    folder.spawnError = firstLine(content("spawn-trouble"));
    folder.logError = firstLine(content("log-trouble"));
    return folder;
}

} // namespace

std::vector<Job> parseJobs(std::string_view listing) {
    std::vector<Job> jobs;
    if (!unicode::isValidUtf8(listing)) {
        return jobs;
    }
    for (const std::string_view line : text::split(listing, '\n')) {
        const std::size_t first = line.find('\t');
        const std::size_t second = line.find('\t', first + 1);
        if (first == std::string_view::npos || second == std::string_view::npos) {
            continue;
        }
        const auto status = text::parseInteger(line.substr(first + 1, second - first - 1));
        if (!status) { // the header
            continue;
        }
        jobs.push_back({.label = std::string(line.substr(second + 1)),
                        .process = text::parseInteger(line.substr(0, first)),
                        .lastStatus = static_cast<int>(*status)});
    }
    return jobs;
}

std::map<std::string, JobFolder> jobFolders(const std::string& runtimeFolder) {
    std::map<std::string, JobFolder> folders;
    std::error_code missing; // then nothing is loaded by our own tools
    for (const auto& entry :
         std::filesystem::directory_iterator(runtimeFolder + "/jobs", missing)) {
        JobFolder folder = readFolder(entry.path().string());
        if (folder.loaded) {
            std::string label = folder.loaded->label;
            folders.insert_or_assign(std::move(label), std::move(folder));
        }
    }
    return folders;
}

Jobs findJobs(const Surroundings& surroundings) {
    Jobs jobs;
    jobs.run = surroundings.listJobs();
    jobs.answered = jobs.run.started && !jobs.run.timedOut && jobs.run.exitCode == 0;
    jobs.shown = parseJobList(jobs.run.output);
    auto folders = jobFolders(surroundings.runtimeFolder);
    for (Job& job : parseJobs(jobs.run.output)) {
        if (const auto folder = folders.find(job.label); folder != folders.end()) {
            job.folder = std::move(folder->second);
        }
        std::string label = job.label;
        jobs.byLabel.insert_or_assign(std::move(label), std::move(job));
    }
    return jobs;
}

std::string endInWords(int lastStatus) {
    constexpr int cannotSpawn = 78;
    if (lastStatus < 0) {
        const char* name = ::sigabbrev_np(-lastStatus);
        return "signal " + std::to_string(-lastStatus) +
               (name == nullptr ? "" : " (SIG" + std::string(name) + ")");
    }
    std::string text = "exit code " + std::to_string(lastStatus);
    return lastStatus == cannotSpawn ? text + " (its program could not be spawned)" : text;
}

} // namespace varnhold::doctor
