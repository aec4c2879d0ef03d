#include "views/settings/columns/providers_part.h"

#include "settings/sign_in.h"
#include "views/text/qt_text.h"

namespace varnhold {

namespace {

KeyedListModel::Row shown(const AuthRow& row) {
    return {toQString(row.auth.id),
            {toQString(row.auth.name), toQString(row.tag()), row.isAuthorized(),
             toQString(rawValue(row.method)), row.method == AuthMethod::apiKey,
             toQString(row.apiKey)}};
}

KeyedListModel::Row shown(const KeyRow& row) {
    const QString name = toQString(row.name);
    return {name, {name, toQString(row.tag), row.isAuthorized(), toQString(row.apiKey)}};
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
      authRows_({"name", "tag", "isAuthorized", "method", "asksForKey", "apiKey"}),
      keyRows_({"name", "tag", "isAuthorized", "apiKey"}) {}

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
