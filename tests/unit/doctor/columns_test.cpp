#include "doctor/columns.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace varnhold::doctor {
namespace {

using ::testing::ElementsAre;

TEST(Columns, CountWhatATerminalShows) {
    EXPECT_EQ(columnsOf("plain"), 5U);
    EXPECT_EQ(columnsOf("é"), 1U);
    EXPECT_EQ(columnsOf("e\u0301"), 1U);
    EXPECT_EQ(columnsOf("🧭"), 2U);
    EXPECT_EQ(columnsOf("👨‍👩‍👧"), 2U);
    EXPECT_EQ(columnsOf("⚖️"), 2U);
    EXPECT_EQ(columnsOf("漢字"), 4U);
    EXPECT_EQ(columnsOf(""), 0U);
}

TEST(Columns, AreFilledUpOrCutToAnExactNumber) {
    EXPECT_EQ(fitted("abc", 5), "abc  ");
    EXPECT_EQ(fitted("abc", 3), "abc");
    EXPECT_EQ(fitted("abcd", 3), "ab…");
    EXPECT_EQ(fitted("漢字漢", 4), "漢… ");
    EXPECT_EQ(fitted("abc", 0), "");
}

TEST(Columns, BreakTextsAtBlanks) {
    EXPECT_THAT(wrapped("one two three", 7), ElementsAre("one two", "three"));
    EXPECT_THAT(wrapped("a verylongword b", 4), ElementsAre("a", "verylongword", "b"));
    EXPECT_THAT(wrapped("", 4), ElementsAre(""));
}

TEST(Columns, OfHostileTextsDoNothingToTheTerminal) {
    EXPECT_EQ(printable("a\x1b[2Jb"), "a␦[2Jb");
    EXPECT_EQ(printable("a\u009bb\u202eb\nc\r"), "a␦b␦b␦c␦");
    EXPECT_EQ(printable("tab\there"), "tab here");
    EXPECT_EQ(printable("bad\xff"), "bad\ufffd");
    EXPECT_EQ(printable("👨‍👩‍👧"), "👨‍👩‍👧");
}

} // namespace
} // namespace varnhold::doctor
