#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "event_database.h"
#include "status/last_models.h"
#include "support/long_runs.h"
#include "support/temporary_home.h"

namespace varnhold {
namespace {

using Models = LastModels::Models;
using namespace std::chrono_literals;
using ::testing::IsEmpty;

// What the display has to show, in the words of who asks: of each department the row whose number
// is the highest of those that name a model. Its cost is the square of the table's size.
Models asDefined(const std::string& path) {
    GovernorCatalog catalog(path);
    Models models;
    catalog.query(
        "SELECT dept, model FROM agent_events a1 WHERE id = (SELECT MAX(id) FROM "
        "agent_events a2 WHERE a1.dept = a2.dept AND model IS NOT NULL)",
        [&models](const GovernorCatalog::Row& row) { models.insert_or_assign(row[0], row[1]); });
    return models;
}

// Daemons that do whatever tables allow.
class RandomDaemons final {
public:
    RandomDaemons(EventDatabase& database, unsigned seed) : database_(database), engine_(seed) {}

    void act() {
        switch (below(8)) {
        case 0:
            return database_.execute("DELETE FROM agent_events WHERE id % 7 = " + number(7));
        case 1:
            return database_.execute("UPDATE agent_events SET model = " + model() +
                                     " WHERE id % 5 = " + number(5));
        default:
            return database_.execute(
                "INSERT OR REPLACE INTO agent_events (id, dept, model) VALUES (" + id() + ", " +
                dept() + ", " + model() + ")");
        }
    }
    int below(int limit) { return static_cast<int>(engine_() % static_cast<unsigned>(limit)); }

private:
    std::string number(int limit) { return std::to_string(below(limit)); }
    std::string id() { return below(3) == 0 ? "-" + number(50) : number(200); }
    std::string dept() {
        static const std::vector<std::string> depts{"'a'",  "'b'",   "'A'", "''",
                                                    "NULL", "x'61'", "7",   "'quiet'"};
        return depts[static_cast<std::size_t>(below(static_cast<int>(depts.size())))];
    }
    std::string model() { return below(3) == 0 ? "NULL" : "'m" + number(1000) + "'"; }

    EventDatabase& database_;
    std::mt19937 engine_;
};

struct Table {
    const char* name;
    const char* schema;
};

class LastModelsOfTables : public ::testing::TestWithParam<Table> {
protected:
    testing::TemporaryHome home;
    std::string path = home.at("governor.db");
    EventDatabase daemons{path};

    LastModelsOfTables() { daemons.execute("PRAGMA synchronous = OFF"); }
};

TEST_P(LastModelsOfTables, AreThoseOfTheDefinitionWhateverIsInThem) {
    daemons.execute(GetParam().schema);
    const int tables = testing::randomOperations(40);
    for (int seed = 0; seed < tables; ++seed) {
        daemons.execute("BEGIN; DELETE FROM agent_events");
        RandomDaemons random(daemons, static_cast<unsigned>(seed));
        for (int rows = random.below(60); rows > 0; --rows) {
            random.act();
        }
        daemons.execute("COMMIT");
        EXPECT_EQ(LastModels(path).read(), asDefined(path)) << "seed " << seed;
    }
}

TEST_P(LastModelsOfTables, StayThoseOfTheDefinitionWhileDaemonsWrite) {
    daemons.execute(GetParam().schema);
    RandomDaemons random(daemons, 1);
    // A clock that stands still: reading the whole takes no time, so it is never too dear.
    LastModels models(path, {.now = [] { return std::chrono::steady_clock::time_point(); }});
    const int steps = testing::randomOperations(300);
    for (int i = 0; i < steps; ++i) {
        random.act();
        ASSERT_EQ(models.read(), asDefined(path)) << "step " << i;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Tables, LastModelsOfTables,
    ::testing::Values(
        Table{"OfTheDaemons", "CREATE TABLE agent_events (id INTEGER PRIMARY KEY AUTOINCREMENT, "
                              "dept TEXT, model TEXT)"},
        Table{"WithoutTypes", "CREATE TABLE agent_events (id INTEGER PRIMARY KEY, dept, model)"},
        Table{"WithoutAKey", "CREATE TABLE agent_events (id INTEGER, dept TEXT, model TEXT)"},
        Table{"WithTextIds", "CREATE TABLE agent_events (id TEXT, dept TEXT, model TEXT)"},
        Table{"WithIdsOfAnyKind", "CREATE TABLE agent_events (id PRIMARY KEY, dept, model)"},
        Table{"WithDescendingIds",
              "CREATE TABLE agent_events (id INTEGER PRIMARY KEY DESC, dept TEXT, model TEXT)"},
        Table{"WithAKeyOfTwo", "CREATE TABLE agent_events (id INTEGER, dept TEXT, model TEXT, "
                               "PRIMARY KEY (id, dept))"},
        Table{"WhereCaseDoesNotCount", "CREATE TABLE agent_events (id INTEGER PRIMARY KEY, "
                                       "dept TEXT COLLATE NOCASE, model TEXT)"},
        Table{"WithoutRowNumbers", "CREATE TABLE agent_events (id INTEGER PRIMARY KEY, dept TEXT, "
                                   "model TEXT) WITHOUT ROWID"}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(LastModelsIndexed, AreThoseOfTheDefinitionToo) {
    const testing::TemporaryHome home;
    const std::string path = home.at("governor.db");
    EventDatabase daemons(path);
    daemons.execute("PRAGMA synchronous = OFF");
    daemons.makeTable();
    daemons.execute("CREATE INDEX by_dept ON agent_events (dept)");
    RandomDaemons random(daemons, 2);
    for (int i = 0; i < 200; ++i) {
        random.act();
    }
    EXPECT_EQ(LastModels(path).read(), asDefined(path));
}

// More rows than are read in one step.
class LargeTable : public ::testing::Test {
protected:
    testing::TemporaryHome home;
    std::string path = home.at("governor.db");
    EventDatabase daemons{path};
    std::chrono::steady_clock::time_point now;
    std::chrono::milliseconds cost{}; // of every look at the clock
    std::function<void()> whenLookedAt = [] {};
    std::function<void()> whileAsleep = [] {};

    LargeTable() {
        daemons.makeTable();
        daemons.execute("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE "
                        "i < 9000) INSERT INTO agent_events (id, dept, model) "
                        "SELECT i, 'd' || (i % 10), CASE i % 3 WHEN 0 THEN NULL ELSE 'm' || i END "
                        "FROM n");
        daemons.add(-5, "quiet", "'old'");
    }

    ReadingTime time() {
        return {.now =
                    [this] {
                        whenLookedAt();
                        return now += cost;
                    },
                .sleep = [this](std::chrono::milliseconds) { whileAsleep(); }};
    }
};

TEST_F(LargeTable, IsReadWhole) {
    EXPECT_EQ(LastModels(path, time()).read(), asDefined(path));
}

TEST_F(LargeTable, ShowsWhatHasComeSinceItWasRead) {
    LastModels models(path, time());
    static_cast<void>(models.read());
    daemons.add(9001, "d1", "'new'");
    daemons.add(9002, "fresh", "'first'");
    EXPECT_EQ(models.read(), asDefined(path));
    EXPECT_EQ(models.read().at("d1"), "new");
}

TEST_F(LargeTable, WhoseReadingIsDearShowsNewRowsAtOnceAndChangesToOldOnesAfterARest) {
    LastModels models(path, time());
    cost = 100ms;
    static_cast<void>(models.read());
    daemons.execute("UPDATE agent_events SET model = 'changed' WHERE dept = 'quiet'");
    daemons.add(9001, "d1", "'new'");
    cost = 0ms;
    EXPECT_EQ(models.read().at("d1"), "new");
    EXPECT_EQ(models.read().at("quiet"), "old");
    now += 1h;
    daemons.add(9002, "d2", "'newer'");
    EXPECT_EQ(models.read(), asDefined(path));
    EXPECT_EQ(models.read().at("quiet"), "changed");
}

TEST_F(LargeTable, ThatGetsLockedBeforeItsFirstStepIsReadTheNextTimeThoughNothingWasWritten) {
    LastModels models(path, time());
    int looks = 0;
    whenLookedAt = [&] {
        if (++looks == 1) {
            daemons.execute("BEGIN EXCLUSIVE");
        }
    };
    EXPECT_THAT(models.read(), IsEmpty());
    daemons.execute("COMMIT");
    EXPECT_EQ(models.read(), asDefined(path));
}

// However slow the machine: what has been read is not read again from the start.
TEST_F(LargeTable, IsReadWholeHoweverLongThatTakes) {
    cost = 4s;
    EXPECT_EQ(LastModels(path, time()).read(), asDefined(path));
}

TEST_F(LargeTable, IsGivenUpAsFarAsItHasComeWhereAWriterStays) {
    LastModels models(path, time());
    int looks = 0;
    whenLookedAt = [&] {
        if (++looks == 5) {
            daemons.execute("BEGIN EXCLUSIVE");
        }
    };
    whileAsleep = [&] { now += 1s; };
    EXPECT_THAT(models.read(), ::testing::SizeIs(11)); // from two steps
    daemons.execute("COMMIT");
    EXPECT_EQ(models.read(), asDefined(path));
}

// A writer that waits gets in as soon as a step is done; the next step then waits for it.
TEST_F(LargeTable, WaitsForAWriterThatGetsInBetweenTwoSteps) {
    LastModels models(path, time());
    int looks = 0; // three before the first step, and then one after each
    int sleeps = 0;
    whenLookedAt = [&] {
        if (++looks == 5) {
            daemons.execute("BEGIN EXCLUSIVE");
        }
    };
    whileAsleep = [&] {
        if (++sleeps == 3) {
            daemons.execute("COMMIT");
        }
    };
    EXPECT_EQ(models.read(), asDefined(path));
    EXPECT_EQ(sleeps, 3);
}

} // namespace
} // namespace varnhold
