#include "records/preferences.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "base/files.h"
#include "base/json.h"
#include "records/raw_values.h"

namespace varnhold {

namespace {

template <class... Cases>
struct Overloaded : Cases... {
    using Cases::operator()...;
};
template <class... Cases>
Overloaded(Cases...)
    -> Overloaded<Cases...>; // for clang, which deduces an aggregate's arguments from 17 on only

Result<ResponseMode> decodeMode(const json::Value& value) {
    return decodeCase(allResponseModes, value, "response mode");
}

Result<EffortPrefs> decodeEfforts(const json::Value& value) {
    json::ObjectReader in(value);
    EffortPrefs prefs;
    for (const EffortKey& each : effortKeys) {
        std::visit(Overloaded{[&](std::string EffortPrefs::*field) {
                                  prefs.*field = in.string(each.chain);
                              },
                              [&](std::optional<std::string> EffortPrefs::*field) {
                                  prefs.*field = in.optionalString(each.chain);
                              }},
                   each.field);
    }
    return in.finish(std::move(prefs));
}

Result<ContextPrefs> decodeBudgets(const json::Value& value) {
    json::ObjectReader in(value);
    ContextPrefs prefs;
    for (const ContextKey& each : contextKeys) {
        prefs.*each.field = in.optional(each.chain, json::asInteger);
    }
    return in.finish(prefs);
}

template <class Keys>
auto keyOf(const Keys& keys, std::string_view chain) {
    return std::find_if(keys.begin(), keys.end(),
                        [chain](const auto& each) { return each.chain == chain; });
}

} // namespace

std::string_view rawValue(EffortLevel level) {
    switch (level) {
    case EffortLevel::off:
        return "off";
    case EffortLevel::low:
        return "low";
    case EffortLevel::medium:
        return "medium";
    case EffortLevel::high:
        break;
    }
    return "high";
}

std::optional<EffortLevel> effortLevelFromRawValue(std::string_view raw) {
    return caseOf(allEffortLevels, raw);
}

Result<EffortLevel> decodeEffortLevel(const json::Value& value) {
    return decodeCase(allEffortLevels, value, "effort level");
}

std::string_view label(EffortLevel level) {
    switch (level) {
    case EffortLevel::off:
        return "Off";
    case EffortLevel::low:
        return "Low";
    case EffortLevel::medium:
        return "Med";
    case EffortLevel::high:
        break;
    }
    return "High";
}

double sliderValue(EffortLevel level) {
    return static_cast<double>(level);
}

EffortLevel effortLevelFromSlider(double slider) {
    assert(std::isfinite(slider));
    const double rounded = std::round(slider);
    for (const EffortLevel level : allEffortLevels) {
        if (rounded == sliderValue(level)) {
            return level;
        }
    }
    return EffortLevel::high;
}

std::string_view rawValue(ResponseMode mode) {
    switch (mode) {
    case ResponseMode::text:
        return "text";
    case ResponseMode::voice:
        return "voice";
    case ResponseMode::both:
        break;
    }
    return "both";
}

std::optional<ResponseMode> responseModeFromRawValue(std::string_view raw) {
    return caseOf(allResponseModes, raw);
}

std::string_view label(ResponseMode mode) {
    switch (mode) {
    case ResponseMode::text:
        return "Text";
    case ResponseMode::voice:
        return "Voice";
    case ResponseMode::both:
        break;
    }
    return "Text + Voice";
}

Result<ResponseMode> decodeResponseMode(std::string_view text) {
    return json::parse(text).and_then(decodeMode);
}

std::string encodeResponseMode(ResponseMode mode) {
    return json::compact(rawValue(mode));
}

Result<ResponseMode> readResponseMode(const std::string& path) {
    return files::read(path).and_then(decodeResponseMode);
}

Result<EffortPrefs> decodeEffortPrefs(std::string_view text) {
    return json::parse(text).and_then(decodeEfforts);
}

std::optional<std::string> effortOf(const EffortPrefs& prefs, std::string_view chain) {
    const auto* const key = keyOf(effortKeys, chain);
    if (key == effortKeys.end()) {
        return std::nullopt;
    }
    return std::visit([&prefs](auto field) { return std::optional<std::string>(prefs.*field); },
                      key->field);
}

void setEffort(EffortPrefs& prefs, std::string_view chain, std::string_view raw) {
    if (const auto* const key = keyOf(effortKeys, chain); key != effortKeys.end()) {
        std::visit([&](auto field) { prefs.*field = std::string(raw); }, key->field);
    }
}

std::string encodeEffortPrefs(const EffortPrefs& prefs) {
    json::Value out = json::Value::object();
    for (const EffortKey& each : effortKeys) {
        json::setPresent(out, each.chain, effortOf(prefs, each.chain));
    }
    return json::compact(out);
}

Result<EffortPrefs> readEffortPrefs(const std::string& path) {
    return files::read(path).and_then(decodeEffortPrefs);
}

Result<ContextPrefs> decodeContextPrefs(std::string_view text) {
    return json::parse(text).and_then(decodeBudgets);
}

std::optional<std::int64_t> budgetOf(const ContextPrefs& prefs, std::string_view chain) {
    const auto* const key = keyOf(contextKeys, chain);
    return key == contextKeys.end() ? std::nullopt : prefs.*key->field;
}

void setBudget(ContextPrefs& prefs, std::string_view chain, std::int64_t tokens) {
    if (const auto* const key = keyOf(contextKeys, chain); key != contextKeys.end()) {
        prefs.*key->field = tokens;
    }
}

std::string encodeContextPrefs(const ContextPrefs& prefs) {
    json::Value out = json::Value::object();
    for (const ContextKey& each : contextKeys) {
        json::setPresent(out, each.chain, prefs.*each.field);
    }
    return json::compact(out);
}

Result<ContextPrefs> readContextPrefs(const std::string& path) {
    return files::read(path).and_then(decodeContextPrefs);
}

} // namespace varnhold
