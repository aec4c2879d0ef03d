#include "views/desktop/application_icon.h"

#include <QtGlobal>

// Out of any namespace, as the toolkit's macro wants it: a static library's resources must be asked
// for by name.
static void loadResources() {
    Q_INIT_RESOURCE(views);
}

namespace varnhold {

QIcon defaultApplicationIcon() {
    loadResources();
    return QIcon(QStringLiteral(":/varnhold/varnhold.svg"));
}

} // namespace varnhold
