// Whatever a service manager prints of one job: nothing but a line "PID" makes it live, and what
// stands after the line that decides changes nothing.
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

#include "lifecycle/service_control.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string listing(reinterpret_cast<const char*>(data), size);
    const bool lives = varnhold::listsLivingProcess(listing);
    if (lives && listing.find("\"PID\"") == std::string::npos) {
        std::cerr << "alive without a process: " << listing << "\n";
        std::abort();
    }
    if (lives != varnhold::listsLivingProcess(listing + "\n\"Other\" = 1;\n")) {
        std::cerr << "a later line decides: " << listing << "\n";
        std::abort();
    }
    return 0;
}
