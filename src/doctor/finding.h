#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/json.h"

// What the doctor has to say: findings, grouped by the check that made them.
//
// Plain values; any thread. Texts may still hold secrets here: whoever prints a report masks it
// first (secrets.h), as a whole, so that no check has to think of it.
namespace varnhold::doctor {

enum class Level {
    note,    // worth knowing; nothing is wrong
    warning, // works, but not as somebody will expect
    fault,   // something is down or empty because of this
};

[[nodiscard]] std::string_view name(Level level);

// Where in a file. Lines and columns count from 1, columns in characters; records from 1.
struct Place {
    std::string file;
    std::optional<std::size_t> line = std::nullopt;
    std::optional<std::size_t> column = std::nullopt;
    std::optional<std::size_t> record = std::nullopt;
    std::string field = {}; // "models[2].color" within the record; empty if it is the whole

    bool operator==(const Place&) const = default;
};

struct Finding {
    std::string_view id; // one of the catalogue's; also the heading of its section in the docs
    Level level = Level::note;
    std::string subject;          // a bot, a chain, a file: what it is about, in a few words
    std::string sentence;         // what is so
    std::string consequence = {}; // what the supervisor or the daemons make of it
    std::string remedy = {};      // what to do about it
    std::string command = {};     // the same as a command line, if there is one
    std::optional<Place> place = std::nullopt;
    std::vector<std::string> lines = {}; // evidence: the last lines of a log
};

// Rows of a check, aligned in columns when they are shown.
struct Table {
    struct Row {
        // Beside the row as sign and colour; none for a plain one.
        std::optional<Level> level = std::nullopt;
        bool well = false; // a good sign, where the level is none
        std::vector<std::string> cells;
    };
    std::vector<std::string> headings = {};
    std::vector<Row> rows = {};
};

struct Section {
    std::string check; // "files", "fleet", ...
    std::string summary;
    Table table = {};
    std::vector<Finding> findings = {};
    std::vector<std::string> remarks = {}; // what the rest is to be read with
    // The same as the table, for programs; an object.
    json::Value data = json::Value::object();
};

struct Report {
    std::string made; // ISO 8601, UTC
    std::string data; // the folder that was looked at
    std::vector<Section> sections;
};

// The worst level of all; none if nothing was found.
[[nodiscard]] std::optional<Level> worst(const Section& section);
[[nodiscard]] std::optional<Level> worst(const Report& report);

// 0 if there is nothing but notes, 1 for warnings, 2 for faults.
[[nodiscard]] int exitCode(const Report& report);

// "1 bot", "3 bots".
[[nodiscard]] std::string counted(std::size_t count, std::string_view one,
                                  std::string_view several);

} // namespace varnhold::doctor
