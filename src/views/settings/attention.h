#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace varnhold {

// Whether somebody reads or does something, for tool tips: whoever presses, types or scrolls
// doesn't read, nor does whoever has a menu open. One for each engine; main thread.
class Attention : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    // Grows with each press, key, turn of the wheel and drag.
    Q_PROPERTY(int acts READ acts NOTIFY actsChanged)
    Q_PROPERTY(bool menuOpen READ menuOpen NOTIFY menuOpenChanged)

public:
    explicit Attention(QObject* parent = nullptr);

    [[nodiscard]] int acts() const { return acts_; }
    [[nodiscard]] bool menuOpen() const { return menus_ > 0; }

    // Each menu tells when it opens and when it closes.
    Q_INVOKABLE void menuOpened();
    Q_INVOKABLE void menuClosed();

signals:
    void actsChanged();
    void menuOpenChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    int acts_ = 0;
    int menus_ = 0;
};

} // namespace varnhold
