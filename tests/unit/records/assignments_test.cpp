#include "records/assignments.h"

#include <gmock/gmock.h>

namespace varnhold {
namespace {

TEST(Assignments, AreAnObjectOfLists) {
    const ChainBotAssignments assignments{{"architect", {"b", "a"}}, {"worker", {}}};
    EXPECT_EQ(encodeAssignments(assignments), R"({"architect":["b","a"],"worker":[]})");
    EXPECT_EQ(decodeAssignments(R"({"worker":[],"architect":["b","a"]})"), assignments);
}

TEST(Assignments, AreAnEmptyObjectWithoutAny) {
    EXPECT_EQ(encodeAssignments({}), "{}");
    EXPECT_EQ(decodeAssignments("{}"), ChainBotAssignments{});
}

TEST(Assignments, KeepChainsAndLabelsThatNobodyKnows) {
    EXPECT_EQ(decodeAssignments(R"({"poetry":["nobody"],"":[""]})"),
              (ChainBotAssignments{{"poetry", {"nobody"}}, {"", {""}}}));
}

TEST(Assignments, AreRefusedForOneBadEntry) {
    for (const char* text : {R"([])", R"({"a":null})", R"({"a":"b"})", R"({"a":[1]})",
                             R"({"a":[null]})", R"({"a":["x"],"b":{}})", "null", "\"a\""}) {
        EXPECT_FALSE(decodeAssignments(text)) << text;
    }
}

} // namespace
} // namespace varnhold
