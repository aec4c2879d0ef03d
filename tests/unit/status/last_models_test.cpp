#include <gtest/gtest.h>

#include <map>
#include <string>

#include "event_database.h"
#include "status/governor_catalog.h"
#include "support/temporary_home.h"

namespace varnhold {
namespace {

using Models = std::map<std::string, std::string>;

class LastModels : public ::testing::Test {
protected:
    testing::TemporaryHome home;
    std::string path = home.at("governor.db");
};

TEST_F(LastModels, AreThoseOfTheNewestEventOfEachDepartment) {
    EventDatabase daemons(path);
    daemons.makeTable();
    daemons.add(5, "cos", "'newest'");
    daemons.add(1, "cos", "'oldest'");
    daemons.add(3, "cto", "'other'");
    GovernorCatalog catalog(path);
    EXPECT_EQ(lastModels(catalog), (Models{{"cos", "newest"}, {"cto", "other"}}));
}

TEST_F(LastModels, ANewerEventWithoutAModelLeavesTheOlderOnesModel) {
    EventDatabase daemons(path);
    daemons.makeTable();
    daemons.add(1, "cos", "'older'");
    daemons.add(2, "cos", "NULL");
    GovernorCatalog catalog(path);
    EXPECT_EQ(lastModels(catalog), (Models{{"cos", "older"}}));
}

TEST_F(LastModels, ADepartmentThatNeverNamedAModelHasNone) {
    EventDatabase daemons(path);
    daemons.makeTable();
    daemons.add(1, "quiet", "NULL");
    daemons.add(2, "quiet", "NULL");
    daemons.add(3, "cos", "'m'");
    GovernorCatalog catalog(path);
    EXPECT_EQ(lastModels(catalog), (Models{{"cos", "m"}}));
}

TEST_F(LastModels, AnEmptyModelIsAModel) {
    EventDatabase daemons(path);
    daemons.makeTable();
    daemons.add(1, "cos", "'m'");
    daemons.add(2, "cos", "''");
    GovernorCatalog catalog(path);
    EXPECT_EQ(lastModels(catalog), (Models{{"cos", ""}}));
}

TEST_F(LastModels, ADepartmentThatIsNobodysRoleIsHeldToo) {
    EventDatabase daemons(path);
    daemons.makeTable();
    daemons.add(1, "nobody", "'m'");
    GovernorCatalog catalog(path);
    EXPECT_EQ(lastModels(catalog), (Models{{"nobody", "m"}}));
}

TEST_F(LastModels, TextsWithNulsAndBadBytesComeAsTextAllTheSame) {
    EventDatabase daemons(path);
    daemons.makeTable();
    daemons.add(1, "a", "CAST(x'6D006E' AS TEXT)");
    daemons.add(2, "b", "CAST(x'6DFF' AS TEXT)");
    GovernorCatalog catalog(path);
    EXPECT_EQ(lastModels(catalog), (Models{{"a", "m"}, {"b", "m\xEF\xBF\xBD"}}));
}

TEST_F(LastModels, ATableMadeAfterTheOpeningIsFoundWithoutAnother) {
    GovernorCatalog catalog(path);
    EXPECT_EQ(lastModels(catalog), Models{});
    EventDatabase daemons(path);
    daemons.makeTable();
    EXPECT_EQ(lastModels(catalog), Models{});
    daemons.add(1, "cos", "'m'");
    EXPECT_EQ(lastModels(catalog), (Models{{"cos", "m"}}));
    daemons.add(2, "cos", "'n'");
    EXPECT_EQ(lastModels(catalog), (Models{{"cos", "n"}}));
}

TEST_F(LastModels, AMissingColumnGivesNone) {
    EventDatabase daemons(path);
    daemons.execute("CREATE TABLE agent_events (id INTEGER PRIMARY KEY, dept TEXT)");
    daemons.execute("INSERT INTO agent_events (dept) VALUES ('cos')");
    GovernorCatalog catalog(path);
    EXPECT_EQ(lastModels(catalog), Models{});
}

TEST_F(LastModels, ALockedDatabaseGivesNoneAtOnceAndRecovers) {
    EventDatabase daemons(path);
    daemons.makeTable();
    daemons.add(1, "cos", "'m'");
    GovernorCatalog catalog(path);
    EXPECT_EQ(lastModels(catalog), (Models{{"cos", "m"}}));
    daemons.execute("BEGIN EXCLUSIVE");
    EXPECT_EQ(lastModels(catalog), Models{});
    daemons.execute("COMMIT");
    EXPECT_EQ(lastModels(catalog), (Models{{"cos", "m"}}));
}

TEST_F(LastModels, ADatabaseLockedBeforeItsFirstUseGivesNoneAndRecovers) {
    EventDatabase daemons(path);
    daemons.makeTable();
    daemons.add(1, "cos", "'m'");
    daemons.execute("BEGIN EXCLUSIVE");
    GovernorCatalog catalog(path);
    EXPECT_EQ(lastModels(catalog), Models{});
    daemons.execute("ROLLBACK");
    EXPECT_EQ(lastModels(catalog), (Models{{"cos", "m"}}));
}

TEST_F(LastModels, ADaemonThatIsAboutToWriteDoesNotHideTheOldRows) {
    EventDatabase daemons(path);
    daemons.makeTable();
    daemons.add(1, "cos", "'m'");
    GovernorCatalog catalog(path);
    daemons.execute("BEGIN IMMEDIATE");
    daemons.add(2, "cos", "'uncommitted'");
    EXPECT_EQ(lastModels(catalog), (Models{{"cos", "m"}}));
    daemons.execute("COMMIT");
    EXPECT_EQ(lastModels(catalog), (Models{{"cos", "uncommitted"}}));
}

TEST_F(LastModels, TwoConnectionsReadSideBySide) {
    EventDatabase daemons(path);
    daemons.makeTable();
    daemons.add(1, "cos", "'m'");
    GovernorCatalog first(path);
    GovernorCatalog second(path);
    EXPECT_EQ(lastModels(first), lastModels(second));
    EXPECT_EQ(lastModels(second), (Models{{"cos", "m"}}));
}

} // namespace
} // namespace varnhold
