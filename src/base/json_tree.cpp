#include "base/json_tree.h"

namespace varnhold::json {

// Of two equal keys the last counts, in the place of the first.
bool TreeBuilder::key(string_t& name) {
    auto& members = open_.back().value->get_ref<Value::object_t&>();
    const auto [place, isNew] = open_.back().places.try_emplace(name, members.size());
    if (isNew) {
        members.emplace_back(std::move(name), Value());
    }
    member_ = place->second;
    return true;
}

bool TreeBuilder::parse_error(std::size_t, const std::string&,
                              const nlohmann::detail::exception& error) {
    error_ = error.what();
    return false;
}

Value& TreeBuilder::put(Value value) {
    if (open_.empty()) {
        return tree_ = std::move(value);
    }
    Value& parent = *open_.back().value;
    if (parent.is_array()) {
        return parent.get_ref<Value::array_t&>().emplace_back(std::move(value));
    }
    return parent.get_ref<Value::object_t&>().begin()[static_cast<std::ptrdiff_t>(member_)].second =
               std::move(value);
}

bool TreeBuilder::add(Value value) {
    put(std::move(value));
    return true;
}

bool TreeBuilder::open(Value value) {
    if (open_.size() >= deepest_) {
        error_ = "nested deeper than " + std::to_string(deepest_) + " levels";
        return false;
    }
    Value& here = put(std::move(value));
    open_.push_back({.value = &here, .places = {}});
    return true;
}

bool TreeBuilder::close() {
    open_.pop_back();
    return true;
}

} // namespace varnhold::json
