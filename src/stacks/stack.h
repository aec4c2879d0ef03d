#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/payload.h"
#include "records/model_rows.h"
#include "stacks/row_drop_delegate.h"
#include "stacks/stack_editing.h"

namespace varnhold {

// Where the parts of one stack are kept.
struct StackParts {
    ModelRows& models;                // in failover order
    std::vector<std::string>* labels; // of its bots; null where it never had any
    EffortLevel& effort;
    double& contextTokens; // 0 leaves the choice to the model
};

// How one stack is found, and what is particular to what is dropped on it.
struct StackRules {
    // Nothing, once the stack has gone.
    std::function<std::optional<StackParts>()> find;
    // Makes a place for labels where there is none.
    std::function<std::vector<std::string>&()> makeLabels = nullptr;
    // Takes the row of that identity out of a neighbour: it moves, without being looked at again.
    std::function<std::optional<AIModelItem>(const std::string& uid)> takeFromNeighbour = nullptr;
    // Whether a neighbour has it, for who only asks.
    std::function<bool(const std::string& uid)> isWithNeighbour = nullptr;
    // Whether a model of the library may not come in; says why to whoever is looking.
    std::function<bool(const AIModelItem& model)> refuses = nullptr;
    // A model of the library has come in, and that is saved.
    std::function<void(const AIModelItem& model)> onAdded = nullptr;
};

// Those of all bots whose labels are here: in the order of the bot column, whatever the order of
// dropping.
[[nodiscard]] std::vector<BotConfig> assignedBots(const std::vector<BotConfig>& all,
                                                  const std::vector<std::string>& labels);

// One stack as it is edited: models in the order in which they are tried, the bots that they work
// for, and how much they may reason and read. A chain is one, and a custom group holds one.
//
// A handle: it keeps no part of the stack, and may be copied. Every change but a live reordering is
// saved at once, and none can fail; on a stack that has gone nothing is done. Main thread; must not
// outlive its editing.
class Stack final {
public:
    Stack(StackEditing& editing, StackRules rules) : editing_(editing), rules_(std::move(rules)) {}

    // None, once the stack has gone.
    [[nodiscard]] std::optional<StackParts> parts() const { return rules_.find(); }
    [[nodiscard]] const AIModelItem* model(const std::string& uid) const;
    [[nodiscard]] bool isDragging(const AIModelItem& model) const;
    [[nodiscard]] std::vector<BotConfig> bots() const;
    [[nodiscard]] StepperRow effortRow() const;
    [[nodiscard]] StepperRow contextRow() const;

    // One level up or down; beyond the last level nothing.
    void stepEffort(StepDirection direction) const;
    // To the next budget of the ladder; saved even where the value stays.
    void stepContext(StepDirection direction) const;

    // Whether a drop of the text would come to anything here, were it only to be told why it is
    // refused. A row of the stack's own counts: it ends its being moved.
    [[nodiscard]] bool takesModel(const std::string& payload) const;

    // The same for bots.
    [[nodiscard]] bool takesBot(const std::string& label) const;

    // Labels of bots. True always, at once: what is dropped is handled when its text has come.
    bool dropBots(const platform::PayloadProviders& providers) const;
    void unassignBot(const std::string& label) const;

    // Models, by identity: put at the position, or at the end. True always, at once.
    bool dropModels(const platform::PayloadProviders& providers,
                    std::optional<std::size_t> insertAt = std::nullopt) const;
    void removeModels(const std::string& uid) const;

    void startDrag(const std::string& uid) const;
    // What a row of the stack does with what is dragged. None, once the stack has gone.
    [[nodiscard]] std::optional<RealTimeDropDelegate> dropDelegate(const AIModelItem& item) const;
    // What is dragged comes over the row, or is dropped on it.
    void rowEntered(const std::string& uid) const;
    void rowDropped(const std::string& uid) const;

private:
    void assignBot(const std::string& label) const;
    void dropModel(const std::string& payload, std::optional<std::size_t> insertAt) const;
    void insert(AIModelItem model, std::optional<std::size_t> insertAt) const;

    std::reference_wrapper<StackEditing> editing_;
    StackRules rules_;
};

} // namespace varnhold
