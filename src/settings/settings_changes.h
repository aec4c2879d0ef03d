#pragma once

#include <functional>

// How the settings state tells its one observer what it did. Main thread only.
namespace varnhold {

// How a change should come to be seen. Rows that find new places spring there in any case.
enum class Animation {
    none,
    easeOut, // what was dragged comes back gently
};

using ChangeObserver = std::function<void(Animation animation)>;

} // namespace varnhold
