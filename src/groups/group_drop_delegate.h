#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "base/uuid.h"
#include "groups/drops.h"
#include "records/groups.h"

namespace varnhold {

// The drop target that one model row of a group is: while a model of the same group is dragged
// over it, the two change places. Main thread; list and dragged model must outlive it.
struct CustomGroupDropDelegate {
    AIModelItem targetModel;
    Uuid groupId;
    std::vector<CustomBotGroup>& customGroups;
    std::optional<AIModelItem>& draggingModel;
    std::function<void()> onSave;
    std::function<void(ListMotion motion)> onChange = [](ListMotion) {};

    // True if a model of this group was dropped: the order that it was dragged to is then saved.
    // Nothing is ever inserted here.
    [[nodiscard]] bool performDrop() const;
    // Moves in memory alone.
    void dropEntered() const;
    [[nodiscard]] DropProposal dropUpdated() const { return DropProposal::move; }
};

} // namespace varnhold
