#pragma once

#include <QRect>
#include <QString>
#include <vector>

#include "status/bars.h"
#include "status/menu.h"

namespace varnhold {

// One of the ways to show the status item: a tray icon or the strip. Main thread.
class StatusDisplay {
public:
    virtual ~StatusDisplay() = default;

    virtual void setImage(const BarImage& image) = 0;
    virtual void setTitle(const QString& title, const QString& spoken) = 0;
    // Something has crashed; the text may say so already.
    virtual void setAttention(bool needed) = 0;
    virtual void setRows(const std::vector<MenuRow>& rows) = 0;

    // Where it stands on the screen; empty if nobody tells.
    [[nodiscard]] virtual QRect anchor() const = 0;
};

} // namespace varnhold
