#include <QApplication>

#include "shown_chains.h"
#include "views/colours.h"

namespace varnhold::testing {
namespace {
AIModelItem m(const std::string& name, const std::string& family, const std::string& color,
              const std::string& id = "") {
    static int n = 0;
    return {.uniqueId = "U" + std::to_string(n++),
            .id = id.empty() ? name : id,
            .name = name,
            .family = family,
            .color = color,
            .type = "cli"};
}
void sample(ModelSelectorView& v) {
    v.showHints = true;
    auto b = [](const char* icon, const char* title, const char* role) {
        BotConfig x = bot(role);
        x.icon = icon;
        x.title = title;
        return x;
    };
    v.userBots = {b("🧭", "Chief of Staff", "chief"), b("👨‍💻", "Engineering", "cto"),
                  b("🏥", "Health & Wellness", "health")};
    v.userBots[1].isPaused = true;
    v.governorModels = {m("Qwen 3 235B", "Cerebras", "orange"),
                        m("Claude Sonnet 4.6", "Claude", "purple", "~claude")};
    v.architectModels = {m("Claude Opus 4.6", "Claude", "purple", "~x"),
                         m("GPT-5.5-Pro", "GPT", "green"), m("Gemini 3 Pro", "Gemini", "blue"),
                         m("Mistral Large", "Mistral", "red"), m("Qwen Max", "Qwen", "indigo")};
    v.workerModels = {m("GPT-5.5-Codex", "GPT", "green"),
                      m("Codestral with a very long name that can't fit in here at all",
                        "Mistral AI Enterprise", "yellow"),
                      m("DeepSeek V4", "DeepSeek", "cyan")};
    v.photoModels = {m("Gemini Flash", "Gemini", "blue")};
    v.videoModels = {};
    v.voiceModels = {m("Voxtral", "Mistral", "pink"), m("Teal", "T", "teal")};
    v.downloadingModels = {"DeepSeek V4"};
    v.chainBotAssignments = {
        {"architect", {v.userBots[0].launchdLabel, v.userBots[1].launchdLabel}},
        {"photo", {v.userBots[2].launchdLabel}},
        {"governor", {v.userBots[0].launchdLabel}},
        {"worker", {v.userBots[1].launchdLabel}}};
    v.cacheWarmth = {{"architect", 0.9}, {"photo", 0.3}, {"governor", .1}};
    v.architectContextTokens = 128000;
    v.workerContextTokens = 50000;
    v.governorEffort = EffortLevel::high;
    v.photoEffort = EffortLevel::off;
    v.customGroups = {
        CustomBotGroup{
            .name = "🚀 Launch Crew",
            .models = {m("Claude Haiku", "Claude", "purple"), m("GPT mini", "GPT", "green")},
            .effortLevel = EffortLevel::medium,
            .contextTokens = 2000000,
            .colorHex = "FFD6D6",
            .attachedPaths = {"/etc", "/usr/share/doc/x/handbook.txt",
                              "/a/very long file name that will not fit into the chip at all.pdf"},
            .objectives = "Ship version eight.",
            .doctrine = {"/a/DOCTRINE.txt"},
            .assignedBotLabels = {v.userBots[0].launchdLabel, v.userBots[2].launchdLabel}},
        CustomBotGroup{.name = "Research", .colorHex = "D6E8FF"}};
}
void picture(ShownChains& s, const char* what, bool dark) {
    QTest::qWait(400);
    s.page->grabFramebuffer().save(
        QStringLiteral("/tmp/w4-%1-%2-%3.png")
            .arg(QString::fromUtf8(what), dark ? QStringLiteral("dark") : QStringLiteral("light"))
            .arg(qApp->devicePixelRatio()));
}
TEST(Look, Chains) {
    for (const bool dark : {false, true}) {
        QApplication::setPalette(dark ? darkPalette() : lightPalette());
        {
            ShownChains s;
            sample(*s.view);
            s.show();
            s.group(0).toggleObjectives();
            picture(s, "full", dark);
        }
        if (qApp->devicePixelRatio() == 1) {
            ShownChains s;
            s.show();
            picture(s, "empty", dark);
        }
    }
    QApplication::setPalette(lightPalette());
}
} // namespace
} // namespace varnhold::testing
