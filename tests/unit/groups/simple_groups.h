#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace varnhold::testing {

// The rules of group editing once more, as plainly as they can be put: what the real thing is
// compared with. Groups are known by their place, models by their names and identities.
struct SimpleGroups {
    struct Model {
        std::string uid;
        std::string id;
        bool operator==(const Model&) const = default;
    };
    struct Group {
        std::string name;
        std::vector<Model> models;
        int effort = 0;
        int tokens = 0;
        std::vector<std::string> labels, paths, doctrine;
        std::string objectives;
    };

    static constexpr std::array<int, 10> ladder{0,      8000,   16000,  32000,   64000,
                                                128000, 200000, 400000, 1000000, 2000000};

    std::vector<Group> groups;
    int saves = 0;

    void add(const std::string& trimmedName) {
        if (!trimmedName.empty()) {
            groups.push_back({trimmedName, {}, 0, 0, {}, {}, {}, ""});
            ++saves;
        }
    }
    void setText(std::string& text, const std::string& to) {
        saves += text == to ? 0 : 1;
        text = to;
    }
    void stepEffort(Group& group, int by) {
        const int to = group.effort + by;
        if (to >= 0 && to <= 3) {
            group.effort = to;
            ++saves;
        }
    }
    void stepContext(Group& group, int by) {
        int to = by < 0 ? ladder.front() : ladder.back();
        for (const int step : ladder) {
            if (by < 0 && step < group.tokens) {
                to = step; // the last one below
            }
            if (by > 0 && step > group.tokens) {
                to = std::min(to, step);
            }
        }
        group.tokens = to;
        ++saves;
    }
    void addOnce(std::vector<std::string>& texts, const std::string& text) {
        if (std::count(texts.begin(), texts.end(), text) == 0) {
            texts.push_back(text);
        }
    }
    void removeAll(std::vector<std::string>& texts, const std::string& text) {
        std::erase(texts, std::string(text));
        ++saves;
    }
    static long placeOf(const Group& group, const std::string& uid) {
        for (std::size_t i = 0; i < group.models.size(); ++i) {
            if (group.models[i].uid == uid) {
                return static_cast<long>(i);
            }
        }
        return -1;
    }
    // The dragged row is taken out and put where the other one stood.
    static void drag(Group& group, const std::string& uid, const std::string& onto) {
        const long from = placeOf(group, uid);
        const long to = placeOf(group, onto);
        if (from >= 0 && to >= 0 && from != to) {
            const Model taken = group.models[static_cast<std::size_t>(from)];
            group.models.erase(group.models.begin() + from);
            group.models.insert(group.models.begin() + to, taken);
        }
    }
};

} // namespace varnhold::testing
