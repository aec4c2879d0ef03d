#pragma once

#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include "views/settings/keyed_list_model.h"
#include "views/settings/settings_part.h"

namespace varnhold {

// The column of providers: those that can be signed in to in two ways, and below them those that
// know keys only. What is chosen or typed here is saved at once. Rows are named by their place in
// their list. Main thread.
class ProvidersPart final : public SettingsPart {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")
    Q_PROPERTY(varnhold::KeyedListModel* authRows READ authRows CONSTANT)
    Q_PROPERTY(varnhold::KeyedListModel* keyRows READ keyRows CONSTANT)
    Q_PROPERTY(QStringList methods READ methods CONSTANT)

public:
    ProvidersPart(const SettingsContext& context, QObject* parent);

    void sync(Animation animation) override;

    // Names: name, tag, isAuthorized, method, asksForKey, apiKey.
    [[nodiscard]] KeyedListModel* authRows() { return &authRows_; }
    // Names: name, tag, isAuthorized, apiKey.
    [[nodiscard]] KeyedListModel* keyRows() { return &keyRows_; }
    [[nodiscard]] QStringList methods() const;

    Q_INVOKABLE void refresh();

    // Of a row of `authRows`.
    Q_INVOKABLE void setMethod(int row, const QString& method);
    Q_INVOKABLE void setApiKey(int row, const QString& key);
    Q_INVOKABLE void verify(int row);

    // Of a row of `keyRows`.
    Q_INVOKABLE void setOnlyKey(int row, const QString& key);

private:
    // Sets what differs, and saves it.
    template <class Value>
    void edit(Value& field, const Value& value);

    KeyedListModel authRows_;
    KeyedListModel keyRows_;
};

} // namespace varnhold
