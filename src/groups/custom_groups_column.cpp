#include "groups/custom_groups_column.h"

#include <algorithm>
#include <utility>

#include "groups/doctrine.h"
#include "groups/group_sheet.h"
#include "records/model_rows.h"

namespace varnhold {

using namespace std::chrono_literals;

namespace {

constexpr auto longestDrag = 500ms;
constexpr double chipSpacing = 4; // points

bool contains(const std::vector<std::string>& texts, const std::string& text) {
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

void appendMissing(std::vector<std::string>& texts, const std::vector<std::string>& more) {
    for (const std::string& text : more) {
        if (!contains(texts, text)) {
            texts.push_back(text);
        }
    }
}

} // namespace

CustomBotGroup* CustomGroupsColumn::find(const Uuid& id) const {
    return findGroup(parts_.customGroups, id);
}

platform::Task CustomGroupsColumn::whileAlive(platform::Task task) const {
    return [alive = std::weak_ptr(alive_), task = std::move(task)] {
        if (!alive.expired()) {
            task();
        }
    };
}

void CustomGroupsColumn::receive(const platform::PayloadProviders& drops,
                                 std::function<void(const std::string& text)> take) {
    for (const platform::PayloadProvider& drop : drops) {
        // The text may come on another thread: there only what is captured here is touched.
        drop([&queues = parts_.queues, alive = std::weak_ptr(alive_),
              take](const std::optional<std::string>& text) {
            if (!text) {
                return;
            }
            queues.postMain([alive, take, text = *text] {
                if (!alive.expired()) {
                    take(text);
                }
            });
        });
    }
}

void CustomGroupsColumn::stepEffort(const Uuid& id, StepDirection direction) {
    CustomBotGroup* const group = find(id);
    if (group != nullptr && varnhold::stepEffort(*group, direction)) {
        parts_.onSave();
    }
}

void CustomGroupsColumn::stepContext(const Uuid& id, StepDirection direction) {
    if (CustomBotGroup* const group = find(id)) {
        varnhold::stepContext(*group, direction, parts_.contextLadder);
        parts_.onSave();
    }
}

std::vector<BotConfig> CustomGroupsColumn::botsOf(const CustomBotGroup& group) const {
    std::vector<BotConfig> bots;
    std::copy_if(
        parts_.userBots.begin(), parts_.userBots.end(), std::back_inserter(bots),
        [&](const BotConfig& bot) { return contains(group.assignedBotLabels, bot.launchdLabel); });
    return bots;
}

bool CustomGroupsColumn::dropBots(const platform::PayloadProviders& drops, const Uuid& id) {
    receive(drops, [this, id](const std::string& label) { insertBot(id, label); });
    return true;
}

void CustomGroupsColumn::insertBot(const Uuid& id, const std::string& label) {
    const bool isKnown =
        std::any_of(parts_.userBots.begin(), parts_.userBots.end(),
                    [&](const BotConfig& bot) { return bot.launchdLabel == label; });
    CustomBotGroup* const group = find(id);
    if (isKnown && group != nullptr && !contains(group->assignedBotLabels, label)) {
        group->assignedBotLabels.push_back(label);
        parts_.onSave();
    }
}

void CustomGroupsColumn::removeBot(const Uuid& id, const std::string& label) {
    if (CustomBotGroup* const group = find(id)) {
        std::erase(group->assignedBotLabels, std::string(label));
        parts_.onSave();
    }
}

bool CustomGroupsColumn::handleDrop(const platform::PayloadProviders& drops, const Uuid& id,
                                    std::optional<std::size_t> at) {
    // First in the queue, so that no text is handled while the drag still counts as going on.
    parts_.queues.postMain(whileAlive([this] {
        clearDragging();
        parts_.onClearDragging();
    }));
    receive(drops, [this, id, at](const std::string& key) { insertModel(id, key, at); });
    return true;
}

void CustomGroupsColumn::insertModel(const Uuid& id, const std::string& key,
                                     std::optional<std::size_t> at) {
    CustomBotGroup* const group = find(id);
    if (key.empty() || group == nullptr || rowNamed(group->models, key)) {
        return;
    }
    const auto entry = rowNamed(parts_.modelLibrary, key);
    if (!entry) {
        return;
    }
    AIModelItem copy = parts_.modelLibrary[*entry];
    copy.uniqueId = Uuid::random().text();
    const auto place = static_cast<std::ptrdiff_t>(insertionPlace(group->models, at));
    group->models.insert(group->models.begin() + place, std::move(copy));
    parts_.onChange(ListMotion::spring);
    parts_.onSave();
}

void CustomGroupsColumn::removeModel(const Uuid& id, const std::string& uid) {
    if (CustomBotGroup* const group = find(id)) {
        // The text handed in may be the model's own.
        std::erase_if(group->models,
                      [uid = uid](const AIModelItem& model) { return model.uid() == uid; });
        parts_.onSave();
    }
}

std::string CustomGroupsColumn::startDrag(const AIModelItem& model) {
    draggingModel_ = model;
    parts_.onChange(ListMotion::none);
    parts_.queues.postMainAfter(longestDrag, whileAlive([this, uid = model.uid()] {
                                    if (draggingModel_ && draggingModel_->uid() == uid) {
                                        clearDragging();
                                    }
                                }));
    return model.uid();
}

void CustomGroupsColumn::clearDragging() {
    draggingModel_.reset();
    parts_.onChange(ListMotion::none);
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
    parts_.onChange(ListMotion::none);
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
