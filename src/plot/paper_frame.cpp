#include "plot/paper_frame.h"

#include "drawing/fonts.h"
#include "plot/printer.h"
#include "text/length_units.h"

namespace veldra {

namespace {

FontSpec sized(FontSpec font, std::int16_t points) {
    font.points = points;
    return font;
}

}  // namespace

double ground_of_paper(const Session& session, double millimetres) {
    return millimetres / session.plot.plot_massstab / 1000;
}

TargetBox sheet_window(const Session& session) {
    const SheetWindow& blatt = session.blatt;
    return {blatt.blatt_rw_min, blatt.blatt_hw_min, blatt.blatt_rw_max, blatt.blatt_hw_max};
}

LayerFrame paper_frame(const Session& session, const PaperFonts& fonts, TextMeasurer& measurer) {
    const Settings& settings = session.settings;
    const auto ground = [&session](double millimetres) {
        return ground_of_paper(session, millimetres);
    };
    LayerFrame frame;
    frame.origin_rechts = session.blatt.blatt_rw_min;
    frame.origin_hoch = session.blatt.blatt_hw_min;
    for (std::size_t i = 0; i < frame.punsig.size(); ++i) {
        frame.punsig[i] = static_cast<float>(ground(static_cast<double>(settings.punsigplo[i])));
    }
    frame.punkt_klein = static_cast<float>(ground(settings.punkt_klein_plot));
    frame.stquer = ground(settings.Stquerplo);
    frame.stkreu = ground(settings.Stkreuplo);
    frame.lenori = ground(settings.lenoriplo);
    frame.point_font = sized(point_label_font(settings), fonts.point_labels);
    frame.district_font = sized(district_label_font(settings), fonts.district_labels);
    frame.remote_font = {settings.pubfon, static_cast<double>(fonts.point_labels), 0, 0, 0};
    frame.label_unit = ground(millimetres_per_twip);
    frame.measurer = &measurer;
    frame.window = sheet_window(session);
    frame.width_factor = settings.faktorStrich;
    frame.grey = session.printer.drucker_farbe != print_colour;
    return frame;
}

}  // namespace veldra
