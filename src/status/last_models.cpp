#include "status/last_models.h"

#include <thread>
#include <utility>

#include "base/text.h"

namespace varnhold {

namespace {

using namespace std::chrono_literals;

constexpr int rowsPerStep = 2000; // a millisecond's work or less
constexpr auto pauseForWriters = 2ms;
constexpr auto longestWait = 5s; // for one writer, between two steps
// The whole table is read again after this many times as long as reading it has taken, which keeps
// its cost to a fiftieth of one processor.
constexpr int restAfterWhole = 50;

// 1 for an ordinary table whose rows come in the order of their id, of which each has its own, and
// whose departments are equal only if their bytes are.
constexpr const char* numberedRows =
    "SELECT count(*) FROM sqlite_master t, pragma_table_info('agent_events') c "
    "WHERE t.name = 'agent_events' AND t.type = 'table' AND t.sql NOT LIKE '%collate%' "
    "AND t.sql NOT LIKE '%without%' AND t.sql NOT LIKE '%desc%' AND c.name = 'id' "
    "AND upper(c.type) = 'INTEGER' AND c.pk = 1 "
    "AND (SELECT count(*) FROM pragma_table_info('agent_events') WHERE pk > 0) = 1 "
    "AND (SELECT count(*) FROM pragma_table_info('agent_events') "
    "WHERE name IN ('dept', 'model')) = 2";

// For any table, what the rows with the newest named model of their department hold, in the table's
// own order. The newest are found first, once, rather than anew for each row. The last row tells
// that all have come.
constexpr const char* anyRows =
    "SELECT a1.dept, a1.model, 'row' FROM agent_events a1 CROSS JOIN "
    "(SELECT dept, MAX(id) AS newest FROM agent_events WHERE model IS NOT NULL GROUP BY dept) a2 "
    "ON a1.dept = a2.dept AND a1.id = a2.newest UNION ALL SELECT NULL, NULL, 'end'";

} // namespace

LastModels::LastModels(const std::string& path, ReadingTime time)
    : catalog_(path), time_(std::move(time)) {
    if (!time_.sleep) {
        time_.sleep = [](std::chrono::milliseconds duration) {
            std::this_thread::sleep_for(duration);
        };
    }
}

LastModels::Models LastModels::read() {
    // Asking takes the same lock as reading, and nobody has written if the answer is the old one.
    const auto version = single("PRAGMA data_version");
    if (!version) {
        return {};
    }
    if (*version == version_) {
        return models_;
    }
    const auto began = time_.now();
    const bool whole = version_.empty() || began - wholeBegan_ >= wholeTook_ * restAfterWhole;
    if (whole) {
        models_.clear();
        seen_.reset();
    }
    const auto numbered = single(numberedRows);
    const bool complete = numbered && (*numbered == "1" ? readInSteps() : readAtOneGo());
    if (whole) {
        wholeBegan_ = began;
        wholeTook_ = time_.now() - began;
    }
    version_ = complete ? *version : "";
    return models_;
}

// The first column of the only row; none if the database is locked or the statement isn't for it.
std::optional<std::string> LastModels::single(const std::string& sql) {
    std::optional<std::string> found;
    catalog_.query(sql, [&found](const GovernorCatalog::Row& row) { found = row.at(0); });
    return found;
}

bool LastModels::readAtOneGo() {
    models_.clear();
    bool complete = false;
    catalog_.query(anyRows, [&](const GovernorCatalog::Row& row) {
        complete = row.at(2) == "end";
        if (!complete) {
            models_.insert_or_assign(row.at(0), row.at(1));
        }
    });
    return complete;
}

// Up to what is the newest row as it begins: those that come meanwhile are for the next time.
bool LastModels::readInSteps() {
    auto end = time_.now() + longestWait;
    std::optional<std::int64_t> last;
    while (time_.now() < end) {
        if (const auto newest = single("SELECT MAX(id) FROM agent_events" + unread(last))) {
            if (newest->empty()) {
                return true;
            }
            last = last ? last : text::parseInteger(*newest);
            while (step(*last) > 0) {
                end = time_.now() + longestWait;
            }
        } else {
            time_.sleep(pauseForWriters);
        }
    }
    return false;
}

// How many rows it has read: none if there are none left, or the database is locked.
std::size_t LastModels::step(std::int64_t last) {
    std::size_t count = 0;
    catalog_.query("SELECT id, dept, model, dept IS NOT NULL AND model IS NOT NULL "
                   "FROM agent_events" +
                       unread(last) + " ORDER BY id LIMIT " + std::to_string(rowsPerStep),
                   [&](const GovernorCatalog::Row& row) {
                       ++count;
                       seen_ = text::parseInteger(row.at(0));
                       if (row.at(3) == "1") {
                           models_.insert_or_assign(row.at(1), row.at(2));
                       }
                   });
    return count;
}

std::string LastModels::unread(const std::optional<std::int64_t>& last) const {
    std::string condition = " WHERE id IS NOT NULL";
    if (seen_) {
        condition += " AND id > " + std::to_string(*seen_);
    }
    if (last) {
        condition += " AND id <= " + std::to_string(*last);
    }
    return condition;
}

} // namespace varnhold
