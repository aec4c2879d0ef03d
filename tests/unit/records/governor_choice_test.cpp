#include "records/governor_choice.h"

#include <gmock/gmock.h>
#include <string>

namespace varnhold {
namespace {

constexpr const char* fresh = R"({
  "governor": {
    "provider": "p",
    "model": "m",
    "set_at": "t"
  }
})";

std::string withChoice(const Result<std::string>& content) {
    return withGovernorChoice(content, "p", "m", "t");
}

TEST(GovernorChoice, TakesProviderAndModelEachOnItsOwn) {
    EXPECT_EQ(decodeGovernorChoice(R"({"governor":{"provider":"p","model":"m"}})"),
              (GovernorChoice{.provider = "p", .model = "m"}));
    EXPECT_EQ(decodeGovernorChoice(R"({"governor":{"model":"m"}})"),
              (GovernorChoice{.model = "m"}));
    EXPECT_EQ(decodeGovernorChoice(R"({"governor":{"provider":"p","model":7}})"),
              (GovernorChoice{.provider = "p"}));
    EXPECT_EQ(decodeGovernorChoice(R"({"governor":{"provider":null}})"), GovernorChoice{});
    EXPECT_EQ(decodeGovernorChoice("{}"), GovernorChoice{});
}

TEST(GovernorChoice, IsNoneWhereTheDocumentOrGovernorIsNoObject) {
    for (const char* text : {"[]", "\"governor\"", "null", R"({"governor":"cerebras"})",
                             R"({"governor":null})", R"({"governor":[]})", "{", ""}) {
        EXPECT_FALSE(decodeGovernorChoice(text)) << text;
    }
}

TEST(GovernorChoice, IsRefusedWithWhatStandsInItsPlace) {
    EXPECT_EQ(decodeGovernorChoice("[]").error(), "expected an object, found array");
    EXPECT_EQ(decodeGovernorChoice(R"({"governor":[]})").error(),
              "governor: expected an object, found array");
}

TEST(WithGovernorChoice, StartsAFileThatIsMissingOrBroken) {
    EXPECT_EQ(withChoice(failure("missing")), fresh);
    EXPECT_EQ(withChoice(std::string("{\"worker\":")), fresh);
    EXPECT_EQ(withChoice(std::string("[1]")), fresh);
    EXPECT_EQ(withChoice(std::string()), fresh);
}

TEST(WithGovernorChoice, KeepsEveryOtherKeyAsItStands) {
    const std::string content =
        R"({"worker":{"provider":"x"},"n":1.0,"big":9007199254740993,"list":[null,true],)"
        R"("governor":{"provider":"old","mood":"good"},"é":"\u0001/"})";
    EXPECT_EQ(withChoice(content), R"({
  "worker": {
    "provider": "x"
  },
  "n": 1.0,
  "big": 9007199254740993,
  "list": [
    null,
    true
  ],
  "governor": {
    "provider": "p",
    "model": "m",
    "set_at": "t"
  },
  "é": "\u0001/"
})");
}

TEST(WithGovernorChoice, LeavesNumbersAndEscapesOfOthersAsTheyAreWritten) {
    const std::string content =
        "\xEF\xBB\xBF { \"a\" : 123456789012345678901 ,\r\n"
        R"("b":[1.0,-0,1e5,2E+06,0.10,{"c" : 1e-7}],"d\/":"\u00e9\/\"}{,:",)"
        R"("e":[ ],"f":{ } ,"a":0} )";
    EXPECT_EQ(withChoice(content), R"({
  "a": 123456789012345678901,
  "b": [
    1.0,
    -0,
    1e5,
    2E+06,
    0.10,
    {
      "c": 1e-7
    }
  ],
  "d\/": "\u00e9\/\"}{,:",
  "e": [],
  "f": {},
  "a": 0,
  "governor": {
    "provider": "p",
    "model": "m",
    "set_at": "t"
  }
})");
}

TEST(WithGovernorChoice, IsTheOnlyOneWhereverAndHoweverItStood) {
    EXPECT_EQ(withChoice(std::string(R"({"gov\u0065rnor":1,"x":2,"governor":3})")), R"({
  "gov\u0065rnor": {
    "provider": "p",
    "model": "m",
    "set_at": "t"
  },
  "x": 2
})");
}

TEST(WithGovernorChoice, ComesOutTheSameTheNextTime) {
    const std::string once = withChoice(std::string(R"({"a":[{"b":{}},[[]]],"c":"\\"})"));
    EXPECT_EQ(withChoice(once), once);
}

TEST(WithGovernorChoice, ReplacesTheOldChoiceAsAWhole) {
    EXPECT_EQ(withChoice(std::string(R"({"governor":{"mood":"good"}})")), fresh);
    EXPECT_EQ(withChoice(std::string(R"({"governor":"text"})")), fresh);
}

} // namespace
} // namespace varnhold
