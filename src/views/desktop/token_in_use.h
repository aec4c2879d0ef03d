#pragma once

#include <functional>
#include <string>

namespace varnhold {

// Does what may show windows, which come to the front by the right of a token that somebody has
// handed over (XDG activation of freedesktop.org). Of use under Wayland alone, where a token is;
// elsewhere the work is done all the same. Main thread.
void withToken(const std::string& token, const std::function<void()>& work);

} // namespace varnhold
