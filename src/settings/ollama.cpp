#include "settings/ollama.h"

#include "base/unicode.h"
#include "settings/settings_state.h"

namespace varnhold {

namespace {

platform::ProcessRequest shell(const std::string& command, platform::Stream output) {
    return {.program = "/bin/sh",
            .arguments = {"-c", "export PATH=$PATH:/usr/local/bin:/opt/homebrew/bin; " + command},
            .standardOutput = output};
}

} // namespace

platform::ProcessRequest ollamaCheckRequest(const std::string& id) {
    return shell("ollama list | grep '" + id + "'", platform::Stream::captured);
}

platform::ProcessRequest ollamaPullRequest(const std::string& id) {
    return shell("ollama pull " + id, platform::Stream::inherited);
}

bool isListed(const platform::ProcessResult& check) {
    return !check.standardOutput.empty() && unicode::isValidUtf8(check.standardOutput);
}

// On the other thread nothing of the record is touched; it may even be gone.
void ModelSelectorView::checkOllamaDownload(const AIModelItem& item) {
    platform_.queues.postBackground(
        platform::Priority::userInitiated,
        [this, item, &platform = platform_, alive = std::weak_ptr(alive_)] {
            if (isListed(platform.processes.run(ollamaCheckRequest(item.id)))) {
                return;
            }
            platform.queues.postMain([this, item, alive] {
                if (!alive.expired()) {
                    downloadOllama(item);
                }
            });
        });
}

// However it ends, the row stops showing a download: a model that isn't there is the daemons'
// affair.
void ModelSelectorView::downloadOllama(const AIModelItem& item) {
    downloadingModels.insert(item.id);
    changed();
    platform_.queues.postBackground(
        platform::Priority::background,
        [this, id = item.id, &platform = platform_, alive = std::weak_ptr(alive_)] {
            static_cast<void>(platform.processes.run(ollamaPullRequest(id)));
            platform.queues.postMain([this, id, alive] {
                if (!alive.expired()) {
                    downloadingModels.erase(id);
                    changed();
                }
            });
        });
}

} // namespace varnhold
