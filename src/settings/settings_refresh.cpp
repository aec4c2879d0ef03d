#include <algorithm>
#include <array>

#include "base/files.h"
#include "base/unicode.h"
#include "settings/settings_state.h"

namespace varnhold {

namespace {

// A file that a provider's tool leaves below the home folder when someone has signed in.
struct SignInMark {
    const char* provider;
    const char* file;
    const char* otherwise; // where another release puts it; null if there is one place only
};

constexpr std::array<SignInMark, 5> signInMarks{{
    {"claude", "/.claude.json", nullptr},
    {"gemini", "/.gemini/oauth_creds.json", nullptr},
    {"openai", "/.codex/auth.json", nullptr},
    {"mistral", "/.mistral.json", nullptr},
    {"qwen", "/.qwen/auth.json", "/.qwen.json"},
}};

bool isSignedIn(const SignInMark& mark, const std::string& home) {
    return files::exists(home + mark.file) ||
           (mark.otherwise != nullptr && files::exists(home + mark.otherwise));
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
    for (const SignInMark& mark : signInMarks) {
        oauthStatuses[mark.provider] = isSignedIn(mark, constants_.appHome);
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
