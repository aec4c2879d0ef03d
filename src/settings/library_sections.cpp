#include "settings/library_sections.h"

namespace varnhold {

std::vector<LibrarySection> librarySections(const SettingsFields& view) {
    std::vector<LibrarySection> sections{{"Local Tools", "", view.localToolModels}};
    const std::vector<LibrarySection> others{
        {"Direct", "", view.directModels},
        {"Ollama", "", view.ollamaModels},
        {"Cerebras", "(wafer-scale)", view.cerebrasModels},
        {"OpenRouter", "(no tool calls)", view.openRouterModels}};
    for (const LibrarySection& each : others) {
        if (!each.models.empty()) {
            sections.push_back(each);
        }
    }
    return sections;
}

} // namespace varnhold
