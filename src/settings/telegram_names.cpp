#include "settings/telegram_names.h"

#include <memory>
#include <utility>

#include "base/json.h"

namespace varnhold {

namespace {

// The token follows directly.
constexpr const char* botEndpoint = "https://api.telegram.org/bot";
constexpr const char* ownRecordMethod = "/getMe";

// One fetch over a whole list. The last request to let go of it posts the completion.
class NameFetch final {
public:
    NameFetch(platform::Queues& queues, std::vector<BotConfig> bots, NamedBots completion)
        : bots_(std::move(bots)), queues_(queues), completion_(std::move(completion)) {}
    NameFetch(const NameFetch&) = delete;
    NameFetch& operator=(const NameFetch&) = delete;
    ~NameFetch() = default;

    [[nodiscard]] const std::vector<BotConfig>& bots() const { return bots_; }

    void enter() { ++underWay_; }

    void take(std::size_t index, const std::string& body) {
        if (auto name = nameInReply(body)) {
            bots_[index].title = *std::move(name);
        }
        leave();
    }

    void leave() {
        if (--underWay_ == 0) {
            queues_.postMain([completion = std::move(completion_), bots = std::move(bots_)] {
                completion(bots);
            });
        }
    }

private:
    std::vector<BotConfig> bots_;
    platform::Queues& queues_;
    NamedBots completion_;
    std::size_t underWay_ = 0;
};

bool canBeAsked(const BotConfig& bot) {
    return bot.service == BotService::telegram && !bot.token.empty();
}

} // namespace

void fetchTelegramNames(platform::Platform& platform, std::vector<BotConfig> bots,
                        NamedBots completion) {
    const auto fetch =
        std::make_shared<NameFetch>(platform.queues, std::move(bots), std::move(completion));
    fetch->enter(); // so that the end can't come before the last request has begun
    for (std::size_t i = 0; i < fetch->bots().size(); ++i) {
        const BotConfig& bot = fetch->bots()[i];
        if (!canBeAsked(bot)) {
            continue;
        }
        fetch->enter();
        platform.http.get(botEndpoint + bot.token + ownRecordMethod,
                          [fetch, i](const std::string& body) { fetch->take(i, body); });
    }
    fetch->leave();
}

std::optional<std::string> nameInReply(std::string_view body) {
    const auto reply = json::parse(body);
    if (!reply || !reply->is_object()) {
        return std::nullopt;
    }
    const auto result = reply->find("result");
    if (result == reply->end() || !result->is_object()) {
        return std::nullopt;
    }
    const auto name = result->find("first_name");
    if (name == result->end() || !name->is_string()) {
        return std::nullopt;
    }
    return name->get<std::string>();
}

} // namespace varnhold
