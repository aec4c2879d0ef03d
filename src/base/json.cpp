#include "base/json.h"

#include <cmath>

#include "base/files.h"
#include "base/json_tree.h"

namespace varnhold::json {

namespace {

// Every whole number of this size and below is exact in a double.
constexpr double largestExactInteger = 9007199254740992.0;

tl::unexpected<std::string> unexpectedType(const char* wanted, const Value& value) {
    return failure(std::string("expected ") + wanted + ", found " + value.type_name());
}

} // namespace

Result<Value> parse(std::string_view text) {
    // The parser takes a NUL for the end of its input and would never see what stands behind it.
    if (text.find('\0') != std::string_view::npos) {
        return failure("holds a NUL byte");
    }
    TreeBuilder builder(maximumDepth);
    if (!Value::sax_parse(text, &builder)) {
        return failure(builder.error());
    }
    return builder.takeTree();
}

Result<Value> parseFile(const std::string& path) {
    return files::read(path).and_then([](const std::string& text) { return parse(text); });
}

std::string compact(const Value& value) {
    // Text that isn't valid UTF-8 can only come from names typed elsewhere; a mark in its place
    // keeps the rest of the file readable.
    return value.dump(-1, ' ', false, Value::error_handler_t::replace);
}

Value number(double value) {
    if (std::trunc(value) == value && std::abs(value) <= largestExactInteger) {
        return static_cast<std::int64_t>(value);
    }
    return value;
}

Result<std::string> asString(const Value& value) {
    if (!value.is_string()) {
        return unexpectedType("text", value);
    }
    return value.get<std::string>();
}

Result<bool> asBool(const Value& value) {
    if (!value.is_boolean()) {
        return unexpectedType("true or false", value);
    }
    return value.get<bool>();
}

Result<std::int64_t> asInteger(const Value& value) {
    if (value.is_number_unsigned() &&
        value.get<std::uint64_t>() > static_cast<std::uint64_t>(INT64_MAX)) {
        return failure("beyond 64 bits");
    }
    if (value.is_number_integer()) {
        return value.get<std::int64_t>();
    }
    if (!value.is_number_float()) {
        return unexpectedType("a whole number", value);
    }
    const double found = value.get<double>();
    // A whole number that is given as a fraction or beyond 64 bits arrives here rounded, so the two
    // ends of the range can't be told from what lies past them.
    if (std::trunc(found) != found || found <= -0x1p63 || found >= 0x1p63) {
        return failure("not a whole number within 64 bits");
    }
    return static_cast<std::int64_t>(found);
}

Result<double> asDouble(const Value& value) {
    if (!value.is_number()) {
        return unexpectedType("a number", value);
    }
    return value.get<double>();
}

Result<std::vector<std::string>> asStrings(const Value& value) {
    return decodeArray(value, asString);
}

Result<std::map<std::string, std::string>> asStringMap(const Value& value) {
    if (!value.is_object()) {
        return unexpectedType("an object", value);
    }
    std::map<std::string, std::string> out;
    for (const auto& [key, member] : value.items()) {
        Result<std::string> text = asString(member);
        if (!text) {
            return failure("." + key + ": " + text.error());
        }
        out.emplace(key, *std::move(text));
    }
    return out;
}

ObjectReader::ObjectReader(const Value& value) {
    if (value.is_object()) {
        object_ = &value;
    } else {
        error_ = std::string("expected an object, found ") + value.type_name();
    }
}

const Value* ObjectReader::find(std::string_view key) const {
    if (object_ == nullptr) {
        return nullptr;
    }
    const auto found = object_->find(std::string(key));
    return found == object_->end() || found->is_null() ? nullptr : &*found;
}

void ObjectReader::fail(std::string_view key, const std::string& reason) {
    if (!error_) {
        error_ = std::string(key) + ": " + reason;
    }
}

} // namespace varnhold::json
