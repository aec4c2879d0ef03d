#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace varnhold::services {

// A unit in the memory of a systemd user manager.
struct Unit {
    std::string name;
    std::string sub;
    std::string path; // its object on the bus
};

// One number asked of a service.
struct Question {
    std::string path;
    std::string property;
    std::int64_t answer = 0; // stays as it is if the unit has gone meanwhile
};

// What makes up a unit of ours.
struct ServiceUnit {
    std::string name;
    std::string description;
    std::vector<std::string> before; // command that runs before the main process
    std::vector<std::string> main;
    std::vector<std::string> after; // command that runs after the main process has ended
    bool keepAlive = true;
};

} // namespace varnhold::services
