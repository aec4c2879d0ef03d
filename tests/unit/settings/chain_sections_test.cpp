#include "settings/chain_sections.h"

#include <string_view>
#include <vector>

#include "editing.h"
#include "settings/model_tag.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct Sections : Editing {
    const ChainSection& architect = chainSection(TargetList::architect);
    const ChainSection& worker = chainSection(TargetList::worker);

    void budget(double tokens) { view->workerContextTokens = tokens; }
    const Stack stack = view->chain(TargetList::worker);
    [[nodiscard]] ChainStepperRow context() const { return stack.contextRow(); }
    double stepped(StepDirection direction) {
        stack.stepContext(direction);
        return view->workerContextTokens;
    }
};

TEST(ChainSections, StandInTheOrderOfTheWindow) {
    std::vector<std::string_view> titles;
    std::vector<std::string_view> names;
    std::vector<TargetList> lists;
    for (const ChainSection& section : chainSections()) {
        titles.push_back(section.title);
        names.push_back(section.name);
        lists.push_back(section.list);
    }
    EXPECT_THAT(titles, ElementsAre("⚖️ Governor Chain", "Architect Chain", "Coding Chain",
                                    "Photo Chain", "Video Chain", "Audio Chain"));
    EXPECT_THAT(names, ElementsAre("Governor", "Architect", "Coding", "Photo", "Video", "Audio"));
    EXPECT_THAT(lists, ElementsAre(TargetList::governor, TargetList::architect, TargetList::worker,
                                   TargetList::photo, TargetList::video, TargetList::voice));
}

TEST(ChainSections, OfEachListIsItsOwn) {
    for (const TargetList list : allTargetLists) {
        EXPECT_EQ(chainSection(list).list, list);
    }
}

TEST(ChainSections, KeepTheirValuesApart) {
    Sections settings;
    int number = 1;
    for (const ChainSection& section : chainSections()) {
        (*settings.view).*section.contextTokens = 1000.0 * number++;
    }
    EXPECT_EQ(settings.view->governorContextTokens, 1000);
    EXPECT_EQ(settings.view->architectContextTokens, 2000);
    EXPECT_EQ(settings.view->workerContextTokens, 3000);
    EXPECT_EQ(settings.view->photoContextTokens, 4000);
    EXPECT_EQ(settings.view->videoContextTokens, 5000);
    EXPECT_EQ(settings.view->voiceContextTokens, 6000);
    for (const ChainSection& section : chainSections()) {
        for (const ChainSection& each : chainSections()) {
            (*settings.view).*each.effort = EffortLevel::off;
            (*settings.view).*each.topTargeted = false;
        }
        (*settings.view).*section.effort = EffortLevel::high;
        (*settings.view).*section.topTargeted = true;
        const SettingsFields& view = *settings.view;
        EXPECT_EQ(view.voiceTopTargeted, section.list == TargetList::voice);
        EXPECT_EQ(view.voiceEffort == EffortLevel::high, section.list == TargetList::voice);
        EXPECT_EQ(view.workerTopTargeted, section.list == TargetList::worker);
        EXPECT_EQ(view.photoEffort == EffortLevel::high, section.list == TargetList::photo);
    }
}

TEST(ChainSections, EachHaveATintOfTheirOwn) {
    EXPECT_EQ(chainSection(TargetList::governor).tint, (Color{1.0, 0.93, 0.55}));
    EXPECT_EQ(chainSection(TargetList::architect).tint, (Color{0.85, 0.92, 1.0}));
    EXPECT_EQ(chainSection(TargetList::worker).tint, (Color{0.88, 1.0, 0.88}));
    EXPECT_EQ(chainSection(TargetList::photo).tint, (Color{1.0, 0.95, 0.82}));
    EXPECT_EQ(chainSection(TargetList::video).tint, (Color{1.0, 0.88, 0.95}));
    EXPECT_EQ(chainSection(TargetList::voice).tint, (Color{0.88, 0.95, 1.0}));
}

TEST(ChainSections, TellWhatTheyAreFor) {
    const auto hint = [](TargetList list) { return chainSection(list).hint; };
    EXPECT_EQ(hint(TargetList::governor),
              "The system brain. Runs code blocks locally, synthesizes worker output into your "
              "replies, and decides failover. Pick a fast, capable model — it runs on every "
              "request.");
    EXPECT_EQ(hint(TargetList::architect),
              "The model that talks to you. Tried top-to-bottom — first success wins. Falls over "
              "to the next on failure.");
    EXPECT_EQ(hint(TargetList::worker),
              "Silent worker — executes code and shell commands on your Mac. Never talks to you "
              "directly.");
    EXPECT_EQ(hint(TargetList::photo),
              "Analyzes images you send to your bots before passing a description to the "
              "Architect.");
    EXPECT_EQ(hint(TargetList::video),
              "Analyzes videos you send to your bots before passing a description to the "
              "Architect.");
    EXPECT_EQ(hint(TargetList::voice),
              "Handles voice messages. Whisper transcribes speech-to-text; say converts replies "
              "back to audio.");
}

TEST(ChainSections, ExplainTheGovernorAlone) {
    for (const ChainSection& section : chainSections()) {
        EXPECT_EQ(section.help.empty(), section.list != TargetList::governor);
    }
    EXPECT_EQ(chainSection(TargetList::governor).help,
              "The Governor is the system-level AI that:\n"
              "  • Intercepts code blocks from architect responses and runs them locally\n"
              "  • Synthesizes worker output into clean replies for you\n"
              "  • Sends failover notifications when chains move down\n"
              "  • Decides when to escalate problems\n"
              "\n"
              "Picking a fast, capable Governor matters MORE than any individual chain entry. It "
              "runs on every multi-step request. A bad Governor breaks every flow.\n"
              "\n"
              "Best picks: Cerebras Qwen 3 235B (fastest), Claude Sonnet 4.6, GPT-5.5-Pro.");
}

TEST(ChainSections, ShowAnEffortForAllButAudio) {
    for (const ChainSection& section : chainSections()) {
        EXPECT_EQ(section.showEffort, section.list != TargetList::voice);
    }
}

TEST(ChainSections, LeaveTheResponseToTheArchitect) {
    for (const ChainSection& section : chainSections()) {
        EXPECT_EQ(section.responseMode != nullptr, section.list == TargetList::architect);
    }
}

TEST(ChainEffort, ShowsItsLevelAndEnds) {
    Sections settings;
    const auto row = [&](EffortLevel level) {
        settings.view->workerEffort = level;
        return settings.stack.effortRow();
    };
    EXPECT_EQ(row(EffortLevel::off), (ChainStepperRow{"Effort", "Off", true, 36, false, true}));
    EXPECT_EQ(row(EffortLevel::low), (ChainStepperRow{"Effort", "Low", false, 36, true, true}));
    EXPECT_EQ(row(EffortLevel::medium), (ChainStepperRow{"Effort", "Med", false, 36, true, true}));
    EXPECT_EQ(row(EffortLevel::high), (ChainStepperRow{"Effort", "High", false, 36, true, false}));
}

TEST(ChainEffort, IsSavedAtEachStepAndStaysAtTheEnds) {
    Sections settings;
    settings.view->workerEffort = EffortLevel::medium;
    settings.stack.stepEffort(StepDirection::right);
    EXPECT_EQ(settings.view->workerEffort, EffortLevel::high);
    EXPECT_EQ(settings.newSaves(), 1);
    settings.stack.stepEffort(StepDirection::right);
    EXPECT_EQ(settings.view->workerEffort, EffortLevel::high);
    EXPECT_EQ(settings.newSaves(), 0);
    settings.view->workerEffort = EffortLevel::low;
    settings.stack.stepEffort(StepDirection::left);
    settings.stack.stepEffort(StepDirection::left);
    EXPECT_EQ(settings.view->workerEffort, EffortLevel::off);
    EXPECT_EQ(settings.newSaves(), 1);
    EXPECT_EQ(settings.view->architectEffort, EffortLevel::medium) << "another chain's";
}

TEST(ChainContext, IsAutoAndInactiveAtNothing) {
    Sections settings;
    EXPECT_EQ(settings.context(), (ChainStepperRow{"Context", "Auto", true, 50, false, true}));
}

TEST(ChainContext, OffTheLadderHasBothArrowsAndSnapsToItsNeighbours) {
    Sections settings;
    settings.budget(50000);
    EXPECT_EQ(settings.context(), (ChainStepperRow{"Context", "50K", false, 50, true, true}));
    EXPECT_EQ(settings.stepped(StepDirection::left), 32000);
    settings.budget(50000);
    EXPECT_EQ(settings.stepped(StepDirection::right), 64000);
}

TEST(ChainContext, AboveTheLadderCanOnlyGoDown) {
    Sections settings;
    settings.budget(3500000);
    EXPECT_EQ(settings.context(), (ChainStepperRow{"Context", "3.5M", false, 50, true, false}));
    EXPECT_EQ(settings.stepped(StepDirection::left), 2000000);
    EXPECT_EQ(settings.context().valueText, "2M");
    EXPECT_FALSE(settings.context().canGoRight);
}

TEST(ChainContext, ClimbsTheWholeLadderAndSavesEachStep) {
    Sections settings;
    std::vector<double> reached;
    for (std::size_t step = 1; step < settings.constants.contextLadder.size(); ++step) {
        reached.push_back(settings.stepped(StepDirection::right));
    }
    EXPECT_THAT(reached,
                ElementsAre(8000, 16000, 32000, 64000, 128000, 200000, 400000, 1000000, 2000000));
    EXPECT_EQ(settings.newSaves(), 9);
}

TEST(ChainContext, BeyondAnEndStaysThereAndIsSavedAllTheSame) {
    Sections settings;
    settings.budget(2000000);
    EXPECT_EQ(settings.stepped(StepDirection::right), 2000000);
    settings.budget(5000000);
    EXPECT_EQ(settings.stepped(StepDirection::right), 2000000);
    settings.budget(0);
    EXPECT_EQ(settings.stepped(StepDirection::left), 0);
    settings.budget(-5);
    EXPECT_EQ(settings.stepped(StepDirection::left), 0);
    EXPECT_EQ(settings.newSaves(), 4);
}

TEST(ChainContext, CutsFractionsOffButIsInactiveOnlyAtExactlyNothing) {
    Sections settings;
    settings.budget(8000.9);
    EXPECT_EQ(settings.stepped(StepDirection::left), 0);
    settings.budget(0.5);
    EXPECT_EQ(settings.context(), (ChainStepperRow{"Context", "Auto", false, 50, false, true}));
}

TEST(ChainResponse, IsSavedWhenItChanges) {
    Sections settings;
    chooseResponse(*settings.view, settings.architect, ResponseMode::both);
    EXPECT_EQ(settings.view->architectResponseMode, ResponseMode::both);
    EXPECT_EQ(settings.read(settings.constants.responseModeFile), R"("both")");
    EXPECT_EQ(settings.newSaves(), 1);
    chooseResponse(*settings.view, settings.architect, ResponseMode::both);
    chooseResponse(*settings.view, settings.worker, ResponseMode::voice);
    EXPECT_EQ(settings.view->architectResponseMode, ResponseMode::both);
    EXPECT_EQ(settings.newSaves(), 0);
}

TEST(ChainBots, StandInTheOrderOfTheBotsWithoutThoseThatAreGone) {
    Sections settings;
    settings.view->userBots = {bot("ops"), bot("cto"), bot("cfo")};
    settings.view->chainBotAssignments["worker"] = {bot("cfo").launchdLabel, "gone",
                                                    bot("ops").launchdLabel};
    EXPECT_THAT(botsOf(*settings.view, TargetList::worker), ElementsAre(bot("ops"), bot("cfo")));
    EXPECT_THAT(botsOf(*settings.view, TargetList::voice), IsEmpty());
    EXPECT_EQ(settings.view->chainBotAssignments["worker"].size(), 3U) << "the data stay";
}

TEST(ModelTag, IsTheFamilyUnlessTheModelIsDirect) {
    AIModelItem item = model("opus");
    EXPECT_EQ(modelTag(item), "Family");
    item.id = "~opus";
    EXPECT_EQ(modelTag(item), "Direct");
    item.id = "o~pus";
    EXPECT_EQ(modelTag(item), "Family");
}

} // namespace
} // namespace varnhold::testing
