#pragma once

#include <QMetaType>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "stacks/steppers.h"
#include "views/text/qt_text.h"

namespace varnhold {

// What a stepper shows, as a value for QML.
struct StepperState {
    Q_GADGET
    QML_VALUE_TYPE(stepperState)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(bool inactive MEMBER inactive)
    Q_PROPERTY(double width MEMBER width)
    Q_PROPERTY(bool canGoLeft MEMBER canGoLeft)
    Q_PROPERTY(bool canGoRight MEMBER canGoRight)

public:
    QString label;
    QString text;
    bool inactive = false;
    double width = 0;
    bool canGoLeft = false;
    bool canGoRight = false;

    bool operator==(const StepperState&) const = default;
};

[[nodiscard]] inline StepperState stepperState(const StepperRow& row) {
    return {toQString(row.label), toQString(row.valueText),
            row.isInactive,       row.valueWidth,
            row.canGoLeft,        row.canGoRight};
}

} // namespace varnhold
