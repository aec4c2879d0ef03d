#pragma once

#include <functional>
#include <optional>

#include "records/model_rows.h"

namespace varnhold {

// What a row under the pointer says will happen to what is dropped there.
enum class DropProposal { move };

// The drop target that each row of a stack is: rows of the same stack change places with it while
// they are dragged over it. What comes from elsewhere isn't taken; the row consumes it all the
// same. Main thread; holds references that it must not outlive.
struct RealTimeDropDelegate {
    AIModelItem item; // the row
    ModelRows& list;
    std::optional<AIModelItem>& draggingItem;
    std::function<void()> onSave;
    // Something to see, nothing to save yet.
    std::function<void()> onChange = [] {};

    // True if the drop belonged to this stack: the order that it was dragged to is then saved.
    bool performDrop() const;
    // Moves in memory alone.
    void dropEntered() const;
    [[nodiscard]] DropProposal dropUpdated() const { return DropProposal::move; }
};

} // namespace varnhold
