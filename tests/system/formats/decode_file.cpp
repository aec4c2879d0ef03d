// Tells whether the program takes files of one kind: decode_file KIND FILE...
//
// Prints "taken" or "refused" for each file, with the reason, and ends with 0 if all were taken.
#include <cstdlib>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

#include "base/files.h"
#include "lifecycle/property_list.h"
#include "status/notices.h"
#include "status/reauth_alerts.h"
#include "support/formats.h"

namespace varnhold::testing {
namespace {

using Decode = std::function<Result<void>(const std::string& path)>;

Result<void> decodeRecord(const Format& format, const std::string& path) {
    return format.reread(path).map([](const std::string&) {});
}

Result<void> decodeList(const std::string& path) {
    return files::read(path)
        .and_then([](const std::string& content) { return decodePropertyList(content); })
        .map([](const PropertyList&) {});
}

// These two readers have no refusal of their own: what they don't understand gives nothing.
Result<void> decodeAlerts(const std::string& path) {
    Constants constants("");
    constants.reauthAlertsFile = path;
    return loadReauthAlerts(constants).empty() ? failure("no alerts") : Result<void>();
}

Result<void> decodeNotices(const std::string& path) {
    return takeModelNotices(path).empty() ? failure("no notices") : Result<void>();
}

Decode decoderOf(const std::string& kind) {
    if (const Format* const format = findFormat(kind)) {
        return [format](const std::string& path) { return decodeRecord(*format, path); };
    }
    if (kind == "property-list") {
        return decodeList;
    }
    if (kind == "alerts") {
        return decodeAlerts;
    }
    return kind == "notices" ? Decode(decodeNotices) : Decode();
}

} // namespace
} // namespace varnhold::testing

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const auto decode =
        arguments.empty() ? nullptr : varnhold::testing::decoderOf(arguments.front());
    if (!decode) {
        std::cerr << "usage: decode_file KIND FILE...\n";
        return 2;
    }
    bool allTaken = true;
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        const auto result = decode(arguments[i]);
        allTaken = allTaken && result.has_value();
        std::cout << (result ? "taken" : "refused: " + result.error()) << "\n";
    }
    return allTaken ? EXIT_SUCCESS : EXIT_FAILURE;
}
