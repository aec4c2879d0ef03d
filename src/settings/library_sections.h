#pragma once

#include <string>
#include <vector>

#include "settings/settings_fields.h"

namespace varnhold {

// A stretch of the library column: a title, perhaps a note beside it in light type, and models.
struct LibrarySection {
    std::string title;
    std::string note;
    const std::vector<AIModelItem>& models;
};

// Those that have something to show, in order; the local tools always stand there. All but the
// first begin with a divider. The record must outlive them; main thread.
[[nodiscard]] std::vector<LibrarySection> librarySections(const SettingsFields& view);

} // namespace varnhold
