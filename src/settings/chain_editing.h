#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "groups/drops.h"
#include "records/model_rows.h"
#include "settings/settings_fields.h"

// The six chains as they are edited: by dragging rows, and in no other way.
//
// Zones and strips hand their drops to ModelSelectorView; what stands here are the rows themselves,
// as drag sources and as drop targets. Main thread only. A drop that no rule provides for does
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

// The drop target that each row of a chain is: rows of the same chain change places with it while
// they are dragged over it. What comes from elsewhere isn't taken; the row consumes it all the
// same.
//
// Holds references into the settings state and must not outlive it.
struct RealTimeDropDelegate {
    AIModelItem item; // the row
    std::vector<AIModelItem>& list;
    std::optional<AIModelItem>& draggingItem;
    std::function<void()> onSave;
    // What the two references went through, for whoever shows them.
    std::function<void(RowMove move)> onMove = nullptr;
    std::function<void()> onCleared = nullptr;

    // True if the drop belonged to this chain; only then is it saved.
    bool performDrop();
    void dropEntered();
    [[nodiscard]] DropProposal dropUpdated() const { return DropProposal::move; }
};

} // namespace varnhold
