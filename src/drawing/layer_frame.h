#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "model/session.h"
#include "model/target.h"
#include "model/text_measurer.h"

namespace veldra {

/// How a layer is to be drawn: where the origin lies and how large things are, in metres of ground.
/// The layers take every size from here, so one layer serves screen, preview and paper.
struct LayerFrame {
    double origin_rechts = 0;  ///< ground coordinates of the target's origin
    double origin_hoch = 0;

    std::array<float, 4> punsig{};  ///< signature radius by point class
    float punkt_klein = 0;          ///< radius of the dot where there are no signatures
    double stquer = 0;              ///< cross stroke of a terrestrial distance
    double stkreu = 0;              ///< cross of a GPS line
    double lenori = 0;              ///< orientation stub

    FontSpec point_font;     ///< point and epoch labels
    FontSpec district_font;  ///< numbering district labels
    FontSpec remote_font;    ///< names of remote targets along their stubs
    double label_unit = 0;   ///< metres of ground a twip of text
    TextMeasurer* measurer = nullptr;

    /// Ground that lines are clipped to; none on the screen, whose edges do it.
    std::optional<TargetBox> window;
    /// Ground beneath the legend: districts and boundaries on the picture leave it out. On paper
    /// their layers do so by themselves.
    std::optional<TargetBox> gap;
    std::int16_t width_factor = 1;  ///< multiplies the pen widths of lines
    bool grey = false;              ///< signatures, labels and districts in grey
};

/// The ground that the picture shows.
[[nodiscard]] inline TargetBox view_ground(const Viewport& view) {
    return {view.ansicht_rw_min, view.ansicht_hw_min, view.ansicht_rw_max, view.ansicht_hw_max};
}

/// The ground beneath the box of a label that was placed in a frame.
[[nodiscard]] inline TargetBox ground_of(const Label& label, const LayerFrame& frame) {
    const double left = frame.origin_rechts + static_cast<double>(label.left);
    const double top = frame.origin_hoch + static_cast<double>(label.top);
    return {left, top - static_cast<double>(label.height), left + static_cast<double>(label.width),
            top};
}

/// The frame of the picture at the current viewport: sizes are twips of the screen settings.
[[nodiscard]] LayerFrame screen_frame(const Session& session, TextMeasurer& measurer);

/// Size of a label's text, metres of ground as the controls hold them.
struct LabelSize {
    float width = 0;
    float height = 0;
};
/// `face` is that of `font`; looked up once for a whole layer.
[[nodiscard]] LabelSize label_size(const LayerFrame& frame, const FaceMetrics& face,
                                   const FontSpec& font, std::string_view caption);

}  // namespace veldra
