#include <string>
#include <vector>

#include "crew.h"
#include "support/temporary_home.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

struct Attaching : Crew {
    TemporaryHome home;
    CustomBotGroup& group = make();
    std::string folder = home.at("folder");
    std::string charter = home.at("folder/charter.txt");
    std::string notes = home.at("notes.txt");

    Attaching() {
        home.write(charter, "Be kind.");
        home.write(notes, "");
    }
};

TEST(Attach, ListsThePathsInOrderAndTheirDoctrine) {
    Attaching crew;
    crew.column->attach(crew.group.id, {crew.notes, crew.folder});
    EXPECT_THAT(crew.group.attachedPaths, ElementsAre(crew.notes, crew.folder));
    EXPECT_THAT(crew.group.doctrine, ElementsAre(crew.charter));
    EXPECT_EQ(crew.saves, 1);
}

TEST(Attach, OfTheSameFolderTwiceAddsNothing) {
    Attaching crew;
    crew.column->attach(crew.group.id, {crew.folder});
    crew.column->attach(crew.group.id, {crew.folder, crew.folder});
    EXPECT_THAT(crew.group.attachedPaths, SizeIs(1));
    EXPECT_THAT(crew.group.doctrine, SizeIs(1));
    EXPECT_EQ(crew.saves, 2);
}

TEST(Attach, FindsNoFileThatCameIntoAFolderLater) {
    Attaching crew;
    crew.column->attach(crew.group.id, {crew.folder});
    crew.home.write(crew.home.at("folder/mission.txt"), "");
    EXPECT_THAT(crew.group.doctrine, SizeIs(1));
    crew.column->attach(crew.group.id, {crew.folder}); // attaching again does
    EXPECT_THAT(crew.group.doctrine, SizeIs(2));
}

TEST(Attach, ToAGroupThatHasGoneDoesNothing) {
    Attaching crew;
    crew.column->attach(Uuid::random(), {crew.folder});
    EXPECT_EQ(crew.saves, 0);
}

TEST(Chips, RemovedFromTheAttachmentsLeaveTheirDoctrine) {
    Attaching crew;
    crew.column->attach(crew.group.id, {crew.folder});
    crew.column->attachmentChips(crew.group)->onRemove(crew.folder);
    EXPECT_THAT(crew.group.attachedPaths, IsEmpty());
    EXPECT_THAT(crew.group.doctrine, ElementsAre(crew.charter));
    EXPECT_EQ(crew.saves, 2);
}

TEST(Chips, RemovedFromTheDoctrineLeaveTheAttachments) {
    Attaching crew;
    crew.column->attach(crew.group.id, {crew.folder});
    crew.column->doctrineChips(crew.group)->onRemove(crew.charter);
    EXPECT_THAT(crew.group.attachedPaths, ElementsAre(crew.folder));
    EXPECT_THAT(crew.group.doctrine, IsEmpty());
}

TEST(Chips, RemoveEveryEqualPathAndNothingFromAGroupThatHasGone) {
    Attaching crew;
    crew.group.attachedPaths = {"/a", "/b", "/a"};
    const PathChipsView chips = *crew.column->attachmentChips(crew.group);
    chips.onRemove(chips.paths[0]);
    EXPECT_THAT(crew.group.attachedPaths, ElementsAre("/b"));
    crew.groups.clear();
    chips.onRemove("/b");
    EXPECT_EQ(crew.saves, 1);
}

TEST(Chips, AreNotThereAtAllForAnEmptyList) {
    Attaching crew;
    EXPECT_FALSE(crew.column->doctrineChips(crew.group));
    EXPECT_FALSE(crew.column->attachmentChips(crew.group));
    crew.column->attach(crew.group.id, {crew.notes}); // attached, but no doctrine
    EXPECT_TRUE(crew.column->attachmentChips(crew.group));
    EXPECT_FALSE(crew.column->doctrineChips(crew.group));
}

TEST(Chips, ShowTheLastComponentAndWhetherThereIsAFolderNow) {
    Attaching crew;
    crew.group.attachedPaths = {crew.folder, crew.notes, "/gone/away"};
    std::vector<std::string> shown;
    for (const PathChip& chip : crew.column->attachmentChips(crew.group)->chips()) {
        shown.push_back(chip.name + " " + chip.image);
    }
    EXPECT_THAT(shown, ElementsAre("folder folder.fill", "notes.txt doc.fill", "away doc.fill"));
}

TEST(Objectives, OpenAndCloseByGroup) {
    Attaching crew;
    const Uuid id = crew.group.id;
    crew.column->toggleObjectives(id);
    EXPECT_THAT(crew.column->expandedObjectives(), ElementsAre(id));
    crew.column->toggleObjectives(id);
    EXPECT_THAT(crew.column->expandedObjectives(), IsEmpty());
    EXPECT_EQ(crew.saves, 0);
}

TEST(Objectives, SaveAtEachChange) {
    Attaching crew;
    const Uuid id = crew.group.id;
    crew.column->setObjectives(id, "W");
    crew.column->setObjectives(id, "Win");
    crew.column->setObjectives(id, "Win");
    EXPECT_EQ(crew.column->objectives(id), "Win");
    EXPECT_EQ(crew.saves, 2);
}

TEST(Objectives, OpenForAGroupThatWasDeletedDoNoHarm) {
    Attaching crew;
    const Uuid id = crew.group.id;
    crew.column->toggleObjectives(id);
    crew.sheet.remove(id);
    EXPECT_THAT(crew.column->expandedObjectives(), ElementsAre(id));
    crew.column->setObjectives(id, "late");
    EXPECT_EQ(crew.column->objectives(id), "");
    EXPECT_EQ(crew.saves, 1);
}

} // namespace
} // namespace varnhold::testing
