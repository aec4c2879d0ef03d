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
    // Whether Tab stops here; it does as long as the item has the keyboard, whatever is said.
    Q_PROPERTY(bool tabStop READ tabStop WRITE setTabStop NOTIFY tabStopChanged)

public:
    explicit FocusItem(QQuickItem* parent = nullptr);

    [[nodiscard]] bool visualFocus() const { return visualFocus_; }

    [[nodiscard]] bool tabStop() const { return tabStop_; }
    void setTabStop(bool stop);

signals:
    void visualFocusChanged();
    void tabStopChanged();

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void setVisualFocus(bool visual);
    void applyTabStop();

    bool visualFocus_ = false;
    bool tabStop_ = true;
};

} // namespace varnhold
