#include "plot/plot_layers.h"

#include <array>
#include <cmath>
#include <span>
#include <string_view>

#include "drawing/boundaries.h"
#include "drawing/district_labels.h"
#include "drawing/districts.h"
#include "drawing/geometry.h"
#include "drawing/layer_surface.h"
#include "plot/paper_frame.h"
#include "plot/sheet_outlines.h"

namespace veldra {

namespace {

/// Fills the segments of boundaries as rectangles.
class BoundaryStrips {
 public:
    BoundaryStrips(const Session& session, const LayerFrame& frame, PageTarget& page,
                   const PagePoint& page_corner)
        : settings_(session.settings),
          frame_(frame),
          page_(page),
          corner_(page_corner),
          sheet_(frame.window.value_or(sheet_window(session))),
          legend_(legend_ground(session)),
          scale_(session.plot.plot_massstab * 1000),
          pixel_(page.pixel_size()) {}

    void set_pen(std::size_t level) {
        const std::int32_t colour = settings_.grenzrgb[level];
        colour_ = frame_.grey ? GreyOf(colour) : colour;
        width_ = settings_.grenzdrw[level] * pixel_ * frame_.width_factor / scale_;
    }

    [[nodiscard]] const TargetBox& sheet() const { return sheet_; }

    void segment(const PlanePoint& from, const PlanePoint& to) {
        const ClippedSegment on_sheet =
            ClipSegment(sheet_, {from.rechts, from.hoch, to.rechts, to.hoch});
        if (on_sheet.result == clip::outside) {
            return;
        }
        std::optional<Segment> part = on_sheet.segment;
        if (legend_) {
            part = boundary_beside(*legend_, *part);
        }
        if (part) {
            fill(*part);
        }
    }

 private:
    void fill(const Segment& part) {
        const double dx = part.bx - part.ax;
        const double dy = part.by - part.ay;
        const double length = std::sqrt(dx * dx + dy * dy);
        if (length == 0) {
            return;
        }
        const double hx = -width_ / 2 * dy / length;
        const double hy = width_ / 2 * dx / length;
        const std::array corners{
            on_page(part.ax + hx, part.ay + hy), on_page(part.bx + hx, part.by + hy),
            on_page(part.bx - hx, part.by - hy), on_page(part.ax - hx, part.ay - hy)};
        page_.Polygon(corners, colour_);
    }

    [[nodiscard]] PagePoint on_page(double x, double y) const {
        return {(x - corner_.x) * scale_, (corner_.y - y) * scale_};
    }

    const Settings& settings_;
    const LayerFrame& frame_;
    PageTarget& page_;
    PagePoint corner_;
    TargetBox sheet_;
    std::optional<TargetBox> legend_;
    double scale_;  ///< millimetres of paper a metre of ground
    double pixel_;  ///< millimetres
    double width_ = 0;
    std::int32_t colour_ = 0;
};

/// The districts on one sheet.
class PlottedDistricts {
 public:
    PlottedDistricts(Session& session, const LayerFrame& frame, PageTarget& page)
        : session_(session),
          frame_(frame),
          surface_(frame, page),
          page_(page),
          sheet_(frame.window.value_or(sheet_window(session))),
          legend_(legend_ground(session)),
          colour_(district_colour(session, frame)) {}

    [[nodiscard]] DistrictInputs inputs() const { return district_inputs(session_, sheet_); }

    void draw(const DistrictGrid& grid) {
        surface_.pen(0, 1, colour_);
        if (grid.nodes() == 0) {
            return;
        }
        visit_grid(
            grid, sheet_, [this](const Segment& part, std::size_t, GridLine) { line(part); },
            [](std::size_t) {});
        if (grid.grid_zu_gross) {
            return;
        }
        if (session_.obj.obj_nbez == district_numbers::at_nodes) {
            number_nodes(grid);
        } else if (session_.obj.obj_nbez == district_numbers::on_edges) {
            number_edges(grid);
        }
    }

 private:
    void line(const Segment& part) {
        if (legend_) {
            visit_outside(*legend_, part, [this](const Segment& free) { surface_.line(free); });
        } else {
            surface_.line(part);
        }
    }

    /// A number belongs to the sheet that its node lies on; where it runs on to other sheets, these
    /// show the rest.
    void number_nodes(const DistrictGrid& grid) {
        const NodeLabels labels(session_, frame_, grid);
        const TargetBox plot = plot_ground(session_);
        for (std::int32_t column = 1; column <= grid.grid_spalten; ++column) {
            for (std::int32_t row = 1; row <= grid.grid_zeilen; ++row) {
                const std::size_t node = grid.node(column, row);
                const double x = grid.grid_rechts[node];
                const double y = grid.grid_hoch[node];
                if (!grid.valid[node] || grid.grid_bez[node].empty() || !lies_on(plot, x, y)) {
                    continue;
                }
                const Label label = labels.label(node);
                const TargetBox box = ground_of(label, frame_);
                if (overlap(box, sheet_) && !(legend_ && overlap(box, *legend_))) {
                    page_.LabelPlaced(LabelArray::lbl_nubez, static_cast<std::int32_t>(node), label,
                                      frame_.district_font, colour_);
                }
            }
        }
    }

    void number_edges(const DistrictGrid& grid) {
        for (const EdgeLabel& label : edge_labels(grid, sheet_, legend_, frame_)) {
            print(label);
        }
    }

    void print(const EdgeLabel& label) {
        const std::size_t end = label.caption.find("\r\n");
        const std::string_view caption = label.caption;
        const double x = label.box.xmin - frame_.origin_rechts;
        const double y = label.box.ymax - frame_.origin_hoch;
        page_.Print(caption.substr(0, end), x, y, frame_.district_font, colour_);
        if (end != std::string_view::npos) {
            const double line_height = (label.box.ymax - label.box.ymin) / 2;
            page_.Print(caption.substr(end + 2), x, y - line_height, frame_.district_font, colour_);
        }
    }

    static bool lies_on(const TargetBox& ground, double x, double y) {
        return x >= ground.xmin && x <= ground.xmax && y >= ground.ymin && y <= ground.ymax;
    }

    Session& session_;
    const LayerFrame& frame_;
    LayerSurface surface_;
    PageTarget& page_;
    TargetBox sheet_;
    std::optional<TargetBox> legend_;
    std::int32_t colour_;
};

}  // namespace

std::optional<TargetBox> legend_ground(const Session& session) {
    const std::int16_t place = session.plot.plot_legendenlage;
    if (place < 1 || place > 4) {
        return std::nullopt;
    }
    const LegendBox& legende = session.legende;
    return TargetBox{legende.legende_rw_min, legende.legende_hw_min, legende.legende_rw_max,
                     legende.legende_hw_max};
}

void PlotBoundaries(Session& session, const LayerFrame& frame, PageTarget& page, double page_left,
                    double page_top) {
    const BoundaryLines* lines = boundary_lines(session);
    if (lines == nullptr) {
        return;
    }
    BoundaryStrips strips(session, frame, page, {page_left, page_top});
    const std::optional<TargetBox> ground = strips.sheet();
    visit_boundaries(
        *lines, boundary_end(session.obj.obj_verw), {frame.origin_rechts, frame.origin_hoch},
        ground,
        [&](std::size_t level) {
            strips.set_pen(level);
            return ground;
        },
        [&strips](std::span<const PlanePoint> run) {
            for (std::size_t i = 1; i < run.size(); ++i) {
                strips.segment(run[i - 1], run[i]);
            }
        });
}

void PlotDistrictSheets(Session& session, const LayerFrame& frame, PageTarget& page) {
    PlottedDistricts districts(session, frame, page);
    districts.draw(BuildTkGrid(districts.inputs()));
}

void PlotDistrictSquares(Session& session, const LayerFrame& frame, PageTarget& page) {
    PlottedDistricts districts(session, frame, page);
    districts.draw(BuildKmGrid(districts.inputs()));
}

void PlotDistricts(Session& session, const LayerFrame& frame, PageTarget& page) {
    switch (session.obj.obj_nube) {
        case districts::tk25:
        case districts::tk50:
        case districts::tk100:
            PlotDistrictSheets(session, frame, page);
            break;
        case districts::klv:
        case districts::alk:
            PlotDistrictSquares(session, frame, page);
            break;
        default:
            break;
    }
}

}  // namespace veldra
