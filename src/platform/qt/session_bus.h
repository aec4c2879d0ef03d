#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <functional>

class QObject;

namespace varnhold::platform {

// Whether this session has a message bus. Asking the toolkit for a bus that isn't there could start
// one, which nobody wants from a status item. Any thread.
[[nodiscard]] bool hasSessionBus();

// Asks somebody on a bus and returns at once. `answered` gets the answer or the failure, later,
// unless `context` has gone by then. Its thread; needs an event loop there.
void ask(const QDBusConnection& bus, QObject* context, const QDBusMessage& question,
         const std::function<void(const QDBusMessage& answer)>& answered,
         int patience = -1); // in milliseconds; the bus's own where there is none

} // namespace varnhold::platform
