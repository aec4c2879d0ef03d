#include "views/status/notifier_item.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QtEndian>
#include <chrono>
#include <vector>

#include "views/status/tray_icon.h"

namespace varnhold {

namespace {

using namespace std::chrono_literals;

constexpr auto pauseBetweenPictures = 250ms;
constexpr auto pauseBetweenTries = 1s;

const QString itemList = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString itemListPath = QStringLiteral("/StatusNotifierWatcher");
const QString itemPath = QStringLiteral("/StatusNotifierItem");
const QString interface = QStringLiteral("org.kde.StatusNotifierItem");

QString nextService() {
    static int number = 0;
    return QStringLiteral("org.kde.StatusNotifierItem-%1-%2")
        .arg(QCoreApplication::applicationPid())
        .arg(++number);
}

// Sent without waiting for the answer: messages of one connection arrive in their order, and a bus
// that hangs mustn't hold us up.
void sendToBus(const QString& method, const QVariantList& arguments) {
    QDBusMessage request = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), method);
    request.setArguments(arguments);
    QDBusConnection::sessionBus().send(request);
}

NotifierPixmap pixmapOf(const QImage& image) {
    const QImage plain = image.convertToFormat(QImage::Format_ARGB32);
    NotifierPixmap made{plain.width(), plain.height(),
                        QByteArray(plain.sizeInBytes(), Qt::Uninitialized)};
    qToBigEndian<quint32>(plain.constBits(), plain.sizeInBytes() / 4, made.pixels.data());
    return made;
}

} // namespace

NotifierItem::NotifierItem(const QString& menuPath, Pressed pressed)
    : service_(nextService()), menuPath_(menuPath), pressed_(std::move(pressed)) {
    registerNotifierTypes();
    pace_.setSingleShot(true);
    pace_.setInterval(pauseBetweenPictures);
    pace_.setTimerType(Qt::PreciseTimer); // others come up to a twentieth too early
    connect(&pace_, &QTimer::timeout, this, &NotifierItem::tellOfPicture);
    nextTry_.setSingleShot(true);
    nextTry_.setInterval(pauseBetweenTries);
    connect(&nextTry_, &QTimer::timeout, this, &NotifierItem::announce);
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.registerObject(itemPath, this, QDBusConnection::ExportAllContents);
    bus.connect(itemList, itemListPath, itemList, QStringLiteral("StatusNotifierItemUnregistered"),
                this, SLOT(beStruckOff(QString)));
}

NotifierItem::~NotifierItem() {
    QDBusConnection::sessionBus().unregisterObject(itemPath);
    sendToBus(QStringLiteral("ReleaseName"), {service_});
}

// With its first picture: a panel has no use for an icon that is empty.
void NotifierItem::announce() {
    constexpr unsigned noQueue = 4;
    sendToBus(QStringLiteral("RequestName"), {service_, noQueue});
    QDBusMessage request = QDBusMessage::createMethodCall(
        itemList, itemListPath, itemList, QStringLiteral("RegisterStatusNotifierItem"));
    request << service_;
    // A shell may own the name a moment before it can take anybody in.
    auto* call =
        new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(request), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call] {
        call->deleteLater();
        if (call->isError()) {
            nextTry_.start();
        }
    });
}

// GNOME's extension strikes items off its list while the shell is busy starting: it takes an answer
// that is late for none.
void NotifierItem::beStruckOff(const QString& item) {
    if (item.contains(service_) ||
        item.startsWith(QDBusConnection::sessionBus().baseService() + QLatin1Char('/'))) {
        nextTry_.start();
    }
}

const std::vector<int>& NotifierItem::sides() {
    static const std::vector<int> all{16, 22, 24, 32, 48};
    return all;
}

void NotifierItem::setImage(const BarImage& image) {
    const bool isFirst = image_.bars.empty();
    image_ = image;
    if (isFirst) {
        announce();
    }
    if (!pace_.isActive()) {
        tellOfPicture();
    }
}

// A glide has many steps that change no pixel.
void NotifierItem::tellOfPicture() {
    std::vector<TrayBar> bars = trayBars(image_, sides().back());
    if (bars == told_ && attention_ == attentionTold_) {
        return;
    }
    told_ = std::move(bars);
    attentionTold_ = attention_;
    pace_.start();
    emit NewIcon();
    if (attention_) {
        emit NewAttentionIcon();
    }
}

void NotifierItem::setText(const QString& label, const QString& spoken) {
    if (label == label_ && spoken == spoken_) {
        return;
    }
    label_ = label;
    spoken_ = spoken;
    emit NewToolTip();
    emit XAyatanaNewLabel(label_, label_);
    QDBusMessage change =
        QDBusMessage::createSignal(itemPath, QStringLiteral("org.freedesktop.DBus.Properties"),
                                   QStringLiteral("PropertiesChanged"));
    change
        << interface << QVariantMap{{QStringLiteral("IconAccessibleDesc"), spoken_}, {QStringLiteral("AttentionAccessibleDesc"), spoken_}, {QStringLiteral("XAyatanaLabel"), label_}, {QStringLiteral("XAyatanaLabelGuide"), label_}}
        << QStringList();
    QDBusConnection::sessionBus().send(change);
}

void NotifierItem::setAttention(bool needed) {
    if (needed == attention_) {
        return;
    }
    attention_ = needed;
    if (!pace_.isActive() && !image_.bars.empty()) {
        tellOfPicture();
    }
    emit NewStatus(status());
}

QString NotifierItem::status() const {
    return attention_ ? QStringLiteral("NeedsAttention") : QStringLiteral("Active");
}

NotifierPixmaps NotifierItem::pixmaps() const {
    NotifierPixmaps all;
    for (const int side : sides()) {
        all.append(pixmapOf(trayImage(image_, side, attention_)));
    }
    return all;
}

NotifierToolTip NotifierItem::toolTip() const {
    return {{}, {}, label_ + QLatin1Char('\n') + spoken_, {}};
}

void NotifierItem::Activate(int, int) {
    beActivated();
}

void NotifierItem::SecondaryActivate(int, int) {
    beActivated();
}

void NotifierItem::ContextMenu(int, int) {
    beActivated();
}

// Many items have a menu and nothing else, and don't know these calls. Panels show the menu of one
// that answers so, those too that don't ask first whether it is all that there is.
void NotifierItem::beActivated() {
    if (!pressed_() && calledFromDBus()) {
        sendErrorReply(QDBusError::UnknownMethod, QStringLiteral("The item is its menu."));
    }
}

void NotifierItem::Scroll(int, const QString&) {} // there is nothing to scroll through

} // namespace varnhold
