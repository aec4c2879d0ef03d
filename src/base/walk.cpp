#include "base/walk.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <vector>

namespace varnhold::files {

namespace {

namespace fs = std::filesystem;

struct Entry {
    std::string name;
    bool isFolder = false; // itself, not by a link

    bool operator<(const Entry& other) const { return name < other.name; }
};

// What the folder holds as far as it can be read.
std::vector<Entry> visibleEntries(const std::string& folder) {
    std::vector<Entry> entries;
    std::error_code error;
    fs::directory_iterator at(folder, error);
    while (!error && at != fs::directory_iterator()) {
        std::string name = at->path().filename().string();
        if (!name.starts_with('.')) {
            std::error_code unknown;
            const bool isFolder = fs::is_directory(at->symlink_status(unknown));
            entries.push_back({std::move(name), isFolder});
        }
        at.increment(error);
    }
    std::sort(entries.begin(), entries.end());
    return entries;
}

// `prefix` ends in a slash.
void walkBelow(const std::string& prefix, int depth, const WalkVisitor& visit) {
    for (const Entry& entry : visibleEntries(prefix)) {
        const std::string path = prefix + entry.name;
        if (visit(path, depth) == Descend::yes && entry.isFolder) {
            walkBelow(path + "/", depth + 1, visit);
        }
    }
}

} // namespace

void walk(const std::string& folder, const WalkVisitor& visit) {
    const std::string bare = folder.substr(0, folder.find_last_not_of('/') + 1);
    std::error_code error;
    if (folder.empty() || fs::is_symlink(fs::symlink_status(bare, error))) {
        return;
    }
    walkBelow(bare + "/", 1, visit);
}

} // namespace varnhold::files
