// Whatever stands in a property list, it is refused or taken; and what has been taken is written in
// a form that is taken again, unchanged, or refused to be written.
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string_view>

#include "lifecycle/property_list.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view content(reinterpret_cast<const char*>(data), size);
    const auto taken = varnhold::decodePropertyList(content);
    if (!taken) {
        return 0;
    }
    if (const auto written = varnhold::encodePropertyList(*taken)) {
        const auto again = varnhold::decodePropertyList(*written);
        if (!again || *again != *taken) {
            std::cerr << "not written as it was read: " << *written << "\n";
            std::abort();
        }
    }
    return 0;
}
