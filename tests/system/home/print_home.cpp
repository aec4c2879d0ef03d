#include <iostream>

#include "platform/posix_system.h"

// Prints the home folder that the program would work in.
int main() {
    std::cout << varnhold::platform::makeSystem()->homeDirectory() << '\n';
    return 0;
}
