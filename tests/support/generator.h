#pragma once

#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "records/assignments.h"
#include "records/auth.h"
#include "records/bots.h"
#include "records/groups.h"
#include "records/models.h"
#include "records/preferences.h"

namespace varnhold::testing {

// Records with every kind of content, the same ones for the same seed.
class Generator {
public:
    explicit Generator(std::uint64_t seed) : engine_(seed) {}

    [[nodiscard]] std::size_t below(std::size_t limit);
    [[nodiscard]] bool coin() { return below(2) == 0; }

    // Empty, plain, or with quotes, control characters, emoji, text that looks like JSON.
    [[nodiscard]] std::string text();
    [[nodiscard]] std::int64_t wholeNumber();
    [[nodiscard]] double number();

    [[nodiscard]] AIModelItem model();
    [[nodiscard]] ModelLibrary library() { return {several(&Generator::model)}; }
    [[nodiscard]] std::vector<AIModelItem> chain() { return several(&Generator::model); }
    [[nodiscard]] BotConfig bot();
    [[nodiscard]] std::vector<BotConfig> bots() { return several(&Generator::bot); }
    [[nodiscard]] EffortPrefs efforts();
    [[nodiscard]] ContextPrefs budgets();
    [[nodiscard]] ResponseMode responseMode();
    [[nodiscard]] AuthConfig auth();
    [[nodiscard]] Uuid uuid();
    [[nodiscard]] CustomBotGroup group();
    [[nodiscard]] std::vector<CustomBotGroup> groups() { return several(&Generator::group); }
    [[nodiscard]] ChainBotAssignments assignments();
    [[nodiscard]] std::vector<std::string> texts() { return several(&Generator::text); }

    template <class Make>
    [[nodiscard]] auto maybe(Make make) -> std::optional<decltype((this->*make)())> {
        return coin() ? std::optional((this->*make)()) : std::nullopt;
    }

private:
    template <class Record>
    [[nodiscard]] std::vector<Record> several(Record (Generator::*make)()) {
        std::vector<Record> records;
        for (std::size_t count = below(5); count > 0; --count) {
            records.push_back((this->*make)());
        }
        return records;
    }

    std::mt19937_64 engine_;
};

} // namespace varnhold::testing
