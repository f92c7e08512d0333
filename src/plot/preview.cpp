#include "plot/preview.h"

#include <algorithm>
#include <cmath>

#include "drawing/boundaries.h"
#include "drawing/district_labels.h"
#include "drawing/districts.h"
#include "drawing/fonts.h"
#include "drawing/layer_surface.h"
#include "drawing/pen.h"
#include "drawing/pipeline.h"
#include "drawing/point_layers.h"
#include "model/paper_text.h"
#include "plot/application_printer.h"
#include "plot/fitted_font.h"
#include "plot/plot_frame.h"
#include "plot/plot_layers.h"
#include "plot/printer_adapters.h"
#include "plot/sheet_outlines.h"
#include "text/length_units.h"

namespace veldra {

namespace {

using pen::black;
using pen::dotted;
using pen::solid;

/// Points on the screen in which a text has the size that it has on paper in a point.
double screen_points_per_paper_point(const Session& session) {
    return ground_of_paper(session, millimetres_per_twip) / session.view.ansicht_masseinheit;
}

/// The font in the size that it has on paper, as seen in the view. `fitted` is 0 if no printer has
/// told it.
FontSpec seen_font(const Session& session, TextMeasurer& measurer, FontSpec font,
                   std::int16_t fitted, float digit_height) {
    const double paper = fitted > 0 ? fitted : estimated_points(measurer, font, digit_height);
    font.points = paper * screen_points_per_paper_point(session);
    return font;
}

/// Fits a font to the printer; 0 without one that works.
std::int16_t fitted_points(Session& session, const Desk& desk, const FontSpec& font,
                           float digit_height) {
    if (desk.printer == nullptr || session.printer.drucker_ok != table_true) {
        return 0;
    }
    try {
        return static_cast<std::int16_t>(
            fitted_font(session, *desk.printer, font, digit_height).points);
    } catch (const PrinterError&) {
        mark_printer_unavailable(session);
        return 0;
    }
}

/// The printer may fail between its check and the question for its paper; there is a size for
/// that, too.
void divide_into_sheets(Session& session, const Desk& desk) {
    CheckPrinter(session, desk.printer);
    try {
        ComputeSheetDivision(session, desk);
    } catch (const PrinterError&) {
        mark_printer_unavailable(session);
        ComputeSheetDivision(session, desk);
    }
}

/// A label from ground coordinates.
Label label_at(const LayerFrame& frame, std::string caption, const TargetBox& ground) {
    Label label;
    label.caption = std::move(caption);
    label.left = static_cast<float>(ground.xmin - frame.origin_rechts);
    label.top = static_cast<float>(ground.ymax - frame.origin_hoch);
    label.width = static_cast<float>(ground.xmax - ground.xmin);
    label.height = static_cast<float>(ground.ymax - ground.ymin);
    label.visible = true;
    return label;
}

/// The lines of the legend in their fonts, one below the other as on paper.
void place_legend_texts(Session& session, const LayerFrame& frame, const Desk& desk) {
    constexpr double left_space = 3;  // millimetres
    constexpr double top_space = 2;
    const double x = session.legende.legende_rw_min + ground_of_paper(session, left_space);
    double y = session.legende.legende_hw_max - ground_of_paper(session, top_space);
    session.legende_texte.clear();
    PaperTextOnDesk text(session, desk.measurer, desk.printer);
    const LegendSize legend = ComputeLegendSize(session, text);
    for (const LegendLine& line : legend.lines) {
        const float size = line.zeile->getTitelSize();
        const FontSpec unsized = title_font(*line.zeile);
        FontSpec font = seen_font(session, *frame.measurer, unsized,
                                  fitted_points(session, desk, unsized, size), size);
        font.points *= legend.shrink;
        const LabelSize extent =
            label_size(frame, frame.measurer->face_metrics(font), font, line.text);
        session.legende_texte.push_back({label_at(frame, line.text,
                                                  {x, y - static_cast<double>(extent.height),
                                                   x + static_cast<double>(extent.width), y}),
                                         font});
        y -= ground_of_paper(session,
                             line_height_per_digit * static_cast<double>(size) * legend.shrink);
    }
}

/// The ground beneath the legend in its size on paper, if it has a place.
std::optional<TargetBox> measured_legend(Session& session, const Desk& desk) {
    PaperTextOnDesk text(session, desk.measurer, desk.printer);
    ComputeLegendSize(session, text);
    return legend_ground(session);
}

void place_legend(Session& session, const LayerFrame& frame, const Desk& desk,
                  const std::optional<TargetBox>& ground) {
    session.window.lbl_legende_visible = ground.has_value();
    session.legende_texte.clear();
    if (ground) {
        session.lbl_legende = label_at(frame, "", *ground);
        place_legend_texts(session, frame, desk);
    }
}

/// Numbers on the edges of the sheets in view, unless they are too small to be seen.
void place_edge_numbers(Session& session, const LayerFrame& frame, DrawingTarget* target) {
    constexpr double smallest_height = 2;  // pixels
    if (session.obj.obj_nube == 0 || session.obj.obj_nbez != district_numbers::on_edges) {
        return;
    }
    HideGridLabels(session);
    if (frame.district_font.points * twips_per_point / twips_per_pixel < smallest_height) {
        return;
    }
    const std::optional<TargetBox> legend = legend_ground(session);
    const std::int32_t colour = district_colour(session, frame);
    const SheetRange sheets = sheets_in(session, view_ground(session.view));
    std::size_t index = 0;
    for (std::int64_t column = sheets.first_column; column <= sheets.last_column; ++column) {
        for (std::int64_t row = sheets.first_row; row <= sheets.last_row; ++row) {
            const TargetBox sheet = sheet_ground(session, column, row);
            const DistrictGrid grid = build_district_grid(district_inputs(session, sheet));
            for (EdgeLabel& edge : edge_labels(grid, sheet, legend, frame)) {
                ++index;
                if (session.lbl_nubez.size() <= index) {
                    session.lbl_nubez.resize(index + 1);
                }
                // They cannot be dragged, so they stay disabled.
                Label& label = session.lbl_nubez[index];
                label = label_at(frame, std::move(edge.caption), edge.box);
                if (target != nullptr) {
                    target->LabelPlaced(LabelArray::lbl_nubez, static_cast<std::int32_t>(index),
                                        label, frame.district_font, colour);
                }
            }
        }
    }
}

/// Two strokes of 5 mm from a corner into the sheet.
void draw_mark(LayerSurface& surface, double x, double y, double to_x, double to_y) {
    surface.line(x, y, x, to_y);
    surface.line(x, y, to_x, y);
}

void draw_corner_marks(const Session& session, LayerSurface& surface) {
    constexpr double smallest_mark = 3;  // pixels
    const double length = ground_of_paper(session, 5);
    if (length < smallest_mark * twips_per_pixel * session.view.ansicht_masseinheit) {
        return;
    }
    const SheetRange sheets = sheets_in(session, view_ground(session.view));
    for (std::int64_t column = sheets.first_column; column <= sheets.last_column; ++column) {
        for (std::int64_t row = sheets.first_row; row <= sheets.last_row; ++row) {
            const TargetBox net = sheet_ground(session, column, row);
            draw_mark(surface, net.xmin, net.ymax, net.xmin + length, net.ymax - length);
            draw_mark(surface, net.xmin, net.ymin, net.xmin + length, net.ymin + length);
            draw_mark(surface, net.xmax, net.ymax, net.xmax - length, net.ymax - length);
            draw_mark(surface, net.xmax, net.ymin, net.xmax - length, net.ymin + length);
        }
    }
}

void draw_outlines(const Session& session, LayerSurface& surface) {
    constexpr double smallest_side = 3;  // pixels
    const TargetBox sheet = sheet_ground(session, 1, 1);
    const double pixel = twips_per_pixel * session.view.ansicht_masseinheit;
    const double side = std::min(sheet.xmax - sheet.xmin, sheet.ymax - sheet.ymin);
    if (side >= smallest_side * pixel) {
        for (const Segment& line : sheet_outlines(session)) {
            surface.line(line);
        }
        return;
    }
    const TargetBox all = plot_ground(session);
    surface.line(all.xmin, all.ymin, all.xmax, all.ymin);
    surface.line(all.xmax, all.ymin, all.xmax, all.ymax);
    surface.line(all.xmax, all.ymax, all.xmin, all.ymax);
    surface.line(all.xmin, all.ymax, all.xmin, all.ymin);
}

void draw_legend_box(const Session& session, DrawingTarget& target) {
    const Label& box = session.lbl_legende;
    const float right = box.left + box.width;
    const float bottom = box.top - box.height;
    target.Line(box.left, box.top, right, box.top);
    target.Line(right, box.top, right, bottom);
    target.Line(right, bottom, box.left, bottom);
    target.Line(box.left, bottom, box.left, box.top);
}

/// The frame of the preview with the fonts that the printer of the desk tells.
LayerFrame fitted_frame(Session& session, const Desk& desk) {
    return preview_frame(session, fitted_label_fonts(session, desk), desk.measurer);
}

}  // namespace

double estimated_points(TextMeasurer& measurer, const FontSpec& font, float digit_height) {
    const FaceMetrics& face = measurer.face_metrics(font);
    const double line = static_cast<double>(face.ascent) + static_cast<double>(face.descent);
    return static_cast<double>(digit_height) * line_height_per_digit /
           (line * twips_per_point * millimetres_per_twip);
}

PaperFonts fitted_label_fonts(Session& session, const Desk& desk) {
    const Settings& settings = session.settings;
    return {fitted_points(session, desk, point_label_font(settings), settings.pubsizplo),
            fitted_points(session, desk, district_label_font(settings), settings.nubsizplo)};
}

LayerFrame preview_frame(const Session& session, const PaperFonts& paper, TextMeasurer& measurer) {
    const Settings& settings = session.settings;
    LayerFrame frame = paper_frame(session, paper, measurer);
    frame.origin_rechts = session.view.ansicht_rw_min;
    frame.origin_hoch = session.view.ansicht_hw_min;
    frame.point_font =
        seen_font(session, measurer, frame.point_font, paper.point_labels, settings.pubsizplo);
    frame.district_font = seen_font(session, measurer, frame.district_font, paper.district_labels,
                                    settings.nubsizplo);
    frame.remote_font =
        seen_font(session, measurer, frame.remote_font, paper.point_labels, settings.pubsizplo);
    frame.label_unit = session.view.ansicht_masseinheit;
    frame.window.reset();
    frame.width_factor = 1;
    frame.grey = false;
    return frame;
}

bool PreviewAll(Session& session, DrawingTarget& target, const Desk& desk) {
    begin_picture(session, desk.ui);
    divide_into_sheets(session, desk);
    const LayerFrame frame = fitted_frame(session, desk);
    session.lbl_pubez_font = frame.point_font;
    session.lbl_nubez_font = frame.district_font;
    const std::optional<TargetBox> legend = measured_legend(session, desk);
    LayerFrame beneath = frame;
    beneath.gap = legend;
    const bool whole = draw_or_give_up(session, target, [&](DrawingTarget& watched) {
        if (session.obj.obj_verw != 0) {
            draw_boundaries_or_report(session, desk.ui,
                                      [&] { DrawBoundaries(session, beneath, watched); });
        }
        DrawGrid(session, beneath, watched, view_ground(session.view));
        draw_network(session, frame, watched);
        DrawPointLabels(session, frame, watched);
        place_legend(session, frame, desk, legend);
        place_edge_numbers(session, frame, &watched);
    });
    end_picture(session, desk.ui, PictureMode::preview);
    return whole;
}

bool draw_picture(Session& session, DrawingTarget& target, const Desk& desk) {
    if (session.plotmodus == 1) {
        return PreviewAll(session, target, desk);
    }
    return DrawAll(session, target, desk.measurer, desk.ui);
}

void draw_sheet_frames(const Session& session, DrawingTarget& target) {
    if (session.plotmodus != 1 || session.window.sheets_moving) {
        return;
    }
    LayerFrame frame;
    frame.origin_rechts = session.view.ansicht_rw_min;
    frame.origin_hoch = session.view.ansicht_hw_min;
    LayerSurface surface(frame, target);
    surface.pen(dotted, 1, black);
    draw_outlines(session, surface);
    surface.style(solid);
    draw_corner_marks(session, surface);
    if (session.window.lbl_legende_visible) {
        draw_legend_box(session, target);
    }
}

bool legend_cuts_layers(const Session& session) {
    const bool has_lines = session.obj.obj_nube != 0 || session.obj.obj_verw != 0;
    return session.plotmodus == 1 && has_lines && legend_ground(session).has_value();
}

void place_sheet_texts(Session& session, const Desk& desk) {
    session.window.sheets_moving = false;
    const LayerFrame frame = fitted_frame(session, desk);
    place_legend(session, frame, desk, measured_legend(session, desk));
    place_edge_numbers(session, frame, nullptr);
}

}  // namespace veldra
