#pragma once

#include <QObject>
#include <QStringList>
#include <QtQml/qqmlregistration.h>
#include <optional>
#include <string>

#include "settings/add_model.h"

namespace varnhold {

// The form that adds a model to the library, as QML sees it; empty while it doesn't stand. Main
// thread.
class AddModelForm final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")
    Q_PROPERTY(QString modelId READ modelId WRITE setModelId NOTIFY changed)
    Q_PROPERTY(QString modelName READ modelName WRITE setModelName NOTIFY changed)
    Q_PROPERTY(QString modelFamily READ modelFamily WRITE setModelFamily NOTIFY changed)
    Q_PROPERTY(QString provider READ provider WRITE setProvider NOTIFY changed)
    Q_PROPERTY(QString color READ color WRITE setColor NOTIFY changed)
    Q_PROPERTY(QStringList providers READ providers CONSTANT)
    Q_PROPERTY(QStringList colors READ colors CONSTANT)
    Q_PROPERTY(bool canAdd READ canAdd NOTIFY changed)

public:
    explicit AddModelForm(QObject* parent) : QObject(parent) {}

    void show(std::optional<AddModelSheet> sheet);

    [[nodiscard]] QString modelId() const { return text(&AddModelSheet::modelId); }
    void setModelId(const QString& id) { set(&AddModelSheet::modelId, id); }
    [[nodiscard]] QString modelName() const { return text(&AddModelSheet::modelName); }
    void setModelName(const QString& name) { set(&AddModelSheet::modelName, name); }
    [[nodiscard]] QString modelFamily() const { return text(&AddModelSheet::modelFamily); }
    void setModelFamily(const QString& family) { set(&AddModelSheet::modelFamily, family); }
    [[nodiscard]] QString provider() const { return text(&AddModelSheet::modelProvider); }
    void setProvider(const QString& provider) { set(&AddModelSheet::modelProvider, provider); }
    [[nodiscard]] QString color() const { return text(&AddModelSheet::modelColor); }
    void setColor(const QString& color) { set(&AddModelSheet::modelColor, color); }
    [[nodiscard]] QStringList providers() const;
    [[nodiscard]] QStringList colors() const;
    [[nodiscard]] bool canAdd() const { return sheet_ && sheet_->canAdd(); }

    // Nothing while there is no id.
    Q_INVOKABLE void add();
    Q_INVOKABLE void cancel();

signals:
    void changed();

private:
    using Text = std::string AddModelSheet::*;

    [[nodiscard]] QString text(Text member) const;
    void set(Text member, const QString& value);

    std::optional<AddModelSheet> sheet_;
};

} // namespace varnhold
