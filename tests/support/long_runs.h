#pragma once

#include <cstdlib>
#include <string>

namespace varnhold::testing {

// How many operations a random test makes: `everyday`, or what VARNHOLD_RANDOM_OPERATIONS asks for.
inline int randomOperations(int everyday) {
    const char* wanted = std::getenv("VARNHOLD_RANDOM_OPERATIONS");
    return wanted == nullptr ? everyday : std::stoi(wanted);
}

} // namespace varnhold::testing
