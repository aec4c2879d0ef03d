#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <sys/inotify.h>
#include <unistd.h>
#include <vector>

#include "settings_home.h"

// Daemons watch the data folder, so the order of reads and writes is watched here as they would.
namespace varnhold::testing {
namespace {

namespace fs = std::filesystem;

bool isTemporary(const std::string& name) {
    return name.starts_with(".PROMPT") || name.ends_with(".unfinished");
}

// Reports what happens in a folder. All of it is queued by the time the call that did it returns.
class FolderWatch {
public:
    FolderWatch(const std::string& folder, std::uint32_t events)
        : queue_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
        EXPECT_GE(::inotify_add_watch(queue_, folder.c_str(), events), 0);
    }
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;
    ~FolderWatch() { ::close(queue_); }

    // Names in order; one right after itself counts once, temporary files not at all.
    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> names;
        alignas(inotify_event) std::array<char, 65536> buffer{};
        const ssize_t got = ::read(queue_, buffer.data(), buffer.size());
        for (ssize_t at = 0; at < got;) {
            const auto* const event = reinterpret_cast<const inotify_event*>(buffer.data() + at);
            if (event->len > 0 && !isTemporary(event->name)) {
                names.emplace_back(event->name);
            }
            at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
        }
        names.erase(std::unique(names.begin(), names.end()), names.end());
        return names;
    }

private:
    int queue_;
};

std::vector<std::string> namesOf(const std::vector<std::string>& paths) {
    std::vector<std::string> names;
    for (const std::string& path : paths) {
        names.push_back(fs::path(path).filename().string());
    }
    return names;
}

TEST(FileOrder, OfASaveIsThatOfItsSteps) {
    SettingsHome settings;
    settings.write(settings.constants.customGroupsFile,
                   encodeGroups({CustomBotGroup{.name = "old"}}).value());
    ModelSelectorView& view = settings.open();
    fill(view);
    const FolderWatch watch(settings.constants.appSupportDir, IN_CLOSE_WRITE | IN_MOVED_TO);
    view.save();
    std::vector<std::string> expected = namesOf(settings.savedFiles());
    expected.insert(std::find(expected.begin(), expected.end(), "custom_groups.json"),
                    "custom_groups.json.bak");
    EXPECT_EQ(watch.names(), expected);
}

TEST(FileOrder, OfLoadingIsThatOfItsSteps) {
    SettingsHome settings;
    fill(settings.open());
    settings.view->save();
    settings.write(settings.constants.customGroupsFile, "[]");
    settings.write(settings.constants.customGroupsFile + ".bak", "[]");
    const FolderWatch watch(settings.constants.appSupportDir, IN_OPEN);
    settings.open();
    const Constants& files = settings.constants;
    EXPECT_EQ(
        watch.names(),
        namesOf({files.workerPrefsFile, files.architectPrefsFile, files.photoPrefsFile,
                 files.videoPrefsFile, files.voicePrefsFile, files.governorChainFile,
                 files.responseModeFile, files.botsConfigFile, files.customGroupsFile,
                 files.customGroupsFile + ".bak", files.chainBotAssignmentsFile, files.promptFile,
                 files.governorPrefsFile, files.effortPrefsFile, files.contextPrefsFile}));
}

TEST(FileOrder, OfReloadingAfterAutomaticSetUpIsThatOfTheChains) {
    SettingsHome settings;
    settings.open().save();
    settings.platform.answer = [](const platform::ProcessRequest&) {
        platform::ProcessResult result;
        result.started = true;
        return result;
    };
    const FolderWatch watch(settings.constants.appSupportDir, IN_OPEN);
    settings.view->runAutoSetup();
    settings.platform.settle();
    const Constants& files = settings.constants;
    EXPECT_EQ(watch.names(),
              namesOf({files.architectPrefsFile, files.workerPrefsFile, files.photoPrefsFile,
                       files.videoPrefsFile, files.voicePrefsFile, files.governorChainFile}));
}

} // namespace
} // namespace varnhold::testing
