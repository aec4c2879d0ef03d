#include "records/model_rows.h"

#include <algorithm>

namespace varnhold {

namespace {

template <class Matches>
std::optional<std::size_t> firstRow(const ModelRows& rows, Matches matches) {
    const auto found = std::find_if(rows.begin(), rows.end(), matches);
    return found == rows.end() ? std::nullopt
                               : std::optional(static_cast<std::size_t>(found - rows.begin()));
}

} // namespace

std::optional<std::size_t> rowOf(const ModelRows& rows, std::string_view uid) {
    return firstRow(rows, [uid](const AIModelItem& row) { return row.uid() == uid; });
}

std::optional<std::size_t> rowNamed(const ModelRows& rows, std::string_view payload) {
    return firstRow(rows, [payload](const AIModelItem& row) {
        return row.uid() == payload || row.id == payload;
    });
}

std::size_t insertionPlace(const ModelRows& rows, std::optional<std::size_t> insertAt) {
    return std::min(insertAt.value_or(rows.size()), rows.size());
}

std::optional<RowMove> moveOnto(const ModelRows& rows, std::string_view draggedUid,
                                std::string_view targetUid) {
    const auto from = rowOf(rows, draggedUid);
    const auto to = rowOf(rows, targetUid);
    if (!from || !to || *from == *to) {
        return std::nullopt;
    }
    return RowMove{*from, *from < *to ? *to + 1 : *to};
}

void apply(RowMove move, ModelRows& rows) {
    const auto at = [&rows](std::size_t index) {
        return rows.begin() + static_cast<ModelRows::difference_type>(index);
    };
    if (move.from < move.offset) {
        std::rotate(at(move.from), at(move.from + 1), at(move.offset));
    } else {
        std::rotate(at(move.offset), at(move.from), at(move.from + 1));
    }
}

} // namespace varnhold
