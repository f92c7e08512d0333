// What the user waits for in the dialogs: a dialog on the screen after its menu entry, each sample
// of the display options, and the picture after another test limit beside a new reading.

#include <QApplication>
#include <QTabWidget>

#include <benchmark/benchmark.h>

#include "bench_files.h"
#include "commands/lifecycle.h"
#include "offscreen_bench.h"
#include "pdf/pdf_printer.h"
#include "plot/application_printer.h"
#include "settings/defaults.h"
#include "text/length_units.h"
#include "windows/forms/frmDarstellungen.h"
#include "windows/forms/frmDrucker.h"
#include "windows/forms/frmLegende.h"
#include "windows/forms/frmMassstab.h"
#include "windows/forms/frmObjekte.h"
#include "windows/forms/frmPlotten.h"
#include "windows/forms/frmStrichst.h"
#include "windows/forms/frmVerwopt.h"
#include "windows/qt/picture_image.h"
#include "windows/qt/picture_widget.h"
#include "windows/qt/qt_text_measurer.h"
#include "windows/qt/sample_picture.h"

namespace veldra {
namespace {

constexpr QSize picture_size(1600, 1000);

/// A network of 10 000 points, its picture, and the built-in printer.
struct OpenNetwork {
    Session session;
    QtTextMeasurer measurer;
    bench::SilentInterface ui;
    PdfPrinter printer{[] { return std::nullopt; }};
    PictureWidget picture{session, measurer, nullptr};

    OpenNetwork() {
        standard_alle(session);
        picture.resize(picture_size);
        session.picture = {picture_size.width() * twips_per_pixel,
                           picture_size.height() * twips_per_pixel};
        datei_setzen(session, bench::large_file(10000));
        read();
    }

    [[nodiscard]] Desk desk() {
        Desk desk{measurer, ui, [this] { picture.redraw(session, ui); }};
        desk.printer = &printer;
        return desk;
    }
    void read() { datei_lesen(session, desk()); }
};

OpenNetwork& open_network() {
    // Widgets must be gone before the application, so this one stays to the end of the process.
    static OpenNetwork* const network = new OpenNetwork;
    return *network;
}

/// Opens a dialog until it has been painted.
template <typename Create>
void opening(benchmark::State& state, Create create) {
    OpenNetwork& open = open_network();
    for (auto _ : state) {
        const auto dialog = create(open);
        dialog->show();
        QApplication::processEvents();
        state.PauseTiming();
        dialog->hide();
        QApplication::processEvents();
        state.ResumeTiming();
    }
}

std::unique_ptr<FrmDarstellungen> make_display_options(OpenNetwork& open) {
    return std::make_unique<FrmDarstellungen>(nullptr, open.session, open.measurer, &open.printer);
}

void open_frmDarstellungen(benchmark::State& state) {
    opening(state, make_display_options);
}

void open_frmStrichst(benchmark::State& state) {
    LineWidthChoice choice{2, 1, 0xFFFFFF};
    opening(state, [&choice](OpenNetwork&) {
        return std::make_unique<FrmStrichst>(nullptr, choice, QStringLiteral("Strich"));
    });
}

void open_frmLegende(benchmark::State& state) {
    opening(state, [](OpenNetwork& open) {
        return std::make_unique<FrmLegende>(nullptr, open.session, &open.printer);
    });
}

void open_frmMassstab(benchmark::State& state) {
    opening(state,
            [](OpenNetwork& open) { return std::make_unique<FrmMassstab>(nullptr, open.session); });
}

void open_frmVerwopt(benchmark::State& state) {
    opening(state,
            [](OpenNetwork& open) { return std::make_unique<FrmVerwopt>(nullptr, open.session); });
}

void open_frmPlotten(benchmark::State& state) {
    opening(state, [](OpenNetwork& open) {
        return std::make_unique<FrmPlotten>(nullptr, open.session, open.desk());
    });
}

void open_frmDrucker(benchmark::State& state) {
    opening(state, [](OpenNetwork& open) {
        return std::make_unique<FrmDrucker>(nullptr, open.session, &open.printer);
    });
}

void open_frmObjekte(benchmark::State& state) {
    opening(state, [](OpenNetwork& open) {
        return std::make_unique<FrmObjekte>(nullptr, open.session, [](SelectionLeft) {});
    });
}

/// All samples of a tab once; the counter tells how many there are.
void draw_samples_of_tab(benchmark::State& state) {
    OpenNetwork& open = open_network();
    const auto dialog = make_display_options(open);
    dialog->show();
    auto* tabs = dialog->findChild<QTabWidget*>(QStringLiteral("tab_darstellungen"));
    tabs->setCurrentIndex(static_cast<int>(state.range(0)));
    QApplication::processEvents();
    const auto samples = tabs->currentWidget()->findChildren<SamplePicture*>();
    for (auto _ : state) {
        for (SamplePicture* sample : samples) {
            sample->repaint();
        }
    }
    state.counters["samples"] = static_cast<double>(samples.size());
}

void redraw_after_a_test_limit(benchmark::State& state) {
    OpenNetwork& open = open_network();
    open.session.obj.obj_test_beob = table_true;
    open.session.obj.obj_test = 2;
    for (auto _ : state) {
        const double limit = open.session.settings.stnvwert[1];
        open.session.settings.stnvwert[1] = limit == 1.0 ? 1.5 : 1.0;
        static_cast<void>(display_accept(open.session, open.measurer, &open.printer));
        open.picture.redraw(open.session, open.ui);
    }
}

void read_and_draw(benchmark::State& state) {
    OpenNetwork& open = open_network();
    for (auto _ : state) {
        open.read();
    }
}

BENCHMARK(open_frmDarstellungen)->Unit(benchmark::kMillisecond);
BENCHMARK(open_frmStrichst)->Unit(benchmark::kMillisecond);
BENCHMARK(open_frmLegende)->Unit(benchmark::kMillisecond);
BENCHMARK(open_frmMassstab)->Unit(benchmark::kMillisecond);
BENCHMARK(open_frmVerwopt)->Unit(benchmark::kMillisecond);
BENCHMARK(open_frmPlotten)->Unit(benchmark::kMillisecond);
BENCHMARK(open_frmDrucker)->Unit(benchmark::kMillisecond);
BENCHMARK(open_frmObjekte)->Unit(benchmark::kMillisecond);
BENCHMARK(draw_samples_of_tab)->DenseRange(0, 7)->Unit(benchmark::kMillisecond);
BENCHMARK(redraw_after_a_test_limit)->Unit(benchmark::kMillisecond);
BENCHMARK(read_and_draw)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace veldra

int main(int argc, char** argv) {
    return veldra::bench::run_offscreen(argc, argv);
}
