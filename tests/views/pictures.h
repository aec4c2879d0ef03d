#pragma once

#include <QPixmap>
#include <QString>

namespace varnhold::testing {

// Compares a picture of a view with the one that somebody has looked at and found good, with room
// for the small differences that libraries make. References are told apart by the scale of the
// process (QT_SCALE_FACTOR). With VARNHOLD_REFRESH_PICTURES set, the picture becomes the reference.
void expectPicture(const QString& name, const QPixmap& pixmap);

} // namespace varnhold::testing
