#include "views/desktop/appearance.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include "platform/qt/session_bus.h"
#include "views/colors/colors.h"

namespace varnhold {

namespace {

constexpr unsigned wantsDark = 1;
constexpr unsigned wantsLight = 2;

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settings = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString colorScheme = QStringLiteral("color-scheme");

// Older portals wrap the value twice.
unsigned schemeOf(QVariant value) {
    while (value.canConvert<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    return value.toUInt();
}

} // namespace

void applyColorScheme(unsigned scheme) {
    QApplication::setPalette(QPalette()); // the desktop's own
    const bool dark = isDark(QApplication::palette());
    if (scheme == wantsDark && !dark) {
        QApplication::setPalette(darkPalette());
    } else if (scheme == wantsLight && dark) {
        QApplication::setPalette(lightPalette());
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
        QDBusMessage::createMethodCall(service, portalPath, settings, QStringLiteral("Read"));
    question << appearance << colorScheme;
    auto* call = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [call] {
        const QDBusPendingReply<QDBusVariant> answer = *call;
        if (answer.isValid()) {
            applyColorScheme(schemeOf(answer.value().variant()));
        }
        call->deleteLater();
    });
}

void Appearance::settingChanged(const QDBusMessage& change) {
    const QVariantList setting = change.arguments();
    if (setting.size() == 3 && setting[0] == appearance && setting[1] == colorScheme) {
        applyColorScheme(schemeOf(setting[2]));
    }
}

} // namespace varnhold
