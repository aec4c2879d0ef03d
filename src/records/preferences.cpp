#include "records/preferences.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "base/json.h"

namespace varnhold {

namespace {

template <class Cases>
auto caseOf(const Cases& cases, std::string_view raw) -> std::optional<typename Cases::value_type> {
    const auto found =
        std::find_if(cases.begin(), cases.end(), [&](auto each) { return rawValue(each) == raw; });
    return found == cases.end() ? std::nullopt : std::optional(*found);
}

Result<ResponseMode> decodeMode(const json::Value& value) {
    return json::asString(value).and_then([](const std::string& raw) -> Result<ResponseMode> {
        if (const auto mode = responseModeFromRawValue(raw)) {
            return *mode;
        }
        return failure("no such response mode: \"" + raw + "\"");
    });
}

Result<EffortPrefs> decodeEfforts(const json::Value& value) {
    json::ObjectReader in(value);
    EffortPrefs prefs{.architect = in.string("architect"),
                      .worker = in.string("worker"),
                      .photo = in.optionalString("photo"),
                      .video = in.optionalString("video"),
                      .voice = in.optionalString("voice"),
                      .governor = in.optionalString("governor")};
    return in.finish(std::move(prefs));
}

Result<ContextPrefs> decodeBudgets(const json::Value& value) {
    json::ObjectReader in(value);
    ContextPrefs prefs{.architect = in.optional("architect", json::asInteger),
                       .worker = in.optional("worker", json::asInteger),
                       .photo = in.optional("photo", json::asInteger),
                       .video = in.optional("video", json::asInteger),
                       .voice = in.optional("voice", json::asInteger),
                       .governor = in.optional("governor", json::asInteger)};
    return in.finish(prefs);
}

template <class Field>
void setPresent(json::Value& out, const char* key, const std::optional<Field>& field) {
    if (field) {
        out[key] = *field;
    }
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
    return json::asString(value).and_then([](const std::string& raw) -> Result<EffortLevel> {
        if (const auto level = effortLevelFromRawValue(raw)) {
            return *level;
        }
        return failure("no such effort level: \"" + raw + "\"");
    });
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
    return json::parseFile(path).and_then(decodeMode);
}

Result<EffortPrefs> decodeEffortPrefs(std::string_view text) {
    return json::parse(text).and_then(decodeEfforts);
}

std::string encodeEffortPrefs(const EffortPrefs& prefs) {
    json::Value out = json::Value::object();
    out["architect"] = prefs.architect;
    out["worker"] = prefs.worker;
    setPresent(out, "photo", prefs.photo);
    setPresent(out, "video", prefs.video);
    setPresent(out, "voice", prefs.voice);
    setPresent(out, "governor", prefs.governor);
    return json::compact(out);
}

Result<EffortPrefs> readEffortPrefs(const std::string& path) {
    return json::parseFile(path).and_then(decodeEfforts);
}

Result<ContextPrefs> decodeContextPrefs(std::string_view text) {
    return json::parse(text).and_then(decodeBudgets);
}

std::string encodeContextPrefs(const ContextPrefs& prefs) {
    json::Value out = json::Value::object();
    setPresent(out, "architect", prefs.architect);
    setPresent(out, "worker", prefs.worker);
    setPresent(out, "photo", prefs.photo);
    setPresent(out, "video", prefs.video);
    setPresent(out, "voice", prefs.voice);
    setPresent(out, "governor", prefs.governor);
    return json::compact(out);
}

Result<ContextPrefs> readContextPrefs(const std::string& path) {
    return json::parseFile(path).and_then(decodeBudgets);
}

} // namespace varnhold
