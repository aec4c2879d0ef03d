#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"

namespace varnhold::text {
namespace {

using Pieces = std::vector<std::string_view>;

TEST(TextBeginning, IsAllOfAShortTextAndNeverHalfALetterOfALongOne) {
    EXPECT_EQ(beginning("", 0), "");
    EXPECT_EQ(beginning("abc", 3), "abc");
    EXPECT_EQ(beginning("abcd", 3), "abc…");
    EXPECT_EQ(beginning("aüb", 2), "a…");
    EXPECT_EQ(beginning("aüb", 3), "aü…");
    EXPECT_EQ(beginning("\x80\x80\x80", 2), "…");
}

TEST(Split, KeepsEmptyPieces) {
    EXPECT_EQ(split("a=b", '='), (Pieces{"a", "b"}));
    EXPECT_EQ(split("\"PID\" = 4711;", '='), (Pieces{"\"PID\" ", " 4711;"}));
    EXPECT_EQ(split("==", '='), (Pieces{"", "", ""}));
    EXPECT_EQ(split("a\n", '\n'), (Pieces{"a", ""}));
    EXPECT_EQ(split("", '='), (Pieces{""}));
    EXPECT_EQ(split("none", '='), (Pieces{"none"}));
}

TEST(Columns, AreSeparatedByBlanksAndTabsAlone) {
    EXPECT_EQ(columns("447\t0\tcom.x"), (Pieces{"447", "0", "com.x"}));
    EXPECT_EQ(columns("  -   -15 \t com.x  "), (Pieces{"-", "-15", "com.x"}));
    EXPECT_EQ(columns(" \t "), Pieces{});
    EXPECT_EQ(columns(""), Pieces{});
    EXPECT_EQ(columns("a\rb\vc\fd"), (Pieces{"a\rb\vc\fd"}));
    EXPECT_EQ(columns("a\xC2\xA0"
                      "b"),
              (Pieces{"a\xC2\xA0"
                      "b"}));
}

TEST(Trim, TakesOnlyTheGivenCharactersFromTheEnds) {
    EXPECT_EQ(trim("\t \"PID\" = 1; ", " \t"), "\"PID\" = 1;");
    EXPECT_EQ(trim(" ;12; ;", " ;"), "12");
    EXPECT_EQ(trim("\t12", " ;"), "\t12");
    EXPECT_EQ(trim("a b", " "), "a b");
    EXPECT_EQ(trim("\r\nx\n", " \t"), "\r\nx\n");
    EXPECT_EQ(trim("  ", " "), "");
    EXPECT_EQ(trim("", " "), "");
}

TEST(CountOccurrences, CountsFromTheLeftWithoutOverlap) {
    EXPECT_EQ(countOccurrences("", "a"), 0U);
    EXPECT_EQ(countOccurrences("banana", "an"), 2U);
    EXPECT_EQ(countOccurrences("aaaa", "aa"), 2U);
    EXPECT_EQ(countOccurrences("aaa", "aa"), 1U);
    EXPECT_EQ(countOccurrences("abc", "abcd"), 0U);
    EXPECT_EQ(countOccurrences("é é", "é"), 2U);
}

TEST(ParseInteger, TakesAnOptionalSignAndDigits) {
    EXPECT_EQ(parseInteger("0"), 0);
    EXPECT_EQ(parseInteger("4711"), 4711);
    EXPECT_EQ(parseInteger("+5"), 5);
    EXPECT_EQ(parseInteger("-5"), -5);
    EXPECT_EQ(parseInteger("-0"), 0);
    EXPECT_EQ(parseInteger("007"), 7);
    EXPECT_EQ(parseInteger("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(parseInteger("+9223372036854775807"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(parseInteger("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
}

TEST(ParseInteger, RefusesEverythingElse) {
    for (const char* text : {"",
                             "+",
                             "-",
                             "+-5",
                             "-+5",
                             "++5",
                             "--5",
                             " 5",
                             "5 ",
                             "\t12",
                             "5_0",
                             "٣",
                             "0x5",
                             "1e3",
                             "5.0",
                             "5;",
                             "12a",
                             "abc",
                             "９",
                             "9223372036854775808",
                             "-9223372036854775809"}) {
        EXPECT_EQ(parseInteger(text), std::nullopt) << text;
    }
}

TEST(ParseInteger, ReadsNoFurtherThanTheText) {
    EXPECT_EQ(parseInteger(std::string_view("12345").substr(1, 2)), 23);
}

TEST(ParseUnsigned, TakesDigitsAlone) {
    EXPECT_EQ(parseUnsigned("0"), 0U);
    EXPECT_EQ(parseUnsigned("501"), 501U);
    EXPECT_EQ(parseUnsigned("18446744073709551615"), std::numeric_limits<std::uint64_t>::max());
    for (const char* text :
         {"", "+5", "-5", "-0", " 5", "5 ", "0x5", "1e3", "18446744073709551616", "٣"}) {
        EXPECT_EQ(parseUnsigned(text), std::nullopt) << text;
    }
}

} // namespace
} // namespace varnhold::text
