#include "doctor/json_place.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/json.h"
#include "base/text.h"

namespace varnhold::doctor {

namespace {

using json::Value;

// Reads a document for nothing but its first fault.
class FaultFinder final : public nlohmann::json_sax<Value> {
public:
    bool null() override { return true; }
    bool boolean(bool) override { return true; }
    bool number_integer(number_integer_t) override { return true; }
    bool number_unsigned(number_unsigned_t) override { return true; }
    bool number_float(number_float_t, const string_t&) override { return true; }
    bool string(string_t&) override { return true; }
    bool binary(binary_t&) override { return true; }
    bool key(string_t&) override { return true; }
    bool start_object(std::size_t) override { return open(); }
    bool start_array(std::size_t) override { return open(); }
    bool end_object() override { return close(); }
    bool end_array() override { return close(); }
    bool parse_error(std::size_t position, const std::string&,
                     const nlohmann::detail::exception& error) override {
        position_ = position;
        message_ = error.what();
        return false;
    }

    [[nodiscard]] std::size_t position() const { return position_; }
    [[nodiscard]] const std::string& message() const { return message_; }
    [[nodiscard]] bool isTooDeep() const { return depth_ > json::maximumDepth; }

private:
    bool open() { return ++depth_ <= json::maximumDepth; }
    bool close() {
        --depth_;
        return true;
    }

    int depth_ = 0;
    std::size_t position_ = 0;
    std::string message_;
};

std::string between(const std::string& text, std::string_view begin, std::string_view end) {
    const std::size_t from = text.find(begin);
    if (from == std::string::npos) {
        return {};
    }
    const std::size_t start = from + begin.size();
    return text.substr(start, std::min(text.find(end, start), text.size()) - start);
}

// The parser quotes what it read last, which may be a key or a token; all but that is kept.
std::string inWords(const std::string& message) {
    if (message.find("number overflow") != std::string::npos) {
        return "a number is too large";
    }
    const std::string reading = between(message, "while parsing ", " - ");
    std::string what = between(message, " - ", "; ");
    const std::size_t expected = message.rfind("; expected ");
    if (what.empty()) {
        return "not JSON";
    }
    if (!reading.empty() && reading != "value") {
        what += " after " + reading;
    }
    if (expected != std::string::npos) {
        const std::string wanted = message.substr(expected + 11);
        what += ", where " + (wanted == "string literal" ? "a text" : wanted) + " should stand";
    }
    return what;
}

// Finds the places of values in a text that is known to be a valid document.
class Scanner {
public:
    explicit Scanner(std::string_view text) : text_(text) {}

    [[nodiscard]] std::size_t start() const {
        return skipBlanks(text_.starts_with("\xEF\xBB\xBF") ? 3 : 0);
    }

    // Of the member's value; of two equal keys the last counts.
    [[nodiscard]] std::optional<std::size_t> member(std::size_t object, const std::string& key) {
        std::optional<std::size_t> found;
        std::size_t at = skipBlanks(object + 1);
        while (at < text_.size() && text_[at] != '}') {
            const std::size_t end = skipString(at);
            const auto name = json::parse(text_.substr(at, end - at));
            const std::size_t value = skipBlanks(skipBlanks(end) + 1);
            if (name && name->is_string() && name->get_ref<const std::string&>() == key) {
                found = value;
            }
            at = next(skipValue(value));
        }
        return found;
    }

    [[nodiscard]] std::size_t element(std::size_t array, std::size_t index) const {
        std::size_t at = skipBlanks(array + 1);
        for (std::size_t i = 0; i < index; ++i) {
            at = next(skipValue(at));
        }
        return at;
    }

private:
    [[nodiscard]] std::size_t skipBlanks(std::size_t at) const {
        return std::min(text_.find_first_not_of(" \t\r\n", at), text_.size());
    }
    [[nodiscard]] std::size_t next(std::size_t at) const {
        at = skipBlanks(at);
        return at < text_.size() && text_[at] == ',' ? skipBlanks(at + 1) : at;
    }
    [[nodiscard]] std::size_t skipString(std::size_t at) const {
        for (++at; at < text_.size() && text_[at] != '"'; ++at) {
            at += text_[at] == '\\' ? 1U : 0U;
        }
        return at + 1;
    }
    [[nodiscard]] std::size_t skipValue(std::size_t at) const {
        if (at < text_.size() && text_[at] == '"') {
            return skipString(at);
        }
        int depth = 0;
        while (at < text_.size()) {
            const char sign = text_[at];
            if (sign == '"') {
                at = skipString(at);
                continue;
            }
            if (depth == 0 && (sign == ',' || sign == '}' || sign == ']')) {
                return at;
            }
            depth += sign == '{' || sign == '[' ? 1 : 0;
            depth -= sign == '}' || sign == ']' ? 1 : 0;
            ++at;
        }
        return at;
    }

    std::string_view text_;
};

// Goes down a document along a decoder's reason.
class Descent {
public:
    Descent(std::string_view text, const Value& document, std::string_view reason)
        : text_(text), scanner_(text), at_(&document), offset_(scanner_.start()), rest_(reason) {}

    [[nodiscard]] Fault fault() {
        while (at_->is_array() ? enterElement() : enterMember()) {
        }
        Place place = placeAt(text_, offset_);
        place.record = record_;
        place.field = field_;
        return {place, std::string(rest_)};
    }

private:
    bool enterElement() {
        const std::size_t end = rest_.find("].");
        if (!rest_.starts_with('[') || end == std::string_view::npos) {
            return false;
        }
        const auto index = text::parseUnsigned(rest_.substr(1, end - 1));
        if (!index || *index >= at_->size()) {
            return false;
        }
        if (field_.empty() && !record_) {
            record_ = *index + 1;
        } else {
            field_ += "[" + std::to_string(*index) + "]";
        }
        offset_ = scanner_.element(offset_, *index);
        at_ = &(*at_)[*index];
        rest_.remove_prefix(end + 2);
        return true;
    }

    bool enterMember() {
        if (!at_->is_object()) {
            return false;
        }
        const Value* found = nullptr;
        std::string key;
        for (const auto& [name, value] : at_->items()) {
            if (name.size() >= key.size() && rest_.starts_with(name + ": ")) {
                key = name;
                found = &value;
            }
        }
        if (found == nullptr) {
            return nameWhatIsMissing();
        }
        name(key);
        offset_ = scanner_.member(offset_, key).value_or(offset_);
        at_ = found;
        rest_.remove_prefix(key.size() + 2);
        return true;
    }

    // The object that lacks a field is the last place there is.
    bool nameWhatIsMissing() {
        const std::size_t end = rest_.find(": missing");
        if (end != std::string_view::npos) {
            name(std::string(rest_.substr(0, end)));
            rest_.remove_prefix(end + 2);
        }
        return false;
    }

    void name(const std::string& key) { field_ += (field_.empty() ? "" : ".") + key; }

    std::string_view text_;
    Scanner scanner_;
    const Value* at_;
    std::size_t offset_;
    std::string_view rest_;
    std::optional<std::size_t> record_;
    std::string field_;
};

bool isPlainWord(std::string_view text) {
    constexpr std::size_t longest = 24;
    return text.size() <= longest && std::all_of(text.begin(), text.end(), [](char c) {
               return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == ' ' || c == '-';
           });
}

// The library has names of its own for what people call otherwise.
std::string inPlainWords(std::string what) {
    constexpr std::array<std::pair<std::string_view, std::string_view>, 5> names{{
        {"found array", "found a list"},
        {"found object", "found an object"},
        {"found string", "found text"},
        {"found number", "found a number"},
        {"found boolean", "found true or false"},
    }};
    for (const auto& [name, word] : names) {
        if (what.ends_with(name)) {
            what.replace(what.size() - name.size(), name.size(), word);
            break;
        }
    }
    return what;
}

// A value that stands in the wrong field may be a secret from the right one; a word isn't.
std::string withoutValue(const std::string& what) {
    const std::size_t quote = what.find(": \"");
    if (quote == std::string::npos || what.size() < quote + 4 ||
        isPlainWord(std::string_view(what).substr(quote + 3, what.size() - quote - 4))) {
        return what;
    }
    return what.substr(0, quote);
}

} // namespace

Place placeAt(std::string_view text, std::size_t offset) {
    const std::string_view before = text.substr(0, offset);
    const std::size_t lineStart = before.rfind('\n') + 1; // npos + 1 is 0
    const auto isCharacter = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; };
    const std::string_view line = before.substr(lineStart);
    return {.file = {},
            .line = 1 + static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')),
            .column =
                1 + static_cast<std::size_t>(std::count_if(line.begin(), line.end(), isCharacter))};
}

std::optional<Fault> syntaxFault(std::string_view text) {
    if (const std::size_t nul = text.find('\0'); nul != std::string_view::npos) {
        return Fault{placeAt(text, nul), "holds a NUL byte"};
    }
    if (text.empty()) {
        return Fault{{}, "the file is empty"};
    }
    FaultFinder finder;
    if (Value::sax_parse(text, &finder)) {
        return std::nullopt;
    }
    if (finder.isTooDeep()) {
        return Fault{{}, "nested deeper than " + std::to_string(json::maximumDepth) + " levels"};
    }
    if (finder.position() > text.size()) {
        return Fault{placeAt(text, text.size()), "the file ends too early"};
    }
    const std::size_t read = finder.position();
    return Fault{placeAt(text, read == 0 ? 0 : read - 1), inWords(finder.message())};
}

Fault decodingFault(std::string_view text, const Value& document, std::string_view reason) {
    Fault fault = Descent(text, document, reason).fault();
    fault.what = inPlainWords(withoutValue(fault.what));
    return fault;
}

} // namespace varnhold::doctor
