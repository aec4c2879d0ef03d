#include "records/models.h"

#include <functional>
#include <gmock/gmock.h>
#include <optional>
#include <string>

#include "support/records.h"

namespace varnhold {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

const AIModelItem full{.uniqueId = "U",
                       .id = "i",
                       .name = "n",
                       .family = "f",
                       .color = "blue",
                       .type = "cli",
                       .provider_key = "claude"};

AIModelItem modelOfColor(std::string color) {
    return testing::model(
        "i", {.name = "n", .family = "f", .color = std::move(color), .type = std::nullopt});
}

TEST(Model, HasItsIdAsUidWhereNoUniqueIdStands) {
    AIModelItem model = full;
    EXPECT_EQ(model.uid(), "U");
    model.uniqueId.reset();
    EXPECT_EQ(model.uid(), "i");
}

TEST(Model, TakesAnEmptyUniqueIdForPresent) {
    AIModelItem model = full;
    model.uniqueId = "";
    EXPECT_EQ(model.uid(), "");
}

TEST(Model, IsShownByItsNameUnchanged) {
    EXPECT_EQ(full.displayName(), "n");
}

TEST(Model, HasTheThemeColourOfThatName) {
    for (const char* each :
         {"purple", "blue", "green", "orange", "cyan", "red", "teal", "indigo", "pink", "yellow"}) {
        EXPECT_EQ(name(modelOfColor(each).themeColor()), each);
    }
}

TEST(Model, IsIndigoForAColourSpelledWithACapital) {
    EXPECT_EQ(modelOfColor("Purple").themeColor(), ThemeColor::indigo);
}

TEST(Model, IsIndigoForAnyOtherColour) {
    EXPECT_EQ(modelOfColor("").themeColor(), ThemeColor::indigo);
    EXPECT_EQ(modelOfColor("purple ").themeColor(), ThemeColor::indigo);
    EXPECT_EQ(modelOfColor("mauve").themeColor(), ThemeColor::indigo);
}

TEST(Model, DiffersByEachOfItsSevenFieldsInEqualityAndHash) {
    const auto differs = [](auto change) {
        AIModelItem other = full;
        change(other);
        EXPECT_NE(other, full);
        EXPECT_NE(std::hash<AIModelItem>{}(other), std::hash<AIModelItem>{}(full));
    };
    differs([](AIModelItem& model) { model.uniqueId.reset(); });
    differs([](AIModelItem& model) { model.id = "x"; });
    differs([](AIModelItem& model) { model.name = "x"; });
    differs([](AIModelItem& model) { model.family = "x"; });
    differs([](AIModelItem& model) { model.color = "x"; });
    differs([](AIModelItem& model) { model.type.reset(); });
    differs([](AIModelItem& model) { model.provider_key = ""; });
    const AIModelItem same = full;
    EXPECT_EQ(same, full);
    EXPECT_EQ(std::hash<AIModelItem>{}(same), std::hash<AIModelItem>{}(full));
}

TEST(Model, HashesItsFieldsInOrder) {
    AIModelItem one = full;
    AIModelItem other = full;
    one.id = "a";
    one.name = "b";
    other.id = "b";
    other.name = "a";
    EXPECT_NE(std::hash<AIModelItem>{}(one), std::hash<AIModelItem>{}(other));
}

TEST(Model, IsAbsentWhereAnOptionalFieldIsNullOrMissing) {
    const auto model = decodeChain(
        R"([{"id":"i","name":"n","family":"f","color":"c","type":null,"uniqueId":null}])");
    ASSERT_TRUE(model) << model.error();
    EXPECT_EQ(model->front(), modelOfColor("c"));
}

TEST(Model, LeavesAbsentFieldsOutAndKeepsEmptyOnes) {
    EXPECT_EQ(encodeChain({modelOfColor("c")}),
              R"([{"id":"i","name":"n","family":"f","color":"c"}])");
    AIModelItem model = modelOfColor("");
    model.uniqueId = "";
    model.type = "";
    model.provider_key = "";
    EXPECT_EQ(encodeChain({model}), R"([{"uniqueId":"","id":"i","name":"n","family":"f",)"
                                    R"("color":"","type":"","provider_key":""}])");
}

TEST(Chain, IsAnArrayWithoutAWrapperAndKeepsItsOrder) {
    AIModelItem second = full;
    second.id = "second";
    const auto chain = decodeChain(encodeChain({full, second}));
    ASSERT_TRUE(chain) << chain.error();
    EXPECT_THAT(*chain, ElementsAre(full, second));
    EXPECT_EQ(encodeChain({}), "[]");
}

TEST(Chain, SaysWhichEntryLacksWhat) {
    const auto chain =
        decodeChain(R"([{"id":"i","name":"n","family":"f","color":"c"},{"id":"i"}])");
    ASSERT_FALSE(chain);
    EXPECT_THAT(chain.error(), HasSubstr("[1].name: missing"));
}

TEST(Library, IsAnObjectWithOneListAndNoLineBreak) {
    EXPECT_EQ(encodeLibrary({}), R"({"models":[]})");
    EXPECT_THAT(encodeLibrary({{full}}), Not(HasSubstr("\n")));
}

TEST(Library, IsRefusedAsAWholeForOneEntryWithoutColor) {
    EXPECT_FALSE(decodeLibrary(R"({"models":[{"id":"i","name":"n","family":"f","color":"c"},)"
                               R"({"id":"i","name":"n","family":"f"}]})"));
}

TEST(Library, IsRefusedWithoutItsListOrAsABareList) {
    EXPECT_FALSE(decodeLibrary("{}"));
    EXPECT_FALSE(decodeLibrary(R"({"models":null})"));
    EXPECT_FALSE(decodeLibrary("[]"));
}

} // namespace
} // namespace varnhold
