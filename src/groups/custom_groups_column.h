#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "groups/group_drop_delegate.h"
#include "groups/path_chips.h"
#include "platform/payload.h"
#include "platform/platform.h"
#include "records/bots.h"
#include "records/groups.h"
#include "stacks/stack.h"

namespace varnhold {

// What the column works on; all of it must outlive the column.
struct GroupColumnParts {
    platform::Queues& queues;
    std::span<const int> contextLadder;
    std::vector<CustomBotGroup>& customGroups;
    const std::vector<AIModelItem>& modelLibrary;
    const std::vector<BotConfig>& userBots;
    std::function<void()> onSave;
    std::function<void()> onClearDragging = [] {};
    // Something to see, nothing to save yet.
    std::function<void()> onChange = [] {};
};

// A group's stepper shows what every stack's does.
using GroupStepperRow = StepperRow;

// A budget as a group shows it. `ladder`: the budgets that can be reached, rising, at least one.
[[nodiscard]] GroupStepperRow groupContextRow(double tokens, Ladder ladder);

// The column in which custom groups are edited.
//
// Groups are changed in place and saved at each change; none can fail, and a group that has gone is
// passed over. Main thread, but what is dropped may deliver its text on any thread, also after the
// column has gone.
class CustomGroupsColumn final {
public:
    explicit CustomGroupsColumn(GroupColumnParts parts);
    CustomGroupsColumn(const CustomGroupsColumn&) = delete;
    CustomGroupsColumn& operator=(const CustomGroupsColumn&) = delete;
    ~CustomGroupsColumn() = default;

    // The group's models, bots, effort and budget, to be edited. Nothing asks here whether somebody
    // is signed in to a model's provider. Must not outlive the column.
    [[nodiscard]] Stack stack(const Uuid& id);
    // The same of a group at hand, for as long as it stays where it is.
    [[nodiscard]] Stack stack(CustomBotGroup& group);

    // Models dropped on a group, by identity: put at the position, or at the end. True always, at
    // once.
    bool handleDrop(const platform::PayloadProviders& drops, const Uuid& id,
                    std::optional<std::size_t> at = std::nullopt);

    // Begins to drag a row, and gives the text that the drag carries. A drag that reports no end
    // counts as over after half a second.
    [[nodiscard]] std::string startDrag(const AIModelItem& model) {
        return stacks_.startDrag(model);
    }
    [[nodiscard]] const std::optional<AIModelItem>& draggingModel() const { return draggingModel_; }
    [[nodiscard]] CustomGroupDropDelegate dropDelegate(const Uuid& id, const AIModelItem& target);

    // Attaches files and folders, and whatever of them or in them is doctrine now: nothing looks
    // into a folder again later. Takes as long as the folders are large.
    void attach(const Uuid& id, const std::vector<std::string>& paths);
    // None where there is nothing to show. Removing an attachment leaves its doctrine.
    [[nodiscard]] std::optional<PathChipsView> attachmentChips(const CustomBotGroup& group);
    [[nodiscard]] std::optional<PathChipsView> doctrineChips(const CustomBotGroup& group);

    // Groups whose editor of objectives is open; a group that has gone does no harm in it.
    [[nodiscard]] const std::set<Uuid>& expandedObjectives() const { return expandedObjectives_; }
    void toggleObjectives(const Uuid& id);
    [[nodiscard]] std::string objectives(const Uuid& id) const;
    void setObjectives(const Uuid& id, const std::string& text);

private:
    using Paths = std::vector<std::string> CustomBotGroup::*;

    [[nodiscard]] CustomBotGroup* find(const Uuid& id) const;
    void clearDragging();
    [[nodiscard]] StackPolicy stackPolicy();
    [[nodiscard]] std::optional<PathChipsView> chips(const CustomBotGroup& group, Paths paths);

    GroupColumnParts parts_;
    std::optional<AIModelItem> draggingModel_;
    std::set<Uuid> expandedObjectives_;
    StackEditing stacks_;
};

} // namespace varnhold
