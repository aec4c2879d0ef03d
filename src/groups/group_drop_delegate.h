#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "base/uuid.h"
#include "records/groups.h"
#include "stacks/row_drop_delegate.h"

namespace varnhold {

// The drop target that one model row of a group is, for a group that may have gone by then: what
// RealTimeDropDelegate is for rows at hand. Main thread; list and dragged model must outlive it.
struct CustomGroupDropDelegate {
    AIModelItem targetModel;
    Uuid groupId;
    std::vector<CustomBotGroup>& customGroups;
    std::optional<AIModelItem>& draggingModel;
    std::function<void()> onSave;
    std::function<void()> onChange = [] {};

    // True if a model of this group was dropped: the order that it was dragged to is then saved.
    // Nothing is ever inserted here.
    [[nodiscard]] bool performDrop() const;
    // Moves in memory alone.
    void dropEntered() const;
    [[nodiscard]] DropProposal dropUpdated() const { return DropProposal::move; }
};

} // namespace varnhold
