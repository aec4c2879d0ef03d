#pragma once

#include <functional>
#include <string>
#include <vector>

struct sqlite3;

namespace varnhold {

// One connection to the agents' event database, which the daemons create and fill.
//
// Opened once and never again: a file that is missing is created empty, and queries begin to work
// as soon as the daemons have made their table; where even the folder is missing, all queries stay
// empty for the life of the object. No waiting for locks: a busy database gives what came before.
// One thread at a time; make a second object for a second thread.
class GovernorCatalog final {
public:
    explicit GovernorCatalog(const std::string& path);
    ~GovernorCatalog();
    GovernorCatalog(const GovernorCatalog&) = delete;
    GovernorCatalog& operator=(const GovernorCatalog&) = delete;

    using Row = std::vector<std::string>;

    // Calls back with each row in turn; NULL comes as empty text. Errors end the rows silently.
    void query(const std::string& sql, const std::function<void(const Row&)>& callback);

private:
    sqlite3* db = nullptr;
};

} // namespace varnhold
