#include "views/settings/text_keeper.h"

#include <QTextDocument>
#include <algorithm>
#include <utility>

namespace varnhold {

void TextKeeper::setDocument(QQuickTextDocument* document) {
    shown_ = document;
    connect(document->textDocument(), &QTextDocument::contentsChange, this,
            [this](int at, int, int) { noteEdit(at); });
}

void TextKeeper::noteEdit(int at) {
    editedAt_ = editedAt_ < 0 ? at : std::min(editedAt_, at);
}

QString TextKeeper::form() const {
    return shown_ == nullptr ? QString() : shown_->textDocument()->toRawText();
}

void TextKeeper::take(const QString& text) {
    editedAt_ = -1;
    kept_ = KeptText(text);
    // Should the editor hold something else after all, then that is what will be edited.
    kept_.follow(form(), -1);
    emit textChanged();
}

void TextKeeper::follow() {
    kept_.follow(form(), std::exchange(editedAt_, -1));
    emit textChanged();
}

} // namespace varnhold
