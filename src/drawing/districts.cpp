#include "drawing/districts.h"

#include "drawing/district_labels.h"
#include "drawing/layer_surface.h"
#include "reference/reference_system.h"

namespace veldra {

DistrictInputs district_inputs(const Session& session, const TargetBox& area) {
    const ObjectSelection& obj = session.obj;
    DistrictInputs inputs;
    inputs.obj_nube = obj.obj_nube;
    inputs.obj_bezu = obj.obj_bezu;
    inputs.obj_nube_meridian = obj.obj_nube_meridian;
    inputs.view = {area.xmin, area.ymin, area.xmax, area.ymax};
    inputs.chain = chain_setup(session, district_system, session.settings.numbez_datum);
    return inputs;
}

DistrictGrid build_district_grid(const DistrictInputs& inputs) {
    switch (inputs.obj_nube) {
        case districts::tk25:
        case districts::tk50:
        case districts::tk100:
            return BuildTkGrid(inputs);
        case districts::klv:
        case districts::alk:
            return BuildKmGrid(inputs);
        default:
            return {};
    }
}

const DistrictGrid& district_grid(Session& session, const TargetBox& area) {
    DistrictCache& cache = district_cache(session);
    const DistrictInputs inputs = district_inputs(session, area);
    if (cache.inputs != inputs) {
        cache.inputs.reset();
        cache.grid = build_district_grid(inputs);
        cache.inputs = inputs;
    }
    return cache.grid;
}

void DrawGrid(Session& session, const LayerFrame& frame, DrawingTarget& target,
              const TargetBox& area) {
    LayerSurface surface(frame, target);
    const std::int32_t colour = district_colour(session, frame);
    surface.pen(0, 1, colour);
    HideGridLabels(session);
    const DistrictGrid& grid = district_grid(session, area);
    if (grid.nodes() == 0) {
        return;
    }
    const auto labels = static_cast<std::size_t>(grid.nodes()) + 1;
    if (!grid.grid_zu_gross && session.lbl_nubez.size() < labels) {
        session.lbl_nubez.resize(labels);
    }
    const NodeLabels node_labels(session, frame, grid);
    visit_grid(
        grid, area,
        [&surface, &frame](const Segment& part, std::size_t, GridLine) {
            if (frame.gap) {
                visit_outside(*frame.gap, part,
                              [&surface](const Segment& free) { surface.line(free); });
            } else {
                surface.line(part);
            }
        },
        [&](std::size_t node) {
            Label& label = session.lbl_nubez[node];
            label = node_labels.label(node);
            if (frame.gap && overlap(ground_of(label, frame), *frame.gap)) {
                label.visible = false;
                label.enabled = false;
                return;
            }
            target.LabelPlaced(LabelArray::lbl_nubez, static_cast<std::int32_t>(node), label,
                               frame.district_font, colour);
        });
}

void HideGridLabels(Session& session) {
    for (Label& label : session.lbl_nubez) {
        label.visible = false;
        label.enabled = false;
    }
}

NumbezOffset FindNumbezOffset(const Session& session, std::string_view name) {
    NumbezOffset found;
    for (std::int32_t i = 1; i <= session.nuoff.count(); ++i) {
        const NubezOffsetRow& row = session.nuoff[i];
        if (row.nuoff_bez == name) {
            found = {i, row.nuoff_rechts, row.nuoff_hoch};
        }
    }
    return found;
}

}  // namespace veldra
