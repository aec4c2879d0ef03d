#include "app/bus_activation.h"

// A Mac has no session bus. Its own system starts a bundle once, and tells the running program of
// every later start; what is started past it finds the socket beside the lock.
namespace varnhold {

BusActivation::Claim BusActivation::claim() {
    return Claim::noBus;
}

void BusActivation::release() {}

bool BusActivation::activateOther(const Activation&) {
    return false;
}

void BusActivation::onActivate(Activated activated) {
    activated_ = std::move(activated);
}

void BusActivation::Activate(const QVariantMap&) {}

void BusActivation::Open(const QStringList&, const QVariantMap&) {}

void BusActivation::ActivateAction(const QString&, const QVariantList&, const QVariantMap&) {}

} // namespace varnhold
