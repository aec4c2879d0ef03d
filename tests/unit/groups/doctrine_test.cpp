#include "groups/doctrine.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <string>
#include <vector>

#include "support/temporary_home.h"

namespace varnhold::testing {
namespace {

using Doctrine::extract;
using Doctrine::isDoctrineFile;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
namespace fs = std::filesystem;

// A name alone, with nothing at its path.
bool qualifies(const std::string& name) {
    return isDoctrineFile("/nowhere/" + name);
}

TEST(DoctrineFile, QualifiesWhateverTheCaseOfNameAndExtension) {
    EXPECT_TRUE(qualifies("README.MD"));
    EXPECT_TRUE(qualifies("Notes-Agent.TXT"));
    EXPECT_TRUE(qualifies("MISSION.Markdown"));
    EXPECT_TRUE(qualifies("charter.MDX"));
}

TEST(DoctrineFile, IsNoneWithAnotherExtensionWhateverItsName) {
    EXPECT_FALSE(qualifies("my_agent.py"));
    EXPECT_FALSE(qualifies("doctrine.md5"));
    EXPECT_FALSE(qualifies("claude.json"));
}

TEST(DoctrineFile, IsNoneForSpecAloneButOneForASpecOfSomething) {
    EXPECT_FALSE(qualifies("spec.md"));
    EXPECT_TRUE(qualifies("api.spec.md"));
    EXPECT_FALSE(qualifies("api.spec.md.txt"));
    EXPECT_FALSE(qualifies("api.spec.mdx"));
    EXPECT_TRUE(qualifies("API.SPEC.MD"));
    EXPECT_FALSE(qualifies("api.spec.txt"));
}

TEST(DoctrineFile, QualifiesByAKeywordAnywhereInItsName) {
    EXPECT_TRUE(qualifies("Reclaude.txt"));
    EXPECT_TRUE(qualifies("agenda-agent-list.md"));
    for (const char* keyword :
         {"doctrine", "agent", "protocol", "claude", "readme", "charter", "mission"}) {
        EXPECT_TRUE(qualifies(std::string("x") + keyword + "x.txt")) << keyword;
    }
    EXPECT_FALSE(qualifies("notes.md"));
}

TEST(DoctrineFile, IsNoneWithoutAnExtension) {
    EXPECT_FALSE(qualifies("readme"));
    EXPECT_FALSE(qualifies("readme."));
    EXPECT_FALSE(qualifies(".md"));
}

TEST(DoctrineFile, QualifiesUpToFortyThousandBytes) {
    const TemporaryHome home;
    const std::string path = home.at("readme.md");
    home.write(path, std::string(Doctrine::maxBytes, 'x'));
    EXPECT_TRUE(isDoctrineFile(path));
    home.write(path, std::string(Doctrine::maxBytes + 1, 'x'));
    EXPECT_FALSE(isDoctrineFile(path));
}

TEST(DoctrineFile, QualifiesAsALinkByTheSizeOfTheLink) {
    const TemporaryHome home;
    home.write(home.at("large"), std::string(1000000, 'x'));
    fs::create_symlink(home.at("large"), home.at("readme.md"));
    EXPECT_TRUE(isDoctrineFile(home.at("readme.md")));
}

TEST(DoctrineFile, IsNoneWhereNoSettingsFileCanNameIt) {
    EXPECT_FALSE(isDoctrineFile("/x/doctrine-\xFF.md"));
    EXPECT_FALSE(isDoctrineFile("/\xC3/readme.md"));
    EXPECT_TRUE(isDoctrineFile("/\xC3\xA9/readme.md"));
}

TEST(DoctrineFile, IsJudgedByTheLastPieceOfItsPathOnly) {
    EXPECT_FALSE(isDoctrineFile("/readme/notes.md"));
    EXPECT_TRUE(isDoctrineFile("readme.md"));
    EXPECT_TRUE(isDoctrineFile("/nowhere/readme.md/"));
    EXPECT_FALSE(isDoctrineFile(""));
}

TEST(Extract, LeavesOutFilesThatNoSettingsFileCanName) {
    const TemporaryHome home;
    home.write(home.at("x/doctrine-\xFF.md"), "");
    home.write(home.at("x/\xFE/readme.md"), "");
    home.write(home.at("x/readme.md"), "");
    EXPECT_EQ(extract({home.at("x")}), std::vector{home.at("x/readme.md")});
}

TEST(Extract, KeepsAQualifyingPathWithNothingAtIt) {
    EXPECT_THAT(extract({"/nowhere/readme.md", "/nowhere/notes.md"}),
                ElementsAre("/nowhere/readme.md"));
}

TEST(Extract, TakesFilesOfTheFolderAndItsSubfoldersAndNoDeeper) {
    const TemporaryHome home;
    home.write(home.at("x/readme.md"), "");
    home.write(home.at("x/a/readme.md"), "");
    home.write(home.at("x/a/b/readme.md"), "");
    home.write(home.at("x/a/b/c/readme.md"), "");
    EXPECT_THAT(extract({home.at("x")}),
                ElementsAre(home.at("x/a/readme.md"), home.at("x/readme.md")));
}

TEST(Extract, TakesAFolderNamedLikeAFileAtLevelsOneAndTwo) {
    const TemporaryHome home;
    home.makeFolder(home.at("x/readme.md/agent.md/claude.md"));
    EXPECT_THAT(extract({home.at("x")}),
                ElementsAre(home.at("x/readme.md"), home.at("x/readme.md/agent.md")));
}

TEST(Extract, DoesNotTakeAnAttachedFolderForAFile) {
    const TemporaryHome home;
    home.makeFolder(home.at("readme.md"));
    EXPECT_THAT(extract({home.at("readme.md")}), IsEmpty());
}

TEST(Extract, LeavesHiddenFilesOutUnlessTheyAreAttachedThemselves) {
    const TemporaryHome home;
    home.write(home.at("x/.readme.md"), "");
    home.write(home.at("x/.hidden/readme.md"), "");
    EXPECT_THAT(extract({home.at("x")}), IsEmpty());
    EXPECT_THAT(extract({home.at("x/.readme.md")}), ElementsAre(home.at("x/.readme.md")));
}

TEST(Extract, NamesAFileOnceThatIsAttachedAndFoundByWalking) {
    const TemporaryHome home;
    home.write(home.at("x/a/readme.md"), "");
    home.write(home.at("x/b/readme.md"), "");
    EXPECT_THAT(extract({home.at("x/b/readme.md"), home.at("x"), home.at("x")}),
                ElementsAre(home.at("x/b/readme.md"), home.at("x/a/readme.md")));
}

TEST(Extract, ComparesPathsAsTheyAreSpelled) {
    const TemporaryHome home;
    home.write(home.at("x/readme.md"), "");
    EXPECT_THAT(extract({home.at("x/./readme.md"), home.at("x/readme.md")}),
                ElementsAre(home.at("x/./readme.md"), home.at("x/readme.md")));
}

TEST(Extract, LeavesThePathOfALinkAsGiven) {
    const TemporaryHome home;
    home.write(home.at("elsewhere/text"), "");
    home.makeFolder(home.at("x"));
    fs::create_symlink(home.at("elsewhere/text"), home.at("x/readme.md"));
    fs::create_symlink(home.at("nothing"), home.at("x/claude.md"));
    EXPECT_THAT(extract({home.at("x"), home.at("x/readme.md")}),
                ElementsAre(home.at("x/claude.md"), home.at("x/readme.md")));
}

TEST(Extract, EntersNoLinkToAFolder) {
    const TemporaryHome home;
    home.write(home.at("elsewhere/readme.md"), "");
    home.makeFolder(home.at("x"));
    fs::create_directory_symlink(home.at("elsewhere"), home.at("x/link"));
    EXPECT_THAT(extract({home.at("x"), home.at("x/link")}), IsEmpty());
}

TEST(Extract, GivesWhatItHasWhereAFolderCannotBeRead) {
    const TemporaryHome home;
    home.write(home.at("x/readme.md"), "");
    EXPECT_THAT(extract({home.at("missing"), home.at("x"), home.at("x/readme.md/below")}),
                ElementsAre(home.at("x/readme.md")));
}

TEST(Extract, CopesWithHundredsOfFiles) {
    const TemporaryHome home;
    for (int i = 0; i < 300; ++i) {
        home.write(home.at("x/agent-" + std::to_string(i) + ".md"), "");
        home.write(home.at("x/notes-" + std::to_string(i) + ".md"), "");
    }
    EXPECT_THAT(extract({home.at("x")}), SizeIs(300));
}

} // namespace
} // namespace varnhold::testing
