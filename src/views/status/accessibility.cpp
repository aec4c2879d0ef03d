#include "views/status/accessibility.h"

#include <QAccessibleWidget>
#include <utility>

namespace varnhold {

namespace {

// Goes with the widget that it describes.
class Description final : public QObject {
public:
    Description(QWidget& widget, QAccessible::Role role, std::function<void()> press)
        : QObject(&widget), role_(role), press_(std::move(press)) {}

    [[nodiscard]] QAccessible::Role role() const { return role_; }
    [[nodiscard]] const std::function<void()>& press() const { return press_; }

private:
    QAccessible::Role role_;
    std::function<void()> press_;
};

class DescribedWidget final : public QAccessibleWidget {
public:
    DescribedWidget(QWidget* widget, const Description& description)
        : QAccessibleWidget(widget, description.role()), press_(description.press()) {}

    [[nodiscard]] QStringList actionNames() const override {
        QStringList names = QAccessibleWidget::actionNames();
        if (press_) {
            names.prepend(pressAction());
        }
        return names;
    }
    void doAction(const QString& name) override {
        if (press_ && (name == pressAction() || name == showMenuAction())) {
            press_();
            return;
        }
        QAccessibleWidget::doAction(name);
    }

private:
    std::function<void()> press_;
};

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
    auto* widget = qobject_cast<QWidget*>(object);
    if (widget == nullptr) {
        return nullptr;
    }
    for (const QObject* child : widget->children()) {
        if (const auto* description = dynamic_cast<const Description*>(child)) {
            return new DescribedWidget(widget, *description);
        }
    }
    return nullptr;
}

} // namespace

void describe(QWidget& widget, QAccessible::Role role, std::function<void()> press) {
    static const bool installed = [] {
        QAccessible::installFactory(makeInterface);
        return true;
    }();
    static_cast<void>(installed);
    new Description(widget, role, std::move(press)); // the widget's own
}

} // namespace varnhold
