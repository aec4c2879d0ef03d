#include "base/json_text.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace varnhold::json {
namespace {

using Members = std::vector<std::pair<std::string, std::string>>;

Members membersOf(const std::string& text) {
    Members members;
    for (const TextMember& each : textMembers(text)) {
        members.emplace_back(each.key, each.value);
    }
    return members;
}

TEST(JsonText, MembersAreAsTheyStandInTheText) {
    EXPECT_EQ(membersOf(R"({"a":12,"b":-0.50e+10,"c":true,"d":null,"e":"x"})"),
              (Members{{"\"a\"", "12"},
                       {"\"b\"", "-0.50e+10"},
                       {"\"c\"", "true"},
                       {"\"d\"", "null"},
                       {"\"e\"", "\"x\""}}));
}

TEST(JsonText, BlanksAroundMembersAreLeftOut) {
    EXPECT_EQ(membersOf(" \t{ \"a\" :\r\n 1 ,\n\"b\"\t:\t[ 1 , 2 ]\n} \n"),
              (Members{{"\"a\"", "1"}, {"\"b\"", "[ 1 , 2 ]"}}));
}

TEST(JsonText, AMemberEndsWithItsOwnBracket) {
    EXPECT_EQ(membersOf(R"({"a":{"b":[{},[]],"c":{"d":3}},"e":[[4],5]})"),
              (Members{{"\"a\"", R"({"b":[{},[]],"c":{"d":3}})"}, {"\"e\"", "[[4],5]"}}));
}

TEST(JsonText, SignsAndEscapedMarksInTextsEndNothing) {
    EXPECT_EQ(membersOf(R"({"a\"}":"{[,:","b\\":"\\\"","c":1})"),
              (Members{{R"("a\"}")", R"("{[,:")"}, {R"("b\\")", R"("\\\"")"}, {"\"c\"", "1"}}));
}

TEST(JsonText, AMarkOfTheEncodingMayStandBeforeTheObject) {
    EXPECT_EQ(membersOf("\xEF\xBB\xBF{\"a\":1}"), (Members{{"\"a\"", "1"}}));
}

TEST(JsonText, AnEmptyObjectHasNoMembers) {
    EXPECT_EQ(membersOf("{}"), Members{});
    EXPECT_EQ(membersOf(" { } "), Members{});
}

TEST(JsonText, AValueIsSpreadOverLinesByLevels) {
    EXPECT_EQ(spread(R"({"a":1,"b":[2,{"c":"x y"}]})", 0), "{\n"
                                                           "  \"a\": 1,\n"
                                                           "  \"b\": [\n"
                                                           "    2,\n"
                                                           "    {\n"
                                                           "      \"c\": \"x y\"\n"
                                                           "    }\n"
                                                           "  ]\n"
                                                           "}");
}

TEST(JsonText, AValueBeginsWhereItsLineStands) {
    EXPECT_EQ(spread("[1,2]", 2), "[\n"
                                  "      1,\n"
                                  "      2\n"
                                  "    ]");
}

TEST(JsonText, WhatIsSpreadAlreadyComesOutTheSame) {
    const std::string text = spread(R"([[1,[2]],{"a":{"b":3}}])", 0);
    EXPECT_EQ(spread(text, 0), text);
}

TEST(JsonText, EmptyBracketsStayTogether) {
    EXPECT_EQ(spread("[ ]", 1), "[]");
    EXPECT_EQ(spread("{\n}", 1), "{}");
    EXPECT_EQ(spread("[{},[ ]]", 0), "[\n  {},\n  []\n]");
}

TEST(JsonText, NumbersAndTextsKeepEverySign) {
    for (const char* value : {"123456789012345678901234567890", "1.50", "-0", "1E400",
                              R"("\u00e9\/ {}[],: \"")", "true", "null"}) {
        EXPECT_EQ(spread(value, 3), value);
    }
}

} // namespace
} // namespace varnhold::json
