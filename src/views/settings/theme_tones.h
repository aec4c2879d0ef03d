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
    // A desktop whose windows are of these colours is one for eyes that need strong contrast.
    Q_INVOKABLE [[nodiscard]] static bool isStrong(const QColor& ground, const QColor& text);
    // The colour itself, or the nearest on the way to black or white that can be read there.
    Q_INVOKABLE [[nodiscard]] static QColor readable(const QColor& color, const QColor& ground,
                                                     bool strong);

    // Of a model's row, by the colour's name in the record.
    Q_INVOKABLE [[nodiscard]] static QColor modelGround(const QString& name, bool dark,
                                                        bool strong);

    Q_INVOKABLE [[nodiscard]] static QColor window(bool dark, bool strong);
    Q_INVOKABLE [[nodiscard]] static QColor text(bool dark, bool strong);
    Q_INVOKABLE [[nodiscard]] static QColor secondaryText(bool dark, bool strong);
    Q_INVOKABLE [[nodiscard]] static QColor field(bool dark, bool strong);
    Q_INVOKABLE [[nodiscard]] static QColor accent(bool dark, bool strong);
    Q_INVOKABLE [[nodiscard]] static QColor accentText(bool dark, bool strong);
    Q_INVOKABLE [[nodiscard]] static QColor red(bool dark, bool strong);
    Q_INVOKABLE [[nodiscard]] static QColor orange(bool dark, bool strong);
};

} // namespace varnhold
