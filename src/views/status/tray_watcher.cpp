#include "views/status/tray_watcher.h"

#include <chrono>

#include "views/desktop/x11_hints.h"

namespace varnhold {

namespace {

using namespace std::chrono_literals;

// A tray of the older kind tells when it comes, but nobody tells when it has gone.
constexpr auto embeddedInterval = 2s;

} // namespace

TrayWatcher::TrayWatcher(QObject* parent) : QObject(parent) {
    connect(&host_, &NotifierHost::changed, this, &TrayWatcher::decide);
    if (hasX11()) {
        connect(&arrivals_, &EmbeddedTrayArrivals::arrived, this, [this] {
            ++arrival_;
            decide();
        });
        connect(&embeddedTimer_, &QTimer::timeout, this, &TrayWatcher::decide);
        embeddedTimer_.start(embeddedInterval);
    }
    decide();
}

void TrayWatcher::decide() {
    Tray now;
    if (host_.isThere()) {
        now.kind = TrayKind::notifier;
    } else if (const quint32 window = embeddedTray(); window != 0) {
        now = {TrayKind::embedded, window, arrival_};
    }
    if (now != tray_) {
        tray_ = now;
        emit changed();
    }
}

} // namespace varnhold
