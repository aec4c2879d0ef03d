#include "status/governor_catalog.h"

#include <sqlite3.h>

#include "base/unicode.h"

namespace varnhold {

namespace {

std::string columnText(sqlite3_stmt* statement, int column) {
    const unsigned char* text = sqlite3_column_text(statement, column);
    return text == nullptr ? std::string() : unicode::repaired(reinterpret_cast<const char*>(text));
}

} // namespace

// A handle that failed to open still has to be closed, and refuses every query by itself.
GovernorCatalog::GovernorCatalog(const std::string& path) {
    sqlite3_open(path.c_str(), &db);
}

GovernorCatalog::~GovernorCatalog() {
    if (db != nullptr) {
        sqlite3_close(db);
    }
}

void GovernorCatalog::query(const std::string& sql,
                            const std::function<void(const Row&)>& callback) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(db, sql.c_str(), -1, &statement, nullptr) == SQLITE_OK) {
        const int columns = sqlite3_column_count(statement);
        while (sqlite3_step(statement) == SQLITE_ROW) {
            Row row;
            row.reserve(static_cast<std::size_t>(columns));
            for (int column = 0; column < columns; ++column) {
                row.push_back(columnText(statement, column));
            }
            callback(row);
        }
    }
    sqlite3_finalize(statement);
}

} // namespace varnhold
