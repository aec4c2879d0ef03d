#include "rules.h"

#include <algorithm>
#include <utility>

#include "support/records.h"

namespace varnhold::testing {

using namespace std::chrono_literals;

namespace {

Kind kind(const std::string& id, const std::string& family, const std::string& type,
          std::optional<std::string> providerKey, const std::string& need, bool thinkingOnly) {
    return {model(id, {.name = "",
                       .family = family,
                       .color = "red",
                       .type = type,
                       .provider_key = std::move(providerKey)}),
            need, thinkingOnly};
}

int indexOf(const Rows& rows, const std::string& uid) {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].uid() == uid) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

AIModelItem take(Rows& rows, int index) {
    AIModelItem item = rows.at(static_cast<std::size_t>(index));
    rows.erase(rows.begin() + index);
    return item;
}

} // namespace

const std::vector<Kind>& kinds() {
    static const std::vector<Kind> all{
        kind("free", "Family", "cli", std::nullopt, "", false),
        kind("sonnet", "Claude", "cli", "claude", "anthropic", false),
        kind("~max-qwen", "Router", "cli", "openrouter", "qwen", false),
        kind("routed", "Router", "openrouter", std::nullopt, "openrouter", false),
        kind("wafer", "Cerebras", "cli", "cerebras", "cerebras", true),
        kind("mixed", "cereBRAS", "cli", "claude", "anthropic", true),
        kind("llama", "Ollama", "ollama", "ollama", "", false)};
    return all;
}

Rules::Rules() {
    for (const TargetList list : allTargetLists) {
        chains[list] = {};
        chainsOnDisk[list] = {};
    }
}

void Rules::save() {
    chainsOnDisk = chains;
    assignmentsOnDisk = assignments;
    ++saves;
}

void Rules::startDrag(const std::string& uid) {
    dragging = uid;
    expiries_.push_back({now_ + 2s, uid});
}

void Rules::pass(std::chrono::milliseconds duration) {
    now_ += duration;
    for (const Expiry& expiry : expiries_) {
        if (expiry.at <= now_ && dragging == expiry.uid) {
            dragging.reset();
        }
    }
    std::erase_if(expiries_, [this](const Expiry& expiry) { return expiry.at <= now_; });
}

// The dragged row takes the other's place, and the rows between close up.
void Rules::dragOver(TargetList list, const std::string& target) {
    Rows& rows = chains[list];
    const int from = dragging ? indexOf(rows, *dragging) : -1;
    const int to = indexOf(rows, target);
    if (from >= 0 && to >= 0) {
        const AIModelItem item = take(rows, from);
        rows.insert(rows.begin() + to, item);
    }
}

void Rules::releaseOnRow(TargetList list) {
    if (dragging && indexOf(chains[list], *dragging) >= 0) {
        save();
    }
    dragging.reset();
}

const AIModelItem* Rules::inLibrary(const std::string& payload) const {
    for (const Rows& rows : library) {
        for (const AIModelItem& item : rows) {
            if (item.uid() == payload || item.id == payload) {
                return &item;
            }
        }
    }
    return nullptr;
}

std::string Rules::refusal(const AIModelItem& item, TargetList list) const {
    for (const Kind& each : kinds()) {
        if (!item.id.starts_with(each.item.id)) {
            continue;
        }
        if (!each.need.empty() && !connected.contains(each.need)) {
            return "Auth required for " + item.family + ".";
        }
        if (each.thinkingOnly && list != TargetList::architect && list != TargetList::governor) {
            return "Cerebras models are thinking/reasoning only — they cannot execute tool calls "
                   "or process media. Place them in the Architect or Governor chain only.";
        }
    }
    return "";
}

void Rules::drop(const std::string& payload, TargetList list, std::optional<std::size_t> at,
                 const GivenUid& givenUid) {
    Rows& target = chains[list];
    for (const AIModelItem& item : target) {
        if (item.uid() == payload || item.id == payload) {
            return;
        }
    }
    const std::size_t place = at && *at < target.size() ? *at : target.size();
    const auto spot = target.begin() + static_cast<Rows::difference_type>(place);
    for (const TargetList other : allTargetLists) {
        const int index = indexOf(chains[other], payload);
        if (index >= 0) {
            target.insert(spot, take(chains[other], index));
            save();
            return;
        }
    }
    const AIModelItem* found = inLibrary(payload);
    if (found == nullptr) {
        return;
    }
    if (const std::string reason = refusal(*found, list); !reason.empty()) {
        alert = reason;
        return;
    }
    AIModelItem copy = *found;
    copy.uniqueId = givenUid(list, place);
    target.insert(spot, copy);
    save();
    if (found->type == "ollama") {
        checked.push_back(found->id);
    }
}

void Rules::dropOnLibrary(const std::string& payload) {
    for (const TargetList list : {TargetList::worker, TargetList::architect, TargetList::photo,
                                  TargetList::video, TargetList::voice, TargetList::governor}) {
        const int index = indexOf(chains[list], payload);
        if (index >= 0) {
            take(chains[list], index);
            save();
            return;
        }
    }
}

void Rules::dropBot(const std::string& label, TargetList list) {
    const std::string key(chainKey(list));
    const auto assigned = assignments.find(key);
    const bool known = std::count(bots.begin(), bots.end(), label) > 0;
    const bool already = assigned != assignments.end() &&
                         std::count(assigned->second.begin(), assigned->second.end(), label) > 0;
    if (known && !already) {
        assignments[key].push_back(label);
        save();
    }
}

void Rules::unassign(const std::string& label, TargetList list) {
    if (const auto found = assignments.find(std::string(chainKey(list)));
        found != assignments.end()) {
        std::erase(found->second, label);
    }
    save();
}

void Rules::deleteFromLibrary(const AIModelItem& item) {
    if (!libraryOnDisk) {
        return;
    }
    Rows kept, shown;
    for (const AIModelItem& each : *libraryOnDisk) {
        if (each.uid() != item.uid() && each.id != item.id) {
            kept.push_back(each);
            if (each.type == "cli") {
                shown.push_back(each);
            }
        }
    }
    std::stable_sort(shown.begin(), shown.end(), [](const auto& left, const auto& right) {
        return std::pair(left.family, left.name) < std::pair(right.family, right.name);
    });
    libraryOnDisk = kept;
    library = {Rows{}, Rows{}, shown, Rows{}};
}

} // namespace varnhold::testing
