#pragma once

#include <QObject>

#include "lifecycle/fleet_context.h"
#include "settings/settings_state.h"

namespace varnhold {

// What every part of the settings window works on. All of it outlives the window.
struct SettingsContext {
    ModelSelectorView& view;
    FleetContext fleet;
};

// One part of the settings window as QML sees it: properties to show and operations to call, both
// taken from the one record. The record is the truth; a part keeps only what it last showed, and
// compares. Main thread.
class SettingsPart : public QObject {
    Q_OBJECT

public:
    SettingsPart(const SettingsContext& context, QObject* parent)
        : QObject(parent), context_(context) {}

    // The record has changed: show what is different. `animation` is how it should come to be seen.
    virtual void sync(Animation animation) = 0;

protected:
    [[nodiscard]] const SettingsContext& settings() const { return context_; }
    [[nodiscard]] ModelSelectorView& view() const { return context_.view; }
    [[nodiscard]] const FleetContext& fleet() const { return context_.fleet; }

private:
    SettingsContext context_;
};

} // namespace varnhold
