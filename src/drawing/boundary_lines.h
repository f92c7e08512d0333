#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "drawing/boundary_records.h"
#include "model/target.h"
#include "os/files.h"
#include "reference/coordinate_chain.h"

namespace veldra {

class LongWork;

/// A run of up to `longest` segments between vertices that follow one another.
struct BoundaryPiece {
    static constexpr std::uint32_t longest = 32;

    std::uint32_t first = 0;  ///< vertices
    std::uint32_t last = 0;
    /// The line to the vertex `last` begins in the lower left corner of the target instead.
    bool from_corner = false;
    TargetBox box;  ///< around its vertices, metres of ground
};

/// An object header and the number of pieces before it.
struct BoundaryHeader {
    BoundaryCode code = BoundaryCode::other;
    std::uint32_t pieces_before = 0;
};

/// The polylines of a boundary file in the document's system: 16 bytes a vertex and less than 2
/// bytes more for the pieces of long polylines.
struct BoundaryLines {
    std::vector<PlanePoint> vertices;
    std::vector<BoundaryPiece> pieces;
    std::vector<BoundaryHeader> headers;
    bool whole_file = false;   ///< no header ended the reading
    std::int64_t outside = 0;  ///< vertices outside the domain of a mapping, drawn nowhere
};

/// Puts polylines together from the vertices of a file. A vertex outside of the domain interrupts
/// its polyline.
class BoundaryCollector {
 public:
    explicit BoundaryCollector(BoundaryLines& lines) : lines_(lines) {}

    void header(BoundaryCode code);
    void first_vertex(const std::optional<PlanePoint>& vertex);
    void next_vertex(const std::optional<PlanePoint>& vertex);

 private:
    enum class Position : std::uint8_t { corner, vertex, nowhere };

    void add_vertex(const PlanePoint& vertex);
    void add_segment();

    BoundaryLines& lines_;
    Position position_ = Position::corner;
    bool piece_open_ = false;
};

/// Reads a boundary file up to the first header of the code `end` and transforms its vertices.
/// Throws FatalError when the file cannot be read. `work` hears of the reading and may end it.
[[nodiscard]] BoundaryLines read_boundaries(const std::string& path, const ChainSetup& setup,
                                            const std::optional<BoundaryCode>& end,
                                            LongWork* work = nullptr);

/// Walks over the boundaries up to the first header of the code `end`, in the order of the file:
/// `pen(level)` at each header that has a pen, which gives the ground that shows in that pen (none:
/// everything is wanted), `run(vertices)` for each unbroken run of up to `BoundaryPiece::longest`
/// segments that can touch that ground. A segment that begins in the corner of the target begins at
/// `corner`.
template <typename Pen, typename Run>
void visit_boundaries(const BoundaryLines& lines, const std::optional<BoundaryCode>& end,
                      const PlanePoint& corner, const std::optional<TargetBox>& ground, Pen&& pen,
                      Run&& run) {
    constexpr double far = std::numeric_limits<double>::infinity();
    constexpr TargetBox everywhere{-far, -far, far, far};
    TargetBox shown = ground.value_or(everywhere);
    const auto outside = [&shown](double xmin, double ymin, double xmax, double ymax) {
        return xmin > shown.xmax || xmax < shown.xmin || ymin > shown.ymax || ymax < shown.ymin;
    };
    const auto visit_piece = [&](const BoundaryPiece& piece) {
        const TargetBox& box = piece.box;
        const PlanePoint* from = &lines.vertices[piece.first];
        const PlanePoint* const last = &lines.vertices[piece.last];
        if (piece.from_corner) {
            const std::array<PlanePoint, 2> segment{corner, *last};
            run(std::span<const PlanePoint>(segment));
            return;
        }
        if (outside(box.xmin, box.ymin, box.xmax, box.ymax)) {
            return;
        }
        if (box.xmin >= shown.xmin && box.xmax <= shown.xmax && box.ymin >= shown.ymin &&
            box.ymax <= shown.ymax) {
            run(std::span(from, last + 1));
            return;
        }
        const auto segment_outside = [&outside](const PlanePoint& a, const PlanePoint& b) {
            return outside(std::min(a.rechts, b.rechts), std::min(a.hoch, b.hoch),
                           std::max(a.rechts, b.rechts), std::max(a.hoch, b.hoch));
        };
        while (from < last) {
            const PlanePoint* to = from;
            while (to < last && !segment_outside(to[0], to[1])) {
                ++to;
            }
            if (to > from) {
                run(std::span(from, to + 1));
            }
            from = to + 1;
        }
    };
    std::size_t next = 0;
    std::size_t level_set = 0;
    for (std::size_t h = 0; h <= lines.headers.size(); ++h) {
        const bool last = h == lines.headers.size();
        const std::size_t stop = last ? lines.pieces.size() : lines.headers[h].pieces_before;
        for (; next < stop; ++next) {
            visit_piece(lines.pieces[next]);
        }
        if (last || lines.headers[h].code == end) {
            return;
        }
        const std::size_t level = boundary_level(lines.headers[h].code);
        if (level > 0 && (!ground || level != level_set)) {
            const std::optional<TargetBox> of_pen = pen(level);
            shown = of_pen.value_or(everywhere);
            level_set = level;
        }
    }
}

/// What the polylines of a boundary file depend on.
struct BoundaryInputs {
    std::string path;
    FileStamp stamp;
    ChainSetup chain;

    bool operator==(const BoundaryInputs&) const = default;
};

/// The boundaries drawn last, kept while nothing that they depend on changes.
struct BoundaryCache {
    std::optional<BoundaryInputs> inputs;
    std::optional<BoundaryCode> end;  ///< where reading had to stop
    BoundaryLines lines;
    std::string reported;  ///< the failure that the user knows of
};

}  // namespace veldra
