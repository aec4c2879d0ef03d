#pragma once

#include <sqlite3.h>

#include <stdexcept>
#include <string>

namespace varnhold {

// The daemons' side of the event database: a connection that makes the table and writes rows.
class EventDatabase final {
public:
    explicit EventDatabase(const std::string& path) {
        if (sqlite3_open(path.c_str(), &db_) != SQLITE_OK) {
            throw std::runtime_error("the database can't be opened");
        }
    }
    ~EventDatabase() { sqlite3_close(db_); }
    EventDatabase(const EventDatabase&) = delete;
    EventDatabase& operator=(const EventDatabase&) = delete;

    void execute(const std::string& sql) {
        if (sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
            throw std::runtime_error(sql + ": " + sqlite3_errmsg(db_));
        }
    }

    void makeTable() {
        execute("CREATE TABLE agent_events (id INTEGER PRIMARY KEY, at TEXT, dept TEXT, "
                "model TEXT, tokens INTEGER)");
    }

    // `model` is an SQL expression: NULL, 'text', x'00ff'.
    void add(int id, const std::string& dept, const std::string& model) {
        execute("INSERT INTO agent_events (id, dept, model) VALUES (" + std::to_string(id) + ", '" +
                dept + "', " + model + ")");
    }

private:
    sqlite3* db_ = nullptr;
};

} // namespace varnhold
