// What the user's hand waits for on a large network: a click on a label, and a picture with the
// rubber band or the ghost of a label at another place.

#include <QApplication>

#include <benchmark/benchmark.h>

#include "bench_files.h"
#include "drawing/length_units.h"
#include "platform/qt/picture_image.h"
#include "platform/qt/picture_widget.h"
#include "platform/qt/qt_text_measurer.h"
#include "shell/lifecycle.h"
#include "view/label_moving.h"

namespace veldra {
namespace {

constexpr QSize picture_size(1600, 1000);

class SilentInterface final : public UserInterface {
 public:
    bool message_box(MessageStyle /*style*/, const std::string& /*title*/,
                     const std::string& /*text*/) override {
        return true;
    }
    void set_mouse_pointer(int /*pointer*/) override {}
};

/// A picture of 100 000 points with all their labels in view.
struct OpenPicture {
    Session session;
    QtTextMeasurer measurer;
    SilentInterface ui;
    PictureWidget picture{session, measurer, nullptr};
    QImage screen{picture_size, QImage::Format_RGB32};

    OpenPicture() {
        picture.resize(picture_size);
        session.picture = {picture_size.width() * twips_per_pixel,
                           picture_size.height() * twips_per_pixel};
        datei_setzen(session, bench::large_file(100000));
        datei_lesen(session, {measurer, ui, [this] { picture.redraw(session, ui); }});
    }

    /// What the window system asks of the picture after a change.
    void show() { picture.render(&screen); }
};

OpenPicture& open_picture() {
    // Widgets must be gone before the application, so this one stays to the end of the process.
    static OpenPicture* const picture = new OpenPicture;
    return *picture;
}

void click_beside_all_labels(benchmark::State& state) {
    OpenPicture& open = open_picture();
    for (auto _ : state) {
        benchmark::DoNotOptimize(open.picture.label_at({1, 1}));
    }
    state.counters["labels"] = static_cast<double>(open.session.lbl_pubez_placed.size());
}

void move_rubber_band(benchmark::State& state) {
    OpenPicture& open = open_picture();
    double x = 0;
    for (auto _ : state) {
        x = x < 1500 ? x + 1 : 0;
        PictureOverlay overlay;
        overlay.rubber_band = QRectF(QPointF(10, 10), QPointF(20 + x, 900));
        open.picture.set_overlay(overlay);
        open.show();
    }
}

void move_ghost(benchmark::State& state) {
    OpenPicture& open = open_picture();
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
    OpenPicture& open = open_picture();
    for (auto _ : state) {
        drop_label(open.session, {LabelArray::lbl_pubez, 1, 0, 0}, 15, 0);
        open.picture.repaint_labels();
        open.show();
    }
}

BENCHMARK(click_beside_all_labels)->Unit(benchmark::kMillisecond);
BENCHMARK(move_rubber_band)->Unit(benchmark::kMillisecond);
BENCHMARK(move_ghost)->Unit(benchmark::kMillisecond);
BENCHMARK(drop_label_and_repaint)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace veldra

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
