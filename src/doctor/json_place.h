#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/json_fwd.h"
#include "doctor/finding.h"

// Where in a document the thing stands that a decoder refused.
//
// Decoders say it in one line, "[2].service: no such service"; a person wants the line and the
// column of the file in front of him. Pure functions; any thread.
namespace varnhold::doctor {

// What is wrong, and where. The place's file is left to the caller.
struct Fault {
    Place place;
    std::string what; // "missing", "expected text, found number", "a comma or a bracket is missing"
};

// Of a text that is no JSON document. None if it is one. Nothing of the text stands in the reason:
// what is cut in the middle may be half a secret.
[[nodiscard]] std::optional<Fault> syntaxFault(std::string_view text);

// Of a document whose decoder gave `reason`. Of a missing field, the object that lacks it.
[[nodiscard]] Fault decodingFault(std::string_view text, const json::Value& document,
                                  std::string_view reason);

// Line and column of a byte.
[[nodiscard]] Place placeAt(std::string_view text, std::size_t offset);

} // namespace varnhold::doctor
