// The picture of a whole network and of a tenth of its width, beside a bare loop of the toolkit's
// painter over the same primitives in the same run, each by its fastest technique.

#include <QImage>
#include <map>
#include <memory>

#include <benchmark/benchmark.h>

#include "bare_painter.h"
#include "bench_files.h"
#include "commands/lifecycle.h"
#include "offscreen_bench.h"
#include "text/length_units.h"
#include "view/extents.h"
#include "view/viewport.h"
#include "windows/qt/qt_text_measurer.h"

namespace veldra {
namespace {

constexpr QSize picture_size(1600, 1000);

/// A network with everything the picture needs, opened once for each size.
struct OpenNetwork {
    Session session;
    QtTextMeasurer measurer;
    bench::SilentInterface ui;
    LabelPainter painter{measurer};

    explicit OpenNetwork(long points) {
        session.picture = {picture_size.width() * twips_per_pixel,
                           picture_size.height() * twips_per_pixel};
        datei_setzen(session, bench::large_file(points));
        datei_lesen(session, {measurer, ui, [] {}});
    }

    /// Shows the whole part, or the middle tenth of its width and height.
    void show(bool whole) {
        const Extents& e = session.extents;
        if (whole) {
            FitView(session, e.gesamt_rw_min, e.gesamt_hw_min, e.gesamt_rw_max, e.gesamt_hw_max, 1);
            return;
        }
        const double rw = (e.gesamt_rw_min + e.gesamt_rw_max) / 2;
        const double hw = (e.gesamt_hw_min + e.gesamt_hw_max) / 2;
        const double half_width = (e.gesamt_rw_max - e.gesamt_rw_min) / 20;
        const double half_height = (e.gesamt_hw_max - e.gesamt_hw_min) / 20;
        FitView(session, rw - half_width, hw - half_height, rw + half_width, hw + half_height, 0);
    }
};

OpenNetwork& network(long points) {
    static std::map<long, std::unique_ptr<OpenNetwork>> networks;
    auto& open = networks[points];
    if (!open) {
        open = std::make_unique<OpenNetwork>(points);
    }
    return *open;
}

void bare_painter(benchmark::State& state) {
    OpenNetwork& open = network(state.range(0));
    open.show(state.range(1) != 0);
    QImage image = empty_picture(picture_size, 1.0);
    const bench::BarePicture bare(open.session, open.measurer, open.ui, image);
    for (auto _ : state) {
        bare.paint(image);
    }
}

void draw_all(benchmark::State& state) {
    OpenNetwork& open = network(state.range(0));
    open.show(state.range(1) != 0);
    for (auto _ : state) {
        QImage image = empty_picture(picture_size, 1.0);
        draw_layers(open.session, open.measurer, open.ui, image, 1.0);
        draw_labels(open.session, open.painter, image, 1.0);
        benchmark::DoNotOptimize(image.bits());
    }
}

void extents(benchmark::State& state) {
    OpenNetwork& open = network(state.range(0));
    for (auto _ : state) {
        ComputeExtents(open.session, open.measurer);
    }
}

/// Points, and whether the whole network is in view.
void views(benchmark::internal::Benchmark* bench) {
    for (const long points : {10000L, 100000L, 1000000L}) {
        bench->Args({points, 1})->Args({points, 0});
    }
    bench->Unit(benchmark::kMillisecond);
}

BENCHMARK(bare_painter)->Apply(views);
BENCHMARK(draw_all)->Apply(views);
BENCHMARK(extents)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace veldra

int main(int argc, char** argv) {
    return veldra::bench::run_offscreen(argc, argv);
}
