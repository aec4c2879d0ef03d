#include "views/settings/columns/providers_part.h"

#include <array>
#include <vector>

#include "settings/sign_in.h"
#include "views/settings/row_columns.h"
#include "views/text/qt_text.h"

namespace varnhold {

namespace {

using AuthColumn = RowColumn<AuthRow>;
using KeyColumn = RowColumn<KeyRow>;

constexpr std::array authColumns{
    AuthColumn{"name", [](const AuthRow& row) -> QVariant { return toQString(row.auth.name); }},
    AuthColumn{"tag", [](const AuthRow& row) -> QVariant { return toQString(row.tag()); }},
    AuthColumn{"isAuthorized", [](const AuthRow& row) -> QVariant { return row.isAuthorized(); }},
    AuthColumn{"method",
               [](const AuthRow& row) -> QVariant { return toQString(rawValue(row.method)); }},
    AuthColumn{"asksForKey",
               [](const AuthRow& row) -> QVariant { return row.method == AuthMethod::apiKey; }},
    AuthColumn{"apiKey", [](const AuthRow& row) -> QVariant { return toQString(row.apiKey); }},
};

constexpr std::array keyColumns{
    KeyColumn{"name", [](const KeyRow& row) -> QVariant { return toQString(row.name); }},
    KeyColumn{"tag", [](const KeyRow& row) -> QVariant { return toQString(row.tag); }},
    KeyColumn{"isAuthorized", [](const KeyRow& row) -> QVariant { return row.isAuthorized(); }},
    KeyColumn{"apiKey", [](const KeyRow& row) -> QVariant { return toQString(row.apiKey); }},
};

KeyedListModel::Row shown(const AuthRow& row) {
    return rowOf(toQString(row.auth.id), row, authColumns);
}

KeyedListModel::Row shown(const KeyRow& row) {
    return rowOf(toQString(row.name), row, keyColumns);
}

template <class Rows>
std::vector<KeyedListModel::Row> allShown(const Rows& rows) {
    std::vector<KeyedListModel::Row> all;
    all.reserve(rows.size());
    for (const auto& row : rows) {
        all.push_back(shown(row));
    }
    return all;
}

// The row at that place; null if there is none.
template <class Row>
Row* rowAt(std::vector<Row>& rows, int row) {
    return row < 0 || static_cast<std::size_t>(row) >= rows.size()
               ? nullptr
               : &rows[static_cast<std::size_t>(row)];
}

} // namespace

ProvidersPart::ProvidersPart(const SettingsContext& context, QObject* parent)
    : SettingsPart(context, parent),
      authRows_(columnNames(authColumns)),
      keyRows_(columnNames(keyColumns)) {}

void ProvidersPart::sync(Animation /*animation*/) {
    authRows_.sync(allShown(varnhold::authRows(view())));
    keyRows_.sync(allShown(varnhold::keyRows(view())));
}

template <class Value>
void ProvidersPart::edit(Value& field, const Value& value) {
    if (field != value) {
        field = value;
        view().save();
    }
}

QStringList ProvidersPart::methods() const {
    QStringList names;
    for (const AuthMethod method : allAuthMethods) {
        names.append(toQString(rawValue(method)));
    }
    return names;
}

void ProvidersPart::refresh() {
    view().refresh();
}

void ProvidersPart::setMethod(int row, const QString& method) {
    std::vector<AuthRow> rows = varnhold::authRows(view());
    const auto known = authMethodFromRawValue(method.toStdString());
    if (const AuthRow* chosen = rowAt(rows, row); chosen != nullptr && known) {
        edit(chosen->method, *known);
    }
}

void ProvidersPart::setApiKey(int row, const QString& key) {
    std::vector<AuthRow> rows = varnhold::authRows(view());
    if (const AuthRow* chosen = rowAt(rows, row)) {
        edit(chosen->apiKey, key.toStdString());
    }
}

void ProvidersPart::verify(int row) {
    std::vector<AuthRow> rows = varnhold::authRows(view());
    if (const AuthRow* chosen = rowAt(rows, row)) {
        chosen->verify();
    }
}

void ProvidersPart::setOnlyKey(int row, const QString& key) {
    std::vector<KeyRow> rows = varnhold::keyRows(view());
    if (const KeyRow* chosen = rowAt(rows, row)) {
        edit(chosen->apiKey, key.toStdString());
    }
}

} // namespace varnhold
