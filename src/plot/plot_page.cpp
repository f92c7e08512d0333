#include "plot/plot_page.h"

#include "drawing/pipeline.h"
#include "drawing/point_layers.h"
#include "plot/plot_layers.h"

namespace veldra {

namespace {

/// Maps the page to metres of ground from the sheet's lower left corner.
void scale_to_ground(const Session& session, PageTarget& page) {
    const PageGround ground = page_ground(session);
    const auto local = [](double ground_coordinate, double origin) {
        return static_cast<double>(static_cast<float>(ground_coordinate - origin));
    };
    const SheetWindow& blatt = session.blatt;
    page.Scale(local(ground.left, blatt.blatt_rw_min), local(ground.top, blatt.blatt_hw_min),
               local(ground.right, blatt.blatt_rw_min), local(ground.bottom, blatt.blatt_hw_min));
}

void draw_layers(Session& session, const LayerFrame& frame, PageTarget& page) {
    page.begin_layer(PageLayer::districts);
    PlotDistricts(session, frame, page);
    page.begin_layer(PageLayer::observations);
    draw_observations(session, frame, page);
    page.begin_layer(PageLayer::signatures);
    draw_signatures(session, frame, page);
    page.begin_layer(PageLayer::values);
    draw_values(session, frame, page);
    page.begin_layer(PageLayer::labels);
    DrawPointLabels(session, frame, page);
}

}  // namespace

void set_sheet_window(Session& session, const SheetPlace& place) {
    const PlotSettings& plot = session.part.plot;
    const SheetGeometry& sheet = session.part.sheet;
    const double s = plot.plot_massstab;
    session.blatt.blatt_rw_min =
        plot.plot_null_rechts + (place.column - 1) * sheet.papier_breite / s;
    session.blatt.blatt_rw_max = plot.plot_null_rechts + place.column * sheet.papier_breite / s;
    session.blatt.blatt_hw_min = plot.plot_null_hoch + (place.row - 1) * sheet.papier_hoehe / s;
    session.blatt.blatt_hw_max = plot.plot_null_hoch + place.row * sheet.papier_hoehe / s;
}

PageGround page_ground(const Session& session) {
    const double s = session.part.plot.plot_massstab;
    const SheetWindow& blatt = session.blatt;
    const SheetGeometry& sheet = session.part.sheet;
    return {blatt.blatt_rw_min - sheet.rand_links / s, blatt.blatt_hw_max + sheet.rand_oben / s,
            blatt.blatt_rw_max + sheet.rand_rechts / s, blatt.blatt_hw_min - sheet.rand_unten / s};
}

void PlotPage(Session& session, Printer& printer, UserInterface& ui, const PartOnPaper& part,
              const SheetPlace& place) {
    PageTarget& page = printer.page();
    set_sheet_window(session, place);
    page.scale_millimetres();
    page.begin_layer(PageLayer::frame);
    PlotFrame(session, printer, part.legend, place);
    const LayerFrame frame = paper_frame(session, part.fonts, printer.measurer());
    page.begin_layer(PageLayer::boundaries);
    if (session.part.obj.obj_verw != 0) {
        const PageGround ground = page_ground(session);
        draw_boundaries_or_report(
            session, ui, [&] { PlotBoundaries(session, frame, page, ground.left, ground.top); });
    }
    scale_to_ground(session, page);
    draw_layers(session, frame, page);
}

}  // namespace veldra
