#pragma once

#include <cstdint>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "base/json_fwd.h"
#include "base/result.h"

// JSON as this program and the daemons exchange it: RFC 8259, UTF-8, and nothing looser.
//
// Decoding is strict and all or nothing: one wrong type rejects the whole document, and the reason
// names the place ("[2].service: ..."). Null counts as absent where a field is optional. Unknown
// keys are ignored. Pure functions on values, safe on any thread.
namespace varnhold::json {

// Deeper documents are refused rather than risking the stack of whoever walks them.
inline constexpr int maximumDepth = 512;

[[nodiscard]] Result<Value> parse(std::string_view text);
[[nodiscard]] Result<Value> parseFile(const std::string& path);

// One line, no blanks, no trailing newline, keys in the order they were set.
[[nodiscard]] std::string compact(const Value& value);

// A number as other programs expect it: whole values as integers ("2000000"), never "2e+06".
[[nodiscard]] Value number(double value);

// Lossless readings of one value; the reason says what was there instead.
[[nodiscard]] Result<std::string> asString(const Value& value);
[[nodiscard]] Result<bool> asBool(const Value& value);
[[nodiscard]] Result<std::int64_t> asInteger(const Value& value);
[[nodiscard]] Result<double> asDouble(const Value& value);
[[nodiscard]] Result<std::vector<std::string>> asStrings(const Value& value);
[[nodiscard]] Result<std::map<std::string, std::string>> asStringMap(const Value& value);

// A member of that name for a field that is there; none for one that is absent.
template <class Field>
void setPresent(Value& out, std::string_view key, const std::optional<Field>& field) {
    if (field) {
        out[std::string(key)] = *field;
    }
}

// Reads the fields of one object and remembers the first thing that was wrong.
//
// After a failure the getters give empty values, so a decoder reads all its fields in a row and
// asks once, with finish(). The value read from must outlive the reader.
class ObjectReader {
public:
    explicit ObjectReader(const Value& value);

    template <class Decode>
    [[nodiscard]] auto required(std::string_view key, Decode decode) ->
        typename std::invoke_result_t<Decode, const Value&>::value_type {
        if (const Value* found = find(key)) {
            if (auto value = take(key, decode(*found))) {
                return *std::move(value);
            }
        } else {
            fail(key, "missing");
        }
        return {};
    }

    template <class Decode>
    [[nodiscard]] auto optional(std::string_view key, Decode decode)
        -> std::optional<typename std::invoke_result_t<Decode, const Value&>::value_type> {
        const Value* found = find(key);
        return found ? take(key, decode(*found)) : std::nullopt;
    }

    [[nodiscard]] std::string string(std::string_view key) { return required(key, asString); }
    [[nodiscard]] std::optional<std::string> optionalString(std::string_view key) {
        return optional(key, asString);
    }
    [[nodiscard]] std::optional<bool> optionalBool(std::string_view key) {
        return optional(key, asBool);
    }

    template <class Record>
    [[nodiscard]] Result<Record> finish(Record record) const {
        if (error_) {
            return failure(*error_);
        }
        return record;
    }

private:
    // The member under the key; null where it is missing or null.
    [[nodiscard]] const Value* find(std::string_view key) const;
    void fail(std::string_view key, const std::string& reason);

    template <class T>
    std::optional<T> take(std::string_view key, Result<T> result) {
        if (!result) {
            fail(key, result.error());
            return std::nullopt;
        }
        return *std::move(result);
    }

    const Value* object_ = nullptr;
    std::optional<std::string> error_;
};

// Every element through `decode`; one bad element rejects the list.
template <class Decode>
[[nodiscard]] auto decodeArray(const Value& value, Decode decode)
    -> Result<std::vector<typename std::invoke_result_t<Decode, const Value&>::value_type>> {
    std::vector<typename std::invoke_result_t<Decode, const Value&>::value_type> records;
    if (!value.is_array()) {
        return failure(std::string("expected a list, found ") + value.type_name());
    }
    records.reserve(value.size());
    for (std::size_t i = 0; i < value.size(); ++i) {
        auto record = decode(value[i]);
        if (!record) {
            return failure("[" + std::to_string(i) + "]." + record.error());
        }
        records.push_back(*std::move(record));
    }
    return records;
}

} // namespace varnhold::json
