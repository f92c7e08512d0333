#include "boundaries.h"

#include <array>
#include <cmath>
#include <string>
#include <vector>

#include <fmt/format.h>

namespace veldra {

namespace {

constexpr std::int64_t tile_cells = 16;
constexpr std::size_t piece_size = std::size_t{1} << 20U;

/// Areas of a level: their size in cells.
struct Level {
    std::string_view code;
    char header;
    std::int64_t columns;
    std::int64_t rows;
};
constexpr std::array<Level, 7> levels{{{"LND", '@', 16, 8},
                                       {"RBZ", '@', 8, 8},
                                       {"KRS", '@', 4, 4},
                                       {"GEM", '@', 2, 4},
                                       {"SO1", '#', 2, 2},
                                       {"SO2", '#', 1, 2},
                                       {"SO3", '#', 1, 1}}};

/// Sides of cells that the outlines of a tile's areas pass, all levels together.
constexpr std::int64_t sides_of_a_tile() {
    std::int64_t sides = 0;
    for (const Level& level : levels) {
        sides += 2 * (level.columns + level.rows) *
                 (tile_cells * tile_cells / (level.columns * level.rows));
    }
    return sides;
}

struct Point {
    std::int64_t x = 0;
    std::int64_t y = 0;
};

/// A number below `limit` that depends on nothing but its arguments (SplitMix64).
std::int64_t below(std::int64_t limit, std::int64_t a, std::int64_t b, std::int64_t purpose) {
    std::uint64_t key = static_cast<std::uint64_t>(a) * 0x9e3779b97f4a7c15U ^
                        static_cast<std::uint64_t>(b) * 0xc2b2ae3d27d4eb4fU ^
                        static_cast<std::uint64_t>(purpose) * 0x165667b19e3779f9U;
    key = (key ^ key >> 30U) * 0xbf58476d1ce4e5b9U;
    key = (key ^ key >> 27U) * 0x94d049bb133111ebU;
    return static_cast<std::int64_t>((key ^ key >> 31U) % static_cast<std::uint64_t>(limit));
}

class Boundaries {
 public:
    Boundaries(const BoundarySink& sink, const BoundaryPlan& plan)
        : sink_(sink), plan_(plan), cells_(tile_cells * plan.tiles) {}

    std::int64_t write() {
        for (const Level& level : levels) {
            for (std::int64_t row = 0; row < cells_; row += level.rows) {
                for (std::int64_t column = 0; column < cells_; column += level.columns) {
                    if (vertices_ >= plan_.most_vertices) {
                        sink_(buffer_);
                        return vertices_;
                    }
                    write_area(level, column, row);
                }
            }
        }
        sink_(buffer_);
        return vertices_;
    }

 private:
    void write_area(const Level& level, std::int64_t column, std::int64_t row) {
        const bool city = level.code == "KRS" && (column / 4 + row / 4) % 5 == 3;
        buffer_ += fmt::format("{} {:06} {:02}{:02} 2004 {}\r\n", level.header, ++areas_,
                               row / level.rows + 1, column / level.columns + 1,
                               city ? "KFS" : level.code);
        const std::int64_t east = column + level.columns;
        const std::int64_t north = row + level.rows;
        begin(node(column, row));
        for (std::int64_t i = column; i < east; ++i) {
            side({i, row}, {i + 1, row}, false);
        }
        for (std::int64_t j = row; j < north; ++j) {
            side({east, j}, {east, j + 1}, false);
        }
        for (std::int64_t i = east; i > column; --i) {
            side({i - 1, north}, {i, north}, true);
        }
        for (std::int64_t j = north; j > row; --j) {
            side({column, j - 1}, {column, j}, true);
        }
        if (buffer_.size() > piece_size) {
            sink_(buffer_);
            buffer_.clear();
        }
    }

    /// A corner of cells, away from its place in the square grid.
    [[nodiscard]] Point node(std::int64_t i, std::int64_t j) const {
        const std::int64_t reach = plan_.cell * 3 / 10;
        return {
            plan_.centre_rechts + (i - cells_ / 2) * plan_.cell + below(2 * reach, i, j, 1) - reach,
            plan_.centre_hoch + (j - cells_ / 2) * plan_.cell + below(2 * reach, i, j, 2) - reach};
    }

    /// The border between two corners, which is the same in both directions.
    void side(const Point& from, const Point& to, bool backwards) {
        std::vector<Point> points{node(from.x, from.y), node(to.x, to.y)};
        const std::int64_t direction = from.x == to.x ? 3 : 4;
        for (int halving = 0; halving < plan_.halvings; ++halving) {
            std::vector<Point> finer;
            for (std::size_t i = 0; i + 1 < points.size(); ++i) {
                const Point& a = points[i];
                const Point& b = points[i + 1];
                const std::int64_t bend = below(37, from.x * 4096 + from.y,
                                                halving * 1024 + static_cast<int>(i), direction) -
                                          18;
                finer.push_back(a);
                finer.push_back({(a.x + b.x) / 2 - (b.y - a.y) * bend / 100,
                                 (a.y + b.y) / 2 + (b.x - a.x) * bend / 100});
            }
            finer.push_back(points.back());
            points.swap(finer);
        }
        for (std::size_t i = 1; i < points.size(); ++i) {
            vertex('1', points[backwards ? points.size() - 1 - i : i]);
        }
    }

    void begin(const Point& point) { vertex('2', point); }

    void vertex(char code, const Point& point) {
        ++vertices_;
        buffer_ += fmt::format("{} {}.{:02} {}.{:02}\r\n", code, point.x / 100, point.x % 100,
                               point.y / 100, point.y % 100);
    }

    const BoundarySink& sink_;
    const BoundaryPlan& plan_;
    std::int64_t cells_;
    std::int64_t areas_ = 0;
    std::int64_t vertices_ = 0;
    std::string buffer_;
};

}  // namespace

std::int64_t write_boundaries(const BoundarySink& sink, const BoundaryPlan& plan) {
    return Boundaries(sink, plan).write();
}

BoundaryPlan large_boundary_plan(std::int64_t vertices) {
    BoundaryPlan plan;
    plan.centre_rechts = 250000000;
    plan.centre_hoch = 560000000;
    plan.cell = 200000;
    plan.halvings = 3;
    const double tiles = static_cast<double>(vertices) / (sides_of_a_tile() * (1 << plan.halvings));
    plan.tiles = static_cast<int>(std::ceil(std::sqrt(tiles)));
    plan.most_vertices = vertices;
    return plan;
}

}  // namespace veldra
