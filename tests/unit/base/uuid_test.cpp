#include "base/uuid.h"

#include <gmock/gmock.h>
#include <set>

namespace varnhold {
namespace {

constexpr const char* canonical = "46717E56-E629-5AE3-8B57-A557FDE5BD65";

TEST(Uuid, ReadsEitherCaseAndWritesCapitals) {
    ASSERT_TRUE(Uuid::parse(canonical));
    EXPECT_EQ(Uuid::parse(canonical)->text(), canonical);
    EXPECT_EQ(Uuid::parse("46717e56-e629-5ae3-8b57-a557fde5bd65"), Uuid::parse(canonical));
}

TEST(Uuid, TakesAllZeroAsAnIdentity) {
    EXPECT_EQ(Uuid::parse("00000000-0000-0000-0000-000000000000"), Uuid());
}

TEST(Uuid, RefusesBracesMissingHyphensAndAnythingMore) {
    EXPECT_FALSE(Uuid::parse(""));
    EXPECT_FALSE(Uuid::parse("{46717E56-E629-5AE3-8B57-A557FDE5BD65}"));
    EXPECT_FALSE(Uuid::parse("46717E56E6295AE38B57A557FDE5BD65"));
    EXPECT_FALSE(Uuid::parse("46717E56-E629-5AE3-8B57-A557FDE5BD65 "));
    EXPECT_FALSE(Uuid::parse("46717E56-E629-5AE3-8B57-A557FDE5BD6"));
    EXPECT_FALSE(Uuid::parse("46717E56-E629-5AE3-8B57-A557FDE5BD6G"));
    EXPECT_FALSE(Uuid::parse("46717E56+E629-5AE3-8B57-A557FDE5BD65"));
}

TEST(Uuid, IsFreshEachTimeAndOfTheRandomKind) {
    std::set<Uuid> seen;
    for (int i = 0; i < 1000; ++i) {
        const Uuid id = Uuid::random();
        EXPECT_TRUE(seen.insert(id).second);
        EXPECT_EQ(id.text()[14], '4');
        EXPECT_THAT("89AB", ::testing::HasSubstr(id.text().substr(19, 1)));
        EXPECT_EQ(Uuid::parse(id.text()), id);
    }
}

} // namespace
} // namespace varnhold
