// Whatever stands in a log: marks are counted in valid text alone, and never more of them than
// there is room.
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string_view>

#include "base/unicode.h"
#include "status/bars.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view log(reinterpret_cast<const char*>(data), size);
    const int marks = varnhold::countMarkers(log);
    if (marks < 0 || static_cast<std::size_t>(marks) > size ||
        (marks > 0 && !varnhold::unicode::isValidUtf8(log))) {
        std::cerr << marks << " marks in " << size << " bytes\n";
        std::abort();
    }
    return 0;
}
