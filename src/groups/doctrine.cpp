#include "groups/doctrine.h"

#include <algorithm>
#include <unordered_set>

#include "base/files.h"
#include "base/paths.h"
#include "base/unicode.h"
#include "base/walk.h"

namespace varnhold::Doctrine {

namespace {

constexpr int deepestLevel = 2;
constexpr std::string_view specSuffix = ".spec.md";

constexpr std::array<std::string_view, 7> keywords{"doctrine", "agent",   "protocol", "claude",
                                                   "readme",   "charter", "mission"};

bool isText(std::string_view name) {
    return std::find(textExts.begin(), textExts.end(), paths::extension(name)) != textExts.end();
}

bool speaksOfDoctrine(std::string_view name) {
    return name.ends_with(specSuffix) ||
           std::any_of(keywords.begin(), keywords.end(), [&](std::string_view keyword) {
               return name.find(keyword) != std::string_view::npos;
           });
}

void appendBelow(const std::string& folder, std::vector<std::string>& found) {
    files::walk(folder, [&found](const std::string& path, int depth) {
        if (isDoctrineFile(path)) {
            found.push_back(path);
        }
        return depth < deepestLevel ? files::Descend::yes : files::Descend::no;
    });
}

std::vector<std::string> withoutDuplicates(std::vector<std::string> paths) {
    std::unordered_set<std::string> seen;
    std::erase_if(paths, [&seen](const std::string& path) { return !seen.insert(path).second; });
    return paths;
}

} // namespace

bool isDoctrineFile(const std::string& path) {
    const std::string name = unicode::toLower(paths::lastComponent(path));
    if (!isText(name) || !unicode::isValidUtf8(path)) {
        return false;
    }
    const auto size = files::attributesSize(path);
    return (!size || *size <= maxBytes) && speaksOfDoctrine(name);
}

std::vector<std::string> extract(const std::vector<std::string>& paths) {
    std::vector<std::string> found;
    for (const std::string& path : paths) {
        if (files::isDirectory(path)) {
            appendBelow(path, found);
        } else if (isDoctrineFile(path)) {
            found.push_back(path);
        }
    }
    return withoutDuplicates(std::move(found));
}

} // namespace varnhold::Doctrine
