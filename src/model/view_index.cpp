#include "model/view_index.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace veldra {

namespace {

constexpr float no_number = std::numeric_limits<float>::quiet_NaN();
constexpr double float_max = static_cast<double>(std::numeric_limits<float>::max());

float narrow(double value) {
    return static_cast<float>(std::clamp(value, -float_max, float_max));
}

/// The smaller or larger of two, or no number if one is none.
float joined_min(float a, float b) {
    return a < b || std::isnan(a) ? a : b;
}
float joined_max(float a, float b) {
    return a > b || std::isnan(a) ? a : b;
}

/// Largest value of a row, centimetres.
double value_reach(const PointRow& row) {
    double reach = 0;
    if (std::abs(row.pu_wert_lage) == 3) {
        reach = std::max(std::abs(row.pu_wert_rechts), std::abs(row.pu_wert_hoch));
    } else if (row.pu_wert_lage != 0) {
        reach = std::abs(row.pu_wert_rechts) + std::abs(row.pu_wert_hoch);
    }
    return row.pu_wert_hoehe != 0 ? std::max(reach, std::abs(row.pu_wert_dh)) : reach;
}

/// The row goes on where the row before ends, at the same point.
bool continues(const PointRow& row, const PointRow& before) {
    return before.pu_epoche >= 0 && before.pu_wert_lage == row.pu_wert_lage &&
           before.pu_wert_hoehe == row.pu_wert_hoehe && before.pu_rechts == row.pu_rechts &&
           before.pu_hoch == row.pu_hoch;
}

}  // namespace

float ViewIndex::narrowed_x(double rechts) const {
    return narrow(rechts - origin_x_);
}
float ViewIndex::narrowed_y(double hoch) const {
    return narrow(hoch - origin_y_);
}

ViewIndex::Box ViewIndex::narrowed(const TargetBox& box) const {
    return {narrowed_x(box.xmin), narrowed_y(box.ymin), narrowed_x(box.xmax), narrowed_y(box.ymax)};
}

TargetBox ViewIndex::relative(const TargetBox& box, double margin) const {
    constexpr double float_step = 1.2e-7;
    margin += static_cast<double>(largest_coordinate_) * float_step + margin * float_step;
    return {box.xmin - origin_x_ - margin, box.ymin - origin_y_ - margin,
            box.xmax - origin_x_ + margin, box.ymax - origin_y_ + margin};
}

void ViewIndex::refresh(const PointTable& points, const LineTable& lines, std::uint64_t revision) {
    const bool same_counts =
        static_cast<std::int64_t>(point_boxes_.size()) == std::int64_t{points.count()} + 1 &&
        static_cast<std::int64_t>(line_boxes_.size()) == std::int64_t{lines.count()} + 1;
    if (revision_ == revision && same_counts) {
        return;
    }
    *this = ViewIndex();
    if (points.count() > 0) {
        origin_x_ = points[1].pu_rechts;
        origin_y_ = points[1].pu_hoch;
    } else if (lines.count() > 0) {
        const LineCoordinates ends = lines[1].lin_schluessel.coordinates();
        origin_x_ = ends.x1;
        origin_y_ = ends.y1;
    }
    build_lines(lines);
    build_points(points);
    revision_ = revision;
}

void ViewIndex::build_lines(const LineTable& lines) {
    const std::int32_t count = lines.count();
    line_boxes_.resize(static_cast<std::size_t>(count) + 1);
    for (std::int32_t row = 1; row <= count; ++row) {
        const LineRow& line = lines[row];
        const LineCoordinates ends = line.lin_schluessel.coordinates();
        const Box box = narrowed({std::min(ends.x1, ends.x2), std::min(ends.y1, ends.y2),
                                  std::max(ends.x1, ends.x2), std::max(ends.y1, ends.y2)});
        line_boxes_[static_cast<std::size_t>(row)] = box;
        if ((row - 1) % block_rows == 0) {
            line_blocks_.push_back(box);
        } else {
            Box& block = line_blocks_.back();
            block = {std::min(block.xmin, box.xmin), std::min(block.ymin, box.ymin),
                     std::max(block.xmax, box.xmax), std::max(block.ymax, box.ymax)};
        }
        if (line.lin_typ_seite == 10) {
            orientations_.push_back(row);
            longest_remote_name_ = std::max(longest_remote_name_, line.lin_fernziel.view().size());
        }
        has_negative_types_ = has_negative_types_ || line.lin_typ_hin < 0 ||
                              line.lin_typ_seite < 0 || line.lin_typ_rueck < 0;
    }
}

ViewIndex::PointBox ViewIndex::point_box(const PointTable& points, std::int32_t row) {
    const PointRow& point = points[row];
    has_ellipses_ = has_ellipses_ || point.pu_wert_lage == -3;
    largest_epoch_ = std::max(largest_epoch_, point.pu_epoche);
    double reach = value_reach(point);
    bool everywhere =
        point.pu_bez.size() > usual_label_length ||
        std::abs(point.pu_bez_rechts) > usual_label_offset ||
        (point.pu_bez_rechts != 0 && std::abs(point.pu_bez_hoch) > usual_label_offset);
    if (!everywhere) {
        longest_usual_label_ = std::max(longest_usual_label_, point.pu_bez.size());
    }
    if (point.pu_epoche > 0) {
        const PointRow& before = points[row - 1];
        everywhere = everywhere || row == 1 || !continues(point, before);
        reach = std::max(reach, value_reach(before));
    }
    const float narrow_reach = std::nextafter(narrow(reach), std::numeric_limits<float>::max());
    if (everywhere) {
        return {no_number, no_number, narrow_reach};
    }
    const PointBox box{narrowed_x(point.pu_rechts), narrowed_y(point.pu_hoch), narrow_reach};
    largest_coordinate_ = std::max({largest_coordinate_, std::abs(box.x), std::abs(box.y)});
    return box;
}

void ViewIndex::build_points(const PointTable& points) {
    const std::int32_t count = points.count();
    point_boxes_.resize(static_cast<std::size_t>(count) + 1);
    for (std::int32_t row = 1; row <= count; ++row) {
        const PointBox box = point_box(points, row);
        point_boxes_[static_cast<std::size_t>(row)] = box;
        if ((row - 1) % block_rows == 0) {
            point_blocks_.push_back({{box.x, box.y, box.x, box.y}, box.reach});
        } else {
            PointBlock& block = point_blocks_.back();
            block.box = {joined_min(block.box.xmin, box.x), joined_min(block.box.ymin, box.y),
                         joined_max(block.box.xmax, box.x), joined_max(block.box.ymax, box.y)};
            block.reach = std::max(block.reach, box.reach);
        }
    }
}

void ViewIndex::label_moved(std::int32_t row) {
    if (row < 1 || static_cast<std::size_t>(row) >= point_boxes_.size()) {
        return;
    }
    PointBox& box = point_boxes_[static_cast<std::size_t>(row)];
    box.x = no_number;
    box.y = no_number;
    point_blocks_[static_cast<std::size_t>((row - 1) / block_rows)].box = {no_number, no_number,
                                                                           no_number, no_number};
}

}  // namespace veldra
