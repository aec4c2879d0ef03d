#pragma once

namespace varnhold::platform {

// Whether this session has a message bus. Asking the toolkit for a bus that isn't there could start
// one, which nobody wants from a status item. Any thread.
[[nodiscard]] bool hasSessionBus();

} // namespace varnhold::platform
