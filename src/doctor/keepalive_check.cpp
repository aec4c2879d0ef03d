#include "doctor/keepalive_check.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "base/files.h"
#include "doctor/catalogue.h"
#include "doctor/file_state.h"
#include "doctor/property_list_check.h"
#include "doctor/stacks_of_models.h"
#include "doctor/words.h"
#include "settings/chain_sections.h"
#include "settings/keepalive.h"

namespace varnhold::doctor {

namespace {

class KeepaliveCheck {
public:
    KeepaliveCheck(const SettingsFields& fields, const Surroundings& around)
        : fields_(fields), around_(around) {}

    [[nodiscard]] Section section() && {
        section_.data["chains"] = json::Value::array();
        for (const ModelStack& stack : stacksOf(fields_)) {
            if (stack.chain) {
                look(stack);
            }
        }
        checkFolders();
        checkPaused();
        section_.table.headings = {"Chain", "Kept warm", "Every", "Asked"};
        section_.summary = counted(kept_, "chain is", "chains are") + " kept warm";
        return std::move(section_);
    }

private:
    void look(const ModelStack& stack) {
        const std::vector<std::string> roles = pingedRoles(fields_, *stack.chain);
        const std::string why = whyNever(stack, roles);
        const auto lifetime =
            std::chrono::seconds(static_cast<int>(cacheTTL(around_.constants, *stack.models)));
        const auto asked = why.empty() ? lastAsked(roles) : std::nullopt;
        const bool isUsed = !stack.models->empty() && !stack.labels.empty();
        if (!why.empty() && isUsed) {
            section_.findings.push_back({.id = ids::keepaliveNever,
                                         .level = Level::note,
                                         .subject = stack.name,
                                         .sentence = "Is never kept warm: " + why + "."});
        }
        kept_ += why.empty() ? 1U : 0U;
        json::Value row{{"chain", stack.key}, {"kept", why.empty()}};
        if (why.empty()) {
            row["lifetimeSeconds"] = lifetime.count();
            row["roles"] = roles;
            roles_.insert(roles_.end(), roles.begin(), roles.end());
        } else {
            row["why"] = why;
        }
        if (asked) {
            row["lastAskedSeconds"] = asked->count();
            checkAge(stack, *asked, lifetime);
        }
        section_.data["chains"].push_back(std::move(row));
        section_.table.rows.push_back({std::nullopt,
                                       why.empty(),
                                       {stack.name, why.empty() ? enumerated(roles) : why,
                                        why.empty() ? durationInWords(lifetime) : "",
                                        asked         ? durationInWords(*asked) + " ago"
                                        : why.empty() ? "never"
                                                      : ""}});
    }

    // Empty if it is kept warm.
    [[nodiscard]] std::string whyNever(const ModelStack& stack,
                                       const std::vector<std::string>& roles) const {
        if (!chainSection(*stack.chain).keptWarm) {
            return "this chain never is";
        }
        if (stack.models->empty()) {
            return "there is no model in it";
        }
        if (stack.labels.empty()) {
            return "no bot is assigned";
        }
        return roles.empty() ? "all its bots have keepalive off, or are none" : "";
    }

    [[nodiscard]] std::string folderOf(const std::string& role) const {
        return around_.home.ostrelleAIDataDir + "/" + role;
    }

    [[nodiscard]] std::optional<std::chrono::seconds>
    lastAsked(const std::vector<std::string>& roles) const {
        std::optional<std::chrono::seconds> youngest;
        for (const std::string& role : roles) {
            const FileState ping = fileStateOf(folderOf(role) + "/keepalive_ping");
            if (ping.kind == FileState::Kind::read) {
                const auto age = std::max(
                    std::chrono::seconds(0),
                    std::chrono::duration_cast<std::chrono::seconds>(around_.now - ping.changed));
                youngest = youngest ? std::min(*youngest, age) : age;
            }
        }
        return youngest;
    }

    // A request comes at latest a minute after it is due, for as long as the window was opened
    // once.
    void checkAge(const ModelStack& stack, std::chrono::seconds asked,
                  std::chrono::seconds lifetime) {
        if (asked > lifetime + std::chrono::minutes(2)) {
            section_.findings.push_back(
                {.id = ids::keepaliveOverdue,
                 .level = Level::note,
                 .subject = stack.name,
                 .sentence = "Was last asked for " + durationInWords(asked) +
                             " ago, and is forgotten after " + durationInWords(lifetime) + ".",
                 .consequence = "Requests begin when the settings window is first opened.",
                 .remedy = "Open the settings window once after each start of Varnhold."});
        }
    }

    // The supervisor never makes these folders, and passes over who has none.
    void checkFolders() {
        std::sort(roles_.begin(), roles_.end());
        roles_.erase(std::unique(roles_.begin(), roles_.end()), roles_.end());
        std::vector<std::string> without;
        for (const std::string& role : roles_) {
            if (!files::exists(folderOf(role))) {
                without.push_back(role);
            }
        }
        if (!without.empty()) {
            section_.findings.push_back(
                {.id = ids::pingFolderMissing,
                 .level = Level::warning,
                 .subject = counted(without.size(), "bot", "bots"),
                 .sentence = "Without a folder for requests: " + enumerated(without) + ".",
                 .consequence = "They are never asked to keep a cache warm, though the chain's dot "
                                "says that they are.",
                 .remedy = "The daemon makes the folder when it runs; look for it there.",
                 .place = Place{around_.home.ostrelleAIDataDir}});
        }
    }

    void checkPaused() {
        std::vector<std::string> paused;
        for (const BotConfig& bot : fields_.userBots) {
            if (bot.paused() && std::binary_search(roles_.begin(), roles_.end(), bot.role)) {
                paused.push_back(bot.title);
            }
        }
        if (!paused.empty()) {
            section_.findings.push_back(
                {.id = ids::keepalivePaused,
                 .level = Level::warning,
                 .subject = counted(paused.size(), "paused bot", "paused bots"),
                 .sentence = "Asked all the same: " + enumerated(paused) + ".",
                 .consequence = "Each request that its daemon answers costs tokens.",
                 .remedy = "Turn keepalive off for them, or take them out of the chain."});
        }
    }

    const SettingsFields& fields_;
    const Surroundings& around_;
    Section section_{.check = "keepalive", .summary = {}};
    std::vector<std::string> roles_; // of all that are asked
    std::size_t kept_ = 0;
};

} // namespace

Section checkKeepalive(const SettingsFields& fields, const Surroundings& surroundings) {
    return KeepaliveCheck(fields, surroundings).section();
}

} // namespace varnhold::doctor
