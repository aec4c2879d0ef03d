#pragma once

#include <nlohmann/json_fwd.hpp>

// The name of a JSON value, for headers that only pass one on: the library behind it is a third of
// what most of our files would cost to build.
namespace varnhold::json {

// Keeps the order of keys, so that what we write comes out in the order of the fields.
using Value = nlohmann::ordered_json;

} // namespace varnhold::json
