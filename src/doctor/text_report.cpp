#include "doctor/text_report.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "doctor/columns.h"
#include "doctor/tones.h"

namespace varnhold::doctor {

namespace {

constexpr std::size_t narrowest = 40;
constexpr std::size_t indent = 2;
constexpr std::size_t findingIndent = 12; // behind sign and level

Sign signOf(Level level) {
    switch (level) {
    case Level::note:
        return {"·", Tone::blue};
    case Level::warning:
        return {"!", Tone::yellow};
    case Level::fault:
        break;
    }
    return {"✗", Tone::red};
}

// Builds the text line by line; every piece from outside goes through said() first.
class Writer {
public:
    Writer(const Secrets& secrets, const TextStyle& style)
        : secrets_(secrets), width_(std::max(style.width, narrowest)), color_(style.color) {}

    void write(const Report& report) {
        const std::string title = "Varnhold doctor";
        const std::size_t room = width_ - std::min(width_, report.made.size());
        out_ += toned(Tone::bold, fitted(title, room)) + toned(Tone::dim, report.made) + "\n";
        line(0, Tone::dim, said(report.data));
        for (const Section& section : report.sections) {
            write(section);
        }
        conclude(report);
    }

    [[nodiscard]] const std::string& text() const { return out_; }

private:
    void write(const Section& section) {
        std::string heading = section.check;
        std::transform(heading.begin(), heading.end(), heading.begin(),
                       [](char c) { return static_cast<char>(c >= 'a' ? c - 'a' + 'A' : c); });
        out_ += "\n" + toned(Tone::bold, heading) + "  " + said(section.summary) + "\n";
        write(section.table);
        std::vector<const Finding*> findings;
        findings.reserve(section.findings.size());
        for (const Finding& finding : section.findings) {
            findings.push_back(&finding);
        }
        std::stable_sort(findings.begin(), findings.end(),
                         [](const auto* a, const auto* b) { return a->level > b->level; });
        for (const Finding* finding : findings) {
            out_ += "\n";
            write(*finding);
        }
        for (const std::string& remark : section.remarks) {
            out_ += &remark == section.remarks.data() ? "\n" : "";
            line(indent, Tone::dim, said(remark));
        }
    }

    void write(const Table& table) {
        if (table.rows.empty()) {
            return;
        }
        std::vector<std::vector<std::string>> cells;
        for (const Table::Row& row : table.rows) {
            cells.emplace_back();
            for (const std::string& cell : row.cells) {
                cells.back().push_back(said(cell));
            }
        }
        const std::vector<std::size_t> widths = widthsOf(table.headings, cells);
        if (!table.headings.empty()) {
            out_ += toned(Tone::dim, "    " + joined(table.headings, widths)) + "\n";
        }
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const Table::Row& row = table.rows[i];
            const Sign sign = row.level ? signOf(*row.level) : Sign{"✓", Tone::green};
            const bool hasSign = row.level || row.well;
            out_ += "  " + (hasSign ? toned(sign.tone, sign.text) : " ") + " " +
                    joined(cells[i], widths) + "\n";
        }
    }

    // As wide as the widest cell, and where that is too much, the widest columns give way.
    [[nodiscard]] std::vector<std::size_t>
    widthsOf(const std::vector<std::string>& headings,
             const std::vector<std::vector<std::string>>& cells) const {
        std::vector<std::size_t> widths;
        const auto widen = [&widths](const std::vector<std::string>& row) {
            widths.resize(std::max(widths.size(), row.size()));
            for (std::size_t i = 0; i < row.size(); ++i) {
                widths[i] = std::max(widths[i], columnsOf(row[i]));
            }
        };
        widen(headings);
        std::for_each(cells.begin(), cells.end(), widen);
        std::size_t used = indent + 2;
        for (const std::size_t width : widths) {
            used += width + columnGap;
        }
        while (used > width_ + columnGap) {
            auto widest = std::max_element(widths.begin(), widths.end());
            if (*widest <= 4) {
                break;
            }
            --*widest;
            --used;
        }
        return widths;
    }

    static std::string joined(const std::vector<std::string>& cells,
                              const std::vector<std::size_t>& widths) {
        std::string out;
        for (std::size_t i = 0; i < cells.size(); ++i) {
            out += fitted(cells[i], widths[i]) + std::string(columnGap, ' ');
        }
        out.erase(out.find_last_not_of(' ') + 1);
        return out;
    }

    void write(const Finding& finding) {
        const Sign sign = signOf(finding.level);
        const std::string level(name(finding.level));
        const std::string head = std::string(sign.text) + " " + level +
                                 std::string(findingIndent - indent - 2 - level.size(), ' ');
        out_ += std::string(indent, ' ') + toned(sign.tone, head);
        const std::string subject = said(finding.subject);
        const std::string id = "[" + std::string(finding.id) + "]";
        const std::string place = finding.place ? placeInWords(*finding.place) : "";
        const std::size_t room = width_ - findingIndent;
        const std::size_t taken = columnsOf(subject) + id.size() + 1;
        out_ += toned(Tone::bold, subject);
        out_ += std::string(room > taken ? room - taken + 1 : 1, ' ') + toned(Tone::dim, id) + "\n";
        if (!place.empty()) {
            line(findingIndent, Tone::dim, place);
        }
        line(findingIndent, Tone::plain, said(finding.sentence));
        if (!finding.consequence.empty()) {
            line(findingIndent, Tone::plain, said(finding.consequence));
        }
        for (const std::string& each : finding.lines) {
            out_ += std::string(findingIndent, ' ') +
                    toned(Tone::dim, "│ " + cut(saidByLog(each), room - 2)) + "\n";
        }
        if (!finding.remedy.empty()) {
            remedy(said(finding.remedy), room);
        }
        if (!finding.command.empty()) { // whole, so that it can be copied
            out_ +=
                std::string(findingIndent, ' ') + toned(Tone::bold, said(finding.command)) + "\n";
        }
    }

    void remedy(const std::string& text, std::size_t room) {
        bool isFirst = true;
        for (const std::string& each : wrapped(text, room)) {
            out_ += std::string(findingIndent - 2, ' ') +
                    (isFirst ? toned(Tone::green, "→") : " ") + " " + each + "\n";
            isFirst = false;
        }
    }

    void conclude(const Report& report) {
        std::array<std::size_t, 3> counts{};
        for (const Section& section : report.sections) {
            for (const Finding& finding : section.findings) {
                ++counts.at(static_cast<std::size_t>(finding.level));
            }
        }
        std::string text = counted(counts[2], "fault", "faults") + ", " +
                           counted(counts[1], "warning", "warnings") + ", " +
                           counted(counts[0], "note", "notes") + ".";
        const auto level = worst(report);
        const Tone tone = level ? signOf(*level).tone : Tone::green;
        out_ += "\n" + toned(tone, level ? signOf(*level).text : "✓") + " " +
                (level.value_or(Level::note) == Level::note ? "All is well: " : "") + text + "\n";
    }

    [[nodiscard]] std::string placeInWords(const Place& place) const {
        std::string out;
        const auto append = [&out](const std::string& text) {
            out += (out.empty() ? "" : " · ") + text;
        };
        if (place.line) {
            append("line " + std::to_string(*place.line) + ", column " +
                   std::to_string(place.column.value_or(1)));
        }
        if (place.record) {
            append("record " + std::to_string(*place.record));
        }
        if (!place.field.empty()) {
            append(said(place.field));
        }
        return out;
    }

    void line(std::size_t by, Tone tone, const std::string& text) {
        for (const std::string& each : wrapped(text, width_ - by)) {
            out_ += std::string(by, ' ') + toned(tone, each) + "\n";
        }
    }

    [[nodiscard]] static std::string cut(const std::string& text, std::size_t columns) {
        return columnsOf(text) > columns ? fitted(text, columns) : text;
    }

    // Masked before it is wrapped or cut, or half a secret could be left.
    [[nodiscard]] std::string said(const std::string& text) const {
        return printable(secrets_.mask(std::string_view(text)));
    }
    [[nodiscard]] std::string saidByLog(const std::string& text) const {
        return printable(secrets_.maskLogLine(text));
    }

    [[nodiscard]] std::string toned(Tone tone, const std::string& text) const {
        return doctor::toned(tone, text, color_);
    }

    const Secrets& secrets_;
    std::size_t width_;
    bool color_;
    std::string out_;
};

} // namespace

std::string textReport(const Report& report, const Secrets& secrets, const TextStyle& style) {
    Writer writer(secrets, style);
    writer.write(report);
    return writer.text();
}

} // namespace varnhold::doctor
