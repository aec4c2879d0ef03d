#include <cstdint>
#include <gmock/gmock.h>
#include <string>
#include <vector>

#include "support/generator.h"

// Each record comes back from its text as it was, for generated contents; a seed that fails is
// named in the message.
namespace varnhold::testing {
namespace {

constexpr std::uint64_t seeds = 500;

template <class Make, class Encode, class Decode>
void expectRoundTrips(Make make, Encode encode, Decode decode) {
    for (std::uint64_t seed = 1; seed <= seeds; ++seed) {
        Generator generator(seed);
        const auto record = (generator.*make)();
        const std::string text = encode(record);
        const auto decoded = decode(text);
        ASSERT_TRUE(decoded) << "seed " << seed << ": " << decoded.error() << "\n" << text;
        ASSERT_EQ(*decoded, record) << "seed " << seed << "\n" << text;
        ASSERT_EQ(encode(*decoded), text) << "seed " << seed;
        ASSERT_EQ(text.find_first_of("\n\r"), std::string::npos) << "seed " << seed;
    }
}

TEST(RoundTrip, OfBots) {
    expectRoundTrips(&Generator::bots, encodeBots, decodeBots);
}

TEST(RoundTrip, OfChains) {
    expectRoundTrips(&Generator::chain, encodeChain, decodeChain);
}

TEST(RoundTrip, OfLibraries) {
    expectRoundTrips(&Generator::library, encodeLibrary, decodeLibrary);
}

TEST(RoundTrip, OfEffortPrefs) {
    expectRoundTrips(&Generator::efforts, encodeEffortPrefs, decodeEffortPrefs);
}

TEST(RoundTrip, OfContextPrefs) {
    expectRoundTrips(&Generator::budgets, encodeContextPrefs, decodeContextPrefs);
}

TEST(RoundTrip, OfResponseModes) {
    expectRoundTrips(&Generator::responseMode, encodeResponseMode, decodeResponseMode);
}

TEST(RoundTrip, OfAuthConfigs) {
    expectRoundTrips(&Generator::auth, encodeAuthConfig, decodeAuthConfig);
}

TEST(RoundTrip, OfGroups) {
    expectRoundTrips(
        &Generator::groups,
        [](const std::vector<CustomBotGroup>& groups) { return encodeGroups(groups).value(); },
        decodeGroups);
}

TEST(RoundTrip, OfAssignments) {
    expectRoundTrips(&Generator::assignments, encodeAssignments, decodeAssignments);
}

} // namespace
} // namespace varnhold::testing
