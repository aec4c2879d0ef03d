#include "views/status/accessibility.h"

#include <QAccessibleWidget>

#include "views/status/model_notice_view.h"
#include "views/status/status_strip.h"

namespace varnhold {

namespace {

class AccessibleStrip final : public QAccessibleWidget {
public:
    explicit AccessibleStrip(StatusStrip* strip)
        : QAccessibleWidget(strip, QAccessible::ButtonMenu), strip_(strip) {}

    [[nodiscard]] QStringList actionNames() const override {
        return QStringList{pressAction()} + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& name) override {
        if (name == pressAction() || name == showMenuAction()) {
            strip_->openMenu();
            return;
        }
        QAccessibleWidget::doAction(name);
    }

private:
    StatusStrip* strip_;
};

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
    if (auto* strip = qobject_cast<StatusStrip*>(object)) {
        return new AccessibleStrip(strip);
    }
    if (auto* notices = qobject_cast<ModelNoticeView*>(object)) {
        return new QAccessibleWidget(notices, QAccessible::AlertMessage, notices->accessibleName());
    }
    return nullptr;
}

} // namespace

void installAccessibility() {
    static const bool installed = [] {
        QAccessible::installFactory(makeInterface);
        return true;
    }();
    static_cast<void>(installed);
}

} // namespace varnhold
