#include "settings/add_model.h"

#include <string>
#include <vector>

#include "base/files.h"
#include "base/uuid.h"
#include "records/providers.h"
#include "settings/placement_checks.h"
#include "window.h"

namespace varnhold::testing {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

struct AddModel : ::testing::Test {
    Window window;
    ModelSelectorView& view = *window.view;

    AddModelSheet sheet() {
        view.showAddModelSheet = true;
        return addModelSheet(view).value();
    }
    void add(const std::string& id, const std::string& name = "") {
        AddModelSheet form = sheet();
        form.modelId = id;
        form.modelName = name;
        form.add();
    }
    [[nodiscard]] std::vector<AIModelItem> onDisk() const {
        return readLibrary(window.constants.modelLibraryFile)->models;
    }
};

TEST_F(AddModel, StartsEmptyWithTheFirstProviderAndColour) {
    const AddModelSheet form = sheet();
    EXPECT_EQ(form.modelId + form.modelName + form.modelFamily, "");
    EXPECT_EQ(form.modelProvider, "claude");
    EXPECT_EQ(form.modelColor, "purple");
    EXPECT_EQ(form.modelType, "api");
    EXPECT_FALSE(form.canAdd());
    EXPECT_THAT(AddModelSheet::providers,
                ElementsAre("claude", "openai", "gemini", "qwen", "deepseek", "mistral",
                            "openrouter", "cerebras", "ollama"));
    EXPECT_THAT(AddModelSheet::colors,
                ElementsAre("purple", "blue", "green", "orange", "red", "teal", "yellow", "pink"));
}

TEST_F(AddModel, OffersEveryProviderThatOneCanSignInTo) {
    for (const Provider& provider : providers()) {
        EXPECT_THAT(AddModelSheet::providers, Contains(provider.key));
    }
}

TEST_F(AddModel, IsThereOnlyWhileItIsWanted) {
    EXPECT_FALSE(addModelSheet(view));
    const AddModelSheet form = sheet();
    int changes = 0;
    view.observe([&](Animation) { ++changes; });
    form.onDismiss();
    EXPECT_FALSE(view.showAddModelSheet);
    EXPECT_EQ(changes, 1);
}

TEST_F(AddModel, NeedsMoreThanBlanksAndTabsForAnId) {
    AddModelSheet form = sheet();
    form.modelId = " \t ";
    EXPECT_FALSE(form.canAdd());
    form.add();
    EXPECT_TRUE(view.showAddModelSheet);
    EXPECT_FALSE(files::exists(window.constants.modelLibraryFile));
    form.modelId = " m ";
    EXPECT_TRUE(form.canAdd());
}

TEST_F(AddModel, StoresTheIdWithoutItsBlanksAndShowsTheNameWithThem) {
    add(" gpt \t");
    ASSERT_THAT(onDisk(), SizeIs(1));
    EXPECT_EQ(onDisk()[0].id, "gpt");
    EXPECT_EQ(onDisk()[0].name, " gpt \t");
}

TEST_F(AddModel, BuildsTheModelFromWhatWasTyped) {
    AddModelSheet form = sheet();
    form.modelId = "m";
    form.modelName = " M ";
    form.modelFamily = " F ";
    form.modelProvider = "gemini";
    form.modelColor = "teal";
    const AIModelItem item = form.item();
    EXPECT_EQ(item, (AIModelItem{.uniqueId = item.uniqueId,
                                 .id = "m",
                                 .name = " M ",
                                 .family = " F ",
                                 .color = "teal",
                                 .type = "api",
                                 .provider_key = "gemini"}));
    EXPECT_TRUE(Uuid::parse(item.uniqueId.value()));
    EXPECT_NE(form.item().uniqueId, item.uniqueId);
}

TEST_F(AddModel, WithoutAFamilyIsOfItsProviders) {
    AddModelSheet form = sheet();
    form.modelId = "m";
    form.modelProvider = "openai";
    EXPECT_EQ(form.item().family, "openai");
    form.modelFamily = " ";
    EXPECT_EQ(form.item().family, " ");
}

TEST_F(AddModel, GoesBehindTheOthersAndClosesTheForm) {
    window.write(window.constants.modelLibraryFile, encodeLibrary({{model("old")}}));
    add("new");
    ASSERT_THAT(onDisk(), SizeIs(2));
    EXPECT_EQ(onDisk()[0], model("old"));
    EXPECT_EQ(onDisk()[1].id, "new");
    EXPECT_FALSE(view.showAddModelSheet);
}

TEST_F(AddModel, WithAnIdThatIsThereChangesNothingAndSaysNothing) {
    const std::string before = "  " + encodeLibrary({{model("old")}}); // as no program wrote it
    window.write(window.constants.modelLibraryFile, before);
    add(" old ", "Other");
    EXPECT_EQ(window.read(window.constants.modelLibraryFile), before);
    EXPECT_THAT(view.allLibraryModels, IsEmpty()); // it wasn't even read again
    EXPECT_FALSE(view.showAlert);
    EXPECT_FALSE(view.showSaveToast);
    EXPECT_FALSE(view.showAddModelSheet);
}

TEST_F(AddModel, MakesTheFileWhereThereIsNone) {
    add("first");
    ASSERT_THAT(onDisk(), SizeIs(1));
    EXPECT_EQ(onDisk()[0].id, "first");
}

TEST_F(AddModel, ReplacesALibraryThatCannotBeDecoded) {
    window.write(window.constants.modelLibraryFile, R"({"models":[{"id":"half)");
    add("first");
    ASSERT_THAT(onDisk(), SizeIs(1));
}

TEST_F(AddModel, SwallowsALibraryThatCannotBeWritten) {
    window.home.makeFolder(window.constants.modelLibraryFile); // a folder takes no text
    add("first");
    EXPECT_FALSE(view.showAddModelSheet);
    EXPECT_FALSE(view.showAlert);
    EXPECT_THAT(view.allLibraryModels, IsEmpty());
}

TEST_F(AddModel, ReachesTheWholeLibraryButNoSectionOfTheColumn) {
    AddModelSheet form = sheet();
    form.modelId = "wafer";
    form.modelProvider = "cerebras";
    form.add();
    EXPECT_THAT(view.allLibraryModels, SizeIs(1));
    EXPECT_THAT(view.directModels, IsEmpty());
    EXPECT_THAT(view.cerebrasModels, IsEmpty());
    EXPECT_EQ(window.saves(), 0);
}

TEST_F(AddModel, ForCerebrasCannotReachAChainThroughTheLibrary) {
    AddModelSheet form = sheet();
    form.modelId = "wafer";
    form.modelProvider = "cerebras";
    form.add();
    view.cerebrasKey = "key";
    view.handleDrop({platform::textPayload("wafer")}, TargetList::worker);
    window.platform.settle();
    EXPECT_THAT(view.workerModels, IsEmpty());
    EXPECT_FALSE(view.showAlert);
}

} // namespace
} // namespace varnhold::testing
