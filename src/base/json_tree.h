#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include <nlohmann/json.hpp>

#include "base/json_fwd.h"

namespace varnhold::json {

// Makes a tree of what the parser reads. The parser's own maker looks through all keys of an object
// for each new one, and so takes minutes for an object of a million keys.
class TreeBuilder final : public nlohmann::json_sax<Value> {
public:
    // Of objects and lists in one another; what goes deeper stops the reading.
    explicit TreeBuilder(std::size_t deepest) : deepest_(deepest) {}

    bool null() override { return add(nullptr); }
    bool boolean(bool value) override { return add(value); }
    bool number_integer(number_integer_t value) override { return add(value); }
    bool number_unsigned(number_unsigned_t value) override { return add(value); }
    bool number_float(number_float_t value, const string_t&) override { return add(value); }
    bool string(string_t& value) override { return add(std::move(value)); }
    bool binary(binary_t& value) override { return add(std::move(value)); }
    bool key(string_t& name) override;
    bool start_object(std::size_t) override { return open(Value::object()); }
    bool start_array(std::size_t) override { return open(Value::array()); }
    bool end_object() override { return close(); }
    bool end_array() override { return close(); }
    bool parse_error(std::size_t position, const std::string& token,
                     const nlohmann::detail::exception& error) override;

    // Once, after the reading.
    [[nodiscard]] Value takeTree() { return std::move(tree_); }
    // Why the reading stopped, if it did.
    [[nodiscard]] const std::string& error() const { return error_; }

private:
    // An object or a list that is being read; its parents don't change meanwhile.
    struct Open {
        Value* value = nullptr;
        std::unordered_map<std::string, std::size_t> places; // of an object's keys
    };

    bool add(Value value);
    bool open(Value value);
    bool close();
    // Where the next value belongs, with that value in it.
    Value& put(Value value);

    std::size_t deepest_;
    Value tree_;
    std::vector<Open> open_;
    std::size_t member_ = 0; // of the innermost object, the one whose key was read last
    std::string error_;
};

} // namespace varnhold::json
