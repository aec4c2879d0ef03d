#include "jobs/label_name.h"

#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <set>
#include <string>

#include "random_label.h"

namespace varnhold::services {
namespace {

std::string nameOf(const std::string& label) {
    const auto name = nameOfLabel({label});
    return name ? name->text() : "refused: " + name.error();
}

TEST(NameOfLabel, LeavesPlainLabelsAsTheyAre) {
    EXPECT_EQ(nameOf("com.ostrelleai.cos.telegramd"), "com.ostrelleai.cos.telegramd");
    EXPECT_EQ(nameOf("A-z_09.x"), "A-z_09.x");
}

TEST(NameOfLabel, WritesEveryOtherByteInHex) {
    EXPECT_EQ(nameOf("a b"), "a%20b");
    EXPECT_EQ(nameOf("50%"), "50%25");
    EXPECT_EQ(nameOf("a/../b"), "a%2F..%2Fb");
    EXPECT_EQ(nameOf("\"$x'\\"), "%22%24x%27%5C");
    EXPECT_EQ(nameOf("ü"), "%C3%BC");
    EXPECT_EQ(nameOf("\u00A0\u2027"), "%C2%A0%E2%80%A7");
}

TEST(NameOfLabel, NeverBeginsWithADot) {
    EXPECT_EQ(nameOf("."), "%2E");
    EXPECT_EQ(nameOf(".."), "%2E.");
    EXPECT_EQ(nameOf(".hidden"), "%2Ehidden");
}

TEST(NameOfLabel, RefusesWhatCouldForgeARowOrFitsNoFileName) {
    EXPECT_EQ(nameOf(""), "refused: a label can't be empty");
    for (const char* label :
         {"a\nb", "a\tb", "\r", "a\x7F", "\x1B[2J", "a\u0085b", "\u009B", "a\u2028", "\u2029b"}) {
        EXPECT_EQ(nameOf(label), "refused: a label can't hold control characters");
    }
    EXPECT_EQ(nameOf(std::string("a\0b", 3)), "refused: a label can't hold control characters");
    for (const char* label : {"\xFF", "a\xC2", "\xC2\x20", "\xE2\x80", "\xED\xA0\x80"}) {
        EXPECT_EQ(nameOf(label), "refused: a label must be text in UTF-8");
    }
    EXPECT_EQ(nameOf(std::string(225, 'a')), "refused: the label is too long");
    EXPECT_EQ(nameOf(std::string(224, 'a')), std::string(224, 'a'));
    EXPECT_EQ(nameOf(std::string(57, ' ')), "refused: the label is too long");
}

TEST(LabelOfName, TurnsEveryNameBack) {
    EXPECT_EQ(labelOfName("a%20b"), "a b");
    EXPECT_EQ(labelOfName("%2Ehidden"), ".hidden");
    EXPECT_EQ(labelOfName("com.example"), "com.example");
}

TEST(LabelOfName, KnowsNamesThatNoLabelHas) {
    for (const char* name : {"", "%", "%2", "%2g", "%zz", "a%", "%41", "%2f", ".hidden", "a b",
                             "a/b", "%0A", "%+2", "%-1", "ü"}) {
        EXPECT_EQ(labelOfName(name), std::nullopt) << name;
    }
}

TEST(LabelName, RandomTextGoesThereAndBackAndNeverShareAName) {
    std::mt19937 random(20240607); // NOLINT(cert-msc51-cpp): the same labels each time
    std::set<std::string> labels;
    std::set<std::string> names;
    for (int round = 0; round < 5000; ++round) {
        const std::string label = randomLabel(random);
        const std::string name = nameOf(label);
        EXPECT_EQ(labelOfName(name), label);
        EXPECT_EQ(name.find('/'), std::string::npos);
        labels.insert(label);
        names.insert(name);
    }
    EXPECT_EQ(labels.size(), names.size());
}

} // namespace
} // namespace varnhold::services
