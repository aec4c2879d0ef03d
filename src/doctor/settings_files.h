#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "doctor/finding.h"
#include "shell/constants.h"

// What the doctor knows about each settings file: how to read it, and what the supervisor makes of
// one that it can't read. Constant data; any thread.
namespace varnhold::doctor {

// Something in a file that is taken by and large, except for this.
struct PartlyRead {
    std::string reason; // as a decoder gives it: "oauthTokens: claude: expected text"
    std::string consequence;
};

struct Reading {
    std::string summary; // "6 bots"
    // What a save would leave of the document; empty where nothing here ever rewrites it.
    std::string rewritten = {};
    std::vector<PartlyRead> partly = {};
};

struct SettingsFile {
    std::string Constants::*path;
    std::string_view suffix; // behind the path
    // The decoder's reason where it refuses the document.
    Result<Reading> (*read)(const json::Value& document, const std::string& text);
    std::string_view whenRejected; // what the supervisor makes of it
    // Of a file that should be there; empty where it needn't.
    std::string_view whenMissing;
    Level levelWhenMissing = Level::note;
    bool isJson = true;
    bool isSaved = true; // by the supervisor's saves
};

// In the order in which people think of them: the fleet, the chains, the rest.
[[nodiscard]] std::span<const SettingsFile> settingsFiles();

[[nodiscard]] std::string pathOf(const SettingsFile& file, const Constants& constants);

// Keys that stand in the document and not in what a save would leave of it, as the way to each in
// the form in which decoders give it: "[2].colour: ". Values aren't compared.
[[nodiscard]] std::vector<std::string> droppedKeys(const json::Value& document,
                                                   const json::Value& rewritten);

} // namespace varnhold::doctor
