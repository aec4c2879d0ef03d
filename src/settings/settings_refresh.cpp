#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "base/files.h"
#include "base/unicode.h"
#include "records/providers.h"
#include "settings/settings_state.h"

namespace varnhold {

namespace {

// By a file that the provider's tool leaves below the home folder.
bool isSignedIn(const Provider& provider, const std::string& home) {
    return std::any_of(provider.login.files.begin(), provider.login.files.end(),
                       [&home](std::string_view file) {
                           return !file.empty() && files::exists(home + std::string(file));
                       });
}

bool standsBefore(const AIModelItem& left, const AIModelItem& right) {
    if (unicode::precedes(left.family, right.family)) {
        return true;
    }
    return !unicode::precedes(right.family, left.family) &&
           unicode::precedes(left.name, right.name);
}

// Models that are reached through a provider's own tool.
std::vector<AIModelItem> directModelsOf(const std::vector<AIModelItem>& library) {
    std::vector<AIModelItem> models;
    std::copy_if(library.begin(), library.end(), std::back_inserter(models),
                 [](const AIModelItem& model) { return model.type == "cli"; });
    std::stable_sort(models.begin(), models.end(), standsBefore);
    return models;
}

} // namespace

void ModelSelectorView::refresh() {
    for (const Provider& provider : providers()) {
        if (!provider.login.files.front().empty()) {
            oauthStatuses[std::string(provider.key)] = isSignedIn(provider, constants_.appHome);
        }
    }
    if (auto library = readLibrary(constants_.modelLibraryFile)) {
        directModels = directModelsOf(library->models);
        ollamaModels.clear();
        cerebrasModels.clear();
        openRouterModels.clear();
        allLibraryModels = std::move(library->models);
    }
    changed();
}

} // namespace varnhold
