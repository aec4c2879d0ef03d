#include "app/display_check.h"

#include <cstdio>
#include <cstdlib>
#include <utility>
#include <vector>

#include "app/command_line.h"

namespace varnhold {

namespace {

struct HeldMessage {
    QtMsgType type = QtDebugMsg;
    QString text;
};

std::vector<HeldMessage>& heldBack() {
    static std::vector<HeldMessage> messages;
    return messages;
}

void holdBack(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type == QtFatalMsg) {
        std::fputs("varnhold: there is no display to show itself on.\n", stderr);
        std::_Exit(exitUnavailable);
    }
    heldBack().push_back({type, text});
}

} // namespace

DisplayCheck::DisplayCheck() : before_(qInstallMessageHandler(holdBack)) {}

DisplayCheck::~DisplayCheck() {
    qInstallMessageHandler(before_);
    for (const HeldMessage& message : std::exchange(heldBack(), {})) {
        qt_message_output(message.type, {}, message.text);
    }
}

} // namespace varnhold
