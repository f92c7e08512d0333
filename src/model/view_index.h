#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "model/tables.h"
#include "model/target.h"

namespace veldra {

/// Finds the rows of the observation and point tables that can touch a rectangle, in the order of
/// the rows. Built in one linear run over the tables, and again when they have been rebuilt.
///
/// A row has a box of 32-bit floats relative to the first coordinate. Narrowing keeps the order of
/// numbers, so two ranges that overlap still do so when narrowed: no row is ever lost. 256 rows
/// share a block box, so that files in spatial order pass over whole blocks; for others the scan
/// of 16 bytes a row is still far below what drawing costs.
class ViewIndex {
 public:
    /// Brings the index into line with the tables. `revision` tells their rebuilds apart.
    void refresh(const PointTable& points, const LineTable& lines, std::uint64_t revision);

    /// The label of a point row has been moved by the user: the row is visited whatever the view
    /// until the next rebuild.
    void label_moved(std::int32_t row);

    /// Calls `visit(row)` for each row of `lines` that can touch `box` (ground coordinates) widened
    /// by `margin` metres; for every row without a box. The index must be in line with the table.
    template <typename Visit>
    void visit_lines(const LineTable& lines, const std::optional<TargetBox>& box, double margin,
                     Visit&& visit) const;

    /// What a layer draws around a point row.
    struct PointMargin {
        double fixed = 0;           ///< metres on all sides
        double per_centimetre = 0;  ///< metres for each centimetre of the row's values
    };
    /// Calls `visit(row)` for each row of `points` that can touch `box` when it reaches as far as
    /// `margin` tells; for every row without a box.
    template <typename Visit>
    void visit_points(const PointTable& points, const std::optional<TargetBox>& box,
                      const PointMargin& margin, Visit&& visit) const;

    /// Rows that the visits have left behind since begin_counting, visited or not: how far a
    /// drawing is.
    [[nodiscard]] std::int64_t rows_passed() const { return rows_passed_; }
    void begin_counting() { rows_passed_ = 0; }

    /// Rows of orientation directions, in their order.
    [[nodiscard]] const std::vector<std::int32_t>& orientations() const { return orientations_; }
    [[nodiscard]] std::size_t longest_remote_name() const { return longest_remote_name_; }
    /// Some line has a type below 0, so its pen comes from the row before.
    [[nodiscard]] bool has_negative_types() const { return has_negative_types_; }
    [[nodiscard]] bool has_ellipses() const { return has_ellipses_; }
    [[nodiscard]] std::int16_t largest_epoch() const { return largest_epoch_; }

    /// Labels of up to this many bytes and of up to this offset (percent of their height) count in
    /// a layer's margin; rows with other labels are visited whatever the view.
    static constexpr std::size_t usual_label_length = 40;
    static constexpr double usual_label_offset = 400;
    /// Longest label among the usual ones.
    [[nodiscard]] std::size_t longest_usual_label() const { return longest_usual_label_; }

 private:
    static constexpr std::int32_t block_rows = 256;

    struct Box {
        float xmin;
        float ymin;
        float xmax;
        float ymax;
    };
    /// `reach` is the largest value of the row in centimetres. A row that must always be visited
    /// has no numbers for coordinates: comparisons with them never say "outside".
    struct PointBox {
        float x;
        float y;
        float reach;
    };
    struct PointBlock {
        Box box;
        float reach;
    };

    [[nodiscard]] Box narrowed(const TargetBox& box) const;
    [[nodiscard]] float narrowed_x(double rechts) const;
    [[nodiscard]] float narrowed_y(double hoch) const;
    // All four comparisons are made without a branch: in a file without spatial order a branch
    // would be guessed wrong as often as not.
    static bool touches(const Box& a, const Box& b) {
        return static_cast<bool>(
            static_cast<int>(!(a.xmin > b.xmax)) & static_cast<int>(!(a.xmax < b.xmin)) &
            static_cast<int>(!(a.ymin > b.ymax)) & static_cast<int>(!(a.ymax < b.ymin)));
    }
    /// `reach` is added on all sides of `a`, which is a box or a point.
    static bool touches(const TargetBox& a, double reach, const TargetBox& b) {
        return static_cast<bool>(static_cast<int>(!(a.xmin - reach > b.xmax)) &
                                 static_cast<int>(!(a.xmax + reach < b.xmin)) &
                                 static_cast<int>(!(a.ymin - reach > b.ymax)) &
                                 static_cast<int>(!(a.ymax + reach < b.ymin)));
    }
    static bool touches(const PointBox& point, const TargetBox& box, double per_centimetre) {
        const auto x = static_cast<double>(point.x);
        const auto y = static_cast<double>(point.y);
        return touches(TargetBox{x, y, x, y}, static_cast<double>(point.reach) * per_centimetre,
                       box);
    }
    static bool touches(const PointBlock& block, const TargetBox& box, double per_centimetre) {
        return touches(
            TargetBox{static_cast<double>(block.box.xmin), static_cast<double>(block.box.ymin),
                      static_cast<double>(block.box.xmax), static_cast<double>(block.box.ymax)},
            static_cast<double>(block.reach) * per_centimetre, box);
    }

    /// Rows found, kept until there are enough to fetch them from memory ahead of their visit.
    template <typename Table, typename Visit>
    class Hits {
     public:
        Hits(const Table& table, Visit& visit) : table_(table), visit_(visit) {}

        /// Room for a block must be left: see flush_if_full.
        void add_if(bool hit, std::int32_t row) {
            rows_[count_] = row;
            count_ += static_cast<std::size_t>(hit);
        }
        void flush_if_full() {
            if (count_ + block_rows >= rows_.size()) {
                flush();
            }
        }
        void flush() {
            constexpr std::size_t ahead = 8;
            for (std::size_t k = 0; k < count_ && k < ahead; ++k) {
                prefetch(rows_[k]);
            }
            for (std::size_t k = 0; k < count_; ++k) {
                if (k + ahead < count_) {
                    prefetch(rows_[k + ahead]);
                }
                visit_(rows_[k]);
            }
            count_ = 0;
        }

     private:
        void prefetch(std::int32_t row) const {
            constexpr std::size_t cache_line = 64;
            const auto* bytes = reinterpret_cast<const char*>(&table_[row]);
            for (std::size_t at = 0; at < sizeof(table_[row]); at += cache_line) {
                __builtin_prefetch(bytes + at);
            }
        }

        const Table& table_;
        Visit& visit_;
        std::array<std::int32_t, 2048> rows_;
        std::size_t count_ = 0;
    };

    /// Visits the rows 1 to `count` of `table` whose block and then whose row touches.
    template <typename Table, typename BlockTouches, typename RowTouches, typename Visit>
    void visit_touching(const Table& table, std::int32_t count, BlockTouches block_touches,
                        RowTouches row_touches, Visit& visit) const {
        Hits<Table, Visit> hits(table, visit);
        for (std::int32_t first = 1; first <= count; first += block_rows) {
            rows_passed_ += block_rows;
            if (!block_touches(static_cast<std::size_t>(first / block_rows))) {
                continue;
            }
            const std::int32_t end = first + block_rows <= count ? first + block_rows : count + 1;
            for (std::int32_t row = first; row < end; ++row) {
                hits.add_if(row_touches(static_cast<std::size_t>(row)), row);
            }
            hits.flush_if_full();
        }
        hits.flush();
    }

    /// The box relative to the origin of the index, widened by a margin and by what narrowing can
    /// move a coordinate.
    [[nodiscard]] TargetBox relative(const TargetBox& box, double margin) const;

    void build_lines(const LineTable& lines);
    void build_points(const PointTable& points);
    [[nodiscard]] PointBox point_box(const PointTable& points, std::int32_t row);

    mutable std::int64_t rows_passed_ = 0;
    std::optional<std::uint64_t> revision_;
    double origin_x_ = 0;
    double origin_y_ = 0;
    float largest_coordinate_ = 0;
    std::vector<Box> line_boxes_;  ///< element 0 unused
    std::vector<Box> line_blocks_;
    std::vector<PointBox> point_boxes_;  ///< element 0 unused
    std::vector<PointBlock> point_blocks_;
    std::vector<std::int32_t> orientations_;
    std::size_t longest_remote_name_ = 0;
    std::size_t longest_usual_label_ = 0;
    std::int16_t largest_epoch_ = 0;
    bool has_negative_types_ = false;
    bool has_ellipses_ = false;
};

template <typename Visit>
void ViewIndex::visit_lines(const LineTable& lines, const std::optional<TargetBox>& box,
                            double margin, Visit&& visit) const {
    const auto count = static_cast<std::int32_t>(line_boxes_.size()) - 1;
    if (!box) {
        for (std::int32_t row = 1; row <= count; ++row) {
            ++rows_passed_;
            visit(row);
        }
        return;
    }
    const Box query =
        narrowed({box->xmin - margin, box->ymin - margin, box->xmax + margin, box->ymax + margin});
    visit_touching(
        lines, count, [&](std::size_t block) { return touches(line_blocks_[block], query); },
        [&](std::size_t row) { return touches(line_boxes_[row], query); }, visit);
}

template <typename Visit>
void ViewIndex::visit_points(const PointTable& points, const std::optional<TargetBox>& box,
                             const PointMargin& margin, Visit&& visit) const {
    const auto count = static_cast<std::int32_t>(point_boxes_.size()) - 1;
    if (!box) {
        for (std::int32_t row = 1; row <= count; ++row) {
            ++rows_passed_;
            visit(row);
        }
        return;
    }
    const TargetBox query = relative(*box, margin.fixed);
    const double per_centimetre = margin.per_centimetre;
    visit_touching(
        points, count,
        [&](std::size_t block) { return touches(point_blocks_[block], query, per_centimetre); },
        [&](std::size_t row) { return touches(point_boxes_[row], query, per_centimetre); }, visit);
}

}  // namespace veldra
