#include "platform/background.h"

#include <gmock/gmock.h>
#include <optional>
#include <string>
#include <vector>

#include "support/fake_platform.h"

namespace varnhold::testing {
namespace {

using platform::Alive;
using platform::Priority;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(Background, DoesTheWorkElsewhereAndGivesItsResultBackOnTheMainThread) {
    FakePlatform platform;
    const Alive owner;
    std::vector<std::string> events;
    platform::background(
        platform.interfaces.queues, Priority::utility, owner,
        [&events] {
            events.emplace_back("work");
            return 7;
        },
        [&events](int result) { events.push_back("then " + std::to_string(result)); });
    EXPECT_THAT(events, IsEmpty());
    EXPECT_THAT(platform.priorities, ElementsAre(Priority::utility));
    platform.runBackground();
    EXPECT_THAT(events, ElementsAre("work"));
    platform.runMain();
    EXPECT_THAT(events, ElementsAre("work", "then 7"));
}

TEST(Background, DoesTheWorkButDropsItsResultOnceTheOwnerHasGone) {
    FakePlatform platform;
    std::optional<Alive> owner(std::in_place);
    std::vector<std::string> events;
    platform::background(
        platform.interfaces.queues, Priority::utility, *owner,
        [&events] {
            events.emplace_back("work");
            return 7;
        },
        [&events](int) { events.emplace_back("then"); });
    platform.runBackground();
    owner.reset();
    platform.settle();
    EXPECT_THAT(events, ElementsAre("work"));
}

TEST(WhileAlive, HandsOnWhatItIsGivenUntilTheOwnerHasGone) {
    std::optional<Alive> owner(std::in_place);
    std::vector<std::string> texts;
    auto take = owner->whileAlive([&texts](const std::string& text) { texts.push_back(text); });
    take("one");
    owner.reset();
    take("two");
    EXPECT_THAT(texts, ElementsAre("one"));
}

} // namespace
} // namespace varnhold::testing
