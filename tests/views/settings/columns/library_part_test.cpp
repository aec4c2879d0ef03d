#include <QSignalSpy>
#include <chrono>
#include <string>
#include <vector>

#include "modelled_settings.h"

namespace varnhold::testing {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

struct LibraryRows : ModelledSettings {
    explicit LibraryRows(const std::vector<AIModelItem>& models) {
        home.write(constants.modelLibraryFile, encodeLibrary({models}));
        view->refresh();
        modelled();
    }

    [[nodiscard]] LibraryPart& library() const { return *model->library(); }
    [[nodiscard]] std::vector<std::string> shown(const char* name) const {
        return column(*library().rows(), name);
    }
};

TEST(LibraryPart, ShowsTheLocalToolsAloneWhereNoModelIsListed) {
    AIModelItem hidden = model("a");
    hidden.type = "api";
    const LibraryRows settings({hidden});
    EXPECT_THAT(settings.shown("name"), ElementsAre("Whisper (transcription, free/local)",
                                                    "say (voice reply, free/local)"));
    EXPECT_THAT(settings.shown("section"), Each("Local Tools"));
    EXPECT_THAT(settings.shown("tag"), Each("Local"));
    EXPECT_THAT(settings.shown("ground"), Each("teal"));
}

TEST(LibraryPart, TellsRowsIntoSections) {
    LibraryRows settings({model("b"), model("~a")});
    settings.view->openRouterModels = {model("c")};
    settings.view->cerebrasModels = {model("d")};
    settings.view->changed();
    EXPECT_THAT(settings.shown("section"), ElementsAre("Local Tools", "Local Tools", "Direct",
                                                       "Direct", "Cerebras", "OpenRouter"));
    EXPECT_THAT(settings.shown("tag"),
                ElementsAre("Local", "Local", "Family", "Direct", "Family", "Family"));
    EXPECT_EQ(settings.library().note(QStringLiteral("Direct")), QString());
    EXPECT_EQ(settings.library().note(QStringLiteral("Cerebras")), QStringLiteral("(wafer-scale)"));
    EXPECT_EQ(settings.library().note(QStringLiteral("OpenRouter")),
              QStringLiteral("(no tool calls)"));
    EXPECT_TRUE(settings.library().isFirst(QStringLiteral("Local Tools")));
    EXPECT_FALSE(settings.library().isFirst(QStringLiteral("Direct")));
}

TEST(LibraryPart, KeepsTwoRowsOfOneModelApart) {
    LibraryRows settings({model("a"), model("a")});
    EXPECT_THAT(settings.shown("uid"), SizeIs(4));
    settings.library().deleteModel(3);
    EXPECT_THAT(settings.shown("uid"), ElementsAre("LOCAL-WHISPER-0000", "LOCAL-SAY-00000000"));
}

TEST(LibraryPart, TellsTheRecordWhatIsDragged) {
    LibraryRows settings({model("a")});
    settings.library().startDrag(2);
    EXPECT_EQ(settings.view->draggingItem, model("a"));
    EXPECT_THAT(settings.shown("isDragging"), ElementsAre("false", "false", "true"));
    EXPECT_FALSE(settings.library().fading());
    settings.platform.advance(std::chrono::seconds(2));
    EXPECT_THAT(settings.shown("isDragging"), Each("false"));
    EXPECT_TRUE(settings.library().fading());
    settings.library().startDrag(9);
    settings.library().startDrag(-1);
    EXPECT_FALSE(settings.view->draggingItem);
}

TEST(LibraryPart, TakesADroppedModelOutOfItsChain) {
    LibraryRows settings({model("a")});
    settings.view->voiceModels = {model("x"), model("y")};
    settings.library().startDrag(2);
    settings.library().drop(QStringLiteral("x"));
    EXPECT_FALSE(settings.view->draggingItem);
    EXPECT_THAT(settings.view->voiceModels, SizeIs(2)); // not before the text has arrived
    settings.platform.settle();
    EXPECT_THAT(settings.view->voiceModels, ElementsAre(model("y")));
    EXPECT_EQ(settings.read(settings.constants.voicePrefsFile), encodeChain({model("y")}));
}

TEST(LibraryPart, DeletesAModelFromTheFileAndFromNoChain) {
    LibraryRows settings({model("a"), model("b")});
    settings.view->voiceModels = {model("a")};
    settings.library().deleteModel(2);
    EXPECT_THAT(settings.shown("uid"),
                ElementsAre("LOCAL-WHISPER-0000", "LOCAL-SAY-00000000", "b"));
    EXPECT_THAT(readLibrary(settings.constants.modelLibraryFile)->models, ElementsAre(model("b")));
    EXPECT_THAT(settings.view->voiceModels, SizeIs(1));
}

TEST(LibraryPart, KeepsTheBuiltInToolsWhenTheyAreDeleted) {
    LibraryRows settings({model("b")});
    settings.library().deleteModel(0);
    EXPECT_THAT(settings.shown("uid"), SizeIs(3));
}

TEST(LibraryPart, TellsWhereADragHovers) {
    LibraryRows settings({});
    QSignalSpy changes(&settings.library(), &LibraryPart::isTargetedChanged);
    settings.library().setTargeted(true);
    settings.library().setTargeted(true);
    EXPECT_TRUE(settings.view->isLibraryTargeted);
    EXPECT_TRUE(settings.library().isTargeted());
    settings.library().setTargeted(false);
    EXPECT_FALSE(settings.view->isLibraryTargeted);
    EXPECT_THAT(changes, SizeIs(2));
}

TEST(LibraryPart, AsksForTheSheetOfANewModel) {
    LibraryRows settings({});
    settings.library().showAddModel();
    EXPECT_TRUE(settings.view->showAddModelSheet);
}

TEST(LibraryPart, TellsToolsThatNoChainTakesFromModels) {
    ModelledSettings settings;
    settings.view->directModels = {model("a")};
    settings.modelled();
    EXPECT_THAT(column(*settings.model->library()->rows(), "kind"),
                ElementsAre("tool", "tool", "model"));
}

} // namespace
} // namespace varnhold::testing
