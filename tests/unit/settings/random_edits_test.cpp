#include "random_edits.h"

#include <cstdint>
#include <cstdlib>
#include <map>
#include <optional>
#include <string>

#include "base/files.h"
#include "support/long_runs.h"

namespace varnhold::testing {
namespace {

constexpr int everydayOperations = 5000;
constexpr int operationsPerState = 250;
constexpr std::uint64_t firstSeed = 20260304;
// Each save syncs fifteen files; in memory that costs nothing.
constexpr const char* memoryFolder = "/dev/shm";

class InMemory final {
public:
    InMemory() {
        if (files::isDirectory(memoryFolder)) {
            ::setenv("TMPDIR", memoryFolder, 1);
        }
    }
    ~InMemory() {
        if (before_) {
            ::setenv("TMPDIR", before_->c_str(), 1);
        } else {
            ::unsetenv("TMPDIR");
        }
    }
    InMemory(const InMemory&) = delete;
    InMemory& operator=(const InMemory&) = delete;

private:
    std::optional<std::string> before_ = [] {
        const char* value = std::getenv("TMPDIR");
        return value == nullptr ? std::nullopt : std::optional<std::string>(value);
    }();
};

TEST(RandomEdits, LeaveListsSavesAndFilesAsTheRulesSay) {
    const InMemory homes;
    const int operations = randomOperations(everydayOperations);
    ASSERT_GT(operations, 0);
    std::map<std::string, int> done;
    std::optional<RandomEdits> edits;
    for (int i = 0; i < operations; ++i) {
        if (i % operationsPerState == 0) {
            edits.emplace(firstSeed + static_cast<std::uint64_t>(i));
            ASSERT_EQ(edits->difference(), "") << "before the first edit";
        }
        const std::string name = edits->step();
        ++done[name];
        ASSERT_EQ(edits->difference(), "")
            << "after " << name << ", edit " << i % operationsPerState << " of seed "
            << firstSeed + static_cast<std::uint64_t>(i - i % operationsPerState);
    }
    if (operations >= everydayOperations) {
        EXPECT_EQ(done.size(), 13U) << "every kind of edit has its turn";
    }
}

} // namespace
} // namespace varnhold::testing
