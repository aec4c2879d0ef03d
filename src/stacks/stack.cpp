#include "stacks/stack.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "base/uuid.h"

namespace varnhold {

namespace {

bool contains(const std::vector<std::string>& labels, const std::string& label) {
    return std::find(labels.begin(), labels.end(), label) != labels.end();
}

} // namespace

std::vector<BotConfig> assignedBots(const std::vector<BotConfig>& all,
                                    const std::vector<std::string>& labels) {
    std::vector<BotConfig> bots;
    std::copy_if(all.begin(), all.end(), std::back_inserter(bots),
                 [&labels](const BotConfig& bot) { return contains(labels, bot.launchdLabel); });
    return bots;
}

const AIModelItem* Stack::model(const std::string& uid) const {
    const auto kept = parts();
    const auto row = kept ? rowOf(kept->models, uid) : std::nullopt;
    return row ? &kept->models[*row] : nullptr;
}

bool Stack::isDragging(const AIModelItem& model) const {
    return editing_.get().isDragging(model);
}

std::vector<BotConfig> Stack::bots() const {
    const auto kept = parts();
    return kept && kept->labels != nullptr
               ? assignedBots(editing_.get().policy().userBots, *kept->labels)
               : std::vector<BotConfig>();
}

StepperRow Stack::effortRow() const {
    const auto kept = parts();
    return kept ? varnhold::effortRow(kept->effort) : StepperRow();
}

StepperRow Stack::contextRow() const {
    const StackPolicy& policy = editing_.get().policy();
    const auto kept = parts();
    return kept ? policy.contextRow(kept->contextTokens, policy.contextLadder) : StepperRow();
}

void Stack::stepEffort(StepDirection direction) const {
    const auto kept = parts();
    const auto level = kept ? neighbour(kept->effort, direction) : std::nullopt;
    if (level) {
        kept->effort = *level;
        editing_.get().policy().onSave();
    }
}

void Stack::stepContext(StepDirection direction) const {
    const StackPolicy& policy = editing_.get().policy();
    if (const auto kept = parts()) {
        kept->contextTokens = nextBudget(kept->contextTokens, direction, policy.contextLadder);
        policy.onSave();
    }
}

bool Stack::dropBots(const platform::PayloadProviders& providers) const {
    editing_.get().receive(providers,
                           [stack = *this](const std::string& label) { stack.assignBot(label); });
    return true;
}

bool Stack::takesModel(const std::string& payload) const {
    const auto kept = parts();
    if (!kept || rowNamed(kept->models, payload)) {
        return kept && rowOf(kept->models, payload);
    }
    return (rules_.isWithNeighbour && rules_.isWithNeighbour(payload)) ||
           editing_.get().policy().inLibrary(payload) != nullptr;
}

bool Stack::takesBot(const std::string& label) const {
    const std::vector<BotConfig>& bots = editing_.get().policy().userBots;
    const bool known = std::any_of(bots.begin(), bots.end(), [&label](const BotConfig& bot) {
        return bot.launchdLabel == label;
    });
    const auto kept = parts();
    return known && kept && (kept->labels == nullptr || !contains(*kept->labels, label));
}

void Stack::assignBot(const std::string& label) const {
    if (takesBot(label)) {
        const auto kept = parts();
        (kept->labels != nullptr ? *kept->labels : rules_.makeLabels()).push_back(label);
        editing_.get().policy().onSave();
    }
}

void Stack::unassignBot(const std::string& label) const {
    if (const auto kept = parts()) {
        if (kept->labels != nullptr) {
            // The label handed in may be one of the list.
            std::erase(*kept->labels, std::string(label));
        }
        editing_.get().policy().onSave();
    }
}

bool Stack::dropModels(const platform::PayloadProviders& providers,
                       std::optional<std::size_t> insertAt) const {
    editing_.get().receive(providers, [stack = *this, insertAt](const std::string& payload) {
        stack.dropModel(payload, insertAt);
    });
    editing_.get().policy().onDrop();
    return true;
}

void Stack::dropModel(const std::string& payload, std::optional<std::size_t> insertAt) const {
    const auto kept = parts();
    if (!kept || rowNamed(kept->models, payload)) {
        return;
    }
    if (rules_.takeFromNeighbour) {
        if (auto moved = rules_.takeFromNeighbour(payload)) {
            insert(*std::move(moved), insertAt);
            return;
        }
    }
    const AIModelItem* found = editing_.get().policy().inLibrary(payload);
    if (found == nullptr || (rules_.refuses && rules_.refuses(*found))) {
        return;
    }
    const AIModelItem model = *found; // saving may fill the library anew
    AIModelItem copy = model;
    copy.uniqueId = Uuid::random().text();
    insert(std::move(copy), insertAt);
    if (rules_.onAdded) {
        rules_.onAdded(model);
    }
}

void Stack::insert(AIModelItem model, std::optional<std::size_t> insertAt) const {
    const StackPolicy& policy = editing_.get().policy();
    if (const auto kept = parts()) {
        const auto place =
            static_cast<ModelRows::difference_type>(insertionPlace(kept->models, insertAt));
        kept->models.insert(kept->models.begin() + place, std::move(model));
        policy.onChange();
        policy.onSave();
    }
}

void Stack::removeModels(const std::string& uid) const {
    if (const auto kept = parts()) {
        // The text handed in may be the model's own.
        std::erase_if(kept->models,
                      [uid = uid](const AIModelItem& model) { return model.uid() == uid; });
        editing_.get().policy().onSave();
    }
}

void Stack::startDrag(const std::string& uid) const {
    if (const AIModelItem* item = model(uid)) {
        // What it gives is the row's uid, which whoever drags by uid has already.
        static_cast<void>(editing_.get().startDrag(*item));
    }
}

std::optional<RealTimeDropDelegate> Stack::dropDelegate(const AIModelItem& item) const {
    const StackPolicy& policy = editing_.get().policy();
    const auto kept = parts();
    if (!kept) {
        return std::nullopt;
    }
    return RealTimeDropDelegate{.item = item,
                                .list = kept->models,
                                .draggingItem = policy.dragging,
                                .onSave = policy.onSave,
                                .onChange = policy.onChange};
}

void Stack::rowEntered(const std::string& uid) const {
    if (const AIModelItem* item = model(uid)) {
        dropDelegate(*item)->dropEntered();
    }
}

void Stack::rowDropped(const std::string& uid) const {
    if (const AIModelItem* item = model(uid)) {
        // Whether the drop belonged here or not, it ends at this row.
        static_cast<void>(dropDelegate(*item)->performDrop());
    }
}

} // namespace varnhold
