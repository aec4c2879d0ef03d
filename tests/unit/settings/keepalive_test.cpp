#include "settings/keepalive.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "base/dates.h"
#include "base/files.h"
#include "editing.h"

namespace varnhold::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

AIModelItem ofFamily(const std::string& family) {
    return model(family, {.family = family});
}

struct Keepalive : Editing {
    explicit Keepalive(const std::string& family = "Claude") {
        view->workerModels = {ofFamily(family)};
        addBot(bot("ops"), "worker");
    }

    void addBot(const BotConfig& config, const std::string& key) {
        view->userBots.push_back(config);
        view->chainBotAssignments[key].push_back(config.launchdLabel);
        home.makeFolder(folder(config.role));
    }

    [[nodiscard]] std::string folder(const std::string& role) const {
        return constants.ostrelleAIDataDir + "/" + role;
    }
    [[nodiscard]] std::string ping(const std::string& role = "ops") const {
        return read(folder(role) + "/keepalive_ping");
    }
    [[nodiscard]] std::string moment() const {
        return dates::iso8601(std::chrono::system_clock::time_point(platform.elapsed()));
    }
    // Seconds since the start, or -1.
    [[nodiscard]] long long lastPing(const std::string& key = "worker") const {
        const auto found = view->lastPingTime.find(key);
        return found == view->lastPingTime.end()
                   ? -1
                   : std::chrono::floor<std::chrono::seconds>(found->second.time_since_epoch())
                         .count();
    }
    [[nodiscard]] double warmth(const std::string& key = "worker") const {
        const auto found = view->cacheWarmth.find(key);
        return found == view->cacheWarmth.end() ? -1 : found->second;
    }
    void tick() {
        view->tickKeepalive();
        platform.runMain();
    }
};

TEST(CacheTtl, OfAChainIsThatOfItsShortestLivedModel) {
    const Constants constants("/home/x");
    EXPECT_EQ(cacheTTL(constants, {ofFamily("Ollama"), ofFamily("Claude")}), 300);
    EXPECT_EQ(cacheTTL(constants, {ofFamily("Claude"), ofFamily("Ollama")}), 300);
    EXPECT_EQ(cacheTTL(constants, {ofFamily("Qwen"), ofFamily("Ollama")}), 600);
}

TEST(CacheTtl, OfOllamaFamiliesOnlyIsAnHour) {
    const Constants constants("/home/x");
    EXPECT_EQ(cacheTTL(constants, {ofFamily("Ollama"), ofFamily("my ollama models")}), 3600);
}

TEST(CacheTtl, FindsTheWordInAnyCaseAmongOtherWords) {
    const Constants constants("/home/x");
    EXPECT_EQ(cacheTTL(constants, {ofFamily("The New GpT Family")}), 600);
    EXPECT_EQ(cacheTTL(constants, {ofFamily("xGEMINIx")}), 300);
}

TEST(CacheTtl, KnowsEveryFamily) {
    const Constants constants("/home/x");
    for (const char* family : {"claude", "anthropic", "gemini", "google"}) {
        EXPECT_EQ(cacheTTL(constants, {ofFamily(family)}), 300) << family;
    }
    for (const char* family : {"openai", "gpt", "qwen", "deepseek", "cerebras"}) {
        EXPECT_EQ(cacheTTL(constants, {ofFamily(family)}), 600) << family;
    }
}

TEST(CacheTtl, IsAnHourForNoModelAndForUnknownFamilies) {
    const Constants constants("/home/x");
    EXPECT_EQ(cacheTTL(constants, {}), 3600);
    EXPECT_EQ(cacheTTL(constants, {ofFamily("Mistral"), ofFamily("")}), 3600);
    EXPECT_EQ(cacheTTL(constants, {ofFamily("Mistral"), ofFamily("GPT")}), 600);
}

TEST(Keepalive, TicksAtOnceAndThenEachMinute) {
    Keepalive settings;
    settings.view->startKeepaliveTimer();
    EXPECT_EQ(settings.platform.record.front(), "timer 60000");
    EXPECT_EQ(settings.ping(), settings.moment());
    EXPECT_EQ(settings.lastPing(), -1) << "set only after the tick";
    settings.platform.runMain();
    EXPECT_EQ(settings.lastPing(), 0);
    EXPECT_EQ(settings.warmth(), 0.0);
    settings.platform.advance(60s);
    EXPECT_DOUBLE_EQ(settings.warmth(), 0.8);
}

TEST(Keepalive, StartedAgainHasOneTimerStill) {
    Keepalive settings;
    settings.view->startKeepaliveTimer();
    settings.platform.advance(30s);
    settings.view->startKeepaliveTimer();
    EXPECT_EQ(settings.lastPing(), 0) << "a chain that isn't due is left alone";
    settings.animations.clear();
    settings.platform.advance(59s);
    EXPECT_THAT(settings.animations, ElementsAre(Animation::none)) << "the warmth of the restart";
    settings.platform.advance(1s);
    EXPECT_THAT(settings.animations, ElementsAre(Animation::none, Animation::none));
}

TEST(Keepalive, EndsWithTheState) {
    Keepalive settings;
    settings.view->startKeepaliveTimer();
    settings.view.reset();
    settings.platform.record.clear();
    settings.platform.advance(1h);
    EXPECT_THAT(settings.platform.record, IsEmpty());
}

TEST(Keepalive, PingsAClaudeChainEveryFiveMinutesForHours) {
    Keepalive settings;
    settings.view->startKeepaliveTimer();
    settings.platform.runMain();
    // Due from 255 seconds on, so at the tick of each fifth minute.
    for (int minute = 1; minute <= 240; ++minute) {
        settings.platform.advance(60s);
        EXPECT_EQ(settings.lastPing(), minute / 5 * 300) << minute;
        const int sincePing = (minute - 1) % 5 + 1;
        EXPECT_DOUBLE_EQ(settings.warmth(), 1.0 - sincePing * 60 / 300.0) << minute;
    }
    EXPECT_EQ(settings.ping(), "1970-01-01T04:00:00Z");
}

TEST(Keepalive, OfAnOllamaChainIsDue3555SecondsAfterAPing) {
    Keepalive settings("Ollama");
    settings.tick();
    settings.platform.advance(3554s);
    settings.tick();
    EXPECT_EQ(settings.lastPing(), 0);
    settings.platform.advance(1s);
    settings.tick();
    EXPECT_EQ(settings.lastPing(), 3555);
}

TEST(Keepalive, IsDueExactlyAtTheLeadTime) {
    Keepalive settings;
    settings.tick();
    settings.platform.advance(255s - 1us);
    settings.tick();
    EXPECT_EQ(settings.lastPing(), 0);
    settings.platform.advance(1us);
    settings.tick();
    EXPECT_EQ(settings.lastPing(), 255);
}

TEST(Keepalive, OfAChainWithoutBotsStaysColdAndUnpinged) {
    Keepalive settings;
    settings.view->chainBotAssignments.clear();
    settings.tick();
    settings.platform.advance(1h);
    settings.tick();
    EXPECT_EQ(settings.warmth(), 0.0);
    EXPECT_EQ(settings.lastPing(), -1);
    EXPECT_EQ(warmthDot(*settings.view, TargetList::worker), std::nullopt);
    EXPECT_EQ(settings.ping(), "");
}

TEST(Keepalive, StaysDueUntilABotIsThere) {
    Keepalive settings;
    settings.view->userBots.clear();
    settings.tick();
    settings.platform.advance(60s);
    settings.view->userBots.push_back(bot("ops"));
    settings.tick();
    EXPECT_EQ(settings.lastPing(), 60);
    EXPECT_EQ(settings.ping(), settings.moment());
}

TEST(Keepalive, NeverTouchesTheVoiceChain) {
    Keepalive settings;
    settings.view->voiceModels = {ofFamily("Claude")};
    settings.addBot(bot("singer"), "voice");
    settings.tick();
    settings.platform.advance(1h);
    settings.tick();
    EXPECT_EQ(settings.ping("singer"), "");
    EXPECT_EQ(settings.view->cacheWarmth.count("voice"), 0U);
    EXPECT_EQ(settings.view->lastPingTime.count("voice"), 0U);
    EXPECT_EQ(warmthDot(*settings.view, TargetList::voice),
              (WarmthDot{WarmthColor::gray, "Cache cold"}));
}

TEST(Keepalive, CoversTheOtherFiveChains) {
    Keepalive settings;
    for (const TargetList list : allTargetLists) {
        const std::string key(chainKey(list));
        settings.view->chainBinding(list) = {ofFamily("Claude")};
        settings.addBot(bot(key), key);
    }
    settings.tick();
    for (const std::string key : {"architect", "worker", "photo", "video", "governor"}) {
        EXPECT_EQ(settings.ping(key), settings.moment()) << key;
    }
    EXPECT_EQ(settings.view->lastPingTime.size(), 5U);
}

TEST(Keepalive, TakesTheChainsInTheirOrder) {
    Keepalive settings;
    for (const TargetList list : allTargetLists) {
        settings.view->chainBinding(list) = {ofFamily("Claude")};
    }
    std::vector<std::string> order;
    settings.view->observe([&](Animation) {
        for (const auto& [key, warmth] : settings.view->cacheWarmth) {
            if (std::find(order.begin(), order.end(), key) == order.end()) {
                order.push_back(key);
            }
        }
    });
    settings.tick();
    EXPECT_THAT(order, ElementsAre("architect", "worker", "photo", "video", "governor"));
}

TEST(Keepalive, TellsOfAPingOnceItIsNoted) {
    Keepalive settings;
    bool isToldWithItsTime = false;
    settings.view->observe(
        [&](Animation) { isToldWithItsTime = settings.view->lastPingTime.contains("worker"); });
    settings.tick();
    EXPECT_TRUE(isToldWithItsTime);
}

TEST(Keepalive, GoesOnWhereTheClockWasSetBack) {
    Keepalive settings;
    const auto tomorrow = std::chrono::system_clock::time_point(settings.platform.elapsed()) + 24h;
    settings.view->lastPingTime["worker"] = tomorrow;
    settings.tick();
    EXPECT_EQ(settings.warmth(), 0.0);
    EXPECT_EQ(settings.lastPing(), 0);
    EXPECT_EQ(settings.ping(), settings.moment());
    settings.platform.advance(60s);
    settings.tick();
    EXPECT_EQ(settings.warmth(), 0.8);
}

TEST(Keepalive, LeavesOutABotThatDoesNotWantIt) {
    Keepalive settings;
    BotConfig off = bot("off");
    off.keepaliveEnabled = false;
    BotConfig on = bot("on");
    on.keepaliveEnabled = true;
    settings.addBot(off, "worker");
    settings.addBot(on, "worker");
    settings.tick();
    EXPECT_EQ(settings.ping("off"), "");
    EXPECT_EQ(settings.ping("on"), settings.moment());
    EXPECT_EQ(settings.ping("ops"), settings.moment()) << "absent counts as on";
}

TEST(Keepalive, DoesNotLeaveOutAPausedBot) {
    Keepalive settings;
    settings.view->userBots.back().isPaused = true;
    settings.tick();
    EXPECT_EQ(settings.ping(), settings.moment());
}

TEST(Keepalive, LeavesOutABotWithoutRole) {
    Keepalive settings;
    settings.view->userBots.back().role = "";
    settings.tick();
    EXPECT_EQ(settings.lastPing(), -1);
    EXPECT_FALSE(files::exists(settings.constants.ostrelleAIDataDir + "/keepalive_ping"));
}

TEST(Keepalive, SkipsAnEmptyChain) {
    Keepalive settings;
    settings.view->workerModels.clear();
    settings.tick();
    EXPECT_THAT(settings.view->cacheWarmth, IsEmpty());
    EXPECT_THAT(settings.view->lastPingTime, IsEmpty());
}

TEST(Keepalive, CountsAPingThatCouldNotBeWritten) {
    Keepalive settings;
    settings.home.makeFolder(settings.folder("ops") + "/keepalive_ping/in the way");
    settings.tick();
    EXPECT_EQ(settings.lastPing(), 0);
}

TEST(Keepalive, NamesRolesInTheOrderOfTheBots) {
    Keepalive settings;
    settings.addBot(bot("cto"), "worker");
    settings.view->chainBotAssignments["worker"] = {bot("cto").launchdLabel,
                                                    bot("ops").launchdLabel};
    EXPECT_THAT(pingedRoles(*settings.view, TargetList::worker), ElementsAre("ops", "cto"));
}

TEST(PingFiles, AreNotMadeForABotThatHasNeverRun) {
    Keepalive settings;
    writePingFiles(settings.constants, settings.platform.interfaces.clock, {"new", "ops"});
    EXPECT_FALSE(files::exists(settings.folder("new")));
    EXPECT_EQ(settings.ping("ops"), settings.moment());
}

TEST(PingFiles, AreReplacedAtomicallyAndEndWithoutALineBreak) {
    Keepalive settings;
    const std::string path = settings.folder("ops") + "/keepalive_ping";
    const std::string older = settings.home.at("older");
    settings.home.write(path, "a much longer text than a moment is\n");
    std::filesystem::create_hard_link(path, older);
    settings.platform.advance(26h + 5min + 7s + 999ms);
    writePingFiles(settings.constants, settings.platform.interfaces.clock, {"ops"});
    EXPECT_EQ(settings.ping(), "1970-01-02T02:05:07Z");
    EXPECT_EQ(settings.read(older), "a much longer text than a moment is\n");
}

TEST(WarmthDot, HasThreeColoursWithLimitsThatBelongToTheColderOne) {
    Keepalive settings;
    const auto dot = [&](double warmth) {
        settings.view->cacheWarmth["worker"] = warmth;
        return warmthDot(*settings.view, TargetList::worker);
    };
    const WarmthDot warm{WarmthColor::green, "Cache warm"};
    const WarmthDot cooling{WarmthColor::orange, "Cache cooling — ping soon"};
    const WarmthDot cold{WarmthColor::gray, "Cache cold"};
    EXPECT_EQ(dot(1.0), warm);
    EXPECT_EQ(dot(0.401), warm);
    EXPECT_EQ(dot(0.4), cooling);
    EXPECT_EQ(dot(0.151), cooling);
    EXPECT_EQ(dot(0.15), cold);
    EXPECT_EQ(dot(0.0), cold);
}

TEST(WarmthDot, IsColdBeforeTheFirstTick) {
    const Keepalive settings;
    EXPECT_EQ(warmthDot(*settings.view, TargetList::worker),
              (WarmthDot{WarmthColor::gray, "Cache cold"}));
}

TEST(WarmthDot, IsShownIfOneBotOfTheChainWantsKeepalive) {
    Keepalive settings;
    settings.view->userBots.back().keepaliveEnabled = false;
    EXPECT_EQ(warmthDot(*settings.view, TargetList::worker), std::nullopt);
    settings.addBot(bot("cto"), "worker");
    EXPECT_TRUE(warmthDot(*settings.view, TargetList::worker));
    settings.view->chainBotAssignments["worker"] = {"com.ostrelleai.gone.telegramd"};
    EXPECT_EQ(warmthDot(*settings.view, TargetList::worker), std::nullopt);
}

} // namespace
} // namespace varnhold::testing
