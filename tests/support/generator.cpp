#include "support/generator.h"

#include <array>
#include <cmath>
#include <limits>
#include <string_view>

#include "records/providers.h"

namespace varnhold::testing {

namespace {

constexpr std::array pieces{"a",
                            "Z",
                            "9",
                            " ",
                            "\"",
                            "\\",
                            "/",
                            "\n",
                            "\t",
                            "\x01",
                            "é",
                            "e\u0301",
                            "👨‍👩‍👧",
                            "⚖️",
                            "{",
                            "}",
                            "[1,]",
                            "null",
                            ",",
                            ":",
                            "\u2028",
                            "\x7f",
                            "ß",
                            "<&>"};

} // namespace

std::size_t Generator::below(std::size_t limit) {
    return std::uniform_int_distribution<std::size_t>(0, limit - 1)(engine_);
}

std::string Generator::text() {
    std::string out;
    for (std::size_t count = below(8); count > 0; --count) {
        out += pieces[below(pieces.size())];
    }
    if (below(20) == 0) {
        out += '\0'; // carried like any other character
    }
    return out;
}

std::int64_t Generator::wholeNumber() {
    switch (below(4)) {
    case 0:
        return 0;
    case 1:
        return std::numeric_limits<std::int64_t>::max() - static_cast<std::int64_t>(below(3));
    case 2:
        return std::numeric_limits<std::int64_t>::min() + static_cast<std::int64_t>(below(3));
    default:
        return static_cast<std::int64_t>(below(2000001));
    }
}

double Generator::number() {
    switch (below(4)) {
    case 0:
        return 0;
    case 1:
        return static_cast<double>(below(2000001));
    case 2:
        return std::ldexp(static_cast<double>(engine_()), -static_cast<int>(below(80)));
    default:
        return std::ldexp(1.0, static_cast<int>(below(1000)));
    }
}

AIModelItem Generator::model() {
    return {.uniqueId = maybe(&Generator::text),
            .id = text(),
            .name = text(),
            .family = text(),
            .color = text(),
            .type = maybe(&Generator::text),
            .provider_key = maybe(&Generator::text)};
}

BotConfig Generator::bot() {
    return {.icon = text(),
            .title = text(),
            .token = text(),
            .role = text(),
            .launchdLabel = text(),
            .service = coin() ? BotService::telegram : BotService::slack,
            .prompt = maybe(&Generator::text),
            .isPaused = maybe(&Generator::coin),
            .isSystem = maybe(&Generator::coin),
            .keepaliveEnabled = maybe(&Generator::coin)};
}

EffortPrefs Generator::efforts() {
    return {.architect = text(),
            .worker = text(),
            .photo = maybe(&Generator::text),
            .video = maybe(&Generator::text),
            .voice = maybe(&Generator::text),
            .governor = maybe(&Generator::text)};
}

ContextPrefs Generator::budgets() {
    return {.architect = maybe(&Generator::wholeNumber),
            .worker = maybe(&Generator::wholeNumber),
            .photo = maybe(&Generator::wholeNumber),
            .video = maybe(&Generator::wholeNumber),
            .voice = maybe(&Generator::wholeNumber),
            .governor = maybe(&Generator::wholeNumber)};
}

ResponseMode Generator::responseMode() {
    return allResponseModes[below(allResponseModes.size())];
}

AuthConfig Generator::auth() {
    AuthConfig config;
    for (const StoredValue& each : storedValues()) {
        if (each.member != nullptr || coin()) {
            each.set(config, text());
        }
    }
    return config;
}

Uuid Generator::uuid() {
    constexpr std::string_view digits = "0123456789abcdefABCDEF";
    std::string text = "00000000-0000-0000-0000-000000000000";
    for (char& sign : text) {
        sign = sign == '-' ? sign : digits[below(digits.size())];
    }
    return Uuid::parse(text).value();
}

CustomBotGroup Generator::group() {
    return {.id = uuid(),
            .name = text(),
            .models = chain(),
            .effortLevel = allEffortLevels[below(allEffortLevels.size())],
            .contextTokens = number(),
            .colorHex = text(),
            .attachedPaths = texts(),
            .objectives = text(),
            .doctrine = texts(),
            .assignedBotLabels = texts()};
}

ChainBotAssignments Generator::assignments() {
    ChainBotAssignments assignments;
    for (std::size_t count = below(5); count > 0; --count) {
        assignments[text()] = texts();
    }
    return assignments;
}

} // namespace varnhold::testing
