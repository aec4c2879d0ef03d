#include "views/settings/columns/prompts_part.h"

#include <string>

#include "settings/bot_editing.h"
#include "views/text/qt_text.h"

namespace varnhold {

// The subject comes before the text, as it does in the record: whoever hears of the text can rely
// on whose it is.
void PromptsPart::sync(Animation /*animation*/) {
    if (const QString now = toQString(view().masterPrompt); now != masterPrompt_) {
        masterPrompt_ = now;
        emit masterPromptChanged();
    }
    if (const QString now = shownText(promptPanelSubject(view()).value_or(""));
        now != botSubject_) {
        botSubject_ = now;
        emit botSubjectChanged();
    }
    if (const QString now = toQString(view().selectedBotPrompt); now != botPrompt_) {
        botPrompt_ = now;
        emit botPromptChanged();
    }
}

void PromptsPart::setMasterPrompt(const QString& text) {
    const std::string prompt = text.toStdString();
    if (view().masterPrompt != prompt) {
        view().masterPrompt = prompt;
        view().save();
    }
}

void PromptsPart::setBotPrompt(const QString& text) {
    setSelectedBotPrompt(view(), text.toStdString());
}

} // namespace varnhold
