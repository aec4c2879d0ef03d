#include "settings/chain_editing.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

#include "base/files.h"
#include "settings/chain_sections.h"
#include "settings/placement_checks.h"
#include "settings/settings_state.h"

namespace varnhold {

using namespace std::chrono_literals;

namespace {

// A drag that is given up reports nothing, so a row that is still faint by then stops being so.
constexpr auto longestDrag = 2000ms;

constexpr std::array libraryLists{&SettingsFields::ollamaModels, &SettingsFields::openRouterModels,
                                  &SettingsFields::directModels, &SettingsFields::cerebrasModels};

AIModelItem takeRow(ModelRows& rows, std::size_t row) {
    AIModelItem item = std::move(rows[row]);
    rows.erase(rows.begin() + static_cast<ModelRows::difference_type>(row));
    return item;
}

const AIModelItem* findInLibrary(const SettingsFields& settings, const std::string& payload) {
    for (const auto list : libraryLists) {
        if (const auto row = rowNamed(settings.*list, payload)) {
            return &(settings.*list)[*row];
        }
    }
    return nullptr;
}

} // namespace

const std::vector<AIModelItem>& ModelSelectorView::chainArray(TargetList list) const {
    return this->*chainSection(list).models;
}

std::vector<AIModelItem>& ModelSelectorView::chainBinding(TargetList list) {
    return this->*chainSection(list).models;
}

StackPolicy ModelSelectorView::chainPolicy() {
    return {
        .queues = platform_.queues,
        .contextLadder = constants_.contextLadder,
        .userBots = userBots,
        .dragging = draggingItem,
        .longestDrag = longestDrag,
        .contextRow = chainContextRow,
        .inLibrary = [this](const std::string& payload) { return findInLibrary(*this, payload); },
        .onSave = [this] { save(); },
        .onChange = [this] { changed(); },
        .onDrop = [this] { endDrag(); },
        .onOverdue = [this] { changed(Animation::easeOut); }};
}

Stack ModelSelectorView::chain(TargetList list) {
    const ChainSection& section = chainSection(list);
    const std::string key(chainKey(list));
    const auto find = [this, list, key, &section]() -> std::optional<StackParts> {
        const auto labels = chainBotAssignments.find(key);
        return StackParts{.models = chainBinding(list),
                          .labels = labels == chainBotAssignments.end() ? nullptr : &labels->second,
                          .effort = this->*section.effort,
                          .contextTokens = this->*section.contextTokens};
    };
    const auto makeLabels = [this, key]() -> std::vector<std::string>& {
        return chainBotAssignments[key];
    };
    const auto takeFromNeighbour = [this, list](const std::string& uid) {
        return takeFromOthers(uid, list);
    };
    const auto isWithNeighbour = [this, list](const std::string& uid) {
        return otherWith(uid, list).has_value();
    };
    const auto onAdded = [this](const AIModelItem& item) {
        if (item.type == "ollama") {
            checkOllamaDownload(item);
        }
    };
    return {chains_,
            {.find = find,
             .makeLabels = makeLabels,
             .takeFromNeighbour = takeFromNeighbour,
             .isWithNeighbour = isWithNeighbour,
             .refuses = [this, list](const AIModelItem& item) { return refuses(item, list); },
             .onAdded = onAdded}};
}

std::optional<AIModelItem> ModelSelectorView::takeFromOthers(const std::string& uid,
                                                             TargetList list) {
    const auto other = otherWith(uid, list);
    return other ? std::optional(takeRow(chainBinding(*other), *rowOf(chainArray(*other), uid)))
                 : std::nullopt;
}

std::optional<TargetList> ModelSelectorView::otherWith(const std::string& uid,
                                                       TargetList list) const {
    for (const TargetList other : allTargetLists) {
        if (other != list && rowOf(chainArray(other), uid)) {
            return other;
        }
    }
    return std::nullopt;
}

bool ModelSelectorView::refuses(const AIModelItem& item, TargetList list) {
    auto refusal = placementRefusal(*this, item, list);
    if (!refusal) {
        return false;
    }
    alertMsg = *std::move(refusal);
    showAlert = true;
    changed();
    return true;
}

ModelRow ModelSelectorView::modelRow(const AIModelItem& item) {
    return {.model = item,
            .isDragging = chains_.isDragging(item),
            .isDownloading = downloadingModels.contains(item.id),
            .onDelete = [this, item] { deleteLibraryModel(item); },
            .onDrag = [this, item] { return chains_.startDrag(item); }};
}

void ModelSelectorView::endDrag() {
    draggingItem.reset();
    changed();
}

bool ModelSelectorView::handleDrop(const platform::PayloadProviders& providers, TargetList list,
                                   std::optional<std::size_t> insertAt) {
    return chain(list).dropModels(providers, insertAt);
}

bool ModelSelectorView::handleLibraryDrop(const platform::PayloadProviders& providers) {
    chains_.receive(providers, [this](const std::string& payload) { removeModel(payload); });
    endDrag();
    return true;
}

bool ModelSelectorView::isInAnyChain(const std::string& uid) const {
    return std::any_of(allTargetLists.begin(), allTargetLists.end(),
                       [&](TargetList list) { return rowOf(chainArray(list), uid).has_value(); });
}

void ModelSelectorView::removeModel(const std::string& payload) {
    for (const TargetList list : chainFileOrder) {
        if (const auto row = rowOf(chainArray(list), payload)) {
            takeRow(chainBinding(list), *row);
            changed();
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

void ModelSelectorView::reset() {
    for (const ChainSection& section : chainSections()) {
        if (section.emptiedByReset) {
            (this->*section.models).clear();
        }
    }
    refresh();
    save();
}

bool ModelSelectorView::checkAuthFor(const AIModelItem& item) const {
    return varnhold::checkAuthFor(*this, item);
}

} // namespace varnhold
