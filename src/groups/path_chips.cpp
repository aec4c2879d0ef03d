#include "groups/path_chips.h"

#include "base/files.h"
#include "base/paths.h"

namespace varnhold {

std::vector<PathChip> PathChipsView::chips() const {
    std::vector<PathChip> out;
    for (const std::string& path : paths) {
        out.push_back({.path = path,
                       .name = std::string(paths::lastComponent(path)),
                       .image = files::isDirectory(path) ? "folder.fill" : "doc.fill"});
    }
    return out;
}

} // namespace varnhold
