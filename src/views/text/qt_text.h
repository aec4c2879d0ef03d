#pragma once

#include <QString>
#include <string_view>

// Text between our UTF-8 and Qt's. Malformed bytes become replacement characters.
namespace varnhold {

[[nodiscard]] QString toQString(std::string_view text);

// A text made from data as the title of a menu row: Qt would take "&" for a mark of the underlined
// letter and a tab for the border of the key column.
[[nodiscard]] QString menuText(std::string_view text);

} // namespace varnhold
