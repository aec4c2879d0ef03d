#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/background.h"
#include "platform/payload.h"
#include "platform/platform.h"
#include "records/bots.h"
#include "records/models.h"
#include "stacks/steppers.h"

namespace varnhold {

// What stacks of one kind have in common, and where they differ from those of the other. All that
// is referred to must outlive the editing.
struct StackPolicy {
    platform::Queues& queues;
    Ladder contextLadder; // the budgets that can be reached
    const std::vector<BotConfig>& userBots;
    // The row that is being dragged, and how long it counts as such: a drag that is given up
    // reports no end.
    std::optional<AIModelItem>& dragging;
    std::chrono::milliseconds longestDrag;

    // The row of a budget as this kind shows it.
    StepperRow (*contextRow)(double tokens, Ladder ladder);
    // The model of the library that a dropped text stands for; null where none does.
    std::function<const AIModelItem*(const std::string& payload)> inLibrary;

    std::function<void()> onSave;
    // Something to see, nothing to save yet.
    std::function<void()> onChange;
    // A drop has been taken whose texts are still to come: the drag is over.
    std::function<void()> onDrop;
    // The dragged row has been let go, since its time was up.
    std::function<void()> onOverdue;
};

// The editing of all stacks of one kind: of the six chains, or of the custom groups.
//
// Main thread, but what is dropped may deliver its text on any thread, also after the editing has
// gone.
class StackEditing final {
public:
    explicit StackEditing(StackPolicy policy) : policy_(std::move(policy)) {}
    StackEditing(const StackEditing&) = delete;
    StackEditing& operator=(const StackEditing&) = delete;
    ~StackEditing() = default;

    [[nodiscard]] const StackPolicy& policy() const { return policy_; }

    [[nodiscard]] bool isDragging(const AIModelItem& item) const;
    // Begins to drag a row, and gives the text that the drag carries.
    [[nodiscard]] std::string startDrag(const AIModelItem& item);

    // Starts all to load, and hands each text that comes to the main thread.
    void receive(const platform::PayloadProviders& providers,
                 const std::function<void(const std::string& text)>& use) const;

    // The task, done only as long as there is something to edit.
    [[nodiscard]] platform::Task whileAlive(platform::Task task) const;

private:
    StackPolicy policy_;
    platform::Alive alive_;
};

} // namespace varnhold
