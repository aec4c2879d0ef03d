#include "views/settings/sheets/add_model_form.h"

#include <string_view>

#include "views/text/qt_text.h"

namespace varnhold {

namespace {

template <class Texts>
QStringList listOf(const Texts& texts) {
    QStringList list;
    for (const std::string_view text : texts) {
        list.append(toQString(text));
    }
    return list;
}

} // namespace

void AddModelForm::show(std::optional<AddModelSheet> sheet) {
    sheet_ = std::move(sheet);
    emit changed();
}

QStringList AddModelForm::providers() const {
    return listOf(AddModelSheet::providers);
}

QStringList AddModelForm::colors() const {
    return listOf(AddModelSheet::colors);
}

QString AddModelForm::text(Text member) const {
    return sheet_ ? toQString(*sheet_.*member) : QString();
}

void AddModelForm::set(Text member, const QString& value) {
    if (sheet_ && value != text(member)) {
        *sheet_.*member = value.toStdString();
        emit changed();
    }
}

// The sheet is let go of while it closes, so what runs is a copy.
void AddModelForm::add() {
    if (sheet_) {
        const AddModelSheet sheet = *sheet_;
        sheet.add();
    }
}

void AddModelForm::cancel() {
    if (sheet_) {
        const auto onDismiss = sheet_->onDismiss;
        onDismiss();
    }
}

} // namespace varnhold
