#pragma once

#include <QString>
#include <QtGlobal>

namespace varnhold {

// Stands guard while the application object is made: a toolkit that finds no display to show itself
// on would abort. Instead, one sentence goes to standard error and the process ends with
// exitUnavailable. What the toolkit has to say otherwise is passed on once it has started. One at a
// time; main thread.
class DisplayCheck final {
public:
    DisplayCheck();
    ~DisplayCheck();
    DisplayCheck(const DisplayCheck&) = delete;
    DisplayCheck& operator=(const DisplayCheck&) = delete;

private:
    QtMessageHandler before_;
};

} // namespace varnhold
