#pragma once

#include <QObject>
#include <memory>

namespace varnhold {

// Tells of every press and every Escape anywhere on an X11 desktop, other programs' windows
// included, without taking any of them away: a panel that appears unasked must not swallow what the
// user is typing elsewhere. It listens only while it lives. Main thread; silent where there is no X
// server.
class OutsideInput final : public QObject {
    Q_OBJECT
public:
    explicit OutsideInput(QObject* parent = nullptr);
    ~OutsideInput() override;
    OutsideInput(const OutsideInput&) = delete;
    OutsideInput& operator=(const OutsideInput&) = delete;

signals:
    void pressed();
    void escaped();

private:
    void read();

    struct Link;
    std::unique_ptr<Link> link_;
};

} // namespace varnhold
