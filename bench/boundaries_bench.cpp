// Boundaries of a million vertices: first drawing, redraws and reduction, beside bare loops over
// the same file in the same run.

#include <QImage>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>

#include <benchmark/benchmark.h>

#include "drawing/boundaries.h"
#include "drawing/boundary_reduction.h"
#include "grenzgen/boundaries.h"
#include "os/files.h"
#include "reference/koordtrans.h"
#include "reference/reference_system.h"
#include "windows/qt/qt_text_measurer.h"
#include "windows/qt/raster_target.h"

namespace veldra {
namespace {

/// Path of a boundary file with about this many vertices, with an old time stamp; written once.
const std::string& boundary_file(std::int64_t vertices) {
    static const TemporaryFolder folder;
    static std::map<std::int64_t, std::string> files;
    std::string& path = files[vertices];
    if (path.empty()) {
        path = folder.path() + "/grenzen" + std::to_string(vertices) + ".dat";
        {
            std::ofstream out(path, std::ios::binary);
            write_boundaries(
                [&out](std::string_view bytes) {
                    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
                },
                large_boundary_plan(vertices));
        }
        std::filesystem::last_write_time(
            path, std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
    }
    return path;
}

/// A document in UTM zone 32 on GRS 80 that looks at the whole of the boundaries or a tenth of
/// their width in the middle.
void look(Session& session, double share) {
    constexpr double centre_rechts = 32287000;
    constexpr double centre_hoch = 5603000;
    constexpr double width = 230000;
    session.obj.obj_bezu = 2;
    session.obj.obj_bezu_elli = 4;
    session.obj.obj_bezu_abbi = 2;
    session.obj.obj_verw = 7;
    const double w = width * share;
    session.view = {centre_rechts - w / 2, centre_hoch - w * 5 / 16, centre_rechts + w / 2,
                    centre_hoch + w * 5 / 16, w / (1600 * 15)};
    session.extents = {
        centre_rechts - w, centre_hoch - w, centre_rechts + w, centre_hoch + w, 0, 0};
}

/// A picture of 1600 x 1000 pixels.
struct Picture {
    QImage image{1600, 1000, QImage::Format_RGB32};
    QtTextMeasurer measurer;

    RasterTarget target(const Session& session) {
        const Viewport& view = session.view;
        return {image, picture_mapping(image, view.ansicht_rw_max - view.ansicht_rw_min,
                                       view.ansicht_hw_max - view.ansicht_hw_min, 1.0)};
    }
};

void draw(Session& session, Picture& picture) {
    RasterTarget target = picture.target(session);
    DrawBoundaries(session, screen_frame(session, picture.measurer), target);
}

/// The limit of reading: vertices taken from the mapped bytes, kept as they stand.
std::vector<PlanePoint> bare_read(const std::string& path) {
    const std::string bytes = read_whole_file(path);
    std::vector<PlanePoint> vertices;
    const char* at = bytes.data();
    const char* const end = at + bytes.size();
    while (at < end) {
        const auto* stop =
            static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
        if (*at == '1' || *at == '2') {
            PlanePoint point;
            const auto rechts = std::from_chars(at + 2, stop, point.rechts);
            std::from_chars(rechts.ptr + 1, stop, point.hoch);
            vertices.push_back(point);
        }
        at = stop + 1;
    }
    return vertices;
}

/// The limit of the transformation: the library's two steps and the datum row, nothing kept.
std::vector<PlanePoint> bare_transformation(const std::vector<PlanePoint>& vertices) {
    Koordtrans library;
    std::int32_t status = 0;
    library.DEFSYSTEM(1, 4, 2, status);
    library.DEFSYSTEM(2, 1, 1, status);
    std::vector<PlanePoint> results;
    results.reserve(vertices.size());
    for (const PlanePoint& vertex : vertices) {
        GeographicPoint place;
        library.GKGGEG(2, vertex.rechts, vertex.hoch, 0, place.latitude, place.longitude, -1,
                       status);
        place = DatumShift(dhdn_to_etrs89_row, place);
        PlanePoint result;
        std::int32_t zone = 32;
        library.GEGGKO(1, place.latitude, place.longitude, zone, result.rechts, result.hoch, 3,
                       status);
        results.push_back(result);
    }
    return results;
}

/// A line ready for the target, in its pen.
struct ReadyLine {
    float x1, y1, x2, y2;
    std::int16_t width;
    std::int32_t colour;
};

/// The lines that touch the picture, as the layer hands them over.
std::vector<ReadyLine> ready_lines(Session& session) {
    std::vector<ReadyLine> lines;
    const Viewport& view = session.view;
    std::size_t pen = 1;
    visit_boundaries(
        *boundary_lines(session), std::nullopt, {},
        TargetBox{view.ansicht_rw_min, view.ansicht_hw_min, view.ansicht_rw_max,
                  view.ansicht_hw_max},
        [&](std::size_t level) {
            pen = level;
            return std::optional(TargetBox{view.ansicht_rw_min, view.ansicht_hw_min,
                                           view.ansicht_rw_max, view.ansicht_hw_max});
        },
        [&](std::span<const PlanePoint> run) {
            for (std::size_t i = 1; i < run.size(); ++i) {
                lines.push_back({static_cast<float>(run[i - 1].rechts - view.ansicht_rw_min),
                                 static_cast<float>(run[i - 1].hoch - view.ansicht_hw_min),
                                 static_cast<float>(run[i].rechts - view.ansicht_rw_min),
                                 static_cast<float>(run[i].hoch - view.ansicht_hw_min),
                                 session.settings.grenzdrw[pen], session.settings.grenzrgb[pen]});
            }
        });
    return lines;
}

void bare_reading(benchmark::State& state) {
    const std::string& path = boundary_file(state.range(0));
    for (auto _ : state) {
        benchmark::DoNotOptimize(bare_read(path));
    }
}

void bare_library(benchmark::State& state) {
    const std::vector<PlanePoint> vertices = bare_read(boundary_file(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(bare_transformation(vertices));
    }
}

/// Lines that touch the view, handed to the picture one after another.
void bare_lines(benchmark::State& state, double share) {
    Session session;
    look(session, share);
    session.settings.verw_datei = boundary_file(state.range(0));
    Picture picture;
    const std::vector<ReadyLine> lines = ready_lines(session);
    for (auto _ : state) {
        RasterTarget target = picture.target(session);
        DrawingTarget& surface = target;
        std::int16_t width = 0;
        for (const ReadyLine& line : lines) {
            if (line.width != width) {
                width = line.width;
                surface.DrawWidth(width);
                surface.ForeColor(line.colour);
            }
            surface.Line(line.x1, line.y1, line.x2, line.y2);
        }
    }
    state.counters["lines"] = static_cast<double>(lines.size());
}

void first_draw(benchmark::State& state) {
    Picture picture;
    for (auto _ : state) {
        Session session;
        look(session, 1);
        session.settings.verw_datei = boundary_file(state.range(0));
        draw(session, picture);
    }
}

void redraw(benchmark::State& state, double share) {
    Session session;
    session.settings.verw_datei = boundary_file(state.range(0));
    Picture picture;
    look(session, share);
    draw(session, picture);
    for (auto _ : state) {
        draw(session, picture);
    }
}

void reduction(benchmark::State& state) {
    const TemporaryFolder folder;
    for (auto _ : state) {
        reduce_boundaries(boundary_file(state.range(0)), folder.path() + "/neu.dat", {});
    }
}

void sizes(benchmark::internal::Benchmark* bench) {
    bench->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(bare_reading)->Name("limit: read")->Apply(sizes);
BENCHMARK(bare_library)->Name("limit: library transformation")->Apply(sizes);
BENCHMARK_CAPTURE(bare_lines, whole, 1.0)->Name("limit: lines, whole")->Apply(sizes);
BENCHMARK(first_draw)->Name("first draw")->Apply(sizes);
BENCHMARK_CAPTURE(redraw, whole, 1.0)->Name("redraw, whole")->Apply(sizes);
BENCHMARK_CAPTURE(bare_lines, tenth, 0.1)->Name("limit: lines, tenth of the width")->Apply(sizes);
BENCHMARK_CAPTURE(redraw, tenth, 0.1)->Name("redraw, tenth of the width")->Apply(sizes);
BENCHMARK(reduction)->Name("reduction")->Apply(sizes);

}  // namespace
}  // namespace veldra

BENCHMARK_MAIN();
