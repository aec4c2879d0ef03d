#pragma once

#include <QByteArray>
#include <QString>

namespace varnhold {

// The sign that a row of the menu begins with. In fonts that come before the coloured one on some
// desktops all discs look alike, so panels get a picture instead.
enum class RowSign { none, running, stopped, crashed, alert };

struct SignedText {
    RowSign sign = RowSign::none;
    QString text; // without the sign
};

[[nodiscard]] SignedText splitSign(const QString& title);

// The sign as a PNG file, painted by ourselves; empty for none. Main thread.
[[nodiscard]] QByteArray signPicture(RowSign sign);

} // namespace varnhold
