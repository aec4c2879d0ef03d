#include "base/dates.h"

#include <chrono>
#include <gmock/gmock.h>

namespace varnhold {
namespace {

using namespace std::chrono;

system_clock::time_point at(sys_days day, system_clock::duration time) {
    return day + time;
}

TEST(Iso8601, GivesDateAndTimeInUtc) {
    EXPECT_EQ(dates::iso8601(at(2026y / March / 4, 5h + 6min + 7s)), "2026-03-04T05:06:07Z");
}

TEST(Iso8601, CutsTheFractionOffInsteadOfRounding) {
    EXPECT_EQ(dates::iso8601(at(2025y / December / 31, 23h + 59min + 59s + 999ms)),
              "2025-12-31T23:59:59Z");
}

TEST(Iso8601, KnowsLeapDays) {
    EXPECT_EQ(dates::iso8601(at(2028y / February / 29, 0h)), "2028-02-29T00:00:00Z");
}

TEST(Iso8601, StaysRightBeforeTheEpoch) {
    EXPECT_EQ(dates::iso8601(at(1969y / December / 31, 23h + 59min + 59s + 500ms)),
              "1969-12-31T23:59:59Z");
}

} // namespace
} // namespace varnhold
