#pragma once

#include <QObject>
#include <QVariantMap>
#include <functional>

#include "app/activation.h"

namespace varnhold {

// The program's name on the session bus, where desktops and later starts find it (interface
// org.freedesktop.Application of freedesktop.org). Main thread.
class BusActivation final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")
public:
    enum class Claim {
        ours,
        taken, // another process has it
        noBus,
    };

    using Activated = std::function<void(const Activation& activation)>;
    // `action`: a name that the desktop entry lists, or whatever else a caller has sent.
    using Acted = std::function<void(const QString& action, const Activation& activation)>;

    using QObject::QObject;

    [[nodiscard]] Claim claim();

    // Gives the name back; requests are refused from now on.
    void release();

    // Asks the process that has the name to show itself, and gives it our right to come to the
    // front, if any. False if there is none, or no answer.
    [[nodiscard]] static bool activateOther(const Activation& activation);

    // Called from the event loop for every such request.
    // Where the bus itself has started this process, the first is the start and no more.
    void onActivate(Activated activated);
    void onAction(Acted acted) { acted_ = std::move(acted); }

public slots:
    // NOLINTBEGIN(readability-identifier-naming): the interface's own names
    void Activate(const QVariantMap& platformData);
    void Open(const QStringList& addresses, const QVariantMap& platformData);
    void ActivateAction(const QString& action, const QVariantList& parameter,
                        const QVariantMap& platformData);
    // NOLINTEND(readability-identifier-naming)

private:
    bool hasName_ = false;
    bool isStart_ = false; // the next activation
    Activated activated_;
    Acted acted_;
};

} // namespace varnhold
