#include "records/model_rows.h"

#include <gmock/gmock.h>
#include <optional>
#include <string>
#include <vector>

#include "support/records.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;

std::vector<std::string> idsAfter(RowMove move, ModelRows rows) {
    apply(move, rows);
    std::vector<std::string> ids;
    for (const AIModelItem& each : rows) {
        ids.push_back(each.id);
    }
    return ids;
}

TEST(ModelRows, AreFoundByTheirUidAlone) {
    const ModelRows rows{model("a", "1"), model("b"), model("c", "b")};
    EXPECT_EQ(rowOf(rows, "1"), 0U);
    EXPECT_EQ(rowOf(rows, "a"), std::nullopt);
    EXPECT_EQ(rowOf(rows, "b"), 1U);
}

TEST(ModelRows, AnswerADropByUidOrId) {
    const ModelRows rows{model("a", "1"), model("b", "a")};
    EXPECT_EQ(rowNamed(rows, "a"), 0U);
    EXPECT_EQ(rowNamed(rows, "b"), 1U);
    EXPECT_EQ(rowNamed(rows, "c"), std::nullopt);
}

TEST(ModelRows, CountAnEmptyUniqueIdAsTheUid) {
    EXPECT_EQ(rowOf({model("a", "")}, ""), 0U);
    EXPECT_EQ(rowOf({model("a", "")}, "a"), std::nullopt);
}

TEST(InsertionPlace, IsTheEndUnlessAPlaceWithinTheListIsAskedFor) {
    const ModelRows rows{model("a"), model("b")};
    EXPECT_EQ(insertionPlace(rows, std::nullopt), 2U);
    EXPECT_EQ(insertionPlace(rows, 0), 0U);
    EXPECT_EQ(insertionPlace(rows, 1), 1U);
    EXPECT_EQ(insertionPlace(rows, 7), 2U);
    EXPECT_EQ(insertionPlace({}, 0), 0U);
    EXPECT_EQ(insertionPlace({}, std::nullopt), 0U);
}

TEST(MoveOnto, CountsItsOffsetBeforeTheRowIsTakenOut) {
    const ModelRows rows{model("a"), model("b"), model("c")};
    EXPECT_EQ(moveOnto(rows, "a", "c"), (RowMove{0, 3}));
    EXPECT_EQ(moveOnto(rows, "c", "a"), (RowMove{2, 0}));
    EXPECT_EQ((RowMove{0, 3}.place()), 2U);
    EXPECT_EQ((RowMove{2, 0}.place()), 0U);
}

TEST(MoveOnto, IsNothingOntoItselfOrWhereEitherRowIsMissing) {
    const ModelRows rows{model("a"), model("b")};
    EXPECT_EQ(moveOnto(rows, "a", "a"), std::nullopt);
    EXPECT_EQ(moveOnto(rows, "a", "x"), std::nullopt);
    EXPECT_EQ(moveOnto(rows, "x", "a"), std::nullopt);
}

TEST(RowMove, PutsTheRowInThePlaceOfTheOther) {
    const ModelRows rows{model("a"), model("b"), model("c"), model("d")};
    EXPECT_THAT(idsAfter({0, 3}, rows), ElementsAre("b", "c", "a", "d"));
    EXPECT_THAT(idsAfter({3, 1}, rows), ElementsAre("a", "d", "b", "c"));
    EXPECT_THAT(idsAfter({1, 3}, rows), ElementsAre("a", "c", "b", "d"));
}

} // namespace
} // namespace varnhold::testing
