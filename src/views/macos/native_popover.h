#pragma once

#import <Cocoa/Cocoa.h>

#include <memory>
#include <string>

#include "status/presentation.h"

namespace varnhold {

// Shows the panel below a view, until somebody clicks elsewhere or its object goes.
[[nodiscard]] std::unique_ptr<NoticePopover>
showNativePopover(NSView* anchor, const NoticePanel& panel, const std::string& iconPath);

} // namespace varnhold
