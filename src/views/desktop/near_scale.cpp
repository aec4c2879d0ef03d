#include "views/desktop/near_scale.h"

#include <QByteArray>
#include <QList>
#include <QtGlobal>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>

namespace varnhold {

namespace {

constexpr const char* variable = "QT_FONT_DPI";
constexpr double dotsPerInchAtOne = 96;
constexpr double near = 0.05;

// What the desktop has told the X server's clients (Xft.dpi); 0 if nothing.
double desktopsDotsPerInch() {
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> x(
        xcb_connect(nullptr, nullptr), &xcb_disconnect);
    if (xcb_connection_has_error(x.get()) != 0) {
        return 0;
    }
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(x.get())).data->root;
    constexpr std::uint32_t most = 65536;
    const auto cookie =
        xcb_get_property(x.get(), 0, root, XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING, 0, most);
    const std::unique_ptr<xcb_get_property_reply_t, decltype(&std::free)> reply(
        xcb_get_property_reply(x.get(), cookie, nullptr), &std::free);
    if (!reply) {
        return 0;
    }
    const QByteArray resources(static_cast<const char*>(xcb_get_property_value(reply.get())),
                               xcb_get_property_value_length(reply.get()));
    for (const QByteArray& line : resources.split('\n')) {
        if (line.startsWith("Xft.dpi:")) {
            return line.mid(line.indexOf(':') + 1).trimmed().toDouble();
        }
    }
    return 0;
}

} // namespace

bool isNearWhole(double dotsPerInch) {
    const double off = std::abs(dotsPerInch / dotsPerInchAtOne - 1);
    return off > 0 && off <= near;
}

NearScale::NearScale() {
    if (!qEnvironmentVariableIsSet(variable) && isNearWhole(desktopsDotsPerInch())) {
        qputenv(variable, QByteArray::number(dotsPerInchAtOne));
        isSet_ = true;
    }
}

NearScale::~NearScale() {
    if (isSet_) {
        qunsetenv(variable);
    }
}

} // namespace varnhold
