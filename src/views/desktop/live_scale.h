#pragma once

#include <QObject>
#include <QTimer>

class QWidget;

namespace varnhold {

// Makes windows right again when the desktop's text size changes while they are shown. The toolkit
// takes the new size over at once, as a zoom of everything, but neither the windows' sizes on the
// screen nor what is painted in them. Main thread.
class LiveScale final : public QObject {
    Q_OBJECT
public:
    explicit LiveScale(QObject* parent = nullptr);

private:
    void follow();

    QTimer last_;
    qreal scale_;
};

} // namespace varnhold
