#include "drawing/layer_frame.h"

#include "drawing/fonts.h"

namespace veldra {

LayerFrame screen_frame(const Session& session, TextMeasurer& measurer) {
    const Settings& settings = session.settings;
    const double unit = session.view.ansicht_masseinheit;
    LayerFrame frame;
    frame.origin_rechts = session.view.ansicht_rw_min;
    frame.origin_hoch = session.view.ansicht_hw_min;
    for (std::size_t i = 0; i < frame.punsig.size(); ++i) {
        frame.punsig[i] = static_cast<float>(static_cast<double>(settings.punsigscr[i]) * unit);
    }
    frame.punkt_klein = static_cast<float>(settings.punkt_klein * unit);
    frame.stquer = settings.Stquerscr * unit;
    frame.stkreu = settings.Stkreuscr * unit;
    frame.lenori = settings.lenoriscr * unit;
    frame.point_font = point_label_font(settings);
    frame.district_font = district_label_font(settings);
    frame.remote_font = {settings.pubfon, static_cast<double>(settings.pubgrascr), 0, 0, 0};
    frame.label_unit = unit;
    frame.measurer = &measurer;
    return frame;
}

LabelSize label_size(const LayerFrame& frame, const FaceMetrics& face, const FontSpec& font,
                     std::string_view caption) {
    const TextExtent extent = measure_text(face, font.points, caption);
    return {static_cast<float>(extent.width * frame.label_unit),
            static_cast<float>(extent.height * frame.label_unit)};
}

}  // namespace veldra
