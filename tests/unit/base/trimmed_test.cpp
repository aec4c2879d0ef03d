#include "base/unicode.h"

#include <gmock/gmock.h>

namespace varnhold {
namespace {

TEST(Trimmed, TakesBlanksAndLineBreaksOffBothEnds) {
    EXPECT_EQ(unicode::trimmed(" \t\r\n a b \n\v\f "), "a b");
}

TEST(Trimmed, TakesWhatUnicodeCountsAsBlankOrLineBreak) {
    EXPECT_EQ(unicode::trimmed("\u00A0\u1680\u2000\u200B\u202F\u205F\u3000\u0085\u2028x\u2029"),
              "x");
}

TEST(Trimmed, LeavesNothingOfNothingButBlanks) {
    EXPECT_EQ(unicode::trimmed(""), "");
    EXPECT_EQ(unicode::trimmed(" \n\u3000"), "");
}

TEST(Trimmed, KeepsJoinersAndByteOrderMarksAndMalformedBytes) {
    EXPECT_EQ(unicode::trimmed(" \u200Dx\uFEFF "), "\u200Dx\uFEFF");
    EXPECT_EQ(unicode::trimmed(" \xFF "), "\xFF");
}

TEST(TrimmedOfBlanks, LeavesLineBreaksStanding) {
    EXPECT_EQ(unicode::trimmedOfBlanks(" \t\u00A0\u200B\nx\r \u3000"), "\nx\r");
    EXPECT_EQ(unicode::trimmedOfBlanks("\n"), "\n");
    EXPECT_EQ(unicode::trimmedOfBlanks(" \t"), "");
}

} // namespace
} // namespace varnhold
