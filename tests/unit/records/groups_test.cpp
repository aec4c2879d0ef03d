#include "records/groups.h"

#include <cmath>
#include <gmock/gmock.h>
#include <limits>
#include <set>
#include <string>

namespace varnhold {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr Color gray{0.94, 0.94, 0.94};

CustomBotGroup groupOfColor(const char* hex) {
    return {.name = "g", .colorHex = hex};
}

std::string document(const char* effort, const char* tokens, const char* id) {
    return std::string(R"([{"id":")") + id + R"(","name":"g","models":[],"effortLevel":")" +
           effort + R"(","contextTokens":)" + tokens +
           R"(,"colorHex":"D6E8FF","attachedPaths":[],"objectives":"","doctrine":[],)"
           R"("assignedBotLabels":[]}])";
}

constexpr const char* someId = "46717E56-E629-5AE3-8B57-A557FDE5BD65";

TEST(Group, BeginsEmptyWithAFreshIdentityAndAPastel) {
    const CustomBotGroup one{.name = "one"};
    const CustomBotGroup two{.name = "two"};
    EXPECT_NE(one.id, two.id);
    EXPECT_EQ(one.effortLevel, EffortLevel::off);
    EXPECT_EQ(one.contextTokens, 0.0);
    EXPECT_NE(one.pastelColor(), gray);
    EXPECT_THAT(one.models, IsEmpty());
    EXPECT_THAT(one.attachedPaths, IsEmpty());
    EXPECT_THAT(one.doctrine, IsEmpty());
    EXPECT_THAT(one.assignedBotLabels, IsEmpty());
    EXPECT_EQ(one.objectives, "");
}

TEST(PastelColor, IsTheSameForSmallAndCapitalDigits) {
    EXPECT_EQ(groupOfColor("ffe8cc").pastelColor(), groupOfColor("FFE8CC").pastelColor());
    EXPECT_EQ(groupOfColor("FFE8CC").pastelColor(), (Color{1.0, 232 / 255.0, 204 / 255.0}));
    EXPECT_EQ(groupOfColor("000000").pastelColor(), (Color{0, 0, 0}));
}

TEST(PastelColor, IsGrayWithALeadingNumberSignOrForNoDigits) {
    EXPECT_EQ(groupOfColor("#FFE8CC").pastelColor(), gray);
    EXPECT_EQ(groupOfColor("FFZZZZ").pastelColor(), gray);
    EXPECT_EQ(groupOfColor("ghijkl").pastelColor(), gray);
}

TEST(PastelColor, IsGrayForAnythingThatNumberParsersLetThrough) {
    for (const char* hex :
         {"", "FFF", "0xFFFF", " FFFFF", "FFFFF ", "+FFFFF", "-FFFFF", "FFD6D6D"}) {
        EXPECT_EQ(groupOfColor(hex).pastelColor(), gray) << hex;
    }
}

TEST(RandomPastelHex, IsOneOfTenAndMayComeAgain) {
    const std::set<std::string> pastels{"FFD6D6", "FFE8CC", "FFFACC", "D6FFD6", "CCF0FF",
                                        "E8D6FF", "FFD6F5", "D6F5E8", "F5D6FF", "D6E8FF"};
    std::set<std::string> seen;
    std::string previous;
    bool repeated = false;
    for (int i = 0; i < 2000; ++i) { // so many that missing one of ten is beyond chance
        const std::string color = CustomBotGroup::randomPastelHex();
        seen.insert(color);
        repeated = repeated || color == previous;
        previous = color;
    }
    EXPECT_EQ(seen, pastels);
    EXPECT_TRUE(repeated);
}

TEST(Groups, LoadNotAtAllIfTheSecondLacksItsDoctrine) {
    const std::string one = document("off", "0", someId);
    ASSERT_TRUE(decodeGroups(one));
    std::string lacking = one;
    lacking.replace(lacking.find(R"("doctrine":[],)"), 14, "");
    const std::string two = one.substr(0, one.size() - 1) + "," + lacking.substr(1);
    const auto groups = decodeGroups(two);
    ASSERT_FALSE(groups);
    EXPECT_THAT(groups.error(), HasSubstr("[1].doctrine: missing"));
}

TEST(Groups, AreRefusedForAnUnknownEffortLevel) {
    EXPECT_TRUE(decodeGroups(document("high", "0", someId)));
    EXPECT_FALSE(decodeGroups(document("High", "0", someId)));
}

TEST(Groups, AreRefusedForAnIdThatIsNoUuid) {
    EXPECT_FALSE(decodeGroups(document("off", "0", "{46717E56-E629-5AE3-8B57-A557FDE5BD65}")));
    EXPECT_FALSE(decodeGroups(document("off", "0", "")));
}

TEST(Groups, WriteTheirIdInCapitalsWhateverWasRead) {
    const auto groups = decodeGroups(document("off", "0", "46717e56-e629-5ae3-8b57-a557fde5bd65"));
    ASSERT_TRUE(groups) << groups.error();
    EXPECT_EQ(encodeGroups(*groups), document("off", "0", someId));
}

TEST(Groups, WriteBudgetsAsOtherProgramsExpectNumbers) {
    for (const char* tokens : {"0", "8000", "2000000", "31999.6", "0.1"}) {
        const auto groups = decodeGroups(document("off", tokens, someId));
        ASSERT_TRUE(groups) << groups.error();
        EXPECT_EQ(encodeGroups(*groups), document("off", tokens, someId));
    }
    EXPECT_EQ(encodeGroups(*decodeGroups(document("off", "2e6", someId))),
              document("off", "2000000", someId));
    EXPECT_EQ(encodeGroups(*decodeGroups(document("off", "8000.0", someId))),
              document("off", "8000", someId));
}

TEST(Groups, AreRefusedWithTheEffortThatThereIsNot) {
    EXPECT_THAT(decodeGroups(document("High", "0", someId)).error(),
                ::testing::HasSubstr("effortLevel: no such effort level: \"High\""));
}

TEST(Groups, TakeAnyNumberAsABudget) {
    for (const char* tokens : {"-1", "1e30", "18446744073709551616", "1e-5"}) {
        EXPECT_TRUE(decodeGroups(document("off", tokens, someId))) << tokens;
    }
    EXPECT_FALSE(decodeGroups(document("off", "1e400", someId)));
    EXPECT_FALSE(decodeGroups(document("off", "null", someId)));
}

TEST(Groups, CannotBeWrittenWithABudgetThatIsNoFiniteNumber) {
    for (const double tokens : {std::nan(""), std::numeric_limits<double>::infinity()}) {
        const auto written = encodeGroups({CustomBotGroup{.name = "g", .contextTokens = tokens}});
        ASSERT_FALSE(written);
        EXPECT_EQ(written.error(), "the budget of \"g\" is no finite number");
    }
}

} // namespace
} // namespace varnhold
