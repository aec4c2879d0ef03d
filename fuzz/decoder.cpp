// Feeds one kind of document to its decoder: whatever comes, the decoder refuses or takes it, and
// what it has taken is written in a form that it takes again, unchanged.
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string_view>

#include "support/formats.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto* const format = varnhold::testing::findFormat(FUZZED_KIND);
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto taken = format->recode(text);
    if (taken && format->recode(*taken) != *taken) {
        std::cerr << "not written as it was read: " << *taken << "\n";
        std::abort();
    }
    return 0;
}
