#include "reference/districts.h"

#include <string>
#include <unordered_map>

#include "drawing/layer_surface.h"
#include "reference/reference_system.h"

namespace veldra {

namespace {

constexpr std::int16_t labels_at_nodes = 1;
/// The screen has no numbers for "nur am Rand"; the plot places them on its edge.
constexpr const char* blank_caption = "     ";

/// Finds stored places of labels in constant time; made for one drawing.
class OffsetIndex {
 public:
    explicit OffsetIndex(const RowTable<NubezOffsetRow>& table) : table_(table) {
        for (std::int32_t i = 1; i <= table.count(); ++i) {
            rows_[table[i].nuoff_bez] = i;
        }
    }

    [[nodiscard]] NumbezOffset find(const std::string& name) const {
        const auto found = rows_.find(name);
        if (found == rows_.end()) {
            return {};
        }
        const NubezOffsetRow& row = table_[found->second];
        return {found->second, row.nuoff_rechts, row.nuoff_hoch};
    }

 private:
    const RowTable<NubezOffsetRow>& table_;
    std::unordered_map<std::string_view, std::int32_t> rows_;
};

/// The caption of a district's label: behind a kilometre square of the ALK the hundreds of
/// kilometres of both axes come first.
std::string caption_of(std::int16_t obj_nube, const std::string& number) {
    if (obj_nube != districts::alk) {
        return number + " ";
    }
    const auto pair = [&number](std::size_t at) { return number.substr(at, 2); };
    return " " + pair(0) + pair(4) + pair(2) + pair(6);
}

/// Sets the labels of a grid's nodes.
class GridLabels {
 public:
    GridLabels(Session& session, const LayerFrame& frame, DrawingTarget& target,
               const DistrictGrid& grid)
        : session_(session),
          frame_(frame),
          target_(target),
          grid_(grid),
          offsets_(session.nuoff),
          face_(frame.measurer->face_metrics(frame.district_font)),
          colour_(district_colour(session, frame)) {
        const auto labels = static_cast<std::size_t>(grid.nodes()) + 1;
        if (!grid.grid_zu_gross && session.lbl_nubez.size() < labels) {
            session.lbl_nubez.resize(labels);
        }
    }

    static std::int32_t district_colour(const Session& session, const LayerFrame& frame) {
        const std::int32_t colour = session.settings.nubcolor;
        return frame.grey ? GreyOf(colour) : colour;
    }

    void place(std::size_t node) {
        const ObjectSelection& obj = session_.obj;
        double x = grid_.grid_rechts[node];
        double y = grid_.grid_hoch[node];
        std::string caption = blank_caption;
        if (obj.obj_nbez == labels_at_nodes) {
            caption = caption_of(obj.obj_nube, grid_.grid_bez[node]);
            const NumbezOffset stored = offsets_.find(grid_.grid_bez[node]);
            if (stored.found()) {
                x = stored.rechts;
                y = stored.hoch;
            }
        }
        const LabelSize size = label_size(frame_, face_, frame_.district_font, caption);
        Label& label = session_.lbl_nubez[node];
        label.caption = std::move(caption);
        label.left = static_cast<float>(x - frame_.origin_rechts);
        label.top = static_cast<float>(static_cast<double>(size.height) + y - frame_.origin_hoch);
        label.width = size.width;
        label.height = size.height;
        label.visible = true;
        label.enabled = true;
        target_.LabelPlaced(LabelArray::lbl_nubez, static_cast<std::int32_t>(node), label,
                            frame_.district_font, colour_);
    }

 private:
    Session& session_;
    const LayerFrame& frame_;
    DrawingTarget& target_;
    const DistrictGrid& grid_;
    OffsetIndex offsets_;
    const FaceMetrics& face_;
    std::int32_t colour_;
};

DistrictGrid build_grid(const DistrictInputs& inputs) {
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

}  // namespace

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

const DistrictGrid& district_grid(Session& session, const TargetBox& area) {
    DistrictCache& cache = session.district_cache;
    const DistrictInputs inputs = district_inputs(session, area);
    if (cache.inputs != inputs) {
        cache.inputs.reset();
        cache.grid = build_grid(inputs);
        cache.inputs = inputs;
    }
    return cache.grid;
}

void DrawGrid(Session& session, const LayerFrame& frame, DrawingTarget& target,
              const TargetBox& area) {
    LayerSurface surface(frame, target);
    surface.pen(0, 1, GridLabels::district_colour(session, frame));
    HideGridLabels(session);
    const DistrictGrid& grid = district_grid(session, area);
    if (grid.nodes() == 0) {
        return;
    }
    GridLabels labels(session, frame, target, grid);
    visit_grid(
        grid, area, [&surface](const Segment& part) { surface.line(part); },
        [&labels](std::size_t node) { labels.place(node); });
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
