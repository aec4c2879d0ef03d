#pragma once

#include <string>
#include <tl/expected.hpp>
#include <utility>

// What a function that can fail gives back: its value, or the reason in words.
//
// The reason is for our own tools and tests. The supervisor itself stays silent about failures and
// goes on with an empty value, so a caller that drops a reason does it on purpose.
namespace varnhold {

template <class T>
using Result = tl::expected<T, std::string>;

[[nodiscard]] inline tl::unexpected<std::string> failure(std::string reason) {
    return tl::unexpected<std::string>(std::move(reason));
}

// For callers that go on with an empty value, as most of the program does after a failure.
template <class T>
[[nodiscard]] T valueOrEmpty(Result<T> result) {
    return result ? *std::move(result) : T{};
}

} // namespace varnhold
