#include "doctor/secrets.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include "base/json.h"

namespace varnhold::doctor {

namespace {

constexpr std::size_t shortest = 6;

std::string lowered(std::string_view text) {
    std::string out(text);
    std::transform(out.begin(), out.end(), out.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return out;
}

std::uint64_t firstBytes(std::string_view text) {
    std::uint64_t packed = 0;
    std::memcpy(&packed, text.data(), shortest);
    return packed;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// What keys and tokens are made of.
bool isTokenSign(char c) {
    return isDigit(c) || isLetter(c) || c == '_' || c == '-';
}

std::size_t runOf(std::string_view text, std::size_t at, bool (*belongs)(char)) {
    const auto* const end =
        std::find_if_not(text.begin() + static_cast<std::ptrdiff_t>(at), text.end(), belongs);
    return static_cast<std::size_t>(end - text.begin()) - at;
}

// "123456789:AAF…": a Telegram bot's token.
std::size_t telegramTokenAt(std::string_view text, std::size_t at) {
    constexpr std::size_t leastDigits = 6;
    constexpr std::size_t leastRest = 20;
    const std::size_t digits = runOf(text, at, isDigit);
    if (digits < leastDigits || at + digits >= text.size() || text[at + digits] != ':') {
        return 0;
    }
    const std::size_t rest = runOf(text, at + digits + 1, isTokenSign);
    return rest < leastRest ? 0 : digits + 1 + rest;
}

// Beginnings that makers of keys have agreed on.
std::size_t knownKeyAt(std::string_view text, std::size_t at) {
    constexpr std::array<std::string_view, 9> beginnings{"sk-",  "AIza", "xoxb-", "xoxp-", "xapp-",
                                                         "ghp_", "gho_", "ghs_",  "eyJ"};
    constexpr std::size_t leastLength = 20;
    const std::string_view rest = text.substr(at);
    const bool begins =
        std::any_of(beginnings.begin(), beginnings.end(),
                    [rest](std::string_view each) { return rest.starts_with(each); });
    if (!begins) {
        return 0;
    }
    const std::size_t length =
        runOf(text, at, [](char c) { return isTokenSign(c) || c == '.' || c == '%'; });
    return length < leastLength ? 0 : length;
}

std::size_t keyAt(std::string_view text, std::size_t at) {
    const bool startsWord = at == 0 || !isTokenSign(text[at - 1]);
    if (!startsWord) {
        return 0;
    }
    // In an address it stands behind the word "bot".
    if (text.substr(at).starts_with("bot")) {
        const std::size_t length = telegramTokenAt(text, at + 3);
        return length == 0 ? 0 : length + 3;
    }
    const std::size_t length = telegramTokenAt(text, at);
    return length == 0 ? knownKeyAt(text, at) : length;
}

// Long, with letters and digits mixed: a hash, a key, an id that nobody misses.
std::size_t randomRunAt(std::string_view text, std::size_t at) {
    constexpr std::size_t leastLength = 32;
    if (at > 0 && isTokenSign(text[at - 1])) {
        return 0;
    }
    const std::size_t length = runOf(text, at, isTokenSign);
    const std::string_view run = text.substr(at, length);
    const bool isMixed = std::any_of(run.begin(), run.end(), isDigit) &&
                         std::any_of(run.begin(), run.end(), isLetter);
    return length >= leastLength && isMixed ? length : 0;
}

// "token = abc", "Authorization: Bearer abc", "api_key":"abc": the value's place behind the name.
std::pair<std::size_t, std::size_t> valueBehindName(std::string_view text, std::size_t at) {
    const std::size_t nameLength = runOf(text, at, isTokenSign);
    const std::string_view name = text.substr(at, nameLength);
    const std::string low = lowered(name);
    std::size_t value = at + nameLength;
    if (low != "bearer" && low != "authorization" && !isSecretName(name)) {
        return {};
    }
    const std::size_t before = value;
    value = std::min(text.find_first_not_of(" \t\"'=:", value), text.size());
    const std::string_view gap = text.substr(before, value - before);
    const bool isAssigned = gap.find_first_of("=:") != std::string_view::npos;
    if (value == text.size() || (low == "bearer" ? gap.empty() : !isAssigned)) {
        return {};
    }
    if (low != "bearer" && lowered(text.substr(value, 7)) == "bearer ") {
        value += 7;
    }
    return {value, runOf(text, value, [](char c) {
                return c != ' ' && c != '\t' && c != '"' && c != '\'' && c != ',' && c != ';' &&
                       c != ')' && c != '&';
            })};
}

} // namespace

bool isSecretName(std::string_view name) {
    const std::string low = lowered(name);
    if (low == "provider_key") {
        return false;
    }
    constexpr std::array<std::string_view, 4> words{"token", "secret", "passw", "credential"};
    return low.ends_with("key") || std::any_of(words.begin(), words.end(), [&low](auto word) {
               return low.find(word) != std::string::npos;
           });
}

void Secrets::add(std::string_view value) {
    if (value.size() >= shortest) {
        auto& bucket = secrets_[firstBytes(value)];
        if (std::find(bucket.begin(), bucket.end(), value) == bucket.end()) {
            bucket.emplace_back(value);
            // The longest first: of two secrets one may begin with the other.
            std::sort(bucket.begin(), bucket.end(),
                      [](const auto& a, const auto& b) { return a.size() > b.size(); });
        }
    }
    const std::size_t lineEnd = value.find('\n');
    if (lineEnd != std::string_view::npos) { // each line of it is shown by itself
        add(value.substr(0, lineEnd));
        add(value.substr(lineEnd + 1));
    }
}

void Secrets::addVariable(std::string_view name, std::string_view value) {
    if (isSecretName(name)) {
        add(value);
    }
}

void Secrets::addFromJson(std::string_view text) {
    if (const Result<json::Value> document = json::parse(text)) {
        addAllIn(*document, false);
    } else {
        addFromBrokenJson(text);
    }
}

void Secrets::addAllIn(const json::Value& value, bool isSecret) {
    if (value.is_object()) {
        for (const auto& [key, member] : value.items()) {
            addAllIn(member, isSecret || isSecretName(key));
        }
    } else if (value.is_array()) {
        for (const json::Value& element : value) {
            addAllIn(element, isSecret);
        }
    } else if (isSecret && value.is_string()) {
        add(value.get_ref<const std::string&>());
    }
}

// Goes from string to string: what follows a secret's name up to the end of its object is taken.
void Secrets::addFromBrokenJson(std::string_view text) {
    bool isSecret = false;
    bool isInSecretObject = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char sign = text[at];
        if (sign == ',' || sign == '}' || sign == ']') {
            isInSecretObject = isInSecretObject && sign == ',';
            isSecret = isInSecretObject;
        } else if (sign == '{') {
            isInSecretObject = isSecret;
        } else if (sign == '"') {
            std::size_t end = at + 1;
            while (end < text.size() && text[end] != '"' && text[end] != '\n') {
                end += text[end] == '\\' ? 2U : 1U;
            }
            const std::string_view raw = text.substr(at + 1, std::min(end, text.size()) - at - 1);
            if (isSecret) {
                const auto decoded = json::parse("\"" + std::string(raw) + "\"");
                add(raw);
                add(decoded && decoded->is_string() ? decoded->get<std::string>() : "");
            }
            isSecret = isSecret || isSecretName(raw);
            at = end;
        }
    }
}

std::size_t Secrets::lengthOfSecretAt(std::string_view text, std::size_t at) const {
    if (text.size() - at < shortest) {
        return 0;
    }
    const auto bucket = secrets_.find(firstBytes(text.substr(at)));
    if (bucket == secrets_.end()) {
        return 0;
    }
    const auto found =
        std::find_if(bucket->second.begin(), bucket->second.end(),
                     [rest = text.substr(at)](const auto& each) { return rest.starts_with(each); });
    return found == bucket->second.end() ? 0 : found->size();
}

std::string Secrets::mask(std::string_view text) const {
    std::string out;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t length = lengthOfSecretAt(text, at);
        length = length == 0 ? keyAt(text, at) : length;
        if (length > 0) {
            out += maskText;
            at += length;
        } else {
            out += text[at++];
        }
    }
    return out;
}

std::string Secrets::maskLogLine(std::string_view line) const {
    const std::string known = mask(line);
    std::string out;
    for (std::size_t at = 0; at < known.size();) {
        const bool startsWord = at == 0 || !isTokenSign(known[at - 1]);
        const auto [value, length] =
            startsWord ? valueBehindName(known, at) : std::pair<std::size_t, std::size_t>{};
        if (length > 0) {
            out += known.substr(at, value - at) + std::string(maskText);
            at = value + length;
        } else if (const std::size_t run = randomRunAt(known, at)) {
            out += maskText;
            at += run;
        } else {
            out += known[at++];
        }
    }
    return out;
}

json::Value Secrets::mask(const json::Value& value) const {
    if (value.is_string()) {
        return mask(std::string_view(value.get_ref<const std::string&>()));
    }
    if (value.is_array()) {
        json::Value out = json::Value::array();
        for (const json::Value& element : value) {
            out.push_back(mask(element));
        }
        return out;
    }
    if (value.is_object()) {
        json::Value out = json::Value::object();
        for (const auto& [key, member] : value.items()) {
            out[mask(std::string_view(key))] = mask(member);
        }
        return out;
    }
    return value;
}

} // namespace varnhold::doctor
