// Whatever a service manager prints as its listing: labels come out without tabs and line breaks,
// and the whole says of each what its own line says.
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

#include "status/job_list.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view listing(reinterpret_cast<const char*>(data), size);
    for (const auto& [label, status] : varnhold::parseJobList(listing)) {
        if (label.find_first_of("\n\t") != std::string::npos ||
            varnhold::statusOf(varnhold::parseJobList("1\t0\t" + label), label) !=
                varnhold::DaemonStatus::running) {
            std::cerr << "a label that is none: " << label << "\n";
            std::abort();
        }
    }
    return 0;
}
