#pragma once

#include <QString>
#include <QtQml/qqmlregistration.h>

#include "views/settings/settings_part.h"

namespace varnhold {

// The two texts that bots are told: the one for all of them, and the one of the bot that is
// selected. Each edit is saved at once. Main thread.
class PromptsPart final : public SettingsPart {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")
    Q_PROPERTY(
        QString masterPrompt READ masterPrompt WRITE setMasterPrompt NOTIFY masterPromptChanged)
    Q_PROPERTY(QString botPrompt READ botPrompt WRITE setBotPrompt NOTIFY botPromptChanged)
    Q_PROPERTY(QString botSubject READ botSubject NOTIFY botSubjectChanged)

public:
    using SettingsPart::SettingsPart;

    void sync(Animation animation) override;

    [[nodiscard]] QString masterPrompt() const { return masterPrompt_; }
    void setMasterPrompt(const QString& text);
    [[nodiscard]] QString botPrompt() const { return botPrompt_; }
    void setBotPrompt(const QString& text);
    // Which bot the second text belongs to; empty without a selected one.
    [[nodiscard]] QString botSubject() const { return botSubject_; }

signals:
    void masterPromptChanged();
    void botPromptChanged();
    void botSubjectChanged();

private:
    QString masterPrompt_;
    QString botPrompt_;
    QString botSubject_;
};

} // namespace varnhold
