#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "base/json.h"
#include "base/text.h"
#include "doctor/columns.h"
#include "doctor/json_report.h"
#include "doctor/text_report.h"

namespace varnhold::doctor {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

Report sample() {
    Section section{.check = "files", .summary = "2 of 3 files can be read"};
    section.table = {.headings = {"File", "Holds"},
                     .rows = {{.level = Level::fault, .cells = {"bots.json", "can't be used"}},
                              {.well = true, .cells = {"library.json", "12 models"}}}};
    section.findings.push_back(
        {.id = "file-missing", .level = Level::note, .subject = "photo", .sentence = "Not there."});
    section.findings.push_back(
        {.id = "file-rejected",
         .level = Level::fault,
         .subject = "bots.json",
         .sentence = "No such service: \"telegram\".",
         .consequence = "Reads as an empty fleet: no bot is started or shown.",
         .remedy = "Mend it before the settings window is opened, or put a copy back.",
         .command = "chmod 600 '/a b'",
         .place =
             Place{.file = "/bots.json", .line = 1, .column = 214, .record = 3, .field = "service"},
         .lines = {"Traceback: token=abcdef"}});
    return {.made = "2026-03-04T05:06:07Z", .data = "/data", .sections = {section}};
}

TEST(TextReport, ShowsTheWorstFirstWithSignAndWord) {
    EXPECT_EQ(textReport(sample(), Secrets(), {.width = 60}),
              R"(Varnhold doctor                         2026-03-04T05:06:07Z
/data

FILES  2 of 3 files can be read
    File          Holds
  ✗ bots.json     can't be used
  ✓ library.json  12 models

  ✗ fault   bots.json                        [file-rejected]
            line 1, column 214 · record 3 · service
            No such service: "telegram".
            Reads as an empty fleet: no bot is started or
            shown.
            │ Traceback: token=••••
          → Mend it before the settings window is opened, or
            put a copy back.
            chmod 600 '/a b'

  · note    photo                             [file-missing]
            Not there.

✗ 1 fault, 0 warnings, 1 note.
)");
}

TEST(TextReport, KeepsToTheWidthOfTheTerminal) {
    for (const std::size_t width : {40U, 60U, 80U, 120U}) {
        const std::string shown = textReport(sample(), Secrets(), {.width = width});
        for (const std::string_view line : text::split(shown, '\n')) {
            EXPECT_LE(columnsOf(line), width) << line;
        }
    }
}

TEST(TextReport, HasTheSameWordsInColour) {
    const std::string plain = textReport(sample(), Secrets(), {.width = 80});
    std::string coloured = textReport(sample(), Secrets(), {.width = 80, .color = true});
    EXPECT_THAT(plain, Not(HasSubstr("\x1b")));
    EXPECT_THAT(coloured, HasSubstr("\x1b[1;31m"));
    for (std::size_t at = coloured.find('\x1b'); at != std::string::npos;
         at = coloured.find('\x1b')) {
        coloured.erase(at, coloured.find('m', at) - at + 1);
    }
    EXPECT_EQ(coloured, plain);
}

TEST(TextReport, MasksBeforeItCutsAndWraps) {
    Report report = sample();
    report.sections[0].table.rows[0].cells[1] = "a-secret-of-some-length-that-is-cut";
    report.sections[0].findings[0].sentence = "said a secret with blanks in it";
    Secrets secrets;
    secrets.add("a-secret-of-some-length-that-is-cut");
    secrets.add("secret with blanks in it");
    const std::string shown = textReport(report, secrets, {.width = 40});
    EXPECT_THAT(shown, Not(HasSubstr("a-secret")));
    EXPECT_THAT(shown, Not(HasSubstr("blanks")));
}

TEST(JsonReport, HoldsEverythingThatIsKnown) {
    const auto report = json::parse(jsonReport(sample(), Secrets()));
    ASSERT_TRUE(report);
    EXPECT_EQ((*report)["format"], 1);
    EXPECT_EQ((*report)["level"], "fault");
    const json::Value& finding = (*report)["checks"][0]["findings"][1];
    EXPECT_EQ(finding["id"], "file-rejected");
    EXPECT_EQ(finding["page"], "doctor.md#file-rejected");
    EXPECT_EQ(finding["place"].dump(),
              R"({"file":"/bots.json","line":1,"column":214,"record":3,"field":"service"})");
    EXPECT_EQ(finding["lines"][0], "Traceback: token=••••");
}

TEST(Report, EndsWithTheCodeOfItsWorstFinding) {
    Report report = sample();
    EXPECT_EQ(exitCode(report), 2);
    report.sections[0].findings[1].level = Level::warning;
    EXPECT_EQ(exitCode(report), 1);
    report.sections[0].findings[1].level = Level::note;
    EXPECT_EQ(exitCode(report), 0);
    report.sections.clear();
    EXPECT_EQ(exitCode(report), 0);
}

} // namespace
} // namespace varnhold::doctor
