#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "records/auth_config.h"

// The table of the AI providers that know keys: for each, under which names its sign-in is kept and
// what tells it apart. Files, user defaults, agents, placement, the sign-in column, the menu and
// the doctor all go by it.
//
// Constant data and pure functions; any thread. Nothing here fails.
namespace varnhold {

// One value of the sign-in, where it is kept. It has the one member or the other.
struct StoredValue {
    std::string_view name;           // in auth_config.json
    std::string_view legacyKey = {}; // in the user defaults
    std::string AuthConfig::*member = nullptr;
    std::optional<std::string> AuthConfig::*optionalMember = nullptr; // older files are without it

    // None where it is absent.
    [[nodiscard]] std::optional<std::string> of(const AuthConfig& config) const;
    void set(AuthConfig& config, std::string value) const;
};

// How one signs in by an account. It has no default: a row without it doesn't compile.
struct Login {
    bool hasRow;                           // in the sign-in column
    std::array<std::string_view, 2> files; // below the home folder; one is enough

    constexpr Login(bool inColumn, std::array<std::string_view, 2> paths)
        : hasRow(inColumn), files(paths) {}
};

// The pointers name where values are kept; a provider holds none itself.
struct Provider {
    std::string_view key;  // in models and sign-in statuses, and what the login script is told
    std::string_view name; // "Anthropic"
    std::string_view menuName = {};             // of its alerts; empty: as the alerts call it
    std::string_view tag = {};                  // beside the name, for those with a key only
    std::array<std::string_view, 2> words = {}; // by which ids of models name it as their maker
    std::string_view tool = {};                 // its command line tool
    Login login;
    std::string_view variable; // by which agents get its key
    // Without a name: by key alone.
    StoredValue method = {};
    AuthMethod SignIn::*chosenMethod = nullptr;
    StoredValue apiKey;
    std::string SignIn::*typedKey = nullptr;

    [[nodiscard]] constexpr bool hasMethod() const { return chosenMethod != nullptr; }
};

inline constexpr std::size_t providerCount = 8;
inline constexpr std::size_t storedValueCount = 14;

// In the order in which the file has them. Of the words in a model's id, those of the first count.
[[nodiscard]] const std::array<Provider, providerCount>& providers();

// All values of the sign-in, in the order in which they are read and written.
[[nodiscard]] const std::array<StoredValue, storedValueCount>& storedValues();

// By its key, to the letter; null if it is none of these.
[[nodiscard]] const Provider* findProvider(std::string_view key);

// A model's maker by the words in its id; null if there is none of them.
[[nodiscard]] const Provider* findMaker(std::string_view modelId);

} // namespace varnhold
