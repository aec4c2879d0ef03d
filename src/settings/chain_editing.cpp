#include "settings/chain_editing.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/files.h"
#include "base/uuid.h"
#include "settings/chain_parts.h"
#include "settings/placement_checks.h"
#include "settings/settings_state.h"

namespace varnhold {

using namespace std::chrono_literals;

namespace {

// A drag that is given up reports nothing, so a row that is still faint by then stops being so.
constexpr auto dragLimit = 2000ms;

constexpr std::array libraryLists{&SettingsFields::ollamaModels, &SettingsFields::openRouterModels,
                                  &SettingsFields::directModels, &SettingsFields::cerebrasModels};

// Not the order of the chains: the worker chain is searched first.
constexpr std::array removalOrder{TargetList::worker, TargetList::architect, TargetList::photo,
                                  TargetList::video,  TargetList::voice,     TargetList::governor};

AIModelItem takeRow(ModelRows& rows, std::size_t row) {
    AIModelItem item = std::move(rows[row]);
    rows.erase(rows.begin() + static_cast<ModelRows::difference_type>(row));
    return item;
}

std::size_t insertRow(ModelRows& rows, AIModelItem item, std::optional<std::size_t> insertAt) {
    const std::size_t place = insertionPlace(rows, insertAt);
    rows.insert(rows.begin() + static_cast<ModelRows::difference_type>(place), std::move(item));
    return place;
}

std::optional<AIModelItem> findInLibrary(const SettingsFields& settings,
                                         const std::string& payload) {
    for (const auto list : libraryLists) {
        if (const auto row = rowNamed(settings.*list, payload)) {
            return (settings.*list)[*row];
        }
    }
    return std::nullopt;
}

} // namespace

bool RealTimeDropDelegate::performDrop() {
    const bool belongsHere = draggingItem && rowOf(list, draggingItem->uid());
    draggingItem.reset();
    if (onCleared) {
        onCleared();
    }
    if (belongsHere) {
        onSave();
    }
    return belongsHere;
}

void RealTimeDropDelegate::dropEntered() {
    const auto move = draggingItem ? moveOnto(list, draggingItem->uid(), item.uid()) : std::nullopt;
    if (!move) {
        return;
    }
    apply(*move, list);
    if (onMove) {
        onMove(*move);
    }
}

const std::vector<AIModelItem>& ModelSelectorView::chainArray(TargetList list) const {
    return this->*partsOf(list).models;
}

std::vector<AIModelItem>& ModelSelectorView::chainBinding(TargetList list) {
    return this->*partsOf(list).models;
}

ModelRow ModelSelectorView::modelRow(const AIModelItem& item) {
    return {.model = item,
            .isDragging = draggingItem && draggingItem->uid() == item.uid(),
            .isDownloading = downloadingModels.contains(item.id),
            .onDelete = [this, item] { deleteLibraryModel(item); },
            .onDrag = [this, item] { return startDrag(item); }};
}

RealTimeDropDelegate ModelSelectorView::rowDropDelegate(const AIModelItem& item, TargetList list) {
    return {.item = item,
            .list = chainBinding(list),
            .draggingItem = draggingItem,
            .onSave = [this] { save(); },
            .onMove =
                [this, list](RowMove move) {
                    moved({.uid = chainArray(list)[move.place()].uid(),
                           .from = ChainPlace{list, move.from},
                           .to = ChainPlace{list, move.place()}});
                },
            .onCleared = [this] { changed(); }};
}

std::string ModelSelectorView::startDrag(const AIModelItem& item) {
    draggingItem = item;
    changed();
    laterAfter(dragLimit, [this, uid = item.uid()] {
        if (draggingItem && draggingItem->uid() == uid) {
            draggingItem.reset();
            changed(Animation::easeOut);
        }
    });
    return item.uid();
}

void ModelSelectorView::endDrag() {
    draggingItem.reset();
    changed();
}

// The texts arrive on any thread, perhaps when the record has gone.
void ModelSelectorView::whenLoaded(const platform::PayloadProviders& providers,
                                   const std::function<void(const std::string& text)>& use) {
    for (const platform::PayloadProvider& provider : providers) {
        provider([use, &queues = platform_.queues,
                  alive = std::weak_ptr(alive_)](const std::optional<std::string>& text) {
            if (!text) {
                return;
            }
            queues.postMain([use, alive, text = *text] {
                if (!alive.expired()) {
                    use(text);
                }
            });
        });
    }
}

bool ModelSelectorView::handleDrop(const platform::PayloadProviders& providers, TargetList list,
                                   std::optional<std::size_t> insertAt) {
    whenLoaded(providers, [this, list, insertAt](const std::string& payload) {
        dropModel(payload, list, insertAt);
    });
    endDrag();
    return true;
}

void ModelSelectorView::dropModel(const std::string& payload, TargetList list,
                                  std::optional<std::size_t> insertAt) {
    if (rowNamed(chainArray(list), payload)) {
        return;
    }
    // What stands in another chain moves without being checked again.
    for (const TargetList other : allTargetLists) {
        const auto row = other == list ? std::nullopt : rowOf(chainArray(other), payload);
        if (row) {
            AIModelItem item = takeRow(chainBinding(other), *row);
            const std::size_t place = insertRow(chainBinding(list), std::move(item), insertAt);
            moved({payload, ChainPlace{other, *row}, ChainPlace{list, place}});
            save();
            return;
        }
    }
    if (const auto item = findInLibrary(*this, payload)) {
        dropFromLibrary(*item, list, insertAt);
    }
}

void ModelSelectorView::dropFromLibrary(const AIModelItem& item, TargetList list,
                                        std::optional<std::size_t> insertAt) {
    if (auto refusal = placementRefusal(*this, item, list)) {
        alertMsg = *std::move(refusal);
        showAlert = true;
        changed();
        return;
    }
    AIModelItem copy = item;
    copy.uniqueId = Uuid::random().text();
    const std::string uid = copy.uid();
    const std::size_t place = insertRow(chainBinding(list), std::move(copy), insertAt);
    moved({.uid = uid, .to = ChainPlace{list, place}});
    save();
    if (item.type == "ollama") {
        checkOllamaDownload(item);
    }
}

bool ModelSelectorView::handleLibraryDrop(const platform::PayloadProviders& providers) {
    whenLoaded(providers, [this](const std::string& payload) { removeModel(payload); });
    endDrag();
    return true;
}

void ModelSelectorView::removeModel(const std::string& payload) {
    for (const TargetList list : removalOrder) {
        if (const auto row = rowOf(chainArray(list), payload)) {
            takeRow(chainBinding(list), *row);
            moved({.uid = payload, .from = ChainPlace{list, *row}});
            save();
            return;
        }
    }
}

void ModelSelectorView::deleteLibraryModel(const AIModelItem& item) {
    auto library = readLibrary(constants_.modelLibraryFile);
    if (!library) {
        return;
    }
    std::erase_if(library->models, [&item](const AIModelItem& each) {
        return each.uid() == item.uid() || each.id == item.id;
    });
    // A library that can't be written is shown again as it stands on disk.
    static_cast<void>(files::writeInPlace(constants_.modelLibraryFile, encodeLibrary(*library)));
    refresh();
}

bool ModelSelectorView::handleBotDrop(const platform::PayloadProviders& providers,
                                      TargetList list) {
    whenLoaded(providers, [this, list](const std::string& label) { assignBot(label, list); });
    return true;
}

void ModelSelectorView::assignBot(const std::string& launchdLabel, TargetList list) {
    const bool known = std::any_of(userBots.begin(), userBots.end(), [&](const BotConfig& bot) {
        return bot.launchdLabel == launchdLabel;
    });
    if (!known) {
        return;
    }
    auto& labels = chainBotAssignments[std::string(chainKey(list))];
    if (std::find(labels.begin(), labels.end(), launchdLabel) == labels.end()) {
        labels.push_back(launchdLabel);
        save();
    }
}

void ModelSelectorView::unassignBot(const std::string& launchdLabel, TargetList list) {
    const auto labels = chainBotAssignments.find(std::string(chainKey(list)));
    if (labels != chainBotAssignments.end()) {
        std::erase(labels->second, launchdLabel);
    }
    save();
}

void ModelSelectorView::reset() {
    for (auto* models :
         {&workerModels, &architectModels, &photoModels, &videoModels, &governorModels}) {
        models->clear();
    }
    refresh();
    save();
}

bool ModelSelectorView::checkAuthFor(const AIModelItem& item) const {
    return varnhold::checkAuthFor(*this, item);
}

void ModelSelectorView::moved(const ChainMove& move) const {
    if (moveObserver_) {
        moveObserver_(move);
    }
    changed(Animation::spring);
}

} // namespace varnhold
