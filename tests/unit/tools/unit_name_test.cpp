#include "launchctl/unit_name.h"

#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <set>
#include <string>
#include <string_view>

#include "random_label.h"

namespace varnhold::services {
namespace {

std::string unitOf(const std::string& label, unsigned generation = 0) {
    const auto name = nameOfLabel({label});
    return name ? unitOfJob(*name, generation) : "refused: " + name.error();
}

std::optional<Label> labelOfUnit(std::string_view unit) {
    const auto name = jobOfUnit(unit);
    return name ? std::optional(name->label()) : std::nullopt;
}

TEST(UnitOfLabel, LeavesPlainLabelsReadable) {
    EXPECT_EQ(unitOf("com.ostrelleai.cos.telegramd"),
              "varnhold-job-com.ostrelleai.cos.telegramd.service");
}

TEST(UnitOfLabel, WritesEveryOtherByteAsAnEscape) {
    EXPECT_EQ(unitOf("a b/c@d:e\\x20%"),
              "varnhold-job-a\\x20b\\x2Fc\\x40d\\x3Ae\\x5Cx20\\x25.service");
    EXPECT_EQ(unitOf("ü"), "varnhold-job-\\xC3\\xBC.service");
}

TEST(UnitOfLabel, NamesLaterGenerations) {
    EXPECT_EQ(unitOf("a@1", 12), "varnhold-job-a\\x401@12.service");
    EXPECT_EQ(patternOfGenerations(*nameOfLabel({"a*"})), "varnhold-job-a\\x2A@*.service");
}

TEST(UnitOfLabel, RefusesWhatNoManagerTakes) {
    EXPECT_EQ(unitOf(""), "refused: a label can't be empty");
    EXPECT_EQ(unitOf("a\nb"), "refused: a label can't hold control characters");
    EXPECT_EQ(unitOf(std::string(225, 'a')), "refused: the label is too long");
    EXPECT_LE(unitOf(std::string(224, 'a'), 999).size(), 255U);
    EXPECT_LE(unitOf(std::string(56, ' '), 999).size(), 255U);
}

TEST(LabelOfUnit, TurnsEveryGenerationBack) {
    EXPECT_EQ(labelOfUnit("varnhold-job-a\\x20b.service"), "a b");
    EXPECT_EQ(labelOfUnit("varnhold-job-a\\x401@12.service"), "a@1");
}

TEST(LabelOfUnit, KnowsUnitsThatAreNotOurs) {
    for (const char* unit :
         {"dbus.service", "varnhold-agents.service", "varnhold-job-.service",
          "varnhold-job-a.socket", "varnhold-job.service", "varnhold-job-a@.service",
          "varnhold-job-a@0.service", "varnhold-job-a@x.service", "varnhold-job-a%20b.service",
          "varnhold-job-\\x41.service", "varnhold-job-a\\x0Ab.service", ".service", ""}) {
        EXPECT_EQ(labelOfUnit(unit), std::nullopt) << unit;
    }
}

TEST(UnitName, RandomTextGoesThereAndBackAndNeverShareAName) {
    std::mt19937 random(20240608); // NOLINT(cert-msc51-cpp): the same labels each time
    std::set<std::string> labels;
    std::set<std::string> units;
    for (int round = 0; round < 5000; ++round) {
        const std::string label = randomLabel(random);
        const std::string unit = unitOf(label, static_cast<unsigned>(round % 3));
        EXPECT_EQ(labelOfUnit(unit), label);
        EXPECT_EQ(unit.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"
                                         "0123456789:_.-\\@"),
                  std::string::npos);
        labels.insert(label);
        units.insert(unitOf(label));
    }
    EXPECT_EQ(labels.size(), units.size());
}

} // namespace
} // namespace varnhold::services
