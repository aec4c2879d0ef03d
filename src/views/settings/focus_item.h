#pragma once

#include <QFocusEvent>
#include <QQuickItem>

namespace varnhold {

// An item for the keyboard that knows whether to show a ring: only when the keyboard brought the
// focus, not a press. The toolkit's own controls know that, but insist on roles of their own.
class FocusItem : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool visualFocus READ visualFocus NOTIFY visualFocusChanged)

public:
    explicit FocusItem(QQuickItem* parent = nullptr);

    [[nodiscard]] bool visualFocus() const { return visualFocus_; }

signals:
    void visualFocusChanged();

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void setVisualFocus(bool visual);

    bool visualFocus_ = false;
};

} // namespace varnhold
