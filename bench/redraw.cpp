// What one redraw of the status item costs: the strip's whole surface, and a tray icon in all the
// sizes that a panel is sent. Painted without a display, so the figures are those of the painting.

#include <QApplication>
#include <QImage>
#include <benchmark/benchmark.h>

#include "views/status/menu_opener.h"
#include "views/status/notifier_item.h"
#include "views/status/status_strip.h"
#include "views/status/tray_icon.h"

namespace {

using namespace varnhold;

BarImage barsOf(int bots) {
    BarState bars;
    std::vector<std::string> roles;
    for (int i = 0; i < bots; ++i) {
        roles.push_back(std::to_string(i));
        bars.barCurrent[roles.back()] = (i % 5) / 4.0;
    }
    setOrder(bars, roles);
    return barImage(bars, 0.83);
}

struct NoDefaults final : platform::UserDefaults {
    [[nodiscard]] std::string string(const std::string&) const override { return {}; }
    void setString(const std::string&, const std::string&) override {}
    [[nodiscard]] bool boolean(const std::string&) const override { return false; }
    void setBoolean(const std::string&, bool) override {}
};

void redrawStrip(benchmark::State& state) {
    MenuOpener opener([](MenuAction, const std::string&) {});
    NoDefaults defaults;
    StatusStrip strip(opener, defaults, [] {});
    strip.setImage(barsOf(static_cast<int>(state.range(0))));
    strip.setTitle(QString::fromUtf8(" 18/20 🔴1"), QStringLiteral("Varnhold"));
    strip.resize(strip.sizeHint());
    QImage canvas(strip.size(), QImage::Format_ARGB32_Premultiplied);
    for (auto step : state) {
        strip.render(&canvas);
        benchmark::DoNotOptimize(canvas.bits());
    }
}

void redrawTray(benchmark::State& state) {
    const BarImage bars = barsOf(static_cast<int>(state.range(0)));
    for (auto step : state) {
        for (const int side : NotifierItem::sides()) {
            benchmark::DoNotOptimize(trayImage(bars, side).constBits());
        }
    }
}

BENCHMARK(redrawStrip)->Arg(1)->Arg(5)->Arg(20)->Arg(60)->Unit(benchmark::kMicrosecond);
BENCHMARK(redrawTray)->Arg(1)->Arg(5)->Arg(20)->Arg(60)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
