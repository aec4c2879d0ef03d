#include "support/formats.h"

#include <algorithm>

#include "records/assignments.h"
#include "records/auth.h"
#include "records/bots.h"
#include "records/governor_choice.h"
#include "records/groups.h"
#include "records/models.h"
#include "records/preferences.h"

namespace varnhold::testing {

namespace {

// Pairs a decoder with its encoder.
template <auto decode, auto encode, class Source>
Result<std::string> recoded(Source source) {
    return decode(source).and_then(
        [](const auto& record) -> Result<std::string> { return encode(record); });
}

template <auto decode, auto read, auto encode>
Format format(const char* kind, std::string sample, std::vector<std::string> optionalKeys = {}) {
    return {kind, recoded<decode, encode, std::string_view>,
            recoded<read, encode, const std::string&>, std::move(sample), std::move(optionalKeys)};
}

std::string encodeChoice(const GovernorChoice& choice) {
    return withGovernorChoice(std::string("{}"), choice.provider.value_or(""),
                              choice.model.value_or(""), "2026-03-04T05:06:07Z");
}

constexpr const char* model =
    R"({"uniqueId":"5E7C","id":"claude-opus-4-8","name":"Claude Opus 4.8","family":"Anthropic",)"
    R"("color":"purple","type":"cli","provider_key":"claude"})";

const std::string chain = "[" + std::string(model) + "," + model + "]";

constexpr const char* bots =
    R"([{"icon":"⚖️","title":"Governor AI","token":"","role":"governor",)"
    R"("launchdLabel":"com.ostrelleai.governor","service":"Telegram","prompt":"Be brief.",)"
    R"("isPaused":false,"isSystem":true,"keepaliveEnabled":true}])";

constexpr const char* efforts =
    R"({"architect":"high","worker":"low","photo":"low","video":"off","voice":"low",)"
    R"("governor":"medium"})";

constexpr const char* budgets =
    R"({"architect":200000,"worker":8000,"photo":0,"video":16000,"voice":0,"governor":1})";

constexpr const char* auth =
    R"j({"anthropicMethod":"Login (OAuth)","anthropicKey":"","googleMethod":"API Key",)j"
    R"("googleKey":"k","openaiMethod":"API Key","openaiKey":"","mistralMethod":"API Key",)"
    R"("mistralKey":"","qwenMethod":"API Key","qwenKey":"","deepseekMethod":"API Key",)"
    R"("deepseekKey":"","openrouterKey":"","cerebrasKey":"c"})";

const std::string groups =
    R"([{"id":"46717E56-E629-5AE3-8B57-A557FDE5BD65","name":"Crew","models":[)" +
    std::string(model) +
    R"(],"effortLevel":"medium","contextTokens":31999.6,"colorHex":"CCF0FF",)"
    R"("attachedPaths":["/a"],"objectives":"Ship.","doctrine":["/a/readme"],)"
    R"("assignedBotLabels":["com.ostrelleai.ops.telegramd"]}])";

const std::vector<std::string> optionalInModels{"uniqueId", "type", "provider_key"};

} // namespace

const std::vector<Format>& formats() {
    static const std::vector<Format> all{
        format<decodeBots, readBots, encodeBots>(
            "bots", bots, {"prompt", "isPaused", "isSystem", "keepaliveEnabled"}),
        format<decodeLibrary, readLibrary, encodeLibrary>("library", "{\"models\":" + chain + "}",
                                                          optionalInModels),
        format<decodeChain, readChain, encodeChain>("chain", chain, optionalInModels),
        format<decodeEffortPrefs, readEffortPrefs, encodeEffortPrefs>(
            "effort", efforts, {"photo", "video", "voice", "governor"}),
        format<decodeContextPrefs, readContextPrefs, encodeContextPrefs>(
            "context", budgets, {"architect", "worker", "photo", "video", "voice", "governor"}),
        format<decodeResponseMode, readResponseMode, encodeResponseMode>("response-mode",
                                                                         "\"both\""),
        format<decodeAuthConfig, readAuthConfig, encodeAuthConfig>("auth", auth, {"cerebrasKey"}),
        format<decodeGroups, readGroups, encodeGroups>("groups", groups, optionalInModels),
        format<decodeAssignments, readAssignments, encodeAssignments>(
            "assignments", R"({"architect":["com.ostrelleai.ops.telegramd","b"],"worker":[]})"),
        format<decodeGovernorChoice, readGovernorChoice, encodeChoice>(
            "preferred-provider",
            R"({"governor":{"provider":"cerebras","model":"qwen","set_at":"x"}})"),
    };
    return all;
}

const Format* findFormat(std::string_view kind) {
    const auto found = std::find_if(formats().begin(), formats().end(),
                                    [&](const Format& each) { return each.kind == kind; });
    return found == formats().end() ? nullptr : &*found;
}

std::string testName(const Format& format) {
    std::string name = format.kind;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

} // namespace varnhold::testing
