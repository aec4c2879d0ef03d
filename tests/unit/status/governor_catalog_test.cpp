#include "status/governor_catalog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "event_database.h"
#include "support/temporary_home.h"

namespace varnhold {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Rows = std::vector<GovernorCatalog::Row>;

class GovernorCatalogQuery : public ::testing::Test {
protected:
    static Rows rowsOf(GovernorCatalog& catalog, const std::string& sql) {
        Rows rows;
        catalog.query(sql, [&rows](const GovernorCatalog::Row& row) { rows.push_back(row); });
        return rows;
    }

    testing::TemporaryHome home;
    std::string path = home.at("governor.db");
};

TEST_F(GovernorCatalogQuery, GivesRowsInOrderAndColumnsAsText) {
    GovernorCatalog catalog(path);
    EXPECT_EQ(rowsOf(catalog, "SELECT 1, 'a' UNION ALL SELECT 2.5, 'b' ORDER BY 1"),
              (Rows{{"1", "a"}, {"2.5", "b"}}));
}

TEST_F(GovernorCatalogQuery, NullComesAsEmptyText) {
    GovernorCatalog catalog(path);
    EXPECT_EQ(rowsOf(catalog, "SELECT NULL, '', 'x'"), (Rows{{"", "", "x"}}));
}

TEST_F(GovernorCatalogQuery, TextEndsAtItsFirstNul) {
    GovernorCatalog catalog(path);
    EXPECT_EQ(rowsOf(catalog, "SELECT CAST(x'610062' AS TEXT), CAST(x'0061' AS TEXT)"),
              (Rows{{"a", ""}}));
}

TEST_F(GovernorCatalogQuery, BytesThatAreNotUtf8AreMarked) {
    GovernorCatalog catalog(path);
    EXPECT_EQ(rowsOf(catalog, "SELECT CAST(x'61FF62' AS TEXT), CAST(x'C3A9' AS TEXT)"),
              (Rows{{"a\xEF\xBF\xBD"
                     "b",
                     "é"}}));
}

TEST_F(GovernorCatalogQuery, AFaultyStatementGivesNoRowsAndHarmsNothing) {
    GovernorCatalog catalog(path);
    EXPECT_THAT(rowsOf(catalog, "SELEKT 1"), IsEmpty());
    EXPECT_THAT(rowsOf(catalog, ""), IsEmpty());
    EXPECT_THAT(rowsOf(catalog, "SELECT x FROM nowhere"), IsEmpty());
    EXPECT_EQ(rowsOf(catalog, "SELECT 1"), (Rows{{"1"}}));
}

TEST_F(GovernorCatalogQuery, AnErrorOnTheWayLeavesTheRowsThatCame) {
    GovernorCatalog catalog(path);
    EXPECT_EQ(rowsOf(catalog, "SELECT column1, CASE column1 WHEN 2 THEN abs(-9223372036854775807 "
                              "- 1) ELSE 0 END FROM (VALUES (1), (2), (3))"),
              (Rows{{"1", "0"}}));
    EXPECT_EQ(rowsOf(catalog, "SELECT 1"), (Rows{{"1"}}));
}

TEST_F(GovernorCatalogQuery, OpeningMakesAMissingFileEmpty) {
    const GovernorCatalog catalog(path);
    ASSERT_TRUE(fs::exists(path));
    EXPECT_EQ(fs::file_size(path), 0U);
}

TEST_F(GovernorCatalogQuery, WithoutItsFolderEveryQueryStaysEmptyForGood) {
    path = home.at("missing/governor.db");
    GovernorCatalog catalog(path);
    EXPECT_FALSE(fs::exists(home.at("missing")));
    EXPECT_THAT(rowsOf(catalog, "SELECT 1"), IsEmpty());
    home.makeFolder(home.at("missing"));
    EXPECT_THAT(rowsOf(catalog, "SELECT 1"), IsEmpty());
}

TEST_F(GovernorCatalogQuery, AFolderInThePlaceOfTheFileGivesNoRows) {
    home.makeFolder(path);
    GovernorCatalog catalog(path);
    EXPECT_THAT(rowsOf(catalog, "SELECT 1"), IsEmpty());
}

TEST_F(GovernorCatalogQuery, AFileThatIsNoDatabaseGivesNoRowsAndStays) {
    const std::string content(4096, 'x');
    home.write(path, content);
    GovernorCatalog catalog(path);
    EXPECT_THAT(rowsOf(catalog, "SELECT name FROM sqlite_master"), IsEmpty());
    EXPECT_EQ(home.read(path), content);
}

TEST_F(GovernorCatalogQuery, TheFileIsReleasedAtTheEnd) {
    EventDatabase daemons(path);
    daemons.makeTable();
    daemons.add(1, "cos", "'m'");
    {
        GovernorCatalog catalog(path);
        EXPECT_EQ(rowsOf(catalog, "SELECT model FROM agent_events"), (Rows{{"m"}}));
    }
    EXPECT_NO_THROW(daemons.execute("BEGIN EXCLUSIVE"));
}

TEST_F(GovernorCatalogQuery, NothingOfItIsLeftAfterItsEnd) {
    const auto useOnce = [this] {
        GovernorCatalog catalog(path);
        static_cast<void>(rowsOf(catalog, "SELECT name FROM sqlite_master"));
        static_cast<void>(rowsOf(catalog, "SELEKT 1"));
        GovernorCatalog unusable(home.at("missing/governor.db"));
        static_cast<void>(rowsOf(unusable, "SELECT 1"));
    };
    useOnce(); // SQLite's own lasting tables come with the first use
    const auto before = sqlite3_memory_used();
    useOnce();
    EXPECT_EQ(sqlite3_memory_used(), before);
}

TEST_F(GovernorCatalogQuery, ALockedDatabaseGivesNoRowsWithoutAWait) {
    GovernorCatalog catalog(path);
    EXPECT_EQ(rowsOf(catalog, "PRAGMA busy_timeout"), (Rows{{"0"}}));
    rowsOf(catalog, "CREATE TABLE t (a)");
    GovernorCatalog writer(path);
    rowsOf(writer, "INSERT INTO t VALUES ('before')");
    rowsOf(writer, "BEGIN EXCLUSIVE");
    EXPECT_THAT(rowsOf(catalog, "SELECT a FROM t"), IsEmpty());
    rowsOf(writer, "COMMIT");
    EXPECT_EQ(rowsOf(catalog, "SELECT a FROM t"), (Rows{{"before"}}));
}

TEST_F(GovernorCatalogQuery, NoReadLockOutlivesAQuery) {
    EventDatabase daemons(path);
    daemons.makeTable();
    daemons.add(1, "cos", "'m'");
    GovernorCatalog catalog(path);
    EXPECT_EQ(rowsOf(catalog, "SELECT model FROM agent_events"), (Rows{{"m"}}));
    EXPECT_NO_THROW(daemons.add(2, "cos", "'n'"));
}

} // namespace
} // namespace varnhold
