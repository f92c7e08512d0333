// Documents: the program's own pages beside the toolkit's document writer, which gets the same
// calls by the target that also draws vector files. Times are those of whole documents, with their
// file written; the counter says what one primitive takes.

#include <QGuiApplication>
#include <QPainter>
#include <QPdfWriter>
#include <cmath>
#include <filesystem>
#include <functional>
#include <string>

#include <benchmark/benchmark.h>

#include "os/files.h"
#include "pdf/pdf_printer.h"
#include "windows/qt/painter_target.h"

namespace veldra {
namespace {

constexpr int count = 100000;
constexpr double side_mm = 800;

/// Places spread over the paper, the same in each run.
class Places {
 public:
    float next() {
        state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<float>(static_cast<double>(state_ >> 40U) / 16777216 * side_mm);
    }

 private:
    std::uint64_t state_ = 1;
};

using Drawing = std::function<void(DrawingTarget&)>;

void draw_lines(DrawingTarget& target) {
    Places places;
    for (int i = 0; i < count; ++i) {
        const float x = places.next();
        const float y = places.next();
        target.Line(x, y, x + 9.4F, y + 7.3F);
    }
}

void draw_circles(DrawingTarget& target) {
    Places places;
    target.FillColor(0xffffff);
    for (int i = 0; i < count; ++i) {
        const float x = places.next();
        target.Circle(x, places.next(), i % 4 == 0 ? 1.0F : 0.7F);
    }
}

void draw_labels(DrawingTarget& target) {
    Places places;
    const FontSpec font;
    for (int i = 0; i < count; ++i) {
        Label label;
        label.caption = std::to_string(10000 + i);
        label.left = places.next();
        label.top = places.next();
        label.visible = true;
        target.LabelPlaced(LabelArray::lbl_pubez, i, label, font, 0);
    }
}

void draw_ellipses(DrawingTarget& target) {
    Places places;
    for (int i = 0; i < count; ++i) {
        EllipseCurve curve;
        curve.x = 6 + static_cast<double>(places.next()) * 0.98;
        curve.y = 6 + static_cast<double>(places.next()) * 0.98;
        curve.a = 1 + i % 37 * 0.1;
        curve.b = curve.a / 2;
        curve.sine = std::sin(i * 0.1);
        curve.cosine = std::cos(i * 0.1);
        target.Ellipse(curve);
    }
}

void draw_all(DrawingTarget& target) {
    draw_lines(target);
    draw_circles(target);
    draw_labels(target);
    draw_ellipses(target);
}

void report(benchmark::State& state, const std::string& path) {
    state.counters["bytes"] =
        benchmark::Counter(static_cast<double>(std::filesystem::file_size(path)) / count);
    state.counters["us_each"] = benchmark::Counter(
        count / 1e6, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void by_own_pages(benchmark::State& state, const Drawing& draw) {
    const TemporaryFolder folder;
    const std::string path = folder.path() + "/own.pdf";
    PdfPrinter printer([&] { return path; });
    for ([[maybe_unused]] auto run : state) {
        printer.set_PaperSize(256);
        printer.set_Width(static_cast<float>((side_mm + 10) * 1440 / 25.4));
        printer.set_Height(static_cast<float>((side_mm + 10) * 1440 / 25.4));
        printer.begin_job({"Messung"});
        printer.begin_sheet({"Netzteil", "Blatt"});
        printer.page().Scale(0, side_mm, side_mm, 0);
        draw(printer.page());
        printer.NewPage();
        printer.EndDoc();
    }
    report(state, path);
}

void by_toolkit(benchmark::State& state, const Drawing& draw) {
    const TemporaryFolder folder;
    const std::string path = folder.path() + "/toolkit.pdf";
    constexpr int resolution = 300;
    for ([[maybe_unused]] auto run : state) {
        QPdfWriter writer(QString::fromStdString(path));
        writer.setPageSize(QPageSize(QSizeF(side_mm, side_mm), QPageSize::Millimeter));
        writer.setPageMargins({});
        writer.setResolution(resolution);
        QPainter painter(&writer);
        PainterArea area;
        area.units_per_millimetre = resolution / 25.4;
        const double side = side_mm * area.units_per_millimetre;
        area.area = QRectF(0, 0, side, side);
        PainterTarget target(painter, area, PainterTarget::Labels::print);
        target.Scale(0, side_mm, side_mm, 0);
        draw(target);
        painter.end();
    }
    report(state, path);
}

void add(const std::string& name, const Drawing& draw) {
    benchmark::RegisterBenchmark(("own/" + name).c_str(), [draw](benchmark::State& state) {
        by_own_pages(state, draw);
    })->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("toolkit/" + name).c_str(), [draw](benchmark::State& state) {
        by_toolkit(state, draw);
    })->Unit(benchmark::kMillisecond);
}

}  // namespace
}  // namespace veldra

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    veldra::add("lines", veldra::draw_lines);
    veldra::add("circles", veldra::draw_circles);
    veldra::add("labels", veldra::draw_labels);
    veldra::add("ellipses", veldra::draw_ellipses);
    veldra::add("all", veldra::draw_all);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
