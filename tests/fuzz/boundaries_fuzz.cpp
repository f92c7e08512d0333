// The reader of boundary files and their reduction.

#include <algorithm>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "drawing/boundary_lines.h"
#include "drawing/boundary_reduction.h"
#include "fuzz_support.h"
#include "graphikdatei/line_reader.h"
#include "reference/koordtrans.h"

namespace {

using namespace veldra;

/// A segment by the texts of its points, the smaller one first.
using Segment = std::pair<std::string, std::string>;

/// What a boundary file says, by the texts of its points.
struct Chains {
    std::vector<Segment> segments;
    std::vector<std::string> headers;
    std::size_t points = 0;
    /// A point without text, or a segment that begins before there is a point, looks like the
    /// corner of the picture.
    bool from_nowhere = false;
};

enum class Runs : std::uint8_t { open, closed };

Chains read_chains(const std::string& path, Runs runs) {
    Chains chains;
    std::optional<std::string> current;
    std::optional<std::string> first;
    const auto add = [&](const std::string& from, const std::string& to) {
        chains.segments.push_back(std::minmax(from, to));
    };
    const auto end_run = [&] {
        if (runs == Runs::closed && first && *first != *current) {
            add(*current, *first);
        }
        first.reset();
    };
    LineReader reader(path);
    std::string_view line;
    while (reader.next(line)) {
        const char code = line.empty() ? ' ' : line.front();
        if (code == '@' || code == '#') {
            end_run();
            chains.headers.emplace_back(line);
        } else if (code == '0' || code == '1' || code == '2') {
            std::string text(line.substr(std::min<std::size_t>(2, line.size())));
            text.resize(text.find_last_not_of(' ') + 1);
            ++chains.points;
            chains.from_nowhere = chains.from_nowhere || text.empty() || (code == '1' && !current);
            if (code != '1') {
                end_run();
            } else if (current) {
                add(*current, text);
            }
            current = text;
            if (!first) {
                first = text;
            }
        }
    }
    end_run();
    return chains;
}

void check_reduction(const std::string& path) {
    const std::string reduced = path + "_neu";
    const ReductionResult result = reduce_boundaries(path, reduced, {});
    const Chains before = read_chains(path, Runs::closed);
    const Chains after = read_chains(reduced, Runs::open);
    fuzz::require(after.headers == before.headers, "headers stay");
    if (before.from_nowhere) {
        return;
    }
    const std::set<Segment> all(before.segments.begin(), before.segments.end());
    const std::set<Segment> left(after.segments.begin(), after.segments.end());
    fuzz::require(left == all, "each segment is kept and none is added");
    fuzz::require(left.size() == after.segments.size(), "no segment is kept twice");
    fuzz::require(result.segments == static_cast<std::int64_t>(before.segments.size()),
                  "all segments are counted");
    fuzz::require(result.dropped == result.segments - static_cast<std::int64_t>(left.size()),
                  "what is dropped is counted");
}

/// Walks over the boundaries and counts the segments that are handed over.
std::size_t visited_segments(const BoundaryLines& lines, const std::optional<BoundaryCode>& end,
                             const std::optional<TargetBox>& ground) {
    std::size_t segments = 0;
    visit_boundaries(
        lines, end, {0, 0}, ground, [&](std::size_t) { return ground; },
        [&](const auto& run) {
            fuzz::require(run.size() >= 2, "a run has two vertices at least");
            fuzz::require(run.size() <= BoundaryPiece::longest + 1, "runs are no longer than told");
            segments += run.size() - 1;
        });
    return segments;
}

void check_lines(const BoundaryLines& lines, std::size_t points) {
    fuzz::require(static_cast<std::size_t>(lines.outside) + lines.vertices.size() <= points,
                  "each vertex comes from a line");
    std::uint32_t pieces = 0;
    for (const BoundaryHeader& header : lines.headers) {
        fuzz::require(header.pieces_before >= pieces, "headers stand in order");
        pieces = header.pieces_before;
    }
    fuzz::require(pieces <= lines.pieces.size(), "headers stand among the pieces");
    for (const BoundaryPiece& piece : lines.pieces) {
        fuzz::require(piece.first <= piece.last && piece.last < lines.vertices.size(),
                      "pieces have their vertices");
    }
    const std::size_t all = visited_segments(lines, std::nullopt, std::nullopt);
    fuzz::require(all <= points, "each segment comes from a line");
    const TargetBox some{2600000, 5600000, 2700000, 5700000};
    for (const BoundaryCode end : {BoundaryCode::rbz, BoundaryCode::gem}) {
        const std::size_t to_end = visited_segments(lines, end, std::nullopt);
        fuzz::require(to_end <= all, "the end leaves out");
        fuzz::require(visited_segments(lines, end, some) <= to_end, "the view leaves out");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string path =
        fuzz::write_file("verwgrenz.dat", {reinterpret_cast<const char*>(data), size});
    check_reduction(path);
    const std::size_t points = read_chains(path, Runs::open).points;
    const ChainSetup same{{1, mapping_gauss_krueger}, 2, {1, mapping_gauss_krueger}, {}};
    const ChainSetup other{{4, mapping_utm}, 32, {1, mapping_gauss_krueger}, {}};
    for (const ChainSetup& setup : {same, other}) {
        check_lines(read_boundaries(path, setup, std::nullopt), points);
    }
    return 0;
}
