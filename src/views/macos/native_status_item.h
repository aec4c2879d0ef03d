#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "status/presentation.h"

namespace varnhold {

struct NativeItemParts;

// The item in a Mac's menu bar: image, title, menu, and the popover that hangs from it.
//
// A menu that is open stays as it is; new rows come with the next opening. Should the user take the
// item out of the menu bar, the system ends the program in the orderly way. Main thread, after the
// application object has been made.
class NativeStatusItem final : public StatusItem {
public:
    using Choose = std::function<void(MenuAction action, const std::string& value)>;

    explicit NativeStatusItem(Choose choose);
    ~NativeStatusItem() override;
    NativeStatusItem(const NativeStatusItem&) = delete;
    NativeStatusItem& operator=(const NativeStatusItem&) = delete;

    void setImage(const BarImage& image) override;
    void setTitle(const std::string& title, const std::string& spoken) override;
    // Nothing more to mark: the title is always in sight.
    void setAttention(bool needed) override;
    void setMenu(const std::vector<MenuRow>& rows) override;

    // `iconPath`: an image, or empty for the application's own icon.
    [[nodiscard]] std::unique_ptr<NoticePopover> showPopover(const NoticePanel& panel,
                                                             const std::string& iconPath);

private:
    std::unique_ptr<NativeItemParts> parts_;
};

} // namespace varnhold
