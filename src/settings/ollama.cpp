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

void ModelSelectorView::checkOllamaDownload(const AIModelItem& item) {
    platform_.queues.postBackground(
        platform::Priority::userInitiated,
        [&platform = platform_, id = item.id,
         download = alive_.whileAlive([this, item] { downloadOllama(item); })] {
            if (!isListed(platform.processes.run(ollamaCheckRequest(id)))) {
                platform.queues.postMain(download);
            }
        });
}

// However it ends, the row stops showing a download: a model that isn't there is the daemons'
// affair.
void ModelSelectorView::downloadOllama(const AIModelItem& item) {
    downloadingModels.insert(item.id);
    changed();
    platform::background(
        platform_.queues, platform::Priority::background, alive_,
        [&platform = platform_, id = item.id] {
            return platform.processes.run(ollamaPullRequest(id));
        },
        [this, id = item.id](const platform::ProcessResult&) {
            downloadingModels.erase(id);
            changed();
        });
}

} // namespace varnhold
