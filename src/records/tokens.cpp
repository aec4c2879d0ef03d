#include "records/tokens.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <system_error>

namespace varnhold {

namespace {

constexpr std::int64_t thousand = 1000;
constexpr std::int64_t million = 1000000;

// Correctly rounded and the same under every locale, which printf isn't.
std::string inMillions(double value, int decimals) {
    char buffer[64];
    const auto [end, error] =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, decimals);
    return error == std::errc{} ? std::string(buffer, end) + "M" : std::string();
}

std::string belowMillion(std::int64_t tokens) {
    return tokens >= thousand ? std::to_string(tokens / thousand) + "K" : std::to_string(tokens);
}

std::int64_t clamped(double whole) {
    if (std::isnan(whole)) {
        return 0;
    }
    // 2^63 is exact as a double and the first value that doesn't fit.
    if (whole >= 0x1p63) {
        return INT64_MAX;
    }
    return whole < -0x1p63 ? INT64_MIN : static_cast<std::int64_t>(whole);
}

} // namespace

std::string formatTokens(std::int64_t tokens) {
    if (tokens <= 0) {
        return "Auto";
    }
    if (tokens >= million) {
        const double value = static_cast<double>(tokens) / static_cast<double>(million);
        return inMillions(value, value == std::round(value) ? 0 : 1);
    }
    return belowMillion(tokens);
}

std::string formatTokenCount(std::int64_t tokens) {
    if (tokens >= million) {
        return inMillions(static_cast<double>(tokens) / static_cast<double>(million), 1);
    }
    return belowMillion(tokens);
}

std::int64_t roundedTokens(double tokens) {
    return clamped(std::round(tokens));
}

std::int64_t truncatedTokens(double tokens) {
    return clamped(std::trunc(tokens));
}

bool canStepLeft(Ladder ladder, std::int64_t tokens) {
    return ladder.front() < tokens;
}

bool canStepRight(Ladder ladder, std::int64_t tokens) {
    return tokens < ladder.back();
}

int stepLeft(Ladder ladder, std::int64_t tokens) {
    const auto notBelow = std::lower_bound(ladder.begin(), ladder.end(), tokens);
    return notBelow == ladder.begin() ? ladder.front() : *std::prev(notBelow);
}

int stepRight(Ladder ladder, std::int64_t tokens) {
    const auto above = std::upper_bound(ladder.begin(), ladder.end(), tokens);
    return above == ladder.end() ? ladder.back() : *above;
}

} // namespace varnhold
