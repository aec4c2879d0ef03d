#include <array>
#include <csignal>
#include <sys/resource.h>
#include <vector>

#include "base/files.h"
#include "editing.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

// No file may grow meanwhile, not even for a superuser.
class FullDisk final {
public:
    FullDisk() : oldHandler_(std::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &old_);
        const rlimit none{0, old_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &none);
    }
    ~FullDisk() {
        ::setrlimit(RLIMIT_FSIZE, &old_);
        std::signal(SIGXFSZ, oldHandler_);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit old_{};
    void (*oldHandler_)(int);
};

TEST(LibraryDrop, TakesTheRowOutOfItsChainAndSaves) {
    Editing settings;
    settings.view->videoModels = {model("a", "A"), model("b", "B")};
    settings.view->draggingItem = model("b", "B");
    EXPECT_TRUE(settings.dropOnLibrary("B"));
    EXPECT_FALSE(settings.view->draggingItem);
    EXPECT_THAT(settings.ids(TargetList::video), ElementsAre("a"));
    EXPECT_EQ(settings.newSaves(), 1);
    EXPECT_EQ(settings.fileOf(TargetList::video), encodeChain({model("a", "A")}));
}

TEST(LibraryDrop, OfARowThatStandsInTheLibraryOnlyChangesNothing) {
    Editing settings;
    settings.view->directModels = {model("m", "ROW")};
    settings.view->workerModels = {model("m", "COPY")};
    settings.dropOnLibrary("ROW");
    settings.dropOnLibrary("m");
    EXPECT_THAT(settings.view->directModels, SizeIs(1));
    EXPECT_THAT(settings.view->workerModels, SizeIs(1));
    EXPECT_EQ(settings.newSaves(), 0);
}

TEST(LibraryDrop, RemovesOnlyTheCopyInTheEarliestChainWorkerFirst) {
    Editing settings;
    const std::array order{TargetList::worker, TargetList::architect, TargetList::photo,
                           TargetList::video,  TargetList::voice,     TargetList::governor};
    for (const TargetList list : order) {
        settings.view->chainBinding(list) = {model("m", "TWIN")};
    }
    for (const TargetList list : order) {
        settings.dropOnLibrary("TWIN");
        EXPECT_THAT(settings.view->chainArray(list), IsEmpty());
    }
}

TEST(LibraryDrop, OfTwoRowsWithOneUidInAChainRemovesTheFirst) {
    Editing settings;
    settings.view->workerModels = {model("x"), model("a", "TWIN"), model("b", "TWIN")};
    settings.dropOnLibrary("TWIN");
    EXPECT_THAT(settings.ids(TargetList::worker), ElementsAre("x", "b"));
}

struct Library : Editing {
    void store(std::vector<AIModelItem> models) {
        write(constants.modelLibraryFile, encodeLibrary({std::move(models)}));
        view->refresh();
    }
    [[nodiscard]] std::vector<AIModelItem> stored() const {
        return valueOrEmpty(readLibrary(constants.modelLibraryFile)).models;
    }
};

TEST(DeleteLibraryModel, OnAChainRowDeletesFromTheFileAndLeavesTheChain) {
    Library settings;
    settings.store({model("m"), model("n")});
    settings.drop("m", TargetList::worker);
    const auto row = settings.view->modelRow(settings.view->workerModels[0]);
    EXPECT_EQ(settings.newSaves(), 1);
    row.onDelete();
    EXPECT_THAT(settings.stored(), ElementsAre(model("n")));
    EXPECT_THAT(settings.view->directModels, ElementsAre(model("n")));
    EXPECT_THAT(settings.ids(TargetList::worker), ElementsAre("m"));
    EXPECT_EQ(settings.newSaves(), 0);
}

TEST(DeleteLibraryModel, TakesAllEntriesOfTheModelAndAllWithTheUid) {
    Library settings;
    settings.store(
        {model("m", "1"), model("keep", "2"), model("m", "3"), model("other", "1"), model("m")});
    settings.view->deleteLibraryModel(model("m", "1"));
    EXPECT_THAT(settings.stored(), ElementsAre(model("keep", "2")));
}

TEST(DeleteLibraryModel, WritesOneCompactLine) {
    Library settings;
    settings.store({model("m"), model("n")});
    settings.view->deleteLibraryModel(model("m"));
    EXPECT_EQ(settings.read(settings.constants.modelLibraryFile), encodeLibrary({{model("n")}}));
}

TEST(DeleteLibraryModel, OfTheLastLeavesAnEmptyLibrary) {
    Library settings;
    settings.store({model("m")});
    settings.view->deleteLibraryModel(settings.view->directModels[0]);
    EXPECT_EQ(settings.read(settings.constants.modelLibraryFile), R"({"models":[]})");
    EXPECT_THAT(settings.view->directModels, IsEmpty());
}

TEST(DeleteLibraryModel, WithAnUnreadableFileDoesNotEvenRefresh) {
    Library settings;
    settings.store({model("m")});
    settings.home.write(settings.home.at(".claude.json"), "");
    settings.write(settings.constants.modelLibraryFile, "{broken");
    settings.view->deleteLibraryModel(model("m"));
    EXPECT_FALSE(settings.view->oauthStatuses.at("claude"));
    EXPECT_EQ(settings.read(settings.constants.modelLibraryFile), "{broken");
    EXPECT_THAT(settings.view->directModels, SizeIs(1));
}

TEST(DeleteLibraryModel, RefreshesAlsoWhenTheFileCannotBeWritten) {
    Library settings;
    settings.store({model("m"), model("n")});
    settings.home.write(settings.home.at(".claude.json"), "");
    {
        const FullDisk disk;
        settings.view->deleteLibraryModel(model("m"));
    }
    EXPECT_TRUE(settings.view->oauthStatuses.at("claude"));
    EXPECT_THAT(settings.stored(), SizeIs(2));
    EXPECT_THAT(settings.view->directModels, SizeIs(2));
}

TEST(ModelRow, ShowsADownloadOnEveryRowOfTheModel) {
    Editing settings;
    settings.view->downloadingModels = {"llama3"};
    EXPECT_TRUE(settings.view->modelRow(model("llama3")).isDownloading);
    EXPECT_TRUE(settings.view->modelRow(model("llama3", "COPY")).isDownloading);
    EXPECT_FALSE(settings.view->modelRow(model("other", "llama3")).isDownloading);
}

} // namespace
} // namespace varnhold::testing
