#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "settings/settings_state.h"

// The form that adds a model to the library. Main thread; the settings record must outlive it.
//
// addLibraryModel() of the record adds a model to the library's file and reads it again. A model
// whose id is there already is passed over without a word; a file that can't be read or decoded is
// replaced by one with the new model alone.
namespace varnhold {

struct AddModelSheet {
    // What can be chosen, as it is shown and stored.
    static constexpr std::array<std::string_view, 9> providers{"claude",     "openai",   "gemini",
                                                               "qwen",       "deepseek", "mistral",
                                                               "openrouter", "cerebras", "ollama"};
    static constexpr std::array<std::string_view, 8> colors{"purple", "blue", "green",  "orange",
                                                            "red",    "teal", "yellow", "pink"};

    std::function<void(const AIModelItem& item)> onAdd;
    std::function<void()> onDismiss;
    std::string modelId = {};
    std::string modelName = {};
    std::string modelFamily = {};
    std::string modelProvider = "claude";
    std::string modelColor = "purple";
    std::string modelType = "api"; // no control changes it

    // An id of blanks alone is none.
    [[nodiscard]] bool canAdd() const;
    // The model as typed, with an identity of its own. The id loses the blanks around it; a name
    // taken from the id keeps them.
    [[nodiscard]] AIModelItem item() const;
    // Hands the model over and closes; nothing where none can be made.
    void add() const;
};

// The form as it first comes up. None while the record doesn't want it shown.
[[nodiscard]] std::optional<AddModelSheet> addModelSheet(ModelSelectorView& view);

} // namespace varnhold
