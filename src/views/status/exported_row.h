#pragma once

#include <QString>
#include <QVariantMap>

#include "status/menu.h"

namespace varnhold {

// A row of the menu in the words of the bus (com.canonical.dbusmenu): its state is a picture, and
// no key is named, for panels would take it for one that works always.
[[nodiscard]] QVariantMap exportedRow(const MenuRow& row);

// A text made from data as the label of such a row, where "_" marks the underlined letter.
[[nodiscard]] QString exportedText(const QString& text);

} // namespace varnhold
