#include "editing.h"

#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "settings/chain_sections.h"

namespace varnhold::testing {

namespace {

constexpr std::size_t defaultsPerSave = 14;

} // namespace

void LatePayload::arrive(std::optional<std::string> text) {
    std::thread([this, text = std::move(text)] { receiver_(text); }).join();
}

Editing::Editing() {
    open().observe([this](Animation animation) { animations.push_back(animation); });
}

bool Editing::drop(const std::string& payload, TargetList list,
                   std::optional<std::size_t> insertAt) {
    const bool taken = view->handleDrop({textPayload(payload)}, list, insertAt);
    platform.runMain();
    return taken;
}

bool Editing::dropOnLibrary(const std::string& payload) {
    const bool taken = view->handleLibraryDrop({textPayload(payload)});
    platform.runMain();
    return taken;
}

bool Editing::dropBot(const std::string& payload, TargetList list) {
    const bool taken = view->chain(list).dropBots({textPayload(payload)});
    platform.runMain();
    return taken;
}

int Editing::newSaves() {
    const std::size_t fresh = platform.defaults.written.size() - seenDefaults_;
    seenDefaults_ += fresh;
    EXPECT_EQ(fresh % defaultsPerSave, 0U);
    return static_cast<int>(fresh / defaultsPerSave);
}

std::vector<std::string> Editing::ids(TargetList list) const {
    std::vector<std::string> out;
    for (const AIModelItem& each : view->chainArray(list)) {
        out.push_back(each.id);
    }
    return out;
}

std::string Editing::fileOf(TargetList list) const {
    return read(constants.*chainSection(list).file);
}

} // namespace varnhold::testing
