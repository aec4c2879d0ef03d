// Whatever somebody says who knocks at the running supervisor: it can be understood, and told on as
// it was understood.
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>

#include "app/activation.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string said(reinterpret_cast<const char*>(data), size);
    const auto heard = varnhold::Activation::fromText(said);
    if (varnhold::Activation::fromText(heard.asText()) != heard) {
        std::cerr << "told on as something else: " << said << "\n";
        std::abort();
    }
    return 0;
}
