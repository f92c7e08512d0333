// What the user's hand waits for on a large network: a click on a label, a picture with the rubber
// band or the ghost of a label at another place, and the next step of the view beside a bare loop
// of the toolkit's painter over what is in view then.

#include <ctime>
#include <string>

#include <benchmark/benchmark.h>

#include "bare_painter.h"
#include "bench_files.h"
#include "commands/lifecycle.h"
#include "offscreen_bench.h"
#include "text/length_units.h"
#include "view/label_moving.h"
#include "view/zoom.h"
#include "windows/qt/picture_image.h"
#include "windows/qt/picture_widget.h"
#include "windows/qt/qt_text_measurer.h"

namespace veldra {
namespace {

constexpr QSize picture_size(1600, 1000);

/// A picture with all points and their labels in view.
struct OpenPicture {
    Session session;
    QtTextMeasurer measurer;
    bench::SilentInterface ui;
    PictureWidget picture{session, measurer, nullptr};
    QImage screen;

    OpenPicture(QSize size, long points) : screen(size, QImage::Format_RGB32) {
        picture.resize(size);
        session.picture = {size.width() * twips_per_pixel, size.height() * twips_per_pixel};
        datei_setzen(session, bench::large_file(points));
        datei_lesen(session, {measurer, ui, [this] { picture.redraw(session, ui); }});
    }

    /// What the window system asks of the picture after a change.
    void show() { picture.render(&screen); }

    /// Goes to the middle of the part: all of it, or a tenth, a hundredth of its width and height.
    void look_at(double part) {
        const Extents& e = session.extents;
        const double share = part / 2;
        const double rw = (e.gesamt_rw_min + e.gesamt_rw_max) / 2;
        const double hw = (e.gesamt_hw_min + e.gesamt_hw_max) / 2;
        const double half_width = (e.gesamt_rw_max - e.gesamt_rw_min) * share;
        const double half_height = (e.gesamt_hw_max - e.gesamt_hw_min) * share;
        FitView(session, rw - half_width, hw - half_height, rw + half_width, hw + half_height, 0);
    }
};

// Widgets must be gone before the application, so these stay to the end of the process.
OpenPicture& open_picture() {
    static OpenPicture* const picture = new OpenPicture(picture_size, 100000);
    return *picture;
}
OpenPicture& picture_on_large_screen() {
    static OpenPicture* const picture = new OpenPicture(QSize(3840, 2160), 10000);
    return *picture;
}

/// With all points and labels in view.
OpenPicture& whole_picture() {
    OpenPicture& open = open_picture();
    open.look_at(1);
    open.picture.redraw(open.session, open.ui);
    return open;
}

void click_beside_all_labels(benchmark::State& state) {
    OpenPicture& open = whole_picture();
    for (auto _ : state) {
        benchmark::DoNotOptimize(open.picture.label_at({1, 1}));
    }
    state.counters["labels"] = static_cast<double>(open.session.lbl_pubez_placed.size());
}

void drag_rubber_band(OpenPicture& open, benchmark::State& state) {
    double x = 0;
    for (auto _ : state) {
        x = x < 1500 ? x + 1 : 0;
        PictureOverlay overlay;
        overlay.rubber_band = QRectF(QPointF(10, 10), QPointF(20 + x, 900));
        open.picture.set_overlay(overlay);
        open.show();
    }
}

void move_rubber_band(benchmark::State& state) {
    drag_rubber_band(whole_picture(), state);
}

void move_rubber_band_on_large_screen(benchmark::State& state) {
    drag_rubber_band(picture_on_large_screen(), state);
}

void move_ghost(benchmark::State& state) {
    OpenPicture& open = whole_picture();
    const LabelDrag drag{LabelArray::lbl_pubez, 1, 0, 0};
    float x = 0;
    for (auto _ : state) {
        x = x < 20000 ? x + 15 : 0;
        PictureOverlay overlay;
        overlay.ghost = to_logical(open.session.view, ghost_box(open.session, drag, x, 0));
        open.picture.set_overlay(overlay);
        open.show();
    }
}

void drop_label_and_repaint(benchmark::State& state) {
    OpenPicture& open = whole_picture();
    for (auto _ : state) {
        drop_label(open.session, {LabelArray::lbl_pubez, 1, 0, 0}, 15, 0);
        open.picture.repaint_labels();
        open.show();
    }
}

/// A step that the user takes in the view.
struct ViewStep {
    const char* name;
    void (*take)(Session& session);
};

constexpr ViewStep view_steps[] = {
    {"lupe_plus", [](Session& session) { static_cast<void>(zoom_in(session)); }},
    {"lupe_minus", [](Session& session) { zoom_out(session); }},
    {"schiebe_rechts", [](Session& session) { shift_view(session, ShiftTo::rechts); }},
    {"a notch of the wheel",
     [](Session& session) {
         const Viewport view = session.view;
         static_cast<void>(zoom_about(session, {view.ansicht_rw_min, view.ansicht_hw_min}, 1.25));
     }},
    {"pushed by a tenth", [](Session& session) {
         const Viewport view = session.view;
         pan_view(session, (view.ansicht_rw_max - view.ansicht_rw_min) / 10, 0);
     }}};

/// Processor time of this program, seconds.
double seconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

/// One step, drawn with its labels, and the bare painter in turn.
void step_of_the_view(benchmark::State& state) {
    OpenPicture& open = open_picture();
    const ViewStep& step = view_steps[state.range(0)];
    const double part = 1.0 / static_cast<double>(state.range(1));
    QImage image = empty_picture(picture_size, 1.0);
    open.look_at(part);
    step.take(open.session);
    const bench::BarePicture bare(open.session, open.measurer, open.ui, image);
    double of_steps = 0;
    double of_painter = 0;
    for (auto _ : state) {
        open.look_at(part);
        const double begun = seconds();
        step.take(open.session);
        open.picture.redraw(open.session, open.ui);
        const double drawn = seconds();
        bare.paint(image);
        of_painter += seconds() - drawn;
        of_steps += drawn - begun;
        state.SetIterationTime(drawn - begun);
    }
    state.SetLabel(std::string(step.name) + ", 1/" + std::to_string(state.range(1)) +
                   " of the width");
    state.counters["ratio"] = of_steps / of_painter;
    state.counters["bare_ms"] =
        benchmark::Counter(of_painter * 1000, benchmark::Counter::kAvgIterations);
}

BENCHMARK(step_of_the_view)
    ->ArgsProduct({{0, 1, 2, 3, 4}, {1, 10, 100}})
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
void show_the_picture(benchmark::State& state) {
    OpenPicture& open = whole_picture();
    for (auto _ : state) {
        open.show();
    }
}

BENCHMARK(show_the_picture)->Unit(benchmark::kMillisecond);
BENCHMARK(click_beside_all_labels)->Unit(benchmark::kMillisecond);
BENCHMARK(move_rubber_band)->Unit(benchmark::kMillisecond);
BENCHMARK(move_rubber_band_on_large_screen)->Unit(benchmark::kMillisecond);
BENCHMARK(move_ghost)->Unit(benchmark::kMillisecond);
BENCHMARK(drop_label_and_repaint)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace veldra

int main(int argc, char** argv) {
    return veldra::bench::run_offscreen(argc, argv);
}
