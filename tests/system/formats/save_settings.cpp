// Opens the settings of a home folder and saves them, as opening the window does, and writes the
// property lists of its bots: save_settings HOME
#include <cstdlib>
#include <iostream>

#include "lifecycle/launch_agent.h"
#include "settings/settings_state.h"
#include "support/fake_platform.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: save_settings HOME\n";
        return 2;
    }
    varnhold::testing::FakePlatform platform;
    platform.home = argv[1];
    const varnhold::Constants constants(platform.home);
    varnhold::ModelSelectorView view(platform.interfaces, constants);
    view.appear();
    platform.http.answerAll("");
    platform.settle();
    varnhold::regenerateAllPlists({platform.interfaces, constants});
    return EXIT_SUCCESS;
}
