#include "reference/reference_layers.h"

#include "drawing/geometry.h"
#include "drawing/layer_surface.h"

namespace veldra {

void DrawBoundaries(Session& session, const LayerFrame& /*frame*/, DrawingTarget& /*target*/) {
    if (session.obj.obj_bezu <= 0) {
        return;
    }
}

void DrawGrid(Session& session, const LayerFrame& frame, DrawingTarget& target,
              const TargetBox& /*area*/) {
    const std::int32_t colour = session.settings.nubcolor;
    LayerSurface(frame, target).pen(0, 1, frame.grey ? GreyOf(colour) : colour);
    HideGridLabels(session);
}

void HideGridLabels(Session& session) {
    for (Label& label : session.lbl_nubez) {
        label.visible = false;
        label.enabled = false;
    }
}

}  // namespace veldra
