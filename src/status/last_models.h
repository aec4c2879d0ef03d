#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "status/governor_catalog.h"

namespace varnhold {

// The time that passes while something is read; tests have one of their own.
struct ReadingTime {
    std::function<std::chrono::steady_clock::time_point()> now = std::chrono::steady_clock::now;
    std::function<void(std::chrono::milliseconds)> sleep = nullptr; // absent: the thread's own
};

// The model that each department last used, by role: that of its newest event which names one.
//
// A table whose rows are numbered by id, as the daemons' is, is read in short steps, so that who
// writes to it never waits long, and not at all as long as nobody has written. Where even so the
// whole table takes too long to be read at every poll, only its new rows are read in between, and a
// change to older ones shows a little later. Other tables are read at one go.
//
// A database that is locked isn't waited for and gives nothing; only one that gets locked between
// two steps is. Blocks for as long as reading takes. One thread at a time.
class LastModels final {
public:
    using Models = std::map<std::string, std::string>;

    // Opens the database.
    explicit LastModels(const std::string& path, ReadingTime time = {});

    // Empty on any failure; what came before it otherwise.
    [[nodiscard]] Models read();

private:
    [[nodiscard]] std::optional<std::string> single(const std::string& sql);
    [[nodiscard]] bool readAtOneGo();
    [[nodiscard]] bool readInSteps();
    std::size_t step(std::int64_t last);
    [[nodiscard]] std::string unread(const std::optional<std::int64_t>& last) const;

    GovernorCatalog catalog_;
    ReadingTime time_;
    Models models_;
    std::string version_; // of the database when all of it had been read; empty if that never was
    std::optional<std::int64_t> seen_; // rows up to this id are in the models
    std::chrono::steady_clock::time_point wholeBegan_;
    std::chrono::steady_clock::duration wholeTook_{};
};

} // namespace varnhold
