#include "views/desktop/appearance.h"

#include <QApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QMap>

#include "platform/qt/session_bus.h"

namespace varnhold {

namespace {

constexpr unsigned wantsDark = 1;
constexpr unsigned wantsLight = 2;
constexpr unsigned wantsContrast = 1;

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settings = QStringLiteral("org.freedesktop.portal.Settings");

const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString accessibility = QStringLiteral("org.gnome.desktop.a11y.interface");
const QString interface = QStringLiteral("org.gnome.desktop.interface");

// GTK's themes for those who need contrast; no others have such names.
const QLatin1String contrastTheme("HighContrast");
const QLatin1String darkContrastTheme("HighContrastInverse");

using SettingGroups = QMap<QString, QVariantMap>;

} // namespace

bool LookWishes::take(const QString& group, const QString& key, QVariant value) {
    while (value.canConvert<QDBusVariant>()) { // older portals wrap it twice
        value = value.value<QDBusVariant>().variant();
    }
    if (group == appearance && key == QLatin1String("color-scheme")) {
        colorScheme = value.toUInt();
    } else if (group == appearance && key == QLatin1String("contrast")) {
        contrast = value.toUInt();
    } else if (group == accessibility && key == QLatin1String("high-contrast")) {
        highContrast = value.toBool();
    } else if (group == interface && key == QLatin1String("gtk-theme")) {
        theme = value.toString();
    } else {
        return false;
    }
    return true;
}

Look lookWanted(const LookWishes& wishes, const Look& own) {
    const bool isDark = own.dark || wishes.theme == darkContrastTheme;
    return {.dark = wishes.colorScheme == wantsDark || (isDark && wishes.colorScheme != wantsLight),
            .highContrast = own.highContrast || wishes.contrast == wantsContrast ||
                            wishes.highContrast || wishes.theme.startsWith(contrastTheme)};
}

void applyLook(const LookWishes& wishes) {
    QApplication::setPalette(QPalette()); // the desktop's own
    const Look own = lookOf(QApplication::palette());
    const Look wanted = lookWanted(wishes, own);
    if (wanted.dark != own.dark || wanted.highContrast != own.highContrast) {
        QApplication::setPalette(paletteOf(wanted));
    }
}

Appearance::Appearance(QObject* parent) : QObject(parent) {
    if (!platform::hasSessionBus()) {
        return;
    }
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.connect(service, portalPath, settings, QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QDBusMessage)));
    QDBusMessage question =
        QDBusMessage::createMethodCall(service, portalPath, settings, QStringLiteral("ReadAll"));
    question << QStringList{appearance, accessibility, interface};
    platform::ask(bus, this, question, [this](const QDBusMessage& answer) {
        if (answer.signature() == QLatin1String("a{sa{sv}}")) {
            const auto groups = qdbus_cast<SettingGroups>(answer.arguments().constFirst());
            for (auto group = groups.cbegin(); group != groups.cend(); ++group) {
                for (auto each = group->cbegin(); each != group->cend(); ++each) {
                    wishes_.take(group.key(), each.key(), each.value());
                }
            }
            applyLook(wishes_);
        }
    });
}

void Appearance::settingChanged(const QDBusMessage& change) {
    const QVariantList setting = change.arguments();
    if (setting.size() == 3 &&
        wishes_.take(setting[0].toString(), setting[1].toString(), setting[2])) {
        applyLook(wishes_);
    }
}

} // namespace varnhold
