#pragma once

#include <QDBusMessage>
#include <QObject>
#include <functional>
#include <memory>
#include <string>

#include "status/notices.h"
#include "status/presentation.h"

namespace varnhold {

// The notices as one of the desktop's own notifications (org.freedesktop.Notifications): for
// desktops that don't tell where the status item is, so that a panel of ours would hang nowhere.
// Main thread.
class DesktopNotice final : public QObject, public NoticePopover {
    Q_OBJECT
public:
    // Shows the same in another way.
    using Instead = std::function<std::unique_ptr<NoticePopover>()>;

    // `icon`: a file, or empty for the application's own. `instead` is called from the event loop
    // where nobody shows notifications.
    DesktopNotice(const NoticePanel& panel, const std::string& icon, Instead instead);
    ~DesktopNotice() override { close(); }
    DesktopNotice(const DesktopNotice&) = delete;
    DesktopNotice& operator=(const DesktopNotice&) = delete;

    void close() override;

private:
    void answered(const QDBusMessage& answer);
    void refused();

    NoticePanel panel_;
    QString icon_;
    Instead instead_;
    std::unique_ptr<NoticePopover> other_;
    uint id_ = 0; // the desktop's; 0 before it has answered
    bool isClosed_ = false;
};

// The messages and warnings as the text of a notification; with `markup`, as text that says the
// same to those who read markup.
[[nodiscard]] QString noticeText(const NoticePanel& panel, bool markup);

} // namespace varnhold
