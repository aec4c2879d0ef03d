// What one redraw of the status item costs: the rectangles of its bars, the strip's whole surface,
// and a tray icon in all the sizes that a panel is sent. Painted without a display, so the figures
// are those of the painting. Medians and worst, in milliseconds.

#include <QApplication>
#include <QImage>
#include <functional>
#include <string>
#include <vector>

#include "timing.h"
#include "views/status/menu_opener.h"
#include "views/status/notifier_item.h"
#include "views/status/status_strip.h"
#include "views/status/tray_icon.h"

namespace {

using namespace varnhold;

BarState stateOf(int bots) {
    BarState bars;
    std::vector<std::string> roles;
    for (int i = 0; i < bots; ++i) {
        roles.push_back(std::to_string(i));
        bars.barCurrent[roles.back()] = (i % 5) / 4.0;
    }
    setOrder(bars, roles);
    return bars;
}

struct NoDefaults final : platform::UserDefaults {
    [[nodiscard]] std::string string(const std::string&) const override { return {}; }
    void setString(const std::string&, const std::string&) override {}
    [[nodiscard]] bool boolean(const std::string&) const override { return false; }
    void setBoolean(const std::string&, bool) override {}
};

constexpr int batch = 20; // redraws that are timed together

std::vector<double> timedRedraws(const std::function<void()>& redraw) {
    std::vector<double> times;
    for (int round = 0; round < 50; ++round) {
        times.push_back(bench::timed([&] {
                            for (int i = 0; i < batch; ++i) {
                                redraw();
                            }
                        }) /
                        batch);
    }
    return times;
}

void measure(int bots) {
    const std::string of = " of " + std::to_string(bots) + " bots";
    BarState state = stateOf(bots);
    std::size_t sum = 0;
    bench::report("bar image" + of,
                  timedRedraws([&] { sum += barImage(state, 0.83).bars.size(); }));
    MenuOpener opener([](MenuAction, const std::string&) {});
    NoDefaults defaults;
    StatusStrip strip(opener, defaults, [] {});
    strip.setImage(barImage(state, 0.83));
    strip.setTitle(QString::fromUtf8(" 18/20 🔴1"), QStringLiteral("Varnhold"));
    strip.resize(strip.sizeHint());
    QImage canvas(strip.size(), QImage::Format_ARGB32_Premultiplied);
    bench::report("strip" + of, timedRedraws([&] { strip.render(&canvas); }));
    const BarImage bars = barImage(state, 0.83);
    bench::report("tray icon in all sizes" + of, timedRedraws([&] {
                      for (const int side : NotifierItem::sides()) {
                          sum += static_cast<std::size_t>(trayImage(bars, side).width());
                      }
                  }));
    if (sum == 0) {
        std::puts("nothing was drawn");
    }
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    for (const int bots : {1, 5, 20, 60}) {
        measure(bots);
    }
    return 0;
}
