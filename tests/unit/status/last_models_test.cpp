#include <gtest/gtest.h>

#include <map>
#include <string>

#include "event_database.h"
#include "status/last_models.h"
#include "support/temporary_home.h"

namespace varnhold {
namespace {

using Models = std::map<std::string, std::string>;

class LastModelsRead : public ::testing::Test {
protected:
    testing::TemporaryHome home;
    std::string path = home.at("governor.db");
};

TEST_F(LastModelsRead, AreThoseOfTheNewestEventOfEachDepartment) {
    EventDatabase daemons(path);
    daemons.makeTable();
    daemons.add(5, "cos", "'newest'");
    daemons.add(1, "cos", "'oldest'");
    daemons.add(3, "cto", "'other'");
    LastModels models(path);
    EXPECT_EQ(models.read(), (Models{{"cos", "newest"}, {"cto", "other"}}));
}

TEST_F(LastModelsRead, ANewerEventWithoutAModelLeavesTheOlderOnesModel) {
    EventDatabase daemons(path);
    daemons.makeTable();
    daemons.add(1, "cos", "'older'");
    daemons.add(2, "cos", "NULL");
    LastModels models(path);
    EXPECT_EQ(models.read(), (Models{{"cos", "older"}}));
}

TEST_F(LastModelsRead, ADepartmentThatNeverNamedAModelHasNone) {
    EventDatabase daemons(path);
    daemons.makeTable();
    daemons.add(1, "quiet", "NULL");
    daemons.add(2, "quiet", "NULL");
    daemons.add(3, "cos", "'m'");
    LastModels models(path);
    EXPECT_EQ(models.read(), (Models{{"cos", "m"}}));
}

TEST_F(LastModelsRead, AnEmptyModelIsAModel) {
    EventDatabase daemons(path);
    daemons.makeTable();
    daemons.add(1, "cos", "'m'");
    daemons.add(2, "cos", "''");
    LastModels models(path);
    EXPECT_EQ(models.read(), (Models{{"cos", ""}}));
}

TEST_F(LastModelsRead, ADepartmentThatIsNobodysRoleIsHeldToo) {
    EventDatabase daemons(path);
    daemons.makeTable();
    daemons.add(1, "nobody", "'m'");
    LastModels models(path);
    EXPECT_EQ(models.read(), (Models{{"nobody", "m"}}));
}

TEST_F(LastModelsRead, TextsWithNulsAndBadBytesComeAsTextAllTheSame) {
    EventDatabase daemons(path);
    daemons.makeTable();
    daemons.add(1, "a", "CAST(x'6D006E' AS TEXT)");
    daemons.add(2, "b", "CAST(x'6DFF' AS TEXT)");
    LastModels models(path);
    EXPECT_EQ(models.read(), (Models{{"a", "m"}, {"b", "m\xEF\xBF\xBD"}}));
}

TEST_F(LastModelsRead, ATableMadeAfterTheOpeningIsFoundWithoutAnother) {
    LastModels models(path);
    EXPECT_EQ(models.read(), Models{});
    EventDatabase daemons(path);
    daemons.makeTable();
    EXPECT_EQ(models.read(), Models{});
    daemons.add(1, "cos", "'m'");
    EXPECT_EQ(models.read(), (Models{{"cos", "m"}}));
    daemons.add(2, "cos", "'n'");
    EXPECT_EQ(models.read(), (Models{{"cos", "n"}}));
}

TEST_F(LastModelsRead, AMissingColumnGivesNone) {
    EventDatabase daemons(path);
    daemons.execute("CREATE TABLE agent_events (id INTEGER PRIMARY KEY, dept TEXT)");
    daemons.execute("INSERT INTO agent_events (dept) VALUES ('cos')");
    LastModels models(path);
    EXPECT_EQ(models.read(), Models{});
}

TEST_F(LastModelsRead, ALockedDatabaseGivesNoneAtOnceAndRecovers) {
    EventDatabase daemons(path);
    daemons.makeTable();
    daemons.add(1, "cos", "'m'");
    LastModels models(path);
    EXPECT_EQ(models.read(), (Models{{"cos", "m"}}));
    daemons.execute("BEGIN EXCLUSIVE");
    EXPECT_EQ(models.read(), Models{});
    daemons.execute("COMMIT");
    EXPECT_EQ(models.read(), (Models{{"cos", "m"}}));
}

// The library's own sleep, by which it would wait for a lock.
int sleepsWhileLocked = 0;

TEST_F(LastModelsRead, ALockedDatabaseIsNotWaitedFor) {
    EventDatabase daemons(path);
    daemons.makeTable();
    daemons.add(1, "cos", "'m'");
    sqlite3_vfs* const files = sqlite3_vfs_find(nullptr);
    const auto sleep = files->xSleep;
    files->xSleep = [](sqlite3_vfs*, int microseconds) {
        ++sleepsWhileLocked;
        return microseconds;
    };
    LastModels models(path);
    daemons.execute("BEGIN EXCLUSIVE");
    EXPECT_EQ(models.read(), Models{});
    daemons.execute("COMMIT");
    files->xSleep = sleep;
    EXPECT_EQ(sleepsWhileLocked, 0);
}

TEST_F(LastModelsRead, ADatabaseLockedBeforeItsFirstUseGivesNoneAndRecovers) {
    EventDatabase daemons(path);
    daemons.makeTable();
    daemons.add(1, "cos", "'m'");
    daemons.execute("BEGIN EXCLUSIVE");
    LastModels models(path);
    EXPECT_EQ(models.read(), Models{});
    daemons.execute("ROLLBACK");
    EXPECT_EQ(models.read(), (Models{{"cos", "m"}}));
}

TEST_F(LastModelsRead, ADaemonThatIsAboutToWriteDoesNotHideTheOldRows) {
    EventDatabase daemons(path);
    daemons.makeTable();
    daemons.add(1, "cos", "'m'");
    LastModels models(path);
    daemons.execute("BEGIN IMMEDIATE");
    daemons.add(2, "cos", "'uncommitted'");
    EXPECT_EQ(models.read(), (Models{{"cos", "m"}}));
    daemons.execute("COMMIT");
    EXPECT_EQ(models.read(), (Models{{"cos", "uncommitted"}}));
}

TEST_F(LastModelsRead, TwoConnectionsReadSideBySide) {
    EventDatabase daemons(path);
    daemons.makeTable();
    daemons.add(1, "cos", "'m'");
    LastModels first(path);
    LastModels second(path);
    EXPECT_EQ(first.read(), second.read());
    EXPECT_EQ(second.read(), (Models{{"cos", "m"}}));
}

} // namespace
} // namespace varnhold
