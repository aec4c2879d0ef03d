#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "base/json.h"

namespace varnhold::json {
namespace {

using namespace std::string_literals;

void expectRefused(const std::vector<std::string>& texts) {
    for (const std::string& text : texts) {
        EXPECT_FALSE(parse(text)) << "accepted: " << text;
    }
}

std::string nested(int levels, const std::string& open, const std::string& close) {
    std::string text;
    for (int i = 0; i < levels; ++i) {
        text += open;
    }
    text += "0";
    for (int i = 0; i < levels; ++i) {
        text += close;
    }
    return text;
}

TEST(JsonParse, EmptyAndBlankTextAreRefused) {
    expectRefused({"", " ", "\n\t\r ", "\xEF\xBB\xBF"});
}

TEST(JsonParse, ATextAfterTheDocumentIsRefused) {
    expectRefused({"[] x", "[][]", "\"text\",\"x\"", "1 2", "{}}", "[] // note", "[]\n]"});
}

TEST(JsonParse, ANulByteIsRefusedWhereverItStands) {
    expectRefused({"\0[]"s, "[]\0"s, "[]\0garbage"s, "[1\0]"s, "[\"a\0b\"]"s, "{\"a\0b\":1}"s});
}

TEST(JsonParse, CommentsAndSingleQuotesAreRefused) {
    expectRefused({"// a\n[]", "/* a */[]", "['a']", "{a:1}", "{'a':1}"});
}

TEST(JsonParse, CommasWithoutAValueAreRefused) {
    expectRefused({"[1,]", "{\"a\":1,}", "[,]", "{,}", "[1,,2]", "[,1]"});
}

TEST(JsonParse, MalformedNumbersAreRefused) {
    expectRefused({"[01]", "[.5]", "[1.]", "[1.e3]", "[+1]", "[-]", "[1e]", "[0x10]", "[NaN]",
                   "[Infinity]", "[-Infinity]", "[--1]"});
}

TEST(JsonParse, ANumberBeyondEveryDoubleIsRefused) {
    expectRefused({"[1e400]", "[-1e400]"});
}

TEST(JsonParse, RawControlCharactersInsideTextAreRefused) {
    for (int c = 1; c < 0x20; ++c) {
        const std::string text = std::string("[\"") + static_cast<char>(c) + "\"]";
        EXPECT_FALSE(parse(text)) << "control character " << c;
    }
    EXPECT_TRUE(parse("[\"\x7F\"]"));
}

TEST(JsonParse, UnknownAndUnfinishedEscapesAreRefused) {
    expectRefused({R"(["\q"])", R"(["\'"])", R"(["\u12"])", R"(["\u12g4"])", R"(["\)"});
}

TEST(JsonParse, HalfASurrogatePairIsRefused) {
    expectRefused({R"(["\ud83d"])", R"(["\ude00"])", R"(["\ud83dx"])", R"(["\ud83d\ud83d"])",
                   R"({"\ude00":1})"});
    EXPECT_EQ(parse(R"(["\ud83d\ude00"])").value()[0], "😀");
}

TEST(JsonParse, MalformedUtf8IsRefusedInValuesAndKeys) {
    for (const char* bytes :
         {"\xC3", "\xA9", "\xC0\xAF", "\xED\xA0\x80", "\xF5\x80\x80\x80", "\xE2\x82", "\xFF"}) {
        EXPECT_FALSE(parse("[\""s + bytes + "\"]"));
        EXPECT_FALSE(parse("{\""s + bytes + "\":1}"));
    }
}

TEST(JsonParse, ABrokenValueUnderAnIgnoredKeyStillRefusesTheDocument) {
    expectRefused({R"({"ignored":012})", R"({"ignored":"\q"})"});
}

TEST(JsonParse, OneByteOrderMarkIsSkipped) {
    EXPECT_EQ(parse("\xEF\xBB\xBF[1]").value(), Value::parse("[1]"));
    EXPECT_FALSE(parse("\xEF\xBB\xBF\xEF\xBB\xBF[1]"));
    EXPECT_FALSE(parse("[1]\xEF\xBB\xBF"));
}

TEST(JsonParse, BlanksAroundTheDocumentAreFine) {
    EXPECT_TRUE(parse(" \t\r\n[ ]\t\r\n "));
    EXPECT_FALSE(parse("\f[]"));
    EXPECT_FALSE(parse("[]\v"));
}

TEST(JsonParse, ATopLevelScalarIsADocument) {
    EXPECT_EQ(parse("\"text\"").value(), "text");
    EXPECT_TRUE(parse("null").value().is_null());
    EXPECT_EQ(parse("12").value(), 12);
    EXPECT_EQ(parse("true").value(), true);
}

TEST(JsonParse, AnEscapedNulStaysInTheText) {
    EXPECT_EQ(parse(R"(["a\u0000b"])").value()[0].get<std::string>(), "a\0b"s);
}

TEST(JsonParse, OfTwoEqualKeysTheLastCounts) {
    EXPECT_EQ(parse(R"({"a":1,"b":0,"a":2})").value().at("a"), 2);
}

TEST(JsonParse, KeysKeepTheOrderInWhichTheyWereFound) {
    EXPECT_EQ(compact(parse(R"({"z":1,"a":2,"m":3})").value()), R"({"z":1,"a":2,"m":3})");
}

// Were each key looked for among all that went before, this would take minutes.
TEST(JsonParse, AnObjectOfVeryManyKeysComesWholeAndKeepsItsOrder) {
    constexpr int keys = 300000;
    std::string text = "{";
    for (int i = 0; i < keys; ++i) {
        text += "\"" + std::to_string(keys - i) + "\":" + std::to_string(i) + ",";
    }
    const auto value = parse(text + "\"7\":{\"a\":[1]}}");
    ASSERT_TRUE(value);
    EXPECT_EQ(value->size(), static_cast<std::size_t>(keys));
    EXPECT_EQ(value->front(), 0);
    EXPECT_EQ(value->back(), keys - 1);
    EXPECT_EQ(value->find("7")->dump(), R"({"a":[1]})");
}

TEST(JsonParse, EqualKeysOfInnerObjectsAreTheirOwn) {
    EXPECT_EQ(parse(R"({"a":{"a":1,"b":2,"a":3},"b":[{"a":4}],"a":{"c":5}})")->dump(),
              R"({"a":{"c":5},"b":[{"a":4}]})");
}

TEST(JsonParse, NestingEndsAt512Levels) {
    EXPECT_EQ(maximumDepth, 512);
    EXPECT_TRUE(parse(nested(512, "[", "]")));
    EXPECT_FALSE(parse(nested(513, "[", "]")));
    EXPECT_TRUE(parse(nested(512, "{\"a\":", "}")));
    EXPECT_FALSE(parse(nested(513, "{\"a\":", "}")));
    EXPECT_TRUE(parse(nested(256, "[{\"a\":", "}]")));
    EXPECT_FALSE(parse(nested(256, "[{\"a\":[", "]}]")));
}

TEST(JsonParse, AVeryDeepDocumentIsRefusedWithoutHarm) {
    EXPECT_FALSE(parse(std::string(1000000, '[')));
}

TEST(JsonParse, ManyShallowValuesAreNotMistakenForDepth) {
    std::string text = "[";
    for (int i = 0; i < 2000; ++i) {
        text += i == 0 ? "[{}]" : ",[{}]";
    }
    EXPECT_TRUE(parse(text + "]"));
}

TEST(JsonParse, TheReasonIsGivenInWords) {
    EXPECT_FALSE(parse("[1,").error().empty());
    EXPECT_NE(parse(nested(513, "[", "]")).error().find("512"), std::string::npos);
}

TEST(JsonParseFile, AMissingFileIsAFailureWithItsName) {
    const auto parsed = parseFile("/nonexistent/varnhold.json");
    ASSERT_FALSE(parsed);
    EXPECT_NE(parsed.error().find("/nonexistent/varnhold.json"), std::string::npos);
}

} // namespace
} // namespace varnhold::json
