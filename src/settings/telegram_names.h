#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/platform.h"
#include "records/bots.h"

// The names under which bots are known to those who write to them, asked for over the network.
//
// Main thread only. Nothing here reports a failure: a bot without an answer keeps its title.
namespace varnhold {

using NamedBots = std::function<void(std::vector<BotConfig> bots)>;

// Asks for every bot with a token that Telegram serves, all at once, and gives the whole list back
// with those titles replaced: once, and never inside the call, also where there is nobody to ask
// for. The network must outlive the requests.
void fetchTelegramNames(platform::Platform& platform, std::vector<BotConfig> bots,
                        NamedBots completion);

// The name in a reply. None unless the reply is an object with a result that has one; whatever else
// it says of itself doesn't count.
[[nodiscard]] std::optional<std::string> nameInReply(std::string_view body);

} // namespace varnhold
