#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

#include "base/json.h"

// From the text that a file has for a case of an enumeration back to the case. What belongs to a
// case is its rawValue, to the letter. Pure functions; any thread.
namespace varnhold {

// None for a text that is no case's.
template <class Cases>
[[nodiscard]] auto caseOf(const Cases& cases, std::string_view raw)
    -> std::optional<typename Cases::value_type> {
    const auto found =
        std::find_if(cases.begin(), cases.end(), [&](auto each) { return rawValue(each) == raw; });
    return found == cases.end() ? std::nullopt : std::optional(*found);
}

// `what`: the enumeration as the reason calls it.
template <class Cases>
[[nodiscard]] auto decodeCase(const Cases& cases, const json::Value& value, std::string_view what)
    -> Result<typename Cases::value_type> {
    using Case = typename Cases::value_type;
    return json::asString(value).and_then([&](const std::string& raw) -> Result<Case> {
        const auto found = caseOf(cases, raw);
        return found ? Result<Case>(*found)
                     : failure("no such " + std::string(what) + ": \"" + raw + "\"");
    });
}

} // namespace varnhold
