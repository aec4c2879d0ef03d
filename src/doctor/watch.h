#pragma once

#include <map>
#include <string>
#include <vector>

#include "doctor/bot_state.h"
#include "doctor/secrets.h"
#include "doctor/surroundings.h"
#include "doctor/text_report.h"

namespace varnhold::doctor {

// What the status item shows, as a table for a terminal, for machines that are reached by ssh.
// Looks as often as it is told to, and only reads. One thread.
class Watch final {
public:
    // Takes about as long as the listing of the jobs.
    void look(const Surroundings& surroundings);

    // Lines of at most the style's width, no more of them than `height`, without line breaks. Bots
    // for which there is no room are counted in the last line but one.
    [[nodiscard]] std::vector<std::string> lines(const TextStyle& style, std::size_t height) const;

private:
    struct Row {
        BotState::Kind kind = BotState::Kind::unknown;
        std::vector<std::string> cells;
    };

    [[nodiscard]] std::vector<std::size_t> widths(std::size_t most) const;

    std::string title_;
    std::string trouble_; // why nothing is known; empty if all is
    std::vector<Row> rows_;
    std::map<std::string, int> marks_; // of the look before, by role
};

// The marks with which a terminal shows one frame over the last one.
[[nodiscard]] std::string frameOf(const std::vector<std::string>& lines);

} // namespace varnhold::doctor
