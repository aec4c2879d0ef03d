#include <array>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "crew.h"
#include "simple_groups.h"
#include "support/generator.h"

namespace varnhold::testing {
namespace {

using namespace std::chrono_literals;

// Makes the same random edits on the real groups and on the simple ones.
class RandomEdits final {
public:
    explicit RandomEdits(std::uint64_t seed) : random_(seed) {
        crew_.library = {model("a"), model("b", "ROW-B"), model("c", "ROW-C"),
                         model("d"), model("d", "ROW-D"), model("e")};
        crew_.bots = {bot("x"), bot("y"), bot("z")};
    }

    void edit() {
        using Edit = void (RandomEdits::*)();
        static constexpr std::array<Edit, 12> edits{
            &RandomEdits::addGroup,    &RandomEdits::rename,    &RandomEdits::stepEffort,
            &RandomEdits::stepContext, &RandomEdits::dropBot,   &RandomEdits::removeBot,
            &RandomEdits::dropModel,   &RandomEdits::dropModel, &RandomEdits::removeModel,
            &RandomEdits::reorder,     &RandomEdits::attach,    &RandomEdits::detach};
        if (random_.below(60) == 0) {
            removeGroup();
            return;
        }
        (this->*edits[random_.below(edits.size())])();
        crew_.platform.record.clear();
    }

    void compare() const {
        ASSERT_EQ(crew_.saves, simple_.saves);
        ASSERT_EQ(crew_.groups.size(), simple_.groups.size());
        for (std::size_t i = 0; i < crew_.groups.size(); ++i) {
            compare(crew_.groups[i], simple_.groups[i]);
        }
    }

private:
    static void compare(const CustomBotGroup& real, const SimpleGroups::Group& simple) {
        ASSERT_EQ(real.name, simple.name);
        ASSERT_EQ(static_cast<int>(real.effortLevel), simple.effort);
        ASSERT_EQ(real.contextTokens, simple.tokens);
        ASSERT_EQ(real.assignedBotLabels, simple.labels);
        ASSERT_EQ(real.attachedPaths, simple.paths);
        ASSERT_EQ(real.doctrine, simple.doctrine);
        ASSERT_EQ(real.objectives, simple.objectives);
        std::vector<SimpleGroups::Model> models;
        for (const AIModelItem& model : real.models) {
            models.push_back({model.uid(), model.id});
        }
        ASSERT_EQ(models, simple.models);
    }

    std::string oneOf(std::initializer_list<std::string> texts) {
        return *(texts.begin() + random_.below(texts.size()));
    }
    // False where there is no group to work on.
    bool pick() {
        if (crew_.groups.empty()) {
            return false;
        }
        const std::size_t at = random_.below(crew_.groups.size());
        real_ = &crew_.groups[at];
        simpleGroup_ = &simple_.groups[at];
        return true;
    }
    std::string anyUid() {
        const auto& models = simpleGroup_->models;
        return models.empty() || random_.below(8) == 0 ? "nothing"
                                                       : models[random_.below(models.size())].uid;
    }

    void addGroup() {
        if (crew_.groups.size() >= 5) {
            return;
        }
        const std::string name = oneOf({"", "One", "Two", "Two"});
        crew_.sheet.setNewGroupName(oneOf({"", " ", "\t"}) + name + oneOf({"", " "}));
        crew_.sheet.addGroup();
        simple_.add(name);
    }
    void removeGroup() {
        if (pick()) {
            const auto at = real_ - crew_.groups.data();
            crew_.sheet.remove(real_->id);
            simple_.groups.erase(simple_.groups.begin() + at);
            ++simple_.saves;
        }
    }
    void rename() {
        if (pick()) {
            const std::string text = oneOf({"", "A", "B"});
            if (random_.coin()) {
                crew_.sheet.rename(real_->id, text);
                simple_.setText(simpleGroup_->name, text);
            } else {
                crew_.column->setObjectives(real_->id, text);
                simple_.setText(simpleGroup_->objectives, text);
            }
        }
    }
    void stepEffort() {
        if (pick()) {
            const bool left = random_.coin();
            crew_.column->stack(real_->id).stepEffort(left ? StepDirection::left
                                                           : StepDirection::right);
            simple_.stepEffort(*simpleGroup_, left ? -1 : 1);
        }
    }
    void stepContext() {
        if (pick()) {
            if (random_.below(5) == 0) {
                simpleGroup_->tokens = static_cast<int>(random_.below(2100000));
                real_->contextTokens = simpleGroup_->tokens;
            }
            const bool left = random_.coin();
            crew_.column->stack(real_->id).stepContext(left ? StepDirection::left
                                                            : StepDirection::right);
            simple_.stepContext(*simpleGroup_, left ? -1 : 1);
        }
    }
    void dropBot() {
        if (pick()) {
            const std::string label = oneOf({labelOf("x"), labelOf("y"), labelOf("z"), "stranger"});
            crew_.column->stack(real_->id).dropBots(dropped(label));
            crew_.platform.settle();
            const auto before = simpleGroup_->labels.size();
            if (label != "stranger") {
                simple_.addOnce(simpleGroup_->labels, label);
            }
            simple_.saves += simpleGroup_->labels.size() > before ? 1 : 0;
        }
    }
    void removeBot() {
        if (pick()) {
            const std::string label = oneOf({labelOf("x"), labelOf("y"), labelOf("z"), "stranger"});
            crew_.column->stack(real_->id).unassignBot(label);
            simple_.removeAll(simpleGroup_->labels, label);
        }
    }
    void dropModel() {
        if (!pick() || simpleGroup_->models.size() > 12) {
            return;
        }
        std::string key = oneOf({"a", "b", "c", "d", "e", "ROW-B", "ROW-C", "ROW-D", "", "f"});
        if (random_.below(6) == 0) {
            key = anyUid();
        }
        const auto at = random_.coin() ? std::optional(random_.below(6)) : std::nullopt;
        crew_.column->handleDrop(dropped(key), real_->id, at);
        crew_.platform.settle();
        expectModel(key, at);
    }
    void expectModel(const std::string& key, std::optional<std::size_t> at) {
        auto& models = simpleGroup_->models;
        for (const auto& model : models) {
            if (model.uid == key || model.id == key) {
                return;
            }
        }
        for (const AIModelItem& entry : crew_.library) {
            if (!key.empty() && (entry.uid() == key || entry.id == key)) {
                const std::size_t place = std::min(at.value_or(models.size()), models.size());
                ASSERT_LT(place, real_->models.size());
                const std::string fresh = real_->models[place].uid();
                ASSERT_TRUE(seen_.insert(fresh).second);
                models.insert(models.begin() + static_cast<std::ptrdiff_t>(place),
                              {fresh, entry.id});
                ++simple_.saves;
                return;
            }
        }
    }
    void removeModel() {
        if (pick()) {
            const std::string uid = anyUid();
            crew_.column->stack(real_->id).removeModels(uid);
            std::erase_if(simpleGroup_->models,
                          [&](const auto& model) { return model.uid == uid; });
            ++simple_.saves;
        }
    }
    void reorder() {
        if (!pick()) {
            return;
        }
        const std::string uid = anyUid();
        static_cast<void>(crew_.column->startDrag(model("dragged", uid)));
        for (std::size_t rows = random_.below(4); rows > 0; --rows) {
            const std::string onto = anyUid();
            crew_.column->dropDelegate(real_->id, model("target", onto)).dropEntered();
            SimpleGroups::drag(*simpleGroup_, uid, onto);
        }
        const bool late = random_.below(4) == 0;
        if (late) {
            crew_.platform.advance(500ms); // counts as over: the new order stays unsaved
        }
        const bool ours = !late && SimpleGroups::placeOf(*simpleGroup_, uid) >= 0;
        ASSERT_EQ(crew_.column->dropDelegate(real_->id, model("target")).performDrop(), ours);
        simple_.saves += ours ? 1 : 0;
        crew_.platform.advance(500ms);
    }
    void attach() {
        if (pick()) {
            const std::string path =
                oneOf({"/nowhere/readme.md", "/nowhere/notes.md", "/nowhere/Mission.TXT"});
            crew_.column->attach(real_->id, {path, path});
            simple_.addOnce(simpleGroup_->paths, path);
            if (path != "/nowhere/notes.md") {
                simple_.addOnce(simpleGroup_->doctrine, path);
            }
            ++simple_.saves;
        }
    }
    void detach() {
        if (!pick()) {
            return;
        }
        const bool doctrine = random_.coin();
        const auto chips =
            doctrine ? crew_.column->doctrineChips(*real_) : crew_.column->attachmentChips(*real_);
        auto& paths = doctrine ? simpleGroup_->doctrine : simpleGroup_->paths;
        ASSERT_EQ(chips.has_value(), !paths.empty());
        if (chips) {
            const std::string path = paths[random_.below(paths.size())];
            chips->onRemove(path);
            simple_.removeAll(paths, path);
        }
    }

    Generator random_;
    Crew crew_;
    SimpleGroups simple_;
    std::set<std::string> seen_; // identities that were given to models
    CustomBotGroup* real_ = nullptr;
    SimpleGroups::Group* simpleGroup_ = nullptr;
};

TEST(RandomEditsOfGroups, AgreeWithTheRulesThroughAHundredThousandOfThem) {
    for (std::uint64_t seed = 1; seed <= 4; ++seed) {
        RandomEdits edits(seed);
        for (int i = 0; i < 25000; ++i) {
            edits.edit();
            edits.compare();
            ASSERT_FALSE(::testing::Test::HasFatalFailure()) << "seed " << seed << ", edit " << i;
        }
    }
}

} // namespace
} // namespace varnhold::testing
