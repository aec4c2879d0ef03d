#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "base/json.h"

namespace varnhold::json {
namespace {

Value value(const char* text) {
    return parse(text).value();
}

TEST(JsonBool, OnlyTrueAndFalseAreTruthValues) {
    EXPECT_TRUE(asBool(value("true")).value());
    EXPECT_FALSE(asBool(value("false")).value());
    for (const char* text : {"0", "1", "\"true\"", "null", "[]", "{}"}) {
        EXPECT_FALSE(asBool(value(text))) << text;
    }
}

TEST(JsonString, OnlyTextIsText) {
    EXPECT_EQ(asString(value("\"5\"")).value(), "5");
    EXPECT_EQ(asString(value("\"\"")).value(), "");
    for (const char* text : {"5", "true", "null", "[\"a\"]", "{}"}) {
        EXPECT_FALSE(asString(value(text))) << text;
    }
}

TEST(JsonInteger, AnyWayOfWritingAWholeNumberCounts) {
    EXPECT_EQ(asInteger(value("8000")).value(), 8000);
    EXPECT_EQ(asInteger(value("8000.0")).value(), 8000);
    EXPECT_EQ(asInteger(value("8e3")).value(), 8000);
    EXPECT_EQ(asInteger(value("-0")).value(), 0);
    EXPECT_EQ(asInteger(value("-0.0")).value(), 0);
    EXPECT_EQ(asInteger(value("1.5e1")).value(), 15);
    EXPECT_EQ(asInteger(value("9223372036854775807")).value(),
              std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(asInteger(value("-9223372036854775808")).value(),
              std::numeric_limits<std::int64_t>::min());
}

TEST(JsonInteger, FractionsOverflowsAndOtherTypesAreRefused) {
    for (const char* text : {"-9223372036854775809", "31999.6", "0.5", "1e30", "-1e30",
                             "9223372036854775808", "9223372036854775808.0", "18446744073709551615",
                             "18446744073709551616", "true", "\"5\"", "null", "[]"}) {
        EXPECT_FALSE(asInteger(value(text))) << text;
    }
}

TEST(JsonDouble, EveryNumberCounts) {
    EXPECT_EQ(asDouble(value("0")).value(), 0);
    EXPECT_EQ(asDouble(value("31999.6")).value(), 31999.6);
    EXPECT_EQ(asDouble(value("1e30")).value(), 1e30);
    EXPECT_EQ(asDouble(value("-3")).value(), -3);
    EXPECT_EQ(asDouble(value("123456789012345678901234567890")).value(), 123456789012345678901e9);
    for (const char* text : {"true", "\"5\"", "null"}) {
        EXPECT_FALSE(asDouble(value(text))) << text;
    }
}

TEST(JsonStrings, OneElementOfAnotherTypeRefusesTheList) {
    EXPECT_EQ(asStrings(value(R"(["b","a",""])")).value(),
              (std::vector<std::string>{"b", "a", ""}));
    EXPECT_TRUE(asStrings(value("[]")).value().empty());
    for (const char* text : {R"(["a",null])", R"(["a",1])", R"(["a",["b"]])", "{}", "\"a\""}) {
        EXPECT_FALSE(asStrings(value(text))) << text;
    }
}

TEST(JsonStringMap, OneValueOfAnotherTypeRefusesTheMap) {
    EXPECT_EQ(asStringMap(value(R"({"claude":"t","gemini":""})")).value(),
              (std::map<std::string, std::string>{{"claude", "t"}, {"gemini", ""}}));
    EXPECT_TRUE(asStringMap(value("{}")).value().empty());
    for (const char* text : {R"({"a":"x","b":1})", R"({"a":"x","b":null})", "[]", "\"a\""}) {
        EXPECT_FALSE(asStringMap(value(text))) << text;
    }
}

struct Pair {
    std::string name;
    std::optional<bool> flag;
    std::optional<std::string> note;
};

Result<Pair> decodePair(const Value& from) {
    ObjectReader in(from);
    Pair pair{in.string("name"), in.optionalBool("flag"), in.optionalString("note")};
    return in.finish(std::move(pair));
}

TEST(JsonObjectReader, ReadsItsFieldsAndIgnoresTheRest) {
    const Pair pair = decodePair(value(R"({"x":[1],"note":"","flag":false,"name":"n"})")).value();
    EXPECT_EQ(pair.name, "n");
    EXPECT_EQ(pair.flag, false);
    EXPECT_EQ(pair.note, "");
}

TEST(JsonObjectReader, AMissingOrNullOptionalFieldIsAbsent) {
    const Pair missing = decodePair(value(R"({"name":"n"})")).value();
    EXPECT_EQ(missing.flag, std::nullopt);
    EXPECT_EQ(missing.note, std::nullopt);
    const Pair null = decodePair(value(R"({"name":"n","flag":null,"note":null})")).value();
    EXPECT_EQ(null.flag, std::nullopt);
    EXPECT_EQ(null.note, std::nullopt);
}

TEST(JsonObjectReader, AMissingOrNullRequiredFieldRefusesTheRecord) {
    EXPECT_EQ(decodePair(value("{}")).error(), "name: missing");
    EXPECT_EQ(decodePair(value(R"({"name":null})")).error(), "name: missing");
}

TEST(JsonObjectReader, AFieldOfAnotherTypeRefusesTheRecordAlsoWhereOptional) {
    EXPECT_FALSE(decodePair(value(R"({"name":5})")));
    EXPECT_FALSE(decodePair(value(R"({"name":"n","flag":1})")));
    EXPECT_FALSE(decodePair(value(R"({"name":"n","note":3})")));
}

TEST(JsonObjectReader, TheFirstFaultIsTheOneToldOf) {
    EXPECT_TRUE(decodePair(value(R"({"flag":1,"name":5})")).error().starts_with("name: "));
    EXPECT_TRUE(
        decodePair(value(R"({"name":"n","flag":1,"note":3})")).error().starts_with("flag: "));
}

TEST(JsonObjectReader, AnythingButAnObjectIsRefused) {
    for (const char* text : {"[]", "\"name\"", "null", "1"}) {
        EXPECT_FALSE(decodePair(value(text))) << text;
    }
}

TEST(JsonDecodeArray, KeepsTheOrder) {
    const auto pairs = decodeArray(value(R"([{"name":"b"},{"name":"a"}])"), decodePair).value();
    ASSERT_EQ(pairs.size(), 2U);
    EXPECT_EQ(pairs[0].name, "b");
    EXPECT_EQ(pairs[1].name, "a");
}

TEST(JsonDecodeArray, OneBadElementRefusesAllAndTheReasonNamesThePlace) {
    const auto pairs = decodeArray(value(R"([{"name":"a"},{"name":"b"},{}])"), decodePair);
    ASSERT_FALSE(pairs);
    EXPECT_EQ(pairs.error(), "[2].name: missing");
    EXPECT_FALSE(decodeArray(value(R"([{"name":"a"},null])"), decodePair));
    EXPECT_FALSE(decodeArray(value(R"({"name":"a"})"), decodePair));
}

} // namespace
} // namespace varnhold::json
