#include "random_edits.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

#include "settings/chain_sections.h"
#include "settings/ollama.h"

namespace varnhold::testing {

using namespace std::chrono_literals;

namespace {

struct Credential {
    const char* name;
    std::string SettingsFields::*field;
};

constexpr std::array<Credential, 4> credentials{{{"anthropic", &SettingsFields::anthropicKey},
                                                 {"qwen", &SettingsFields::qwenKey},
                                                 {"openrouter", &SettingsFields::openrouterKey},
                                                 {"cerebras", &SettingsFields::cerebrasKey}}};

constexpr std::array libraryLists{&SettingsFields::ollamaModels, &SettingsFields::openRouterModels,
                                  &SettingsFields::directModels, &SettingsFields::cerebrasModels};

} // namespace

RandomEdits::RandomEdits(std::uint64_t seed) : random_(seed) {
    ModelSelectorView& view = *real_.view;
    view.anthropicMethod = AuthMethod::apiKey;
    for (const char* role : {"ops", "cto", "two words"}) {
        view.userBots.push_back(bot(role));
    }
    for (const BotConfig& each : view.userBots) {
        rules_.bots.push_back(each.launchdLabel);
    }
    // Every model is found to be here, so that nothing is fetched.
    real_.platform.answer = [](const auto&) {
        platform::ProcessResult found;
        found.started = true;
        found.standardOutput = "here";
        return found;
    };
    view.save();
    rules_.save();
    restockLibrary();
}

std::string RandomEdits::step() {
    struct Edit {
        const char* name;
        std::size_t weight;
        void (RandomEdits::*run)();
    };
    static constexpr std::array<Edit, 13> edits{
        {{"drop", 30, &RandomEdits::dropSomething},
         {"late drop", 6, &RandomEdits::dropLate},
         {"late payload", 7, &RandomEdits::deliverLate},
         {"drag", 20, &RandomEdits::dragAboutAndRelease},
         {"drop on library", 8, &RandomEdits::dropOnLibrary},
         {"bot drop", 7, &RandomEdits::dropBot},
         {"unassign bot", 4, &RandomEdits::unassignBot},
         {"connect", 4, &RandomEdits::connectOrDisconnect},
         {"hand-edited twin", 3, &RandomEdits::editFileByHand},
         {"row removed by hand", 3, &RandomEdits::removeRowByHand},
         {"restock", 3, &RandomEdits::restockLibrary},
         {"delete", 2, &RandomEdits::deleteFromLibrary},
         {"time", 8, &RandomEdits::letTimePass}}};
    std::size_t total = 0;
    for (const Edit& edit : edits) {
        total += edit.weight;
    }
    std::size_t chosen = random_.below(total);
    const Edit* edit = edits.data();
    while (chosen >= edit->weight) {
        chosen -= edit->weight;
        ++edit;
    }
    (this->*edit->run)();
    real_.platform.settle();
    return edit->name;
}

TargetList RandomEdits::anyList() {
    return allTargetLists[random_.below(allTargetLists.size())];
}

const AIModelItem* RandomEdits::anyRow() {
    const Rows& rows = rules_.chains[anyList()];
    return rows.empty() ? nullptr : &rows[random_.below(rows.size())];
}

std::string RandomEdits::anyPayload() {
    const AIModelItem* row = nullptr;
    if (random_.coin()) {
        const Rows& stock = rules_.library[random_.below(rules_.library.size())];
        row = stock.empty() ? nullptr : &stock[random_.below(stock.size())];
    } else {
        row = anyRow();
    }
    if (row == nullptr) {
        return random_.coin() ? random_.text() : anyLabel();
    }
    return random_.below(4) == 0 ? row->id : row->uid();
}

std::string RandomEdits::anyLabel() {
    return random_.below(6) == 0 ? random_.text() : rules_.bots[random_.below(rules_.bots.size())];
}

std::optional<std::size_t> RandomEdits::anyPlace() {
    return random_.coin() ? std::optional(random_.below(3) == 0 ? random_.below(9) : 0)
                          : std::nullopt;
}

// The uid that the real state made up is taken over, once it is seen to be a proper fresh one.
std::string RandomEdits::givenUid(TargetList list, std::size_t place) {
    const Rows& rows = real_.view->chainArray(list);
    std::string uid = place < rows.size() ? rows[place].uid() : "";
    const auto parsed = Uuid::parse(uid);
    wellGiven_ = wellGiven_ && parsed && parsed->text() == uid && given_.insert(uid).second;
    return uid;
}

void RandomEdits::dropSomething() {
    const std::string payload = anyPayload();
    const TargetList list = anyList();
    const auto at = anyPlace();
    real_.drop(payload, list, at);
    rules_.endDrag();
    rules_.drop(payload, list, at, [this](auto... where) { return givenUid(where...); });
}

void RandomEdits::dropLate() {
    Late late{nullptr, anyPayload(), anyList(), anyPlace()};
    real_.view->handleDrop({[&late](auto receiver) { late.receiver = std::move(receiver); }},
                           late.list, late.at);
    rules_.endDrag();
    late_.push_back(std::move(late));
}

void RandomEdits::deliverLate() {
    if (late_.empty()) {
        return;
    }
    const auto chosen = late_.begin() + static_cast<std::ptrdiff_t>(random_.below(late_.size()));
    const Late late = *chosen;
    late_.erase(chosen);
    std::thread([&late] { late.receiver(late.payload); }).join();
    real_.platform.runMain();
    rules_.drop(late.payload, late.list, late.at,
                [this](auto... where) { return givenUid(where...); });
}

void RandomEdits::dragAboutAndRelease() {
    const AIModelItem* row = anyRow();
    if (row == nullptr) {
        return;
    }
    const AIModelItem dragged = *row;
    EXPECT_EQ(real_.view->modelRow(dragged).onDrag(), dragged.uid());
    rules_.startDrag(dragged.uid());
    const TargetList list = anyList();
    std::string last;
    for (std::size_t rows = random_.below(5); rows > 0 && !rules_.chains[list].empty(); --rows) {
        const Rows& over = rules_.chains[list];
        const AIModelItem target = over[random_.below(over.size())];
        last = target.uid();
        real_.view->chain(list).dropDelegate(target)->dropEntered();
        rules_.dragOver(list, last);
        if (random_.below(8) == 0) {
            letTimePass();
        }
    }
    if (!last.empty() && random_.below(3) != 0) {
        real_.view->chain(list).dropDelegate(model("row", last))->performDrop();
        rules_.releaseOnRow(list);
    }
}

void RandomEdits::dropOnLibrary() {
    const std::string payload = random_.below(3) == 0 ? twin_ : anyPayload();
    real_.dropOnLibrary(payload);
    rules_.endDrag();
    rules_.dropOnLibrary(payload);
}

void RandomEdits::dropBot() {
    const std::string label = anyLabel();
    const TargetList list = anyList();
    real_.dropBot(label, list);
    rules_.dropBot(label, list);
}

void RandomEdits::unassignBot() {
    const std::string label = anyLabel();
    const TargetList list = anyList();
    real_.view->chain(list).unassignBot(label);
    rules_.unassign(label, list);
}

void RandomEdits::connectOrDisconnect() {
    const Credential& credential = credentials[random_.below(credentials.size())];
    std::string& key = (*real_.view).*credential.field;
    if (key.empty()) {
        key = "key";
        rules_.connected.insert(credential.name);
    } else {
        key.clear();
        rules_.connected.erase(credential.name);
    }
}

// What only someone who edits the files can bring about: one uid in two places.
void RandomEdits::editFileByHand() {
    if (const AIModelItem* row = anyRow()) {
        const AIModelItem twin = *row;
        twin_ = twin.uid();
        rules_.chains[anyList()].push_back(twin);
        adoptByHand();
    }
}

void RandomEdits::removeRowByHand() {
    Rows& rows = rules_.chains[anyList()];
    if (rows.size() > 4) {
        rows.erase(rows.begin(), rows.begin() + 3);
        adoptByHand();
    }
}

void RandomEdits::adoptByHand() {
    for (const TargetList list : allTargetLists) {
        real_.view->chainBinding(list) = rules_.chains[list];
    }
}

Rows RandomEdits::anyStock(bool forFile) {
    Rows rows;
    for (std::size_t count = random_.below(forFile ? 12 : 5); count > 0; --count) {
        AIModelItem item = kinds()[random_.below(kinds().size())].item;
        item.id += "-" + std::to_string(random_.below(6));
        item.name = item.id + "/" + std::to_string(count_++);
        if (random_.coin()) {
            item.uniqueId = random_.below(9) == 0 ? "" : "ROW-" + std::to_string(random_.below(30));
        }
        rows.push_back(std::move(item));
    }
    return rows;
}

void RandomEdits::restockLibrary() {
    for (std::size_t i = 0; i < libraryLists.size(); ++i) {
        rules_.library[i] = anyStock(false);
        (*real_.view).*libraryLists[i] = rules_.library[i];
    }
    rules_.libraryOnDisk = std::nullopt;
    std::string content = "{";
    if (random_.below(6) != 0) {
        rules_.libraryOnDisk = anyStock(true);
        content = encodeLibrary({*rules_.libraryOnDisk});
    }
    real_.write(real_.constants.modelLibraryFile, content);
}

void RandomEdits::deleteFromLibrary() {
    const AIModelItem* row = anyRow();
    if (rules_.libraryOnDisk && !rules_.libraryOnDisk->empty() && random_.below(4) != 0) {
        row = &rules_.libraryOnDisk->at(random_.below(rules_.libraryOnDisk->size()));
    }
    if (row != nullptr) {
        const AIModelItem item = *row;
        real_.view->modelRow(item).onDelete();
        rules_.deleteFromLibrary(item);
    }
}

void RandomEdits::letTimePass() {
    const std::chrono::milliseconds duration{random_.below(2500)};
    real_.platform.advance(duration);
    rules_.pass(duration);
}

std::vector<std::string> RandomEdits::checkedIds() const {
    std::vector<std::string> ids;
    for (const std::string& id : rules_.checked) {
        ids.push_back(commandLine(ollamaCheckRequest(id)));
    }
    return ids;
}

std::string RandomEdits::fileDifference() const {
    for (const auto& [list, rows] : rules_.chainsOnDisk) {
        if (real_.fileOf(list) != encodeChain(rows)) {
            return "file of chain " + std::string(chainKey(list));
        }
    }
    if (real_.read(real_.constants.chainBotAssignmentsFile) !=
        encodeAssignments(rules_.assignmentsOnDisk)) {
        return "file of assignments";
    }
    const auto library = readLibrary(real_.constants.modelLibraryFile);
    if (library.has_value() != rules_.libraryOnDisk.has_value() ||
        (library && library->models != *rules_.libraryOnDisk)) {
        return "file of the library";
    }
    return "";
}

std::string RandomEdits::difference() {
    const ModelSelectorView& view = *real_.view;
    for (const auto& [list, rows] : rules_.chains) {
        if (view.chainArray(list) != rows) {
            return "chain " + std::string(chainKey(list));
        }
    }
    for (std::size_t i = 0; i < libraryLists.size(); ++i) {
        if (view.*libraryLists[i] != rules_.library[i]) {
            return "library list " + std::to_string(i);
        }
    }
    const auto dragging =
        view.draggingItem ? std::optional(view.draggingItem->uid()) : std::nullopt;
    if (dragging != rules_.dragging) {
        return "dragged row";
    }
    if (view.alertMsg != rules_.alert || view.showAlert == rules_.alert.empty()) {
        return "alert: " + view.alertMsg;
    }
    if (view.chainBotAssignments != rules_.assignments) {
        return "assignments";
    }
    if (!wellGiven_) {
        return "a fresh identity";
    }
    if (real_.platform.commandLines() != checkedIds()) {
        return "checks of local models";
    }
    const int expected = std::exchange(rules_.saves, 0);
    if (const int saves = real_.newSaves(); saves != expected) {
        return std::to_string(saves) + " saves instead of " + std::to_string(expected);
    }
    return fileDifference();
}

} // namespace varnhold::testing
