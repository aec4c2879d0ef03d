// What reading the event database costs a poll, and how long somebody who writes to it has to wait,
// at sizes up to a million rows, with an index and without. Prints a table; not a test.
//
//     bench_poll [ROWS...]
#include <sqlite3.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "status/last_models.h"

namespace {

using Clock = std::chrono::steady_clock;

double milliseconds(Clock::duration duration) {
    return std::chrono::duration<double, std::milli>(duration).count();
}

// The daemons' side.
class Writer final {
public:
    explicit Writer(const std::string& path) {
        sqlite3_open(path.c_str(), &db_);
        sqlite3_busy_timeout(db_, 60000);
    }
    ~Writer() { sqlite3_close(db_); }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    void execute(const std::string& sql) {
        if (sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
            std::fprintf(stderr, "%s: %s\n", sql.c_str(), sqlite3_errmsg(db_));
            std::exit(EXIT_FAILURE);
        }
    }
    void addRow() { execute("INSERT INTO agent_events (dept, model) VALUES ('bot1', 'new')"); }

private:
    sqlite3* db_ = nullptr;
};

struct Case {
    long rows;
    bool indexed;
    bool wal;
};

// Ten bots that are busy; one has been quiet since the beginning, and one never named a model.
void fill(Writer& daemons, const Case& each) {
    daemons.execute(each.wal ? "PRAGMA journal_mode=WAL" : "PRAGMA journal_mode=DELETE");
    daemons.execute("PRAGMA synchronous=OFF");
    daemons.execute("CREATE TABLE agent_events (id INTEGER PRIMARY KEY AUTOINCREMENT, dept TEXT, "
                    "model TEXT, kind TEXT, at TEXT)");
    daemons.execute("INSERT INTO agent_events (dept, model) VALUES ('quiet', 'old')");
    daemons.execute("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " +
                    std::to_string(each.rows) +
                    ") INSERT INTO agent_events (dept, model, kind, at) SELECT CASE i % 11 WHEN 10 "
                    "THEN 'silent' ELSE 'bot' || (i % 11) END, CASE WHEN i % 11 = 10 OR i % 2 = 0 "
                    "THEN NULL ELSE 'claude-opus' END, 'reply', '2026-03-04T05:06:07.000Z' FROM n");
    if (each.indexed) {
        daemons.execute("CREATE INDEX by_dept ON agent_events (dept)");
    }
}

double timed(varnhold::LastModels& models) {
    const auto began = Clock::now();
    static_cast<void>(models.read());
    return milliseconds(Clock::now() - began);
}

// The longest wait of somebody who writes again and again while the whole table is read.
double longestWait(const std::string& path) {
    std::atomic<bool> over = false;
    double longest = 0;
    std::thread writing([&] {
        Writer daemon(path);
        while (!over) {
            const auto began = Clock::now();
            daemon.addRow();
            longest = std::max(longest, milliseconds(Clock::now() - began));
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
    });
    for (int i = 0; i < 3; ++i) {
        varnhold::LastModels models(path);
        static_cast<void>(models.read());
    }
    over = true;
    writing.join();
    return longest;
}

void measure(const Case& each) {
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("bench-poll-" + std::to_string(::rand()));
    std::filesystem::create_directories(folder);
    const std::string path = folder / "governor.db";
    Writer daemons(path);
    fill(daemons, each);
    varnhold::LastModels models(path);
    const double whole = timed(models);
    daemons.addRow();
    const double next = timed(models);
    const double unchanged = timed(models);
    std::printf("%9ld  %-8s %-7s %10.1f %12.2f %10.3f %12.1f\n", each.rows,
                each.indexed ? "indexed" : "plain", each.wal ? "WAL" : "journal", whole, next,
                unchanged, longestWait(path));
    std::fflush(stdout);
    std::filesystem::remove_all(folder);
}

} // namespace

int main(int argc, char** argv) {
    std::vector<long> sizes;
    for (int i = 1; i < argc; ++i) {
        sizes.push_back(std::strtol(argv[i], nullptr, 10));
    }
    if (sizes.empty()) {
        sizes = {1000, 30000, 100000, 1000000};
    }
    std::puts("     rows  table    writes    whole ms  one more ms unchanged  writer waits");
    for (const long rows : sizes) {
        for (const bool indexed : {false, true}) {
            for (const bool wal : {false, true}) {
                measure({rows, indexed, wal});
            }
        }
    }
    return 0;
}
