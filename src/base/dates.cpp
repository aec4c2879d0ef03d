#include "base/dates.h"

#include <cstdint>

namespace varnhold::dates {

namespace {

std::string padded(std::int64_t number, std::size_t width) {
    std::string digits = std::to_string(number);
    return digits.size() < width ? std::string(width - digits.size(), '0') + digits : digits;
}

} // namespace

std::string iso8601(std::chrono::system_clock::time_point moment) {
    using namespace std::chrono;
    const auto day = floor<days>(moment);
    const year_month_day date(day);
    const hh_mm_ss time(floor<seconds>(moment) - day);
    return padded(static_cast<int>(date.year()), 4) + "-" +
           padded(static_cast<unsigned>(date.month()), 2) + "-" +
           padded(static_cast<unsigned>(date.day()), 2) + "T" + padded(time.hours().count(), 2) +
           ":" + padded(time.minutes().count(), 2) + ":" + padded(time.seconds().count(), 2) + "Z";
}

} // namespace varnhold::dates
