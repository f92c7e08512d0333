#include "drawing/boundaries.h"

#include <chrono>

#include "drawing/layer_surface.h"
#include "model/long_work.h"
#include "reference/reference_system.h"
#include "text/codepage.h"

namespace veldra {

namespace {

/// A file changed less than this ago may change again without a new time stamp.
constexpr std::chrono::seconds stamp_resolution{2};

bool is_settled(const FileStamp& stamp) {
    const std::chrono::nanoseconds now = std::chrono::system_clock::now().time_since_epoch();
    const std::chrono::nanoseconds age = now - std::chrono::nanoseconds(stamp.modified_ns);
    return std::chrono::abs(age) > stamp_resolution;
}

/// The lines that were read serve for `end` too: its header is among them, or it is not in the
/// file.
bool reaches(const BoundaryCache& cache, const std::optional<BoundaryCode>& end) {
    if (cache.lines.whole_file || cache.end == end) {
        return true;
    }
    for (const BoundaryHeader& header : cache.lines.headers) {
        if (header.code == end) {
            return true;
        }
    }
    return false;
}

void draw_run_piecewise(LayerSurface& surface, std::span<const PlanePoint> run) {
    const std::optional<TargetBox>& gap = surface.frame().gap;
    for (std::size_t i = 1; i < run.size(); ++i) {
        const Segment whole{run[i - 1].rechts, run[i - 1].hoch, run[i].rechts, run[i].hoch};
        if (const auto part = gap ? boundary_beside(*gap, whole) : whole) {
            surface.line(*part);
        }
    }
}

/// Narrows each vertex once where nothing has to be clipped.
void draw_run(LayerSurface& surface, std::span<const PlanePoint> run) {
    if (surface.frame().window || surface.frame().gap) {
        draw_run_piecewise(surface, run);
        return;
    }
    // Coordinates of a mapping are far within the range of a 32-bit float.
    const double x = surface.frame().origin_rechts;
    const double y = surface.frame().origin_hoch;
    auto from_x = static_cast<float>(run[0].rechts - x);
    auto from_y = static_cast<float>(run[0].hoch - y);
    for (const PlanePoint& vertex : run.subspan(1)) {
        const auto to_x = static_cast<float>(vertex.rechts - x);
        const auto to_y = static_cast<float>(vertex.hoch - y);
        surface.target().Line(from_x, from_y, to_x, to_y);
        from_x = to_x;
        from_y = to_y;
    }
}

}  // namespace

std::optional<Segment> boundary_beside(const TargetBox& legend, const Segment& segment) {
    const ClippedSegment beneath = ClipSegment(legend, segment);
    switch (beneath.result) {
        case clip::inside:
            return std::nullopt;
        case clip::first_end_inside:
            return Segment{beneath.segment.bx, beneath.segment.by, segment.bx, segment.by};
        case clip::second_end_inside:
            return Segment{segment.ax, segment.ay, beneath.segment.ax, beneath.segment.ay};
        default:
            return segment;
    }
}

std::string boundary_path(const Session& session) {
    return boundary_path(session, session.settings.verw_datei);
}

std::string boundary_path(const Session& session, const std::string& datei) {
    std::string path = to_utf8(datei);
    const bool relative = !path.empty() && path.front() != '/';
    const std::size_t separator = session.graphikdatei.rfind('/');
    if (relative && separator != std::string::npos && file_stamp(path) == FileStamp{}) {
        std::string beside = session.graphikdatei.substr(0, separator + 1) + path;
        if (file_stamp(beside) != FileStamp{}) {
            return beside;
        }
    }
    return path;
}

const BoundaryLines* boundary_lines(Session& session) {
    BoundaryCache& cache = boundary_cache(session);
    if (session.obj.obj_bezu <= 0) {
        return nullptr;
    }
    const Settings& settings = session.settings;
    BoundaryInputs inputs;
    inputs.path = boundary_path(session);
    inputs.stamp = file_stamp(inputs.path);
    inputs.chain =
        chain_setup(session, {settings.verw_elli, settings.verw_abbi}, settings.verw_datum);
    const std::optional<BoundaryCode> end = boundary_end(session.obj.obj_verw);
    if (cache.inputs == inputs && reaches(cache, end)) {
        return &cache.lines;
    }
    cache.inputs.reset();
    cache.lines = {};
    if (inputs.stamp == FileStamp{}) {
        return nullptr;
    }
    const bool settled = is_settled(inputs.stamp);
    expect_readings(session.work, 1);
    try {
        cache.lines = read_boundaries(inputs.path, inputs.chain, end, session.work);
    } catch (const FatalError& error) {
        throw UnreadableBoundaries(error.what());
    }
    cache.end = end;
    if (settled) {
        cache.inputs = std::move(inputs);
    }
    return &cache.lines;
}

void draw_boundary_lines(const BoundaryLines& lines, const std::optional<BoundaryCode>& end,
                         const Settings& settings, const LayerFrame& frame, DrawingTarget& target) {
    LayerSurface surface(frame, target);
    visit_boundaries(
        lines, end, {frame.origin_rechts, frame.origin_hoch}, surface.visible_ground(),
        [&](std::size_t level) {
            const std::int32_t colour = settings.grenzrgb[level];
            surface.pen(settings.grenzdrw[level], frame.grey ? GreyOf(colour) : colour);
            return surface.visible_ground();
        },
        [&surface](std::span<const PlanePoint> run) { draw_run(surface, run); });
}

void DrawBoundaries(Session& session, const LayerFrame& frame, DrawingTarget& target) {
    const BoundaryLines* lines = boundary_lines(session);
    if (lines != nullptr) {
        draw_boundary_lines(*lines, boundary_end(session.obj.obj_verw), session.settings, frame,
                            target);
    }
}

}  // namespace veldra
