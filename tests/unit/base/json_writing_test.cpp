#include <gtest/gtest.h>

#include <string>

#include "base/json.h"

namespace varnhold::json {
namespace {

TEST(JsonCompact, IsOneLineWithoutBlanksOrAFinalLineBreak) {
    Value record = Value::object();
    record["list"] = {1, 2};
    record["empty"] = Value::array();
    record["object"] = Value::object();
    EXPECT_EQ(compact(record), R"({"list":[1,2],"empty":[],"object":{}})");
}

TEST(JsonCompact, WritesKeysInTheOrderInWhichTheyWereSet) {
    Value record = Value::object();
    record["z"] = true;
    record["a"] = "x";
    EXPECT_EQ(compact(record), R"({"z":true,"a":"x"})");
}

TEST(JsonCompact, ATextAloneIsJustItsQuotedSelf) {
    EXPECT_EQ(compact(Value("text")), "\"text\"");
}

TEST(JsonCompact, EscapesWhatMustBeEscapedAndNothingElse) {
    EXPECT_EQ(compact(parse(R"({"a":"\/ \u0001\u001f é"})").value()),
              R"({"a":"/ \u0001\u001f é"})");
    EXPECT_EQ(compact(Value("\"\\\b\f\n\r\t")), R"("\"\\\b\f\n\r\t")");
    const std::string raw = "\x7F\xE2\x80\xA8\xE2\x80\xA9😀";
    EXPECT_EQ(compact(Value(raw)), "\"" + raw + "\"");
}

TEST(JsonCompact, TextThatIsNotUtf8IsWrittenWithAMarkInItsPlace) {
    EXPECT_EQ(compact(Value("a\xFF"
                            "b")),
              "\"a\xEF\xBF\xBD"
              "b\"");
}

TEST(JsonNumber, WholeValuesAreWrittenAsIntegers) {
    EXPECT_EQ(compact(number(0)), "0");
    EXPECT_EQ(compact(number(8000)), "8000");
    EXPECT_EQ(compact(number(2000000)), "2000000");
    EXPECT_EQ(compact(number(1e15)), "1000000000000000");
    EXPECT_EQ(compact(number(9007199254740992.0)), "9007199254740992");
    EXPECT_EQ(compact(number(-45)), "-45");
}

TEST(JsonNumber, FractionsAreWrittenInTheShortestFormThatReadsBackTheSame) {
    EXPECT_EQ(compact(number(31999.6)), "31999.6");
    EXPECT_EQ(compact(number(0.1)), "0.1");
    EXPECT_EQ(compact(number(-0.5)), "-0.5");
    EXPECT_EQ(parse(compact(number(1.0 / 3))).value().get<double>(), 1.0 / 3);
}

TEST(JsonNumber, HugeValuesSurviveARoundTrip) {
    EXPECT_EQ(asDouble(parse(compact(number(1e300))).value()).value(), 1e300);
}

} // namespace
} // namespace varnhold::json
