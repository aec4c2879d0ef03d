#pragma once

#include <QByteArray>
#include <functional>

// The right to come to the front, which a Wayland desktop hands to what it starts in the
// environment (XDG activation of freedesktop.org). It is for one process alone: children mustn't
// inherit it. Main thread.
namespace varnhold {

// The token of this start, taken out of the environment; empty if there is none. Call before there
// are other threads.
[[nodiscard]] QByteArray takeActivationToken();

// Does the work with the token where the toolkit looks for it, if it is a toolkit that looks.
void withActivationToken(const QByteArray& token, const std::function<void()>& work);

} // namespace varnhold
