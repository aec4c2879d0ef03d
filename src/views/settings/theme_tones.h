#pragma once

#include <QColor>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace varnhold {

// The colours that all windows share, and what makes one readable, for Theme.qml. Main thread.
class ThemeTones final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    Q_INVOKABLE [[nodiscard]] static bool isDark(const QColor& ground);
    // The colour itself, or the nearest on the way to black or white that can be read there.
    Q_INVOKABLE [[nodiscard]] static QColor readable(const QColor& color, const QColor& ground);

    // Of a model's row, by the colour's name in the record.
    Q_INVOKABLE [[nodiscard]] static QColor modelGround(const QString& name, bool dark);

    Q_INVOKABLE [[nodiscard]] static QColor window(bool dark);
    Q_INVOKABLE [[nodiscard]] static QColor text(bool dark);
    Q_INVOKABLE [[nodiscard]] static QColor secondaryText(bool dark);
    Q_INVOKABLE [[nodiscard]] static QColor field(bool dark);
    Q_INVOKABLE [[nodiscard]] static QColor accent(bool dark);
    Q_INVOKABLE [[nodiscard]] static QColor red(bool dark);
    Q_INVOKABLE [[nodiscard]] static QColor orange(bool dark);
};

} // namespace varnhold
