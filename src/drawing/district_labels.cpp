#include "drawing/district_labels.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

#include "drawing/districts.h"
#include "drawing/geometry.h"

namespace veldra {

namespace {

/// The screen has no numbers for "nur am Rand"; the edges of sheets have them.
constexpr const char* blank_caption = "     ";

/// The caption of a district's label: behind a kilometre square of the ALK the hundreds of
/// kilometres of both axes come first.
std::string caption_of(std::int16_t obj_nube, const std::string& number) {
    if (obj_nube != districts::alk) {
        return number + " ";
    }
    const auto pair = [&number](std::size_t at) { return number.substr(at, 2); };
    return " " + pair(0) + pair(4) + pair(2) + pair(6);
}

/// The numbers of two districts on the sides of a grid line, looking along it.
struct SideNumbers {
    std::string_view left;
    std::string_view right;
};

/// Takes the four numbers around a node apart: " NW | NE ", CR LF, "  SW | SE ".
class TilesAround {
 public:
    explicit TilesAround(std::string_view text) {
        constexpr std::string_view line_end = "\r\n";
        const std::size_t end = std::min(text.find(line_end), text.size());
        const SideNumbers north = halves(text.substr(0, end));
        const SideNumbers south = halves(text.substr(std::min(end + 2, text.size())));
        north_west_ = north.left;
        north_east_ = north.right;
        south_east_ = south.right;
    }
    /// Beside the line from the node to the north.
    [[nodiscard]] SideNumbers beside_north_line() const { return {north_west_, north_east_}; }
    /// Beside the line from the node to the east.
    [[nodiscard]] SideNumbers beside_east_line() const { return {north_east_, south_east_}; }

 private:
    static std::string_view trimmed(std::string_view text) {
        const std::size_t first = text.find_first_not_of(' ');
        const std::size_t last = text.find_last_not_of(' ');
        return first == std::string_view::npos ? std::string_view()
                                               : text.substr(first, last - first + 1);
    }
    static SideNumbers halves(std::string_view line) {
        const std::size_t bar = std::min(line.find('|'), line.size());
        return {trimmed(line.substr(0, bar)), trimmed(line.substr(std::min(bar + 1, line.size())))};
    }

    std::string_view north_west_;
    std::string_view north_east_;
    std::string_view south_east_;
};

bool holds(const TargetBox& sheet, const TargetBox& box) {
    return box.xmin >= sheet.xmin && box.xmax <= sheet.xmax && box.ymin >= sheet.ymin &&
           box.ymax <= sheet.ymax;
}

/// Puts the numbers on the edges of one sheet, first come, first served.
class EdgeLabels {
 public:
    EdgeLabels(const TargetBox& sheet, const std::optional<TargetBox>& legend,
               const LayerFrame& frame)
        : sheet_(sheet),
          legend_(legend),
          frame_(frame),
          face_(frame.measurer->face_metrics(frame.district_font)) {}

    /// Looks at both ends of a clipped grid line. One that runs along an edge, or that only touches
    /// it, parts no districts there.
    void take(const Segment& line, const SideNumbers& sides) {
        const bool along_x = is_on_x_edge(line.ax) && is_on_x_edge(line.bx) &&
                             std::abs(line.bx - line.ax) < on_the_edge;
        const bool along_y = is_on_y_edge(line.ay) && is_on_y_edge(line.by) &&
                             std::abs(line.by - line.ay) < on_the_edge;
        if (along_x || along_y) {
            return;
        }
        const double dx = line.bx - line.ax;
        const double dy = line.by - line.ay;
        take_end(line.ax, line.ay, dx, dy, sides);
        take_end(line.bx, line.by, dx, dy, sides);
    }

    [[nodiscard]] std::vector<EdgeLabel> labels() && { return std::move(labels_); }

 private:
    /// Metres: a node that should lie on an edge lies this near to it.
    static constexpr double on_the_edge = 0.001;

    [[nodiscard]] bool is_on_x_edge(double x) const {
        return x - sheet_.xmin < on_the_edge || sheet_.xmax - x < on_the_edge;
    }
    [[nodiscard]] bool is_on_y_edge(double y) const {
        return y - sheet_.ymin < on_the_edge || sheet_.ymax - y < on_the_edge;
    }
    [[nodiscard]] LabelSize size(std::string_view text) const {
        return label_size(frame_, face_, frame_.district_font, text);
    }

    void take_end(double x, double y, double dx, double dy, const SideNumbers& sides) {
        if (is_on_y_edge(y)) {
            const bool northward = dy > 0;
            beside_line(x, y > (sheet_.ymin + sheet_.ymax) / 2,
                        northward ? sides.left : sides.right, northward ? sides.right : sides.left);
        } else if (is_on_x_edge(x)) {
            const bool eastward = dx > 0;
            above_and_below_line(y, x > (sheet_.xmin + sheet_.xmax) / 2,
                                 eastward ? sides.left : sides.right,
                                 eastward ? sides.right : sides.left);
        }
    }

    void beside_line(double x, bool at_top, std::string_view west, std::string_view east) {
        const std::string left = " " + std::string(west) + " ";
        const std::string right = " " + std::string(east) + " ";
        const LabelSize left_size = size(left);
        const LabelSize bar = size("|");
        const auto half_bar = static_cast<double>(bar.width) / 2;
        const auto place = [&](const std::string& caption, double from) {
            const LabelSize extent = size(caption);
            const auto height = static_cast<double>(extent.height);
            const double top = at_top ? sheet_.ymax : sheet_.ymin + height;
            return EdgeLabel{caption,
                             {from, top - height, from + static_cast<double>(extent.width), top}};
        };
        const std::array candidates{
            place(left + "|" + right, x - half_bar - static_cast<double>(left_size.width)),
            place(right, x), place(left, x - static_cast<double>(left_size.width))};
        place_first(candidates, west, east);
    }

    void above_and_below_line(double y, bool at_right, std::string_view north,
                              std::string_view south) {
        const std::string upper = " " + std::string(north) + " ";
        const std::string lower = " " + std::string(south) + " ";
        const auto line_height = static_cast<double>(size(upper).height);
        const auto place = [&](const std::string& caption, double top) {
            const LabelSize extent = size(caption);
            const auto width = static_cast<double>(extent.width);
            const double left = at_right ? sheet_.xmax - width : sheet_.xmin;
            return EdgeLabel{caption,
                             {left, top - static_cast<double>(extent.height), left + width, top}};
        };
        const std::array candidates{place(upper + "\r\n" + lower, y + line_height),
                                    place(upper, y + line_height), place(lower, y)};
        place_first(candidates, south, north);
    }

    /// Both numbers if there is room, else one alone; `second` belongs to the second of these.
    void place_first(const std::array<EdgeLabel, 3>& candidates, std::string_view last,
                     std::string_view second) {
        const bool both = is_number(last) && is_number(second);
        const std::array<bool, 3> wanted{both, is_number(second), is_number(last)};
        for (std::size_t i = 0; i < candidates.size(); ++i) {
            if (wanted[i] && is_free(candidates[i].box)) {
                labels_.push_back(candidates[i]);
                return;
            }
        }
    }

    static bool is_number(std::string_view text) {
        return text.find_first_of("0123456789") != std::string_view::npos;
    }

    [[nodiscard]] bool is_free(const TargetBox& box) const {
        return holds(sheet_, box) && !(legend_ && overlap(*legend_, box)) &&
               std::none_of(labels_.begin(), labels_.end(),
                            [&box](const EdgeLabel& label) { return overlap(label.box, box); });
    }

    const TargetBox& sheet_;
    const std::optional<TargetBox>& legend_;
    const LayerFrame& frame_;
    const FaceMetrics& face_;
    std::vector<EdgeLabel> labels_;
};

}  // namespace

std::int32_t district_colour(const Session& session, const LayerFrame& frame) {
    const std::int32_t colour = session.settings.nubcolor;
    return frame.grey ? GreyOf(colour) : colour;
}

NodeLabels::NodeLabels(const Session& session, const LayerFrame& frame, const DistrictGrid& grid)
    : session_(session),
      frame_(frame),
      grid_(grid),
      face_(frame.measurer->face_metrics(frame.district_font)) {
    for (std::int32_t i = 1; i <= session.nuoff.count(); ++i) {
        moved_[session.nuoff[i].nuoff_bez] = i;
    }
}

Label NodeLabels::label(std::size_t node) const {
    double x = grid_.grid_rechts[node];
    double y = grid_.grid_hoch[node];
    std::string caption = blank_caption;
    if (session_.obj.obj_nbez == district_numbers::at_nodes) {
        const std::string& number = grid_.grid_bez[node];
        caption = caption_of(session_.obj.obj_nube, number);
        if (const auto found = moved_.find(number); found != moved_.end()) {
            x = session_.nuoff[found->second].nuoff_rechts;
            y = session_.nuoff[found->second].nuoff_hoch;
        }
    }
    const LabelSize size = label_size(frame_, face_, frame_.district_font, caption);
    Label label;
    label.caption = std::move(caption);
    label.left = static_cast<float>(x - frame_.origin_rechts);
    label.top = static_cast<float>(static_cast<double>(size.height) + y - frame_.origin_hoch);
    label.width = size.width;
    label.height = size.height;
    label.visible = true;
    label.enabled = true;
    return label;
}

std::vector<EdgeLabel> edge_labels(const DistrictGrid& grid, const TargetBox& sheet,
                                   const std::optional<TargetBox>& legend,
                                   const LayerFrame& frame) {
    EdgeLabels labels(sheet, legend, frame);
    if (grid.grid_zu_gross) {
        return {};
    }
    visit_grid(
        grid, sheet,
        [&](const Segment& line, std::size_t node, GridLine which) {
            const TilesAround tiles(grid.grid_bez_ecke[node]);
            labels.take(line, which == GridLine::north ? tiles.beside_north_line()
                                                       : tiles.beside_east_line());
        },
        [](std::size_t) {});
    return std::move(labels).labels();
}

}  // namespace veldra
