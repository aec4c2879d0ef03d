#pragma once

#include <QDBusContext>
#include <QDBusObjectPath>
#include <QObject>
#include <QTimer>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "status/bars.h"
#include "status/tray_bars.h"
#include "views/status/notifier_types.h"

namespace varnhold {

// The tray icon as it describes itself on the session bus (StatusNotifierItem, freedesktop.org,
// with the text beside the icon as Ayatana added it). Main thread.
//
// Panels read it anew after every signal, so there are at most four pictures a second and none that
// looks like the last. Pictures are painted when somebody reads them.
class NotifierItem final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category CONSTANT)
    Q_PROPERTY(QString Id READ id CONSTANT)
    Q_PROPERTY(QString Title READ title CONSTANT)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(int WindowId READ windowId CONSTANT)
    Q_PROPERTY(QString IconThemePath READ none CONSTANT)
    Q_PROPERTY(QString IconName READ none CONSTANT)
    Q_PROPERTY(varnhold::NotifierPixmaps IconPixmap READ pixmaps)
    Q_PROPERTY(QString IconAccessibleDesc READ spoken)
    Q_PROPERTY(QString OverlayIconName READ none CONSTANT)
    Q_PROPERTY(varnhold::NotifierPixmaps OverlayIconPixmap READ noPixmaps CONSTANT)
    Q_PROPERTY(QString AttentionIconName READ none CONSTANT)
    Q_PROPERTY(varnhold::NotifierPixmaps AttentionIconPixmap READ pixmaps)
    Q_PROPERTY(QString AttentionAccessibleDesc READ spoken)
    Q_PROPERTY(QString AttentionMovieName READ none CONSTANT)
    Q_PROPERTY(varnhold::NotifierToolTip ToolTip READ toolTip)
    Q_PROPERTY(bool ItemIsMenu READ isMenu CONSTANT)
    Q_PROPERTY(QDBusObjectPath Menu READ menu CONSTANT)
    Q_PROPERTY(QString XAyatanaLabel READ label)
    Q_PROPERTY(QString XAyatanaLabelGuide READ label)
public:
    // Called from the event loop where a panel asks us to do something about a press. False if it
    // should show the menu itself: it is told so.
    using Pressed = std::function<bool()>;

    // Announces itself to the desktop's panel. `menuPath`: where on the bus its menu is.
    NotifierItem(const QString& menuPath, Pressed pressed);
    ~NotifierItem() override;

    void setImage(const BarImage& image);
    void setText(const QString& label, const QString& spoken);
    // Something has crashed: marks the icon, and panels that hide icons show it.
    void setAttention(bool needed);

    // Sides that panels take their pick of, in pixels.
    [[nodiscard]] static const std::vector<int>& sides();

    [[nodiscard]] QString status() const;
    [[nodiscard]] NotifierPixmaps pixmaps() const;
    [[nodiscard]] NotifierToolTip toolTip() const;
    [[nodiscard]] QString label() const { return label_; }
    [[nodiscard]] QString spoken() const { return spoken_; }
    // That was handed over for what is chosen next, if any. It is good once.
    [[nodiscard]] std::string takeToken() { return std::exchange(token_, {}); }

public slots:
    // NOLINTBEGIN(readability-identifier-naming): the interface's own names
    void Activate(int x, int y);
    void SecondaryActivate(int x, int y);
    void ContextMenu(int x, int y);
    void Scroll(int delta, const QString& orientation);
    // By compositors' panels, before they tell of a press (XDG activation of freedesktop.org).
    void ProvideXdgActivationToken(const QString& token) { token_ = token.toStdString(); }

signals:
    void NewIcon();
    void NewAttentionIcon();
    void NewToolTip();
    void NewStatus(const QString& status);
    void XAyatanaNewLabel(const QString& label, const QString& guide);
    // NOLINTEND(readability-identifier-naming)

private slots:
    // Whoever keeps the list of items has taken one off it, by whichever name it knows it.
    void beStruckOff(const QString& item);

private:
    [[nodiscard]] static QString category() { return QStringLiteral("ApplicationStatus"); }
    [[nodiscard]] static QString id() { return QStringLiteral("varnhold"); }
    [[nodiscard]] static QString title() { return QStringLiteral("Varnhold"); }
    [[nodiscard]] static int windowId() { return 0; }
    [[nodiscard]] static QString none() { return {}; }
    [[nodiscard]] static NotifierPixmaps noPixmaps() { return {}; }
    [[nodiscard]] static bool isMenu() { return true; }
    [[nodiscard]] QDBusObjectPath menu() const { return QDBusObjectPath(menuPath_); }
    void beActivated();
    void announce();
    void tellOfPicture();

    QString service_;
    QString menuPath_;
    Pressed pressed_;
    BarImage image_;
    std::vector<TrayBar> told_; // what the panel knows of
    bool attention_ = false;
    bool attentionTold_ = false;
    QString label_;
    QString spoken_;
    std::string token_;
    QTimer pace_;
    QTimer nextTry_; // to be taken on the list
};

} // namespace varnhold
