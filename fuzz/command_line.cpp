// Whatever words the service tool is given, one on a line: it understands them or says in one line
// why not.
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "launchctl/command_line.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::vector<std::string> words(1);
    for (std::size_t i = 0; i < size; ++i) {
        if (data[i] == '\n') {
            words.emplace_back();
        } else {
            words.back().push_back(static_cast<char>(data[i]));
        }
    }
    const auto command = varnhold::services::parseCommandLine(words);
    if (!command && command.error().empty()) {
        std::cerr << "refused without a reason\n";
        std::abort();
    }
    return 0;
}
