#include <QAbstractNativeEventFilter>
#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "views/desktop/work_area.h"
#include "views/desktop/x11_connection.h"

namespace varnhold {

namespace {

xcb_screen_t& allScreens(xcb_connection_t* x) {
    return *xcb_setup_roots_iterator(xcb_get_setup(x)).data;
}

QRect rectangle(const std::uint32_t* sides) {
    std::array<int, 4> each{};
    std::copy_n(sides, each.size(), each.begin());
    return {each[0], each[1], each[2], each[3]};
}

// Where the shell itself is the panel, it asks nobody for room. Such tell what is left of each
// screen instead (GTK reads it).
std::optional<QRect> toldArea(xcb_connection_t* x, const QRect& screen) {
    const xcb_window_t root = allScreens(x).root;
    const auto desktop = x11Values(x, root, "_NET_CURRENT_DESKTOP", XCB_ATOM_CARDINAL);
    const std::string name =
        "_GTK_WORKAREAS_D" + std::to_string(desktop.empty() ? 0 : desktop.front());
    const auto told = x11Values(x, root, name.c_str(), XCB_ATOM_CARDINAL);
    for (std::size_t i = 0; i + 4 <= told.size(); i += 4) {
        const QRect area = rectangle(&told[i]);
        if (!area.isEmpty() && screen.contains(area)) {
            return area;
        }
    }
    return std::nullopt;
}

// A panel's wish: how deep it is at each of four edges, then from where to where.
void append(std::vector<KeptByPanel>& kept, const std::uint32_t* wish, const QSize& all) {
    std::array<int, 12> each{};
    std::copy_n(wish, each.size(), each.begin());
    const auto [left, right, top, bottom, leftFrom, leftTo, rightFrom, rightTo, topFrom, topTo,
                bottomFrom, bottomTo] = each;
    if (left > 0) {
        kept.push_back({Qt::LeftEdge, {0, leftFrom, left, leftTo - leftFrom + 1}});
    }
    if (right > 0) {
        kept.push_back(
            {Qt::RightEdge, {all.width() - right, rightFrom, right, rightTo - rightFrom + 1}});
    }
    if (top > 0) {
        kept.push_back({Qt::TopEdge, {topFrom, 0, topTo - topFrom + 1, top}});
    }
    if (bottom > 0) {
        kept.push_back({Qt::BottomEdge,
                        {bottomFrom, all.height() - bottom, bottomTo - bottomFrom + 1, bottom}});
    }
}

std::vector<KeptByPanel> keptByPanels(xcb_connection_t* x) {
    constexpr std::uint32_t sides = 12;
    constexpr std::uint32_t mostWindows = 4096;
    const auto windows =
        x11Values(x, allScreens(x).root, "_NET_CLIENT_LIST", XCB_ATOM_WINDOW, mostWindows);
    const xcb_atom_t wish = x11Atom(x, "_NET_WM_STRUT_PARTIAL");
    std::vector<xcb_get_property_cookie_t> asked;
    asked.reserve(windows.size());
    for (const xcb_window_t window : windows) {
        asked.push_back(xcb_get_property(x, 0, window, wish, XCB_ATOM_CARDINAL, 0, sides));
    }
    // Of the server, not the toolkit's: it is in the pixels that panels speak of.
    const auto all =
        owned(xcb_get_geometry_reply(x, xcb_get_geometry(x, allScreens(x).root), nullptr));
    std::vector<KeptByPanel> kept;
    for (const auto& cookie : asked) {
        const auto reply = owned(xcb_get_property_reply(x, cookie, nullptr));
        if (reply && all && reply->format == 32 && reply->value_len == sides) {
            append(kept, static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get())),
                   {all->width, all->height});
        }
    }
    return kept;
}

// What is told the root window, whose news the toolkit hears anyway. The toolkit is to have taken
// it in by the time that anybody acts on it.
class PanelNews final : public QObject, public QAbstractNativeEventFilter {
public:
    PanelNews(xcb_connection_t* x, QObject* context, std::function<void()> changed)
        : QObject(context),
          root_(allScreens(x).root),
          area_(x11Atom(x, "_NET_WORKAREA")),
          changed_(std::move(changed)) {
        qGuiApp->installNativeEventFilter(this);
    }

    bool nativeEventFilter(const QByteArray&, void* message, qintptr*) override {
        const auto* event = static_cast<const xcb_generic_event_t*>(message);
        if ((event->response_type & ~0x80) == XCB_PROPERTY_NOTIFY) {
            const auto* news = reinterpret_cast<const xcb_property_notify_event_t*>(event);
            if (news->window == root_ && news->atom == area_) {
                QMetaObject::invokeMethod(this, changed_, Qt::QueuedConnection);
            }
        }
        return false;
    }

private:
    xcb_window_t root_;
    xcb_atom_t area_;
    std::function<void()> changed_;
};

} // namespace

QRect freeArea(const QScreen& screen) {
    xcb_connection_t* x = x11Connection();
    if (x == nullptr || QGuiApplication::screens().size() < 2) {
        return screen.availableGeometry();
    }
    // The toolkit leaves a screen's corner where the server has it.
    const QRect points = screen.geometry();
    const double scale = screen.devicePixelRatio();
    const QRect pixels(points.topLeft(), (QSizeF(points.size()) * scale).toSize());
    const auto told = toldArea(x, pixels);
    const QRect area = told ? *told : areaBeside(keptByPanels(x), pixels);
    const auto taken = [scale](int depth) { return static_cast<int>(std::ceil(depth / scale)); };
    return points.adjusted(taken(area.left() - pixels.left()), taken(area.top() - pixels.top()),
                           -taken(pixels.right() - area.right()),
                           -taken(pixels.bottom() - area.bottom()));
}

void onPanelsChanged(QObject* context, const std::function<void()>& changed) {
    if (xcb_connection_t* x = x11Connection(); x != nullptr) {
        new PanelNews(x, context, changed);
    }
}

} // namespace varnhold
