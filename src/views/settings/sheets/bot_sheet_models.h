#pragma once

#include <QObject>
#include <QStringList>
#include <QtQml/qqmlregistration.h>
#include <optional>

#include "settings/bot_sheets.h"

// The two sheets that edit one bot, as QML sees them. Each works on the sheet that stands, and is
// empty while none does. Main thread.
namespace varnhold {

class TokenSheetModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")
    Q_PROPERTY(QString heading READ heading NOTIFY changed)
    Q_PROPERTY(QStringList services READ services CONSTANT)
    Q_PROPERTY(QString service READ service WRITE setService NOTIFY changed)
    Q_PROPERTY(QString tokenLabel READ tokenLabel NOTIFY changed)
    Q_PROPERTY(QString tokenPrompt READ tokenPrompt NOTIFY changed)
    Q_PROPERTY(QString token READ token WRITE setToken NOTIFY changed)
    Q_PROPERTY(QString help READ help NOTIFY changed)
    Q_PROPERTY(bool canSave READ canSave NOTIFY changed)

public:
    explicit TokenSheetModel(QObject* parent) : QObject(parent) {}

    void show(std::optional<BotTokenSheet> sheet);

    [[nodiscard]] QString heading() const;
    [[nodiscard]] QStringList services() const;
    [[nodiscard]] QString service() const;
    void setService(const QString& rawValue);
    [[nodiscard]] QString tokenLabel() const;
    [[nodiscard]] QString tokenPrompt() const;
    [[nodiscard]] QString token() const;
    void setToken(const QString& token);
    [[nodiscard]] QString help() const;
    [[nodiscard]] bool canSave() const;

    // Nothing while there is no token.
    Q_INVOKABLE void save();
    Q_INVOKABLE void cancel();

signals:
    void changed();

private:
    std::optional<BotTokenSheet> sheet_;
};

class PromptEditorModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")
    Q_PROPERTY(QString heading READ heading NOTIFY changed)
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY changed)

public:
    explicit PromptEditorModel(QObject* parent) : QObject(parent) {}

    void show(std::optional<BotPromptEditor> sheet);

    [[nodiscard]] QString heading() const;
    [[nodiscard]] QString text() const;
    void setText(const QString& text);

    Q_INVOKABLE void save();
    Q_INVOKABLE void cancel();

signals:
    void changed();

private:
    std::optional<BotPromptEditor> sheet_;
};

} // namespace varnhold
