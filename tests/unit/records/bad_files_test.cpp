#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <string>
#include <vector>

#include "base/json.h"
#include "support/formats.h"
#include "support/generator.h"
#include "support/temporary_home.h"

// Every kind of file is put to the same trials of what can stand at its path.
namespace varnhold::testing {
namespace {

namespace fs = std::filesystem;

class BadFile : public ::testing::TestWithParam<Format> {
protected:
    [[nodiscard]] auto reread() const { return GetParam().reread(path); }
    [[nodiscard]] auto expected() const { return GetParam().recode(GetParam().sample); }

    TemporaryHome home;
    std::string path = home.at("folder/file.json");
};

TEST_P(BadFile, IsReadWhereItIsGood) {
    home.write(path, GetParam().sample);
    EXPECT_EQ(reread(), expected());
}

TEST_P(BadFile, IsRefusedWhereItIsMissingAndNotCreated) {
    EXPECT_FALSE(reread());
    home.makeFolder(home.at("folder"));
    EXPECT_FALSE(reread());
    EXPECT_FALSE(fs::exists(path));
}

TEST_P(BadFile, IsRefusedWhereAFolderStandsInItsPlace) {
    home.makeFolder(path);
    EXPECT_FALSE(reread());
}

TEST_P(BadFile, IsRefusedWhereItCannotBeReached) {
    home.write(home.at("folder"), "a file where a folder should be");
    EXPECT_FALSE(reread());
}

TEST_P(BadFile, IsRefusedWhereItIsEmpty) {
    home.write(path, "");
    EXPECT_FALSE(reread());
}

TEST_P(BadFile, IsReadThroughALink) {
    home.write(home.at("elsewhere"), GetParam().sample);
    home.makeFolder(home.at("folder"));
    fs::create_symlink("../elsewhere", path);
    EXPECT_EQ(reread(), expected());
}

TEST_P(BadFile, IsRefusedThroughALinkToNothingOrToItself) {
    home.makeFolder(home.at("folder"));
    fs::create_symlink("../nothing", path);
    EXPECT_FALSE(reread());
    fs::remove(path);
    fs::create_symlink("file.json", path);
    EXPECT_FALSE(reread());
}

INSTANTIATE_TEST_SUITE_P(Formats, BadFile, ::testing::ValuesIn(formats()),
                         [](const auto& each) { return testName(each.param); });

constexpr int many = 10000;

template <class Record, class Make>
std::vector<Record> manyOf(Make make) {
    Generator generator(1);
    std::vector<Record> records;
    for (int i = 0; i < many; ++i) {
        records.push_back((generator.*make)());
    }
    return records;
}

TEST(ManyEntries, AreReadInAChain) {
    const auto models = manyOf<AIModelItem>(&Generator::model);
    EXPECT_EQ(decodeChain(encodeChain(models)), models);
}

TEST(ManyEntries, AreReadInALibrary) {
    const ModelLibrary library{manyOf<AIModelItem>(&Generator::model)};
    EXPECT_EQ(decodeLibrary(encodeLibrary(library)), library);
}

TEST(ManyEntries, AreReadInBots) {
    const auto bots = manyOf<BotConfig>(&Generator::bot);
    EXPECT_EQ(decodeBots(encodeBots(bots)), bots);
}

TEST(ManyEntries, AreReadInGroups) {
    const auto groups = manyOf<CustomBotGroup>(&Generator::group);
    EXPECT_EQ(decodeGroups(encodeGroups(groups).value()), groups);
}

TEST(ManyEntries, AreReadInAssignments) {
    ChainBotAssignments assignments;
    for (int i = 0; i < many; ++i) {
        assignments["chain " + std::to_string(i)] = {"a", "b"};
        assignments["architect"].push_back("com.ostrelleai.bot" + std::to_string(i));
    }
    EXPECT_EQ(decodeAssignments(encodeAssignments(assignments)), assignments);
}

TEST(ManyEntries, AreRefusedForOneBadOneAtTheEnd) {
    std::string text = encodeChain(manyOf<AIModelItem>(&Generator::model));
    text.replace(text.size() - 1, 1, R"(,{"id":"i"}])");
    const auto models = decodeChain(text);
    ASSERT_FALSE(models);
    EXPECT_THAT(models.error(), ::testing::StartsWith("[10000].name"));
}

} // namespace
} // namespace varnhold::testing
