#include <nlohmann/json.hpp>

#include "batch/json_output.h"
#include "text/codepage.h"

namespace veldra::batch {

namespace {

using Json = nlohmann::ordered_json;

/// Ellipsoid and mapping are 0 until something sets them.
Json or_null(std::int32_t value) {
    return value == 0 ? Json(nullptr) : Json(value);
}

Json node_json(const DistrictGrid& grid, std::size_t n) {
    const bool named = !grid.grid_zu_gross;
    return {{"grid_rechts", grid.valid[n] ? Json(grid.grid_rechts[n]) : Json(nullptr)},
            {"grid_hoch", grid.valid[n] ? Json(grid.grid_hoch[n]) : Json(nullptr)},
            {"grid_bez", named ? to_utf8(grid.grid_bez[n]) : ""},
            {"grid_bez_ecke", named ? to_utf8(grid.grid_bez_ecke[n]) : ""}};
}

}  // namespace

std::string district_json(const ObjectSelection& obj, const DistrictGrid& grid) {
    const Json head{{"obj_bezu", obj.obj_bezu},
                    {"obj_bezu_elli", or_null(obj.obj_bezu_elli)},
                    {"obj_bezu_abbi", or_null(obj.obj_bezu_abbi)},
                    {"obj_nube_meridian", obj.obj_nube_meridian},
                    {"grid_spalten", grid.grid_spalten},
                    {"grid_zeilen", grid.grid_zeilen},
                    {"grid_zu_gross", grid.grid_zu_gross ? table_true : table_false}};
    // The nodes are written one by one: a large grid has millions.
    std::string text = head.dump();
    text.pop_back();
    text += ",\"grid\":[";
    for (std::int32_t n = 1; n <= grid.nodes(); ++n) {
        text += n == 1 ? "\n" : ",\n";
        text += node_json(grid, static_cast<std::size_t>(n)).dump();
    }
    text += "]}\n";
    return text;
}

}  // namespace veldra::batch
