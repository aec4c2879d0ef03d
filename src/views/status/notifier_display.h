#pragma once

#include <vector>

#include "views/status/exported_menu.h"
#include "views/status/menu_opener.h"
#include "views/status/notifier_item.h"
#include "views/status/status_display.h"

namespace varnhold {

// The status item as an icon that panels draw from its description, with a menu that they draw too.
// Main thread.
class NotifierDisplay final : public StatusDisplay {
public:
    // `opener` must outlive it.
    NotifierDisplay(MenuOpener& opener, StatusMenu::Choose choose);

    void setImage(const BarImage& image) override { item_.setImage(image); }
    void setTitle(const QString& title, const QString& spoken) override {
        item_.setText(title.trimmed(), spoken);
    }
    void setAttention(bool needed) override { item_.setAttention(needed); }
    void setRows(const std::vector<MenuRow>& rows) override { menu_.setRows(rows); }
    [[nodiscard]] QRect anchor() const override { return {}; } // nobody tells

private:
    [[nodiscard]] bool pressed();

    MenuOpener& opener_;
    ExportedMenu menu_;
    NotifierItem item_;
};

} // namespace varnhold
