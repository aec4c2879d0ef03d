#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "base/unicode.h"

namespace varnhold::unicode {
namespace {

using namespace std::string_literals;

const std::string malformed[] = {
    "\xC3",             // cut at its end
    "abc\xE2\x82",      // the same, after good text
    "\xF0\x9F\x98",     // the same, of four bytes
    "\xA9",             // begins in the middle
    "\xA9 tail",        // the same, before good text
    "\xC0\xAF",         // two bytes for one
    "\xC1\xBF",         // the same
    "\xE0\x80\xAF",     // three bytes for one
    "\xF0\x82\x82\xAC", // four bytes for three
    "\xED\xA0\x80",     // half a surrogate pair
    "\xED\xBF\xBF",     // the other half
    "\xF4\x90\x80\x80", // beyond the last code point
    "\xF5\x80\x80\x80", // the same
    "\xFF",
    "a\xFE\x62", // a "b" would pass for a digit
};

TEST(ValidUtf8, MalformedSequencesAreFoundWhereverTheyStand) {
    for (const std::string& text : malformed) {
        EXPECT_FALSE(isValidUtf8(text)) << ::testing::PrintToString(text);
    }
}

TEST(ValidUtf8, EveryWellFormedTextPasses) {
    for (const std::string& text :
         {""s, "plain"s, "é"s, "€"s, "😀"s, "\0"s, "a\0b"s, "\x7F"s, "\xEF\xBB\xBFmarked"s,
          "\xEF\xBF\xBE"s, "\xF4\x8F\xBF\xBF"s, "\xED\x9F\xBF"s, "\xEE\x80\x80"s}) {
        EXPECT_TRUE(isValidUtf8(text)) << ::testing::PrintToString(text);
    }
}

TEST(Repaired, GoodTextStaysAndBadBytesBecomeAMark) {
    EXPECT_EQ(repaired("grün 😀"), "grün 😀");
    EXPECT_EQ(repaired("a\xFF"
                       "b"),
              "a\xEF\xBF\xBD"
              "b");
    EXPECT_EQ(repaired("\xC3"), "\xEF\xBF\xBD");
    for (const std::string& text : malformed) {
        EXPECT_TRUE(isValidUtf8(repaired(text))) << ::testing::PrintToString(text);
    }
}

TEST(ToUpper, IsTheFullMappingWithoutALanguage) {
    EXPECT_EQ(toUpper("x-y"), "X-Y");
    EXPECT_EQ(toUpper("claude"), "CLAUDE");
    EXPECT_EQ(toUpper("straße"), "STRASSE");
    EXPECT_EQ(toUpper("ẞ"), "ẞ");
    EXPECT_EQ(toUpper("ﬁ"), "FI");
    EXPECT_EQ(toUpper("\u0149"), "\u02BCN");
    EXPECT_EQ(toUpper("\u0390"), "\u0399\u0308\u0301");
    EXPECT_EQ(toUpper("\u1FB3"), "ΑΙ");
    EXPECT_EQ(toUpper("ǆ"), "Ǆ");
    EXPECT_EQ(toUpper("ǅ"), "Ǆ");
    EXPECT_EQ(toUpper("ı"), "I");
    EXPECT_EQ(toUpper("i"), "I");
    EXPECT_EQ(toUpper("ÿ"), "Ÿ");
    EXPECT_EQ(toUpper("ς"), "Σ");
    EXPECT_EQ(toUpper("日本 12 😀"), "日本 12 😀");
    EXPECT_EQ(toUpper(""), "");
}

TEST(ToLower, IsTheFullMappingWithoutALanguage) {
    EXPECT_EQ(toLower("README.MD"), "readme.md");
    EXPECT_EQ(toLower("\u0130"), "i\u0307");
    EXPECT_EQ(toLower("I"), "i");
    EXPECT_EQ(toLower("ΟΔΟΣ"), "οδοσ");
    EXPECT_EQ(toLower("ẞ"), "ß");
    EXPECT_EQ(toLower("Ǆǅ"), "ǆǆ");
    EXPECT_EQ(toLower("ÀÉ"), "àé");
}

TEST(CaseMapping, TextThatIsNotUtf8ComesBackAsItIs) {
    EXPECT_EQ(toUpper("a\xFF"), "a\xFF");
    EXPECT_EQ(toLower("A\xFF"), "A\xFF");
    EXPECT_EQ(capitalized("a\xFF"), "a\xFF");
}

TEST(Capitalized, FollowsTheTableOfProviderNames) {
    EXPECT_EQ(capitalized("mlx-local"), "Mlx-Local");
    EXPECT_EQ(capitalized("open_router"), "Open_Router");
    EXPECT_EQ(capitalized("gpt4o"), "Gpt4O");
    EXPECT_EQ(capitalized("49ERS"), "49Ers");
    EXPECT_EQ(capitalized("x.ai"), "X.Ai");
    EXPECT_EQ(capitalized("don't"), "Don't");
    EXPECT_EQ(capitalized("OPENAI"), "Openai");
    EXPECT_EQ(capitalized("x"), "X");
    EXPECT_EQ(capitalized(""), "");
}

TEST(Capitalized, SignsAndDigitsBeginANewWord) {
    EXPECT_EQ(capitalized("a:b/c d\te"), "A:B/C D\tE");
    EXPECT_EQ(capitalized("claude anthropic"), "Claude Anthropic");
}

TEST(Capitalized, ApostrophesAccentsAndInvisibleSignsDoNot) {
    EXPECT_EQ(capitalized("don’t"), "Don’t");
    EXPECT_EQ(capitalized("a^b`c"), "A^b`c");
    EXPECT_EQ(capitalized("e\u0301a"), "E\u0301a");
    EXPECT_EQ(capitalized("a\u00ADb"), "A\u00ADb");
    EXPECT_EQ(capitalized("'tis"), "'Tis");
}

TEST(Capitalized, LettersThatBecomeSeveralKeepOnlyTheFirstOneBig) {
    EXPECT_EQ(capitalized("ßa"), "Ssa");
    EXPECT_EQ(capitalized("ﬁx"), "Fix");
}

TEST(FirstCharacters, AreWhatAPersonSeesAsOne) {
    for (const std::string character :
         {"a", "\u00E9", "e\u0301", "\r\n", "🇩🇪", "👍🏽", "👩\u200D💻", "⚖️"}) {
        EXPECT_EQ(firstCharacters(character, 1), character);
        EXPECT_EQ(firstCharacters(character + "🇫🇷", 1), character);
    }
    EXPECT_EQ(firstCharacters("\n\r", 1), "\n");
    EXPECT_EQ(firstCharacters("👩💻", 1), "👩");
}

TEST(FirstCharacters, CutBetweenCharactersNeverInsideOne) {
    EXPECT_EQ(firstCharacters("claude-code", 6), "claude");
    EXPECT_EQ(firstCharacters("abc", 3), "abc");
    EXPECT_EQ(firstCharacters("abc", 10), "abc");
    EXPECT_EQ(firstCharacters("abc", 0), "");
    EXPECT_EQ(firstCharacters("", 3), "");
    EXPECT_EQ(firstCharacters("e\u0301e\u0301", 1), "e\u0301");
    EXPECT_EQ(firstCharacters("a👍🏽b", 2), "a👍🏽");
    EXPECT_EQ(firstCharacters("🇩🇪🇫🇷", 1), "🇩🇪");
    EXPECT_EQ(firstCharacters("\r\nx", 1), "\r\n");
}

TEST(Precedes, OrdersByCodePointNotByLanguage) {
    EXPECT_TRUE(precedes("B", "a"));
    EXPECT_TRUE(precedes("a", "b"));
    EXPECT_FALSE(precedes("b", "a"));
    EXPECT_FALSE(precedes("a", "a"));
    EXPECT_TRUE(precedes("a", "aa"));
    EXPECT_TRUE(precedes("z", "\u00E9"));
    EXPECT_TRUE(precedes("\uFF5E", "😀"));
}

TEST(Precedes, TwoSpellingsOfOneTextAreEqual) {
    EXPECT_FALSE(precedes("\u00E9", "e\u0301"));
    EXPECT_FALSE(precedes("e\u0301", "\u00E9"));
    EXPECT_TRUE(precedes("f", "e\u0301"));
}

} // namespace
} // namespace varnhold::unicode
