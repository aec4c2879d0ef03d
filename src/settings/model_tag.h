#pragma once

#include <string>

#include "records/models.h"

namespace varnhold {

// What stands at the end of a model's row: its family, unless the model is reached through its
// provider's own tool, as a tilde before its id says.
[[nodiscard]] inline std::string modelTag(const AIModelItem& model) {
    return model.id.starts_with('~') ? "Direct" : model.family;
}

} // namespace varnhold
