#include "doctor/event_table.h"

#include <memory>
#include <sqlite3.h>
#include <sys/types.h>

#include "base/files.h"
#include "base/unicode.h"

namespace varnhold::doctor {

namespace {

using SteadyClock = std::chrono::steady_clock;

constexpr auto longestPoll = std::chrono::seconds(1);
constexpr int stepsBetweenLooks = 10000;

// Of each department the newest event that names a model.
constexpr const char* lastModelQuery =
    "SELECT a1.dept, a1.model FROM agent_events a1 CROSS JOIN "
    "(SELECT dept, MAX(id) AS newest FROM agent_events WHERE model IS NOT NULL GROUP BY dept) a2 "
    "ON a1.dept = a2.dept AND a1.id = a2.newest";

struct Closer {
    void operator()(sqlite3* database) const { sqlite3_close(database); }
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Database = std::unique_ptr<sqlite3, Closer>;
using Statement = std::unique_ptr<sqlite3_stmt, Closer>;

// Of an address "%", "?" and "#" would end the path.
std::string asAddress(const std::string& path) {
    std::string out = "file:";
    for (const char c : path) {
        if (c == '%' || c == '?' || c == '#') {
            constexpr const char* digits = "0123456789ABCDEF";
            const auto byte = static_cast<unsigned char>(c);
            out += {'%', digits[byte >> 4U], digits[byte & 0xFU]};
        } else {
            out += c;
        }
    }
    // While a daemon writes, what is new stands beside the file, together with an index of it that
    // everybody shares. Where there is none the file is all there is.
    const bool isShared = files::exists(path + "-shm") && files::exists(path + "-wal");
    return out + (isShared ? "?mode=ro&readonly_shm=1" : "?mode=ro&immutable=1");
}

// The usual way to files, except that nothing is ever opened for writing: by itself the library
// would open what stands beside a database so, and make it where it is missing.
const char* readOnlyFiles() {
    static const char* const name = [] {
        static sqlite3_vfs files = *sqlite3_vfs_find(nullptr);
        files.zName = "read-only";
        files.pNext = nullptr;
        files.xOpen = [](sqlite3_vfs*, sqlite3_filename path, sqlite3_file* file, int flags,
                         int* given) {
            sqlite3_vfs* usual = sqlite3_vfs_find(nullptr);
            const int reading =
                (flags & ~(SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE)) | SQLITE_OPEN_READONLY;
            return usual->xOpen(usual, path, file, reading, given);
        };
        // Root would give what stands beside a database to the database's owner.
        const auto changeNothing = [](int, uid_t, gid_t) { return 0; };
        int (*const stillOwner)(int, uid_t, gid_t) = changeNothing;
        files.xSetSystemCall(&files, "fchown", reinterpret_cast<sqlite3_syscall_ptr>(stillOwner));
        sqlite3_vfs_register(&files, 0);
        return files.zName;
    }();
    return name;
}

int giveUpAt(void* end) {
    return SteadyClock::now() > *static_cast<SteadyClock::time_point*>(end) ? 1 : 0;
}

Result<Statement> prepare(sqlite3* database, const char* sql) {
    sqlite3_stmt* raw = nullptr;
    if (sqlite3_prepare_v2(database, sql, -1, &raw, nullptr) != SQLITE_OK) {
        return failure(sqlite3_errmsg(database));
    }
    return Statement(raw);
}

std::string textAt(sqlite3_stmt* statement, int column) {
    const unsigned char* text = sqlite3_column_text(statement, column);
    return text == nullptr ? "" : unicode::repaired(reinterpret_cast<const char*>(text));
}

Result<void> poll(sqlite3* database, EventTable& table) {
    const auto statement = prepare(database, lastModelQuery);
    if (!statement) {
        return failure(statement.error());
    }
    auto end = SteadyClock::now() + longestPoll;
    const auto start = SteadyClock::now();
    sqlite3_progress_handler(database, stepsBetweenLooks, giveUpAt, &end);
    int step = sqlite3_step(statement->get());
    for (; step == SQLITE_ROW; step = sqlite3_step(statement->get())) {
        table.models.insert_or_assign(textAt(statement->get(), 0), textAt(statement->get(), 1));
    }
    table.poll = std::chrono::duration_cast<std::chrono::milliseconds>(SteadyClock::now() - start);
    table.pollWasCut = step == SQLITE_INTERRUPT;
    if (step != SQLITE_DONE && !table.pollWasCut) {
        return failure(sqlite3_errmsg(database));
    }
    return {};
}

} // namespace

Result<std::optional<EventTable>> readEvents(const std::string& path) {
    if (!files::exists(path)) {
        return std::optional<EventTable>();
    }
    sqlite3* raw = nullptr;
    const int opened = sqlite3_open_v2(asAddress(path).c_str(), &raw,
                                       SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, readOnlyFiles());
    const Database database(raw);
    if (opened != SQLITE_OK) {
        return failure(raw == nullptr ? "out of memory" : sqlite3_errmsg(raw));
    }
    EventTable table{.bytes = files::attributesSize(path).value_or(0)};
    if (table.bytes == 0) { // made by the first poll, before any daemon
        return std::optional(std::move(table));
    }
    const auto highest = prepare(raw, "SELECT MAX(id) FROM agent_events");
    if (!highest) {
        return failure(highest.error());
    }
    if (sqlite3_step(highest->get()) == SQLITE_ROW) {
        table.events = sqlite3_column_int64(highest->get(), 0);
    }
    if (const Result<void> polled = poll(raw, table); !polled) {
        return failure(polled.error());
    }
    return std::optional(std::move(table));
}

} // namespace varnhold::doctor
