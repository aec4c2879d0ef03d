// Whatever a decoder refuses, the doctor finds, with its place and what comes of it; and what a
// decoder takes, it lets be.

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "base/json.h"
#include "doctor/catalogue.h"
#include "doctor/files_check.h"
#include "doctor/json_place.h"
#include "doctor_home.h"
#include "support/formats.h"

namespace varnhold::doctor {
namespace {

using json::Value;
using testing::DoctorHome;
using testing::findingsOf;
using testing::Format;

std::string pathOfKind(const Constants& c, const std::string& kind) {
    const std::map<std::string, std::string> paths{{"bots", c.botsConfigFile},
                                                   {"library", c.modelLibraryFile},
                                                   {"chain", c.photoPrefsFile},
                                                   {"effort", c.effortPrefsFile},
                                                   {"context", c.contextPrefsFile},
                                                   {"response-mode", c.responseModeFile},
                                                   {"auth", c.authConfigFile},
                                                   {"groups", c.customGroupsFile},
                                                   {"assignments", c.chainBotAssignmentsFile},
                                                   {"preferred-provider", c.governorPrefsFile}};
    return paths.at(kind);
}

// Every value in a document, the document itself included, as a pointer into it.
void collect(const Value& value, const Value::json_pointer& at,
             std::vector<Value::json_pointer>& all) {
    all.push_back(at);
    if (value.is_object()) {
        for (const auto& [key, member] : value.items()) {
            collect(member, at / key, all);
        }
    } else if (value.is_array()) {
        for (std::size_t i = 0; i < value.size(); ++i) {
            collect(value[i], at / i, all);
        }
    }
}

std::vector<Value::json_pointer> placesIn(const Value& document) {
    std::vector<Value::json_pointer> all;
    collect(document, Value::json_pointer(), all);
    return all;
}

class BrokenFiles : public ::testing::TestWithParam<Format> {
protected:
    // What the doctor says of the text as content of the file; checks that it agrees with the
    // decoder.
    std::optional<Finding> rejection(const std::string& text) {
        const std::string path = pathOfKind(home_.constants, GetParam().kind);
        home_.write(path, text);
        const auto found = findingsOf(checkFiles(home_.around), ids::fileRejected);
        const auto decoded = GetParam().recode(text);
        EXPECT_EQ(found.size(), decoded ? 0U : 1U) << text << (decoded ? "" : decoded.error());
        if (found.empty()) {
            return std::nullopt;
        }
        EXPECT_EQ(found[0].place->file, path);
        EXPECT_FALSE(found[0].sentence.empty());
        EXPECT_FALSE(found[0].consequence.empty());
        EXPECT_FALSE(found[0].remedy.empty());
        return found[0];
    }

    const Value sample_ = *json::parse(GetParam().sample);

private:
    DoctorHome home_;
};

TEST_P(BrokenFiles, AreTracedToTheValueThatIsWrong) {
    const std::vector<Value> wrong{nullptr, true, -1, 1.5, "text", Value::array(), Value::object()};
    for (const Value::json_pointer& at : placesIn(sample_)) {
        Value marked = sample_;
        marked[at] = "HERE IT IS";
        const std::string before = marked.dump(2);
        const Place expected = placeAt(before, before.find("\"HERE IT IS\""));
        for (const Value& value : wrong) {
            Value broken = sample_;
            broken[at] = value;
            const auto finding = rejection(broken.dump(2));
            // Of a wrong value inside a list of records the record is named; what an empty object
            // lacks first is for the decoder to say.
            if (finding) {
                EXPECT_EQ(finding->place->line, expected.line) << at << " " << value;
                EXPECT_EQ(finding->place->column, expected.column) << at << " " << value;
            }
        }
    }
}

TEST_P(BrokenFiles, AreTracedToTheObjectThatLacksAKey) {
    for (const Value::json_pointer& at : placesIn(sample_)) {
        if (at.empty() || !sample_[at.parent_pointer()].is_object()) {
            continue;
        }
        Value broken = sample_;
        broken[at.parent_pointer()].erase(at.back());
        const auto finding = rejection(broken.dump(2));
        if (finding) {
            EXPECT_TRUE(finding->place->field.ends_with(at.back())) << finding->place->field;
            EXPECT_EQ(finding->sentence, "Missing.");
            EXPECT_TRUE(finding->place->line);
        }
    }
}

TEST_P(BrokenFiles, AreFoundWhereverTheyAreCutOff) {
    const std::string whole = sample_.dump(2);
    for (std::size_t length = 0; length < whole.size(); length += 3) {
        const auto finding = rejection(whole.substr(0, length));
        ASSERT_TRUE(finding) << length;
        if (length > 0) {
            const std::size_t lines =
                1 + static_cast<std::size_t>(
                        std::count(whole.begin(), whole.begin() + static_cast<long>(length), '\n'));
            EXPECT_EQ(finding->place->line, lines) << whole.substr(0, length);
        }
    }
}

TEST_P(BrokenFiles, AreFoundWithEveryKindOfNoise) {
    const std::string whole = sample_.dump();
    const std::vector<std::string> noise{whole + "x",
                                         whole + whole,
                                         "// words\n" + whole,
                                         std::string("\0", 1) + whole,
                                         whole + '\0' + "x",
                                         "\xFF" + whole,
                                         "[" + whole + ",]",
                                         "{\"a\":1e999}",
                                         std::string(600, '[') + std::string(600, ']')};
    for (const std::string& text : noise) {
        EXPECT_TRUE(rejection(text)) << text;
    }
    EXPECT_FALSE(rejection("\xEF\xBB\xBF \n" + whole)) << "a byte order mark is taken";
}

INSTANTIATE_TEST_SUITE_P(Formats, BrokenFiles, ::testing::ValuesIn(testing::formats()),
                         [](const auto& each) { return testing::testName(each.param); });

} // namespace
} // namespace varnhold::doctor
