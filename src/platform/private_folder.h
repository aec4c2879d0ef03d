#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

#include "base/result.h"

namespace varnhold::platform {

// A folder that is its owner's alone: ours, a real folder and no link, and closed to everybody
// else.
//
// It is checked once, when it is opened, and held by a descriptor from then on, so that nobody can
// put another in its place between the look and the use. What is done in it goes by single names
// relative to that descriptor and never through a link. Names must not hold a slash.
// One thread at a time. A failure is a reason with the path in it.
class PrivateFolder final {
public:
    // None if nothing is there; a failure if what is there isn't a private folder of ours.
    [[nodiscard]] static Result<std::optional<PrivateFolder>> find(const std::string& path);
    // Makes it, and any parent that is missing, for its owner alone; or opens what is there.
    [[nodiscard]] static Result<PrivateFolder> make(const std::string& path);

    // The same for a folder in this one.
    [[nodiscard]] Result<std::optional<PrivateFolder>> findIn(const std::string& name) const;
    [[nodiscard]] Result<PrivateFolder> makeIn(const std::string& name) const;

    PrivateFolder(PrivateFolder&& other) noexcept;
    PrivateFolder& operator=(PrivateFolder&& other) noexcept;
    PrivateFolder(const PrivateFolder&) = delete;
    PrivateFolder& operator=(const PrivateFolder&) = delete;
    ~PrivateFolder();

    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] int descriptor() const { return folder_; }

    // What is in it, unsorted; empty if it can't be read.
    [[nodiscard]] std::vector<std::string> names() const;
    // Whether a name passes the test; none is looked at after the first that does.
    [[nodiscard]] bool anyName(const std::function<bool(std::string_view name)>& test) const;
    // Whether anything bears the name, also a link that leads nowhere.
    [[nodiscard]] bool has(const std::string& name) const;

    // As open(2), and never across a link. -1 and errno if it fails.
    [[nodiscard]] int open(const std::string& name, int flags, mode_t mode = 0600) const;
    // Only of a regular file.
    [[nodiscard]] Result<std::string> read(const std::string& name) const;
    // Nothing is synced: such folders don't outlive the machine's next start, or aren't meant to.
    [[nodiscard]] Result<void> write(const std::string& name, std::string_view content,
                                     mode_t mode = 0600) const;

    // A file, a pipe or a link, but no folder. True if nothing bears the name afterwards.
    bool remove(const std::string& name) const;
    // A folder that is empty.
    bool removeFolder(const std::string& name) const;
    // A folder of ours, whatever its mode, together with the files in it. One that holds a folder
    // stays, and a link is left alone.
    bool removeFolderOfFiles(const std::string& name) const;

private:
    PrivateFolder(int folder, std::string path) : folder_(folder), path_(std::move(path)) {}
    [[nodiscard]] static Result<std::optional<PrivateFolder>>
    findAt(int parent, const std::string& name, const std::string& path);

    int folder_ = -1;
    std::string path_;
};

} // namespace varnhold::platform
