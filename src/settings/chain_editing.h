#pragma once

#include <functional>
#include <string>

#include "records/models.h"

// The six chains as they are edited.
//
// A chain is a stack (stacks/stack.h), and ModelSelectorView gives each as one. What is particular
// to chains: a row that stands in another one moves from there and isn't checked again; a model of
// the library may be refused; a drag that is given up ends after two seconds, gently; and what is
// dropped on the library leaves its chain. Main thread only. A drop that no rule provides for does
// nothing, without a word.
namespace varnhold {

// A model's row, in the library and in the chains alike. Must not outlive the settings state.
struct ModelRow {
    AIModelItem model;
    bool isDragging = false; // drawn faint
    bool isDownloading = false;
    // The control on the row: takes the model out of the library's file, never out of a chain.
    std::function<void()> onDelete;
    // Asked for when a drag begins; gives what is dragged.
    std::function<std::string()> onDrag;
};

} // namespace varnhold
