#include "views/status/desktop_notice.h"

#include <QDBusConnection>
#include <QStringList>
#include <QVariantMap>
#include <string>
#include <utility>

#include "platform/qt/session_bus.h"
#include "views/text/qt_text.h"

namespace varnhold {

namespace {

constexpr int shownFor = 14000; // milliseconds

// Of the desktop entry, and of the icon that it names.
const QString ourName = QStringLiteral("com.ostrelleai.Varnhold");

QDBusMessage call(const QString& method) {
    const QString service = QStringLiteral("org.freedesktop.Notifications");
    return QDBusMessage::createMethodCall(service, QStringLiteral("/org/freedesktop/Notifications"),
                                          service, method);
}

void ask(QObject* context, const QDBusMessage& question,
         const std::function<void(const QDBusMessage&)>& answered) {
    platform::ask(QDBusConnection::sessionBus(), context, question, answered);
}

} // namespace

QString noticeText(const NoticePanel& panel, bool markup) {
    QStringList lines;
    for (const ModelNotice& notice : panel.notices) {
        lines.append(toQString(notice.message));
        if (notice.inChain) {
            lines.append(QString::fromUtf8(chainWarning));
        }
    }
    if (!panel.rest.empty()) {
        lines.append(toQString(panel.rest));
    }
    const QString text = lines.join(QLatin1Char('\n'));
    return markup ? text.toHtmlEscaped() : text;
}

// Whether the text is read as markup has to be asked first.
DesktopNotice::DesktopNotice(const NoticePanel& panel, const std::string& icon, Instead instead)
    : panel_(panel), icon_(icon.empty() ? ourName : toQString(icon)), instead_(std::move(instead)) {
    ask(this, call(QStringLiteral("GetCapabilities")), [this](const QDBusMessage& answer) {
        if (answer.type() != QDBusMessage::ReplyMessage) {
            refused();
            return;
        }
        const QStringList able = answer.arguments().value(0).toStringList();
        QDBusMessage notify = call(QStringLiteral("Notify"));
        notify << QStringLiteral("Varnhold") << 0U << icon_ << toQString(panel_.title)
               << noticeText(panel_, able.contains(QStringLiteral("body-markup"))) << QStringList()
               << QVariantMap{{QStringLiteral("desktop-entry"), ourName}} << shownFor;
        ask(this, notify, [this](const QDBusMessage& shown) { answered(shown); });
    });
}

void DesktopNotice::answered(const QDBusMessage& answer) {
    if (answer.type() != QDBusMessage::ReplyMessage) {
        refused();
        return;
    }
    id_ = answer.arguments().value(0).toUInt();
    if (isClosed_) {
        close();
    }
}

void DesktopNotice::refused() {
    if (!isClosed_) {
        other_ = instead_();
    }
}

void DesktopNotice::close() {
    isClosed_ = true;
    other_.reset();
    if (id_ != 0) {
        QDBusMessage request = call(QStringLiteral("CloseNotification"));
        request << std::exchange(id_, 0U);
        QDBusConnection::sessionBus().send(request);
    }
}

} // namespace varnhold
