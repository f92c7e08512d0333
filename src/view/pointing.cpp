#include "view/pointing.h"

#include <cmath>
#include <cstdlib>
#include <string_view>

#include "drawing/districts.h"
#include "drawing/value_scale.h"
#include "text/codepage.h"
#include "text/numbers.h"

namespace veldra {

namespace {

constexpr std::string_view line_end = "\r\n";

/// Lines of the info label.
class InfoText {
 public:
    void line(std::string_view text) {
        if (!text_.empty()) {
            text_ += line_end;
        }
        text_ += text;
    }

    void name(std::string_view title, const PointRow& row) {
        if (!row.pu_bez.empty()) {
            line(std::string(title) + to_utf8(row.pu_bez));
        }
    }

    void value(std::string_view title, double amount, std::string_view unit = " cm") {
        line(std::string(title) + zahl_text(amount, "######0.0", " ") + std::string(unit));
    }

    [[nodiscard]] const std::string& text() const { return text_; }

 private:
    std::string text_;
};

/// A vector's two components and its length, each with the letter of its kind.
void write_vector(InfoText& info, char letter, double rechts, double hoch) {
    const std::string kind(1, letter);
    info.value(kind + "y =    ", rechts);
    info.value(kind + "x =    ", hoch);
    info.value(kind + "s =    ", std::sqrt(rechts * rechts + hoch * hoch));
}

/// The row that the values of a later epoch are counted from; row 0 has none.
const PointRow& epoch_before(const Session& session, std::int32_t i) {
    return session.pu[session.pu[i].pu_epoche > 0 ? i - 1 : 0];
}

std::string change_text(const Session& session, std::int32_t i) {
    const PointRow& row = session.pu[i];
    const PointRow& before = epoch_before(session, i);
    const bool position = LabelAnchor::is_position_change(row);
    InfoText info;
    info.name("Epoche: ", row);
    info.line((position ? row.pu_wert_lage : row.pu_wert_hoehe) > 0 ? "Anschlusspunkt"
                                                                    : "Neupunkt");
    if (position) {
        write_vector(info, 'D', row.pu_wert_rechts - before.pu_wert_rechts,
                     row.pu_wert_hoch - before.pu_wert_hoch);
    } else {
        info.value("DHöhe = ", row.pu_wert_dh - before.pu_wert_dh);
    }
    return info.text();
}

const char* residual_kind(std::int16_t value) {
    return value > 0 ? "Stützpunkt" : "Umformungspunkt";
}

std::string value_text(const PointRow& row) {
    const int height = std::abs(row.pu_wert_hoehe);
    InfoText info;
    info.name("PBZ: ", row);
    switch (std::abs(row.pu_wert_lage)) {
        case 2:
            info.line(residual_kind(row.pu_wert_lage));
            write_vector(info, 'R', row.pu_wert_rechts, row.pu_wert_hoch);
            if (height == 5) {
                info.value("RHöhe = ", row.pu_wert_dh);
            }
            break;
        case 3:
            info.value("a = ", row.pu_wert_rechts);
            info.value("b = ", row.pu_wert_hoch);
            info.value("t = ", row.pu_wert_dh, " gon");
            break;
        case 0:
            if (height == 5) {
                info.line(residual_kind(row.pu_wert_hoehe));
                info.value("RHöhe = ", row.pu_wert_dh);
            } else if (height == 6) {
                info.value("mHöhe = ", row.pu_wert_dh);
            }
            break;
        default:
            break;
    }
    return info.text();
}

}  // namespace

WorldPoint label_anchor(const Session& session, std::int32_t i) {
    const PointRow& row = session.pu[i];
    const AnchorOffset offset = LabelAnchor(session).offset(row);
    return {row.pu_rechts + offset.rechts, row.pu_hoch + offset.hoch};
}

std::string point_info(const Session& session, std::int32_t i) {
    const PointRow& row = session.pu[i];
    if (LabelAnchor::is_position_change(row) || LabelAnchor::is_height_change(row)) {
        return change_text(session, i);
    }
    return value_text(row);
}

PicturePoint place_point_info(const Session& session, std::int32_t i, float width, float height) {
    const Viewport& view = session.view;
    PicturePoint corner = to_picture(view, label_anchor(session, i));
    const auto right = static_cast<double>(corner.x) + static_cast<double>(width);
    if (right + view.ansicht_rw_min >= view.ansicht_rw_max) {
        corner.x -= width;
    }
    const auto bottom = static_cast<double>(corner.y) - static_cast<double>(height);
    if (bottom + view.ansicht_hw_min < view.ansicht_hw_min) {
        corner.y += height;
    }
    return corner;
}

bool is_node_label(const Session& session, std::int32_t i) {
    constexpr std::int16_t on_the_edge = 2;
    const DistrictGrid& grid = district_cache(session).grid;
    const bool on_sheets = session.plotmodus == 1 && session.obj.obj_nbez == on_the_edge;
    return !on_sheets && i >= 1 && static_cast<std::size_t>(i) < grid.grid_bez.size() &&
           !grid.grid_bez[static_cast<std::size_t>(i)].empty();
}

std::string district_info(const Session& session, std::int32_t i) {
    if (!is_node_label(session, i)) {
        return {};
    }
    return to_utf8(district_cache(session).grid.grid_bez_ecke[static_cast<std::size_t>(i)]);
}

PicturePoint place_district_info(const Session& session, std::int32_t i, float width,
                                 float height) {
    const DistrictGrid& grid = district_cache(session).grid;
    const auto node = static_cast<std::size_t>(i);
    return to_picture(session.view, {grid.grid_rechts[node] - static_cast<double>(width) / 2,
                                     grid.grid_hoch[node] + static_cast<double>(height) / 2});
}

}  // namespace veldra
