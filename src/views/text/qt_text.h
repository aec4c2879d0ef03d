#pragma once

#include <QString>
#include <string_view>

// Text between our UTF-8 and Qt's. Malformed bytes become replacement characters.
namespace varnhold {

[[nodiscard]] QString toQString(std::string_view text);

// The same of a name or a sentence that is only shown. Of an endless one it is the beginning: to
// lay all of it out, or to find out how much of it has room, takes longer than anybody waits.
[[nodiscard]] QString shownText(std::string_view text);

// A text made from data as the title of a menu row: Qt would take "&" for a mark of the underlined
// letter and a tab for the border of the key column.
[[nodiscard]] QString menuText(std::string_view text);

} // namespace varnhold
