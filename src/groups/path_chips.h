#pragma once

#include <functional>
#include <string>
#include <vector>

namespace varnhold {

// One path in a grid of paths.
struct PathChip {
    std::string path;
    std::string name;  // its last component
    std::string image; // of a folder if it is one at this moment
};

// A grid of paths, each with a button that removes it. Main thread; `onRemove` acts on whatever
// the grid was made from, which must outlive it.
struct PathChipsView {
    std::vector<std::string> paths;
    double spacing = 0; // points
    std::function<void(const std::string& path)> onRemove;

    // Looks at the file system.
    [[nodiscard]] std::vector<PathChip> chips() const;
};

} // namespace varnhold
