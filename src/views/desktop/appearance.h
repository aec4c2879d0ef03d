#pragma once

#include <QObject>

class QDBusMessage;

namespace varnhold {

// Follows the desktop's wish for light or dark, at the start and whenever it changes.
//
// Desktops tell it through their settings portal (org.freedesktop.appearance, freedesktop.org).
// Where the toolkit's own palette agrees already, or no portal is there, that palette stays. Main
// thread; answers come with the event loop.
class Appearance final : public QObject {
    Q_OBJECT
public:
    explicit Appearance(QObject* parent = nullptr);

private slots:
    void settingChanged(const QDBusMessage& change); // group, key and value
};

// 1 asks for dark, 2 for light, and everything else leaves it to the desktop's palette.
void applyColorScheme(unsigned scheme);

} // namespace varnhold
