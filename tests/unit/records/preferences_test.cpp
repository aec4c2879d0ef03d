#include "records/preferences.h"

#include <gmock/gmock.h>
#include <limits>
#include <optional>
#include <string>

namespace varnhold {
namespace {

using ::testing::ElementsAre;

TEST(EffortLevel, HasItsFourCasesInOrderWithTextsAndSliderPlaces) {
    EXPECT_THAT(allEffortLevels, ElementsAre(EffortLevel::off, EffortLevel::low,
                                             EffortLevel::medium, EffortLevel::high));
    EXPECT_EQ(rawValue(EffortLevel::off), "off");
    EXPECT_EQ(rawValue(EffortLevel::low), "low");
    EXPECT_EQ(rawValue(EffortLevel::medium), "medium");
    EXPECT_EQ(rawValue(EffortLevel::high), "high");
    EXPECT_EQ(label(EffortLevel::off), "Off");
    EXPECT_EQ(label(EffortLevel::low), "Low");
    EXPECT_EQ(label(EffortLevel::medium), "Med");
    EXPECT_EQ(label(EffortLevel::high), "High");
    EXPECT_EQ(sliderValue(EffortLevel::off), 0.0);
    EXPECT_EQ(sliderValue(EffortLevel::high), 3.0);
}

TEST(EffortLevel, IsReadToTheLetter) {
    for (const EffortLevel level : allEffortLevels) {
        EXPECT_EQ(effortLevelFromRawValue(rawValue(level)), level);
    }
    EXPECT_EQ(effortLevelFromRawValue("High"), std::nullopt);
    EXPECT_EQ(effortLevelFromRawValue("Med"), std::nullopt);
    EXPECT_EQ(effortLevelFromRawValue(""), std::nullopt);
}

TEST(EffortLevel, FromASliderRoundsWithHalvesAwayFromZero) {
    EXPECT_EQ(effortLevelFromSlider(0.49), EffortLevel::off);
    EXPECT_EQ(effortLevelFromSlider(0.5), EffortLevel::low);
    EXPECT_EQ(effortLevelFromSlider(1.5), EffortLevel::medium);
    EXPECT_EQ(effortLevelFromSlider(2.5), EffortLevel::high);
    EXPECT_EQ(effortLevelFromSlider(3.4), EffortLevel::high);
    EXPECT_EQ(effortLevelFromSlider(-0.4), EffortLevel::off);
}

TEST(EffortLevel, FromASliderIsHighForEverythingElse) {
    EXPECT_EQ(effortLevelFromSlider(-0.6), EffortLevel::high);
    EXPECT_EQ(effortLevelFromSlider(-1), EffortLevel::high);
    EXPECT_EQ(effortLevelFromSlider(7), EffortLevel::high);
}

TEST(EffortLevelDeathTest, ASliderThatIsNowhereIsAMistakeInTheProgram) {
    EXPECT_DEBUG_DEATH(
        static_cast<void>(effortLevelFromSlider(std::numeric_limits<double>::quiet_NaN())),
        "isfinite");
    EXPECT_DEBUG_DEATH(
        static_cast<void>(effortLevelFromSlider(-std::numeric_limits<double>::infinity())),
        "isfinite");
}

TEST(ResponseMode, HasItsThreeCasesInOrderWithTexts) {
    EXPECT_THAT(allResponseModes,
                ElementsAre(ResponseMode::text, ResponseMode::voice, ResponseMode::both));
    EXPECT_EQ(label(ResponseMode::text), "Text");
    EXPECT_EQ(label(ResponseMode::voice), "Voice");
    EXPECT_EQ(label(ResponseMode::both), "Text + Voice");
}

TEST(ResponseMode, IsAFileOfOneStringAndNothingElse) {
    EXPECT_EQ(encodeResponseMode(ResponseMode::text), "\"text\"");
    EXPECT_EQ(decodeResponseMode("\"voice\""), ResponseMode::voice);
    EXPECT_EQ(decodeResponseMode(" \"both\"\r\n"), ResponseMode::both);
    EXPECT_FALSE(decodeResponseMode("\"text\",\"voice\""));
    EXPECT_FALSE(decodeResponseMode("text"));
    EXPECT_FALSE(decodeResponseMode("\"Text\""));
}

TEST(ResponseMode, IsRefusedAsAnObject) {
    EXPECT_FALSE(decodeResponseMode(R"({"mode":"voice"})"));
}

TEST(EffortPrefs, AreRefusedAsAWholeWithoutArchitectOrWorker) {
    EXPECT_FALSE(decodeEffortPrefs(R"({"photo":"high"})"));
    EXPECT_FALSE(decodeEffortPrefs(R"({"architect":"high","photo":"high"})"));
    EXPECT_FALSE(decodeEffortPrefs(R"({"architect":3,"worker":"low"})"));
}

TEST(EffortPrefs, TakeUnknownLevelsAsTheyStand) {
    const auto prefs = decodeEffortPrefs(R"({"architect":"extreme","worker":"","photo":null})");
    ASSERT_TRUE(prefs) << prefs.error();
    EXPECT_EQ(*prefs, (EffortPrefs{.architect = "extreme", .worker = ""}));
}

TEST(EffortPrefs, AreReachedByTheKeysOfTheChainsAlone) {
    EffortPrefs prefs{.architect = "low", .worker = "off"};
    setEffort(prefs, "worker", "high");
    setEffort(prefs, "video", "medium");
    setEffort(prefs, "nobody", "high");
    EXPECT_EQ(prefs, (EffortPrefs{.architect = "low", .worker = "high", .video = "medium"}));
    EXPECT_EQ(effortOf(prefs, "worker"), "high");
    EXPECT_EQ(effortOf(prefs, "video"), "medium");
    EXPECT_EQ(effortOf(prefs, "voice"), std::nullopt);
    EXPECT_EQ(effortOf(prefs, "nobody"), std::nullopt);
}

TEST(ContextPrefs, AreReachedByTheKeysOfTheChainsAlone) {
    ContextPrefs prefs;
    setBudget(prefs, "voice", 8000);
    setBudget(prefs, "nobody", 1);
    EXPECT_EQ(prefs, ContextPrefs{.voice = 8000});
    EXPECT_EQ(budgetOf(prefs, "voice"), 8000);
    EXPECT_EQ(budgetOf(prefs, "photo"), std::nullopt);
    EXPECT_EQ(budgetOf(prefs, "nobody"), std::nullopt);
}

TEST(ContextPrefs, BeginWithoutAnyBudget) {
    EXPECT_EQ(encodeContextPrefs({}), "{}");
}

TEST(ContextPrefs, AreAcceptedEmpty) {
    EXPECT_EQ(decodeContextPrefs("{}"), ContextPrefs{});
    EXPECT_EQ(decodeContextPrefs(R"({"architect":null})"), ContextPrefs{});
}

TEST(ContextPrefs, WriteNothingChosenAsZero) {
    EXPECT_EQ(encodeContextPrefs({.architect = 0, .governor = 2000000}),
              R"({"architect":0,"governor":2000000})");
}

TEST(ContextPrefs, TakeWholeNumbersHoweverWritten) {
    for (const char* number : {"8000", "8000.0", "8e3", "80000e-1"}) {
        const auto prefs = decodeContextPrefs("{\"worker\":" + std::string(number) + "}");
        ASSERT_TRUE(prefs) << number << ": " << prefs.error();
        EXPECT_EQ(prefs->worker, 8000) << number;
    }
    EXPECT_EQ(decodeContextPrefs(R"({"worker":-0})")->worker, 0);
    EXPECT_EQ(decodeContextPrefs(R"({"worker":9223372036854775807})")->worker, INT64_MAX);
    EXPECT_EQ(decodeContextPrefs(R"({"worker":-9223372036854775808})")->worker, INT64_MIN);
}

TEST(ContextPrefs, AreRefusedForAFractionOrANumberBeyondRange) {
    for (const char* number : {"31999.6", "1e30", "9223372036854775808", "-9223372036854775809",
                               "18446744073709551616", "1e400", "true", "\"5\"", "[]"}) {
        EXPECT_FALSE(decodeContextPrefs("{\"worker\":" + std::string(number) + "}")) << number;
    }
}

} // namespace
} // namespace varnhold
