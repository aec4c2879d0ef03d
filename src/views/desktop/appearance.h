#pragma once

#include <QObject>
#include <QString>
#include <QVariant>

#include "views/colors/colors.h"

class QDBusMessage;

namespace varnhold {

// What a desktop says of how windows should look. Each says only a part of it.
struct LookWishes {
    unsigned colorScheme = 0;  // 1 asks for dark, 2 for light; all else leaves it to the palette
    unsigned contrast = 0;     // 1 asks for a higher one
    bool highContrast = false; // the same, of GNOME
    QString theme;             // of GTK's

    // Takes one setting of the portal's; whether it was one of these.
    bool take(const QString& group, const QString& key, QVariant value);
};

// What windows should look like where the toolkit's own palette looks like `own`.
[[nodiscard]] Look lookWanted(const LookWishes& wishes, const Look& own);

// Gives all windows a palette of that look: the toolkit's own where it looks like that.
void applyLook(const LookWishes& wishes);

// Follows the desktop's wishes for light, dark and strong contrast, at the start and whenever they
// change.
//
// Desktops tell them through their settings portal (freedesktop.org). Where the toolkit's own
// palette agrees already, or no portal is there, that palette stays. Main thread; answers come with
// the event loop.
class Appearance final : public QObject {
    Q_OBJECT
public:
    explicit Appearance(QObject* parent = nullptr);

private slots:
    void settingChanged(const QDBusMessage& change); // group, key and value

private:
    LookWishes wishes_;
};

} // namespace varnhold
