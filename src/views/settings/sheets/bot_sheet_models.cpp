#include "views/settings/sheets/bot_sheet_models.h"

#include "views/text/qt_text.h"

namespace varnhold {

void TokenSheetModel::show(std::optional<BotTokenSheet> sheet) {
    sheet_ = std::move(sheet);
    emit changed();
}

QString TokenSheetModel::heading() const {
    return sheet_ ? shownText(sheet_->heading()) : QString();
}

QStringList TokenSheetModel::services() const {
    QStringList values;
    for (const BotService service : allBotServices) {
        values.append(toQString(rawValue(service)));
    }
    return values;
}

QString TokenSheetModel::service() const {
    return sheet_ ? toQString(rawValue(sheet_->bot.service)) : QString();
}

void TokenSheetModel::setService(const QString& rawValue) {
    const auto service = botServiceFromRawValue(rawValue.toStdString());
    if (sheet_ && service && *service != sheet_->bot.service) {
        sheet_->bot.service = *service;
        emit changed();
    }
}

QString TokenSheetModel::tokenLabel() const {
    return sheet_ ? toQString(sheet_->tokenLabel()) : QString();
}

QString TokenSheetModel::tokenPrompt() const {
    return sheet_ ? toQString(sheet_->tokenPrompt()) : QString();
}

QString TokenSheetModel::token() const {
    return sheet_ ? toQString(sheet_->bot.token) : QString();
}

void TokenSheetModel::setToken(const QString& token) {
    if (sheet_ && token != this->token()) {
        sheet_->bot.token = token.toStdString();
        emit changed();
    }
}

QString TokenSheetModel::help() const {
    return sheet_ ? shownText(sheet_->help()) : QString();
}

bool TokenSheetModel::canSave() const {
    return sheet_ && sheet_->canSave();
}

// The sheet is let go of while it closes, so what runs is a copy.
void TokenSheetModel::save() {
    if (canSave()) {
        const BotTokenSheet sheet = *sheet_;
        sheet.onSave(sheet.bot);
    }
}

void TokenSheetModel::cancel() {
    if (sheet_) {
        const auto onCancel = sheet_->onCancel;
        onCancel();
    }
}

void PromptEditorModel::show(std::optional<BotPromptEditor> sheet) {
    sheet_ = std::move(sheet);
    emit changed();
}

QString PromptEditorModel::heading() const {
    return sheet_ ? shownText(sheet_->heading()) : QString();
}

QString PromptEditorModel::text() const {
    return sheet_ ? toQString(sheet_->text()) : QString();
}

void PromptEditorModel::setText(const QString& text) {
    if (sheet_ && text != this->text()) {
        sheet_->setText(text.toStdString());
        emit changed();
    }
}

void PromptEditorModel::save() {
    if (sheet_) {
        const BotPromptEditor sheet = *sheet_;
        sheet.onSave(sheet.bot);
    }
}

void PromptEditorModel::cancel() {
    if (sheet_) {
        const auto onCancel = sheet_->onCancel;
        onCancel();
    }
}

} // namespace varnhold
