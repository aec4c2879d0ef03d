#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "records/models.h"

// Lists of models as rows that a person drags about.
//
// Pure functions on values; any thread. Rows are told apart by their uid; of two with one uid the
// first counts.
namespace varnhold {

using ModelRows = std::vector<AIModelItem>;

[[nodiscard]] std::optional<std::size_t> rowOf(const ModelRows& rows, std::string_view uid);

// The first row whose uid or id is the text that was dropped.
[[nodiscard]] std::optional<std::size_t> rowNamed(const ModelRows& rows, std::string_view payload);

// Where a dropped row goes in: at the place asked for, or at the end.
[[nodiscard]] std::size_t insertionPlace(const ModelRows& rows,
                                         std::optional<std::size_t> insertAt);

// A row goes before the row at `offset`, counted while it still stands in its old place.
struct RowMove {
    std::size_t from = 0;
    std::size_t offset = 0;

    // Where it stands afterwards.
    [[nodiscard]] std::size_t place() const { return from < offset ? offset - 1 : offset; }

    bool operator==(const RowMove&) const = default;
};

// What happens when one row is dragged onto another: it takes the other's place. Nothing happens
// onto itself, or if either stands elsewhere.
[[nodiscard]] std::optional<RowMove> moveOnto(const ModelRows& rows, std::string_view draggedUid,
                                              std::string_view targetUid);
void apply(RowMove move, ModelRows& rows);

} // namespace varnhold
