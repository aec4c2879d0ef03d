#include "settings/add_model.h"

#include <algorithm>

#include "base/files.h"
#include "base/unicode.h"
#include "base/uuid.h"

namespace varnhold {

bool AddModelSheet::canAdd() const {
    return !unicode::trimmedOfBlanks(modelId).empty();
}

AIModelItem AddModelSheet::item() const {
    return {.uniqueId = Uuid::random().text(),
            .id = std::string(unicode::trimmedOfBlanks(modelId)),
            .name = modelName.empty() ? modelId : modelName,
            .family = modelFamily.empty() ? modelProvider : modelFamily,
            .color = modelColor,
            .type = modelType,
            .provider_key = modelProvider};
}

void AddModelSheet::add() const {
    if (canAdd()) {
        onAdd(item());
        onDismiss();
    }
}

std::optional<AddModelSheet> addModelSheet(ModelSelectorView& view) {
    if (!view.showAddModelSheet) {
        return std::nullopt;
    }
    return AddModelSheet{.onAdd = [&view](const AIModelItem& item) { view.addLibraryModel(item); },
                         .onDismiss =
                             [&view] {
                                 view.showAddModelSheet = false;
                                 view.changed();
                             }};
}

void ModelSelectorView::addLibraryModel(const AIModelItem& item) {
    ModelLibrary library = valueOrEmpty(readLibrary(constants_.modelLibraryFile));
    const bool isThere =
        std::any_of(library.models.begin(), library.models.end(),
                    [&item](const AIModelItem& model) { return model.id == item.id; });
    if (isThere) {
        return;
    }
    library.models.push_back(item);
    // A file that can't be written stays as it was, and the lists show what it holds.
    static_cast<void>(files::writeInPlace(constants_.modelLibraryFile, encodeLibrary(library)));
    refresh();
}

} // namespace varnhold
