#include <array>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <initializer_list>
#include <string>
#include <vector>

#include "settings/bot_sheets.h"
#include "support/generator.h"
#include "support/long_runs.h"
#include "window.h"

namespace varnhold::testing {
namespace {

constexpr const char* memory = "/dev/shm";

// Every edit writes fifteen files, so thousands of them go to memory where there is such a folder.
bool inMemory() {
    return std::filesystem::is_directory(memory) && ::setenv("TMPDIR", memory, 1) == 0;
}

// Makes random edits on the real window and on a plain list, by rules put as plainly as can be.
class RandomBotEdits final {
public:
    explicit RandomBotEdits(std::uint64_t seed) : random_(seed) {
        view().fetchNames(); // as each showing of the window does
        answer();
        bots_ = {builtInGovernorBot()};
        saves_ = 1;
        text_ = *builtInGovernorBot().prompt;
    }

    void edit() {
        using Edit = void (RandomBotEdits::*)();
        static constexpr std::array<Edit, 11> edits{&RandomBotEdits::add,
                                                    &RandomBotEdits::add,
                                                    &RandomBotEdits::pause,
                                                    &RandomBotEdits::remove,
                                                    &RandomBotEdits::select,
                                                    &RandomBotEdits::type,
                                                    &RandomBotEdits::service,
                                                    &RandomBotEdits::keepalive,
                                                    &RandomBotEdits::keepaliveForAll,
                                                    &RandomBotEdits::saveToken,
                                                    &RandomBotEdits::fetch};
        (this->*edits[random_.below(edits.size())])();
        window_.platform.record.clear();
    }

    void compare() {
        ASSERT_EQ(view().userBots, bots_);
        ASSERT_EQ(window_.saves(), saves_);
        ASSERT_EQ(view().selectedBotPrompt, text_);
        ASSERT_EQ(view().selectedBot->id(), selected_);
        ASSERT_EQ(window_.botsOnDisk(), bots_);
        window_.platform.defaults.written.clear();
        saves_ = 0;
    }

private:
    ModelSelectorView& view() { return *window_.view; }

    std::string oneOf(std::initializer_list<const char*> texts) {
        return *(texts.begin() + random_.below(texts.size()));
    }
    // Some bot, sometimes one that isn't there.
    BotConfig any() {
        return random_.below(10) == 0 ? bot("nobody") : bots_[random_.below(bots_.size())];
    }
    // Applies the change to the first with the label, and counts the saves that come of it.
    template <class Change>
    void changeFirst(const std::string& label, int saves, Change change) {
        for (BotConfig& each : bots_) {
            if (each.launchdLabel == label) {
                change(each);
                saves_ += saves;
                return;
            }
        }
    }
    // Settles what is under way; names go by the token.
    void answer() {
        auto& http = window_.platform.http;
        for (; answered_ < http.urls.size(); ++answered_) {
            const bool named = http.urls[answered_].find("/botnamed") != std::string::npos;
            http.answer(answered_, named ? R"({"result":{"first_name":"Named"}})" : "junk");
        }
        window_.platform.settle();
    }
    void expectNames() {
        for (BotConfig& each : bots_) {
            if (each.service == BotService::telegram && each.token == "named") {
                each.title = "Named";
            }
        }
        ++saves_;
    }

    void add() {
        const std::string role = oneOf({"", "ops", "cto", "x y", "ops"});
        const std::string token = oneOf({"", " ", "named", "unknown"});
        if (bots_.size() > 9) {
            return;
        }
        view().newBotRole = role;
        view().newBotToken = token;
        view().addBot();
        answer();
        if (role.empty() || token.empty()) {
            return;
        }
        bots_.push_back({.icon = "🤖",
                         .title = "New Bot",
                         .token = token,
                         .role = role,
                         .launchdLabel = "com.ostrelleai." + role + ".telegramd",
                         .prompt = "",
                         .isPaused = false,
                         .isSystem = false});
        ++saves_;
        expectNames();
    }
    void pause() {
        const BotConfig target = any();
        view().togglePauseBot(target);
        changeFirst(target.launchdLabel, 1, [](BotConfig& each) {
            each.isPaused = each.isPaused.has_value() ? !*each.isPaused : true;
        });
    }
    void remove() {
        const BotConfig target = any();
        if (random_.coin()) {
            return; // the list is to grow
        }
        view().removeBot(target);
        if (target.isSystem != true) {
            std::erase_if(bots_, [&](const BotConfig& each) {
                return each.launchdLabel == target.launchdLabel;
            });
            ++saves_;
        }
    }
    void select() {
        const BotConfig target = any();
        selectBot(view(), target);
        selected_ = target.launchdLabel;
        expectText(target.prompt.value_or(""));
    }
    void type() {
        const std::string text = oneOf({"", "a", "b"});
        setSelectedBotPrompt(view(), text);
        expectText(text);
    }
    void expectText(const std::string& text) {
        if (text != text_) {
            text_ = text;
            changeFirst(selected_, 1, [&](BotConfig& each) { each.prompt = text; });
        }
    }
    void service() {
        const BotConfig target = any();
        const BotService wanted = random_.coin() ? BotService::slack : BotService::telegram;
        switchService(view(), target, wanted);
        changeFirst(target.launchdLabel, 1, [&](BotConfig& each) { each.service = wanted; });
    }
    void keepalive() {
        const BotConfig target = any();
        toggleKeepalive(view(), target);
        changeFirst(target.launchdLabel, 1, [](BotConfig& each) {
            each.keepaliveEnabled =
                each.keepaliveEnabled.has_value() ? !*each.keepaliveEnabled : false;
        });
    }
    void keepaliveForAll() {
        bool allOn = true;
        for (const BotConfig& each : bots_) {
            allOn = allOn && each.keepaliveEnabled != false;
        }
        toggleKeepaliveForAll(view());
        for (BotConfig& each : bots_) {
            each.keepaliveEnabled = !allOn;
        }
        ++saves_;
    }
    void saveToken() {
        const BotConfig target = any();
        view().tokenSheetBot = target;
        BotTokenSheet sheet = *tokenSheet(view());
        sheet.bot.token = oneOf({"named", " t ", "unknown"});
        sheet.onSave(sheet.bot);
        changeFirst(target.launchdLabel, 2, [&](BotConfig& each) { each = sheet.bot; });
    }
    // An edit made while names are under way is lost with the list that comes back.
    void fetch() {
        view().fetchNames();
        const std::vector<BotConfig> taken = bots_;
        if (random_.coin()) {
            pause();
        }
        answer();
        bots_ = taken;
        expectNames();
    }

    Generator random_;
    Window window_;
    std::vector<BotConfig> bots_;
    long saves_ = 0;
    std::string text_;
    std::string selected_ = "com.ostrelleai.governor";
    std::size_t answered_ = 0; // requests
};

TEST(RandomEditsOfBots, AgreeWithTheRulesInListSavesAndFile) {
    const int perSeed = randomOperations(inMemory() ? 20000 : 800) / 4;
    ASSERT_GT(perSeed, 0);
    for (std::uint64_t seed = 1; seed <= 4; ++seed) {
        RandomBotEdits edits(seed);
        for (int i = 0; i < perSeed; ++i) {
            edits.edit();
            edits.compare();
            ASSERT_FALSE(::testing::Test::HasFatalFailure()) << "seed " << seed << ", edit " << i;
        }
    }
}

} // namespace
} // namespace varnhold::testing
