// Files that daemons hand over: whatever stands in them, notices are taken once, and alerts come
// sorted, each provider once.
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>
#include <unistd.h>

#include "base/files.h"
#include "shell/constants.h"
#include "status/notices.h"
#include "status/reauth_alerts.h"

namespace {

// A home in memory, for as long as the fuzzer runs.
const varnhold::Constants& constants() {
    static const varnhold::Constants made = [] {
        std::string folder = "/dev/shm/varnhold-fuzz-XXXXXX";
        if (::mkdtemp(folder.data()) == nullptr) {
            std::abort();
        }
        return varnhold::Constants(folder);
    }();
    return made;
}

void write(const std::string& path, const std::uint8_t* data, std::size_t size) {
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string notices = constants().reauthAlertsFile + ".notices";
    static const bool made =
        varnhold::files::createDirectories(constants().appSupportDir).has_value();
    if (!made) {
        std::abort();
    }
    write(notices, data, size);
    const auto taken = varnhold::takeModelNotices(notices);
    if (taken.empty() == (::access(notices.c_str(), F_OK) != 0)) {
        std::cerr << taken.size() << " notices taken, and the file is wrongly there or gone\n";
        std::abort();
    }
    if (varnhold::noticePanel(taken).height <= 0) {
        std::cerr << "no room for " << taken.size() << " notices\n";
        std::abort();
    }
    write(constants().reauthAlertsFile, data, size);
    const auto alerts = varnhold::loadReauthAlerts(constants());
    for (std::size_t i = 1; i < alerts.size(); ++i) {
        if (!(alerts[i - 1].provider < alerts[i].provider)) {
            std::cerr << "out of order: " << alerts[i].provider << "\n";
            std::abort();
        }
    }
    return 0;
}
