#include "drawing/boundary_lines.h"

#include "graphikdatei/line_reader.h"

namespace veldra {

namespace {

void widen(TargetBox& box, const PlanePoint& point) {
    box.xmin = std::min(box.xmin, point.rechts);
    box.xmax = std::max(box.xmax, point.rechts);
    box.ymin = std::min(box.ymin, point.hoch);
    box.ymax = std::max(box.ymax, point.hoch);
}

}  // namespace

void BoundaryCollector::header(BoundaryCode code) {
    lines_.headers.push_back({code, static_cast<std::uint32_t>(lines_.pieces.size())});
    piece_open_ = false;
}

void BoundaryCollector::add_vertex(const PlanePoint& vertex) {
    lines_.vertices.push_back(vertex);
    position_ = Position::vertex;
}

void BoundaryCollector::first_vertex(const std::optional<PlanePoint>& vertex) {
    piece_open_ = false;
    if (vertex) {
        add_vertex(*vertex);
    } else {
        position_ = Position::nowhere;
        ++lines_.outside;
    }
}

void BoundaryCollector::next_vertex(const std::optional<PlanePoint>& vertex) {
    const Position before = position_;
    if (!vertex || before == Position::nowhere) {
        first_vertex(vertex);
        return;
    }
    add_vertex(*vertex);
    const auto index = static_cast<std::uint32_t>(lines_.vertices.size() - 1);
    if (before == Position::corner) {
        lines_.pieces.push_back({index, index, true, {}});
    } else {
        add_segment();
    }
}

/// The segment to the vertex added last, at the end of the open piece or in a new one.
void BoundaryCollector::add_segment() {
    const auto index = static_cast<std::uint32_t>(lines_.vertices.size() - 1);
    if (!piece_open_ || index - lines_.pieces.back().first > BoundaryPiece::longest) {
        const PlanePoint& start = lines_.vertices[index - 1];
        lines_.pieces.push_back(
            {index - 1, index, false, {start.rechts, start.hoch, start.rechts, start.hoch}});
        piece_open_ = true;
    }
    BoundaryPiece& piece = lines_.pieces.back();
    piece.last = index;
    widen(piece.box, lines_.vertices[index]);
}

BoundaryLines read_boundaries(const std::string& path, const ChainSetup& setup,
                              const std::optional<BoundaryCode>& end, LongWork* work) {
    constexpr std::uint64_t usual_line = 24;
    constexpr std::uint64_t most_expected = 4'000'000;
    const CoordinateChain chain(setup);
    BoundaryLines lines;
    lines.vertices.reserve(std::min(file_stamp(path).size / usual_line, most_expected));
    BoundaryCollector collector(lines);
    LineReader reader(path, work);
    std::string_view text;
    while (reader.next(text)) {
        const BoundaryRecord record = read_boundary_record(text);
        switch (record.kind) {
            case BoundaryRecord::Kind::header:
                collector.header(record.code);
                if (record.code == end) {
                    return lines;
                }
                break;
            case BoundaryRecord::Kind::first_vertex:
                collector.first_vertex(chain.to_document(PlanePoint{record.rechts, record.hoch}));
                break;
            case BoundaryRecord::Kind::next_vertex:
                collector.next_vertex(chain.to_document(PlanePoint{record.rechts, record.hoch}));
                break;
            case BoundaryRecord::Kind::none:
                break;
        }
    }
    lines.whole_file = true;
    return lines;
}

}  // namespace veldra
