#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "records/auth.h"
#include "settings/settings_state.h"

// The rows of the sign-in column, made afresh each time it is drawn. Main thread; the record they
// come from must outlive them.
//
// The record's runScout() starts a provider's login in a terminal window and doesn't wait for it;
// nothing happens without a key, and an alert says so where there is no terminal.
namespace varnhold {

// A provider that can be signed in to in two ways.
struct AuthRow {
    ProviderAuth auth;
    AuthMethod& method;  // of the record; whoever sets it calls save()
    std::string& apiKey; // likewise
    std::function<void(const std::optional<std::string>& key)> onScout;

    // By the method chosen: a sign-in file of the provider's tool, or a key of any kind.
    [[nodiscard]] bool isAuthorized() const;
    // What stands beside the name; mostly nothing.
    [[nodiscard]] std::string_view tag() const;
    void verify() const { onScout(auth.scoutKey); }
};

// A provider that knows keys only.
struct KeyRow {
    std::string name;
    std::string tag;
    std::string& apiKey; // of the record; whoever sets it calls save()

    [[nodiscard]] bool isAuthorized() const { return !apiKey.empty(); }
};

// Starts a provider's login in a terminal window and doesn't wait for it. False where no terminal
// is known.
[[nodiscard]] bool startSignIn(platform::Platform& platform, const std::string& provider);

inline constexpr const char* noTerminalAlert =
    "The sign-in needs a terminal, and none was found. Install one, xterm for example, and try "
    "again.";

// In their order on screen, those with two ways above those with keys only.
[[nodiscard]] std::vector<AuthRow> authRows(ModelSelectorView& view);
[[nodiscard]] std::vector<KeyRow> keyRows(ModelSelectorView& view);

} // namespace varnhold
