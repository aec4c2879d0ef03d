#include "run_listing.h"

#include <chrono>
#include <utility>

namespace varnhold::doctor {

namespace {

using namespace std::chrono_literals;
using platform::Stream;

constexpr auto listingLimit = 10s;

} // namespace

ListingRun runListing(platform::Processes& processes, const std::string& launchctl) {
    const auto start = std::chrono::steady_clock::now();
    platform::ProcessResult result = processes.run({.program = launchctl,
                                                    .arguments = {"list"},
                                                    .standardOutput = Stream::captured,
                                                    .standardError = Stream::captured,
                                                    .deadline = listingLimit});
    const auto took = std::chrono::steady_clock::now() - start;
    return {.started = result.started,
            .timedOut = result.started && took >= listingLimit,
            .exitCode = result.signalled ? -result.status : result.status,
            .output = std::move(result.standardOutput),
            .error = std::move(result.started ? result.standardError : result.startError),
            .took = std::chrono::duration_cast<std::chrono::milliseconds>(took)};
}

} // namespace varnhold::doctor
