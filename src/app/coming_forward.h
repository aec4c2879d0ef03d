#pragma once

#include <functional>

#include "app/activation.h"

namespace varnhold {

// Does the work, which shows a window, with this right. Main thread.
void withActivation(const Activation& activation, const std::function<void()>& work);

} // namespace varnhold
