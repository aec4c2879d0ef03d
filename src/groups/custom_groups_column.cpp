#include "groups/custom_groups_column.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <unordered_set>
#include <utility>

#include "groups/doctrine.h"
#include "groups/group_sheet.h"
#include "records/model_rows.h"

namespace varnhold {

using namespace std::chrono_literals;

namespace {

constexpr auto longestDrag = 500ms;
constexpr double chipSpacing = 4; // points

// Folders may bring thousands of paths.
void appendMissing(std::vector<std::string>& texts, const std::vector<std::string>& more) {
    std::unordered_set<std::string> known(texts.begin(), texts.end());
    std::copy_if(more.begin(), more.end(), std::back_inserter(texts),
                 [&known](const std::string& text) { return known.insert(text).second; });
}

StackParts stackParts(CustomBotGroup& group) {
    return {.models = group.models,
            .labels = &group.assignedBotLabels,
            .effort = group.effortLevel,
            .contextTokens = group.contextTokens};
}

} // namespace

GroupStepperRow groupContextRow(double tokens, Ladder ladder) {
    const std::int64_t whole = truncatedTokens(tokens);
    return contextRow(whole, ladder, whole == 0 ? "Auto" : formatTokenCount(whole), whole == 0);
}

CustomBotGroup* CustomGroupsColumn::find(const Uuid& id) const {
    return findGroup(parts_.customGroups, id);
}

StackPolicy CustomGroupsColumn::stackPolicy() {
    return {.queues = parts_.queues,
            .contextLadder = parts_.contextLadder,
            .userBots = parts_.userBots,
            .dragging = draggingModel_,
            .longestDrag = longestDrag,
            .contextRow = groupContextRow,
            .inLibrary = [this](const std::string& key) -> const AIModelItem* {
                const auto row = key.empty() ? std::nullopt : rowNamed(parts_.modelLibrary, key);
                return row ? &parts_.modelLibrary[*row] : nullptr;
            },
            .onSave = parts_.onSave,
            .onChange = parts_.onChange,
            .onDrop =
                [this] {
                    parts_.queues.postMain(stacks_.whileAlive([this] {
                        clearDragging();
                        parts_.onClearDragging();
                    }));
                },
            .onOverdue = parts_.onChange};
}

CustomGroupsColumn::CustomGroupsColumn(GroupColumnParts parts)
    : parts_(std::move(parts)), stacks_(stackPolicy()) {}

Stack CustomGroupsColumn::stack(const Uuid& id) {
    return {stacks_, {.find = [this, id]() -> std::optional<StackParts> {
                CustomBotGroup* const group = find(id);
                return group == nullptr ? std::nullopt : std::optional(stackParts(*group));
            }}};
}

Stack CustomGroupsColumn::stack(CustomBotGroup& group) {
    return {stacks_, {.find = [&group] { return std::optional(stackParts(group)); }}};
}

bool CustomGroupsColumn::handleDrop(const platform::PayloadProviders& drops, const Uuid& id,
                                    std::optional<std::size_t> at) {
    return stack(id).dropModels(drops, at);
}

void CustomGroupsColumn::clearDragging() {
    draggingModel_.reset();
    parts_.onChange();
}

CustomGroupDropDelegate CustomGroupsColumn::dropDelegate(const Uuid& id,
                                                         const AIModelItem& target) {
    return {.targetModel = target,
            .groupId = id,
            .customGroups = parts_.customGroups,
            .draggingModel = draggingModel_,
            .onSave = parts_.onSave,
            .onChange = parts_.onChange};
}

void CustomGroupsColumn::attach(const Uuid& id, const std::vector<std::string>& paths) {
    if (CustomBotGroup* const group = find(id)) {
        appendMissing(group->attachedPaths, paths);
        appendMissing(group->doctrine, Doctrine::extract(paths));
        parts_.onSave();
    }
}

std::optional<PathChipsView> CustomGroupsColumn::attachmentChips(const CustomBotGroup& group) {
    return chips(group, &CustomBotGroup::attachedPaths);
}

std::optional<PathChipsView> CustomGroupsColumn::doctrineChips(const CustomBotGroup& group) {
    return chips(group, &CustomBotGroup::doctrine);
}

std::optional<PathChipsView> CustomGroupsColumn::chips(const CustomBotGroup& group, Paths paths) {
    if ((group.*paths).empty()) {
        return std::nullopt;
    }
    return PathChipsView{.paths = group.*paths,
                         .spacing = chipSpacing,
                         .onRemove = [this, id = group.id, paths](const std::string& path) {
                             if (CustomBotGroup* const owner = find(id)) {
                                 std::erase(owner->*paths, std::string(path));
                                 parts_.onSave();
                             }
                         }};
}

void CustomGroupsColumn::toggleObjectives(const Uuid& id) {
    if (expandedObjectives_.erase(id) == 0) {
        expandedObjectives_.insert(id);
    }
    parts_.onChange();
}

std::string CustomGroupsColumn::objectives(const Uuid& id) const {
    const CustomBotGroup* const group = find(id);
    return group == nullptr ? std::string() : group->objectives;
}

void CustomGroupsColumn::setObjectives(const Uuid& id, const std::string& text) {
    CustomBotGroup* const group = find(id);
    if (group != nullptr && group->objectives != text) {
        group->objectives = text;
        parts_.onSave();
    }
}

} // namespace varnhold
