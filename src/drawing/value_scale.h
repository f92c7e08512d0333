#pragma once

#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "model/session.h"

namespace veldra {

/// Metres of ground for a centimetre of a value, by its slot 1 to 6: values are drawn at the
/// slot's own scale on a map of the part's plot scale.
[[nodiscard]] inline double value_scale(const Session& session, int slot) {
    return session.vektor_massstab[static_cast<std::size_t>(slot)] / session.plot.plot_massstab /
           100;
}

/// Metres of ground by which the height value of an epoch stands east of its point: a millimetre
/// of the map for each epoch.
[[nodiscard]] inline double epoch_shift(const Session& session, std::int16_t epoche) {
    return epoche / session.plot.plot_massstab / 1000;
}

/// Offset of a label's anchor from its point, metres of ground.
struct AnchorOffset {
    double rechts = 0;
    double hoch = 0;
};

/// Finds the anchor of a point row's label: the tip of a position change, the top of a height
/// change, else the point itself. Holds the scales, so one object serves a whole table.
class LabelAnchor {
 public:
    explicit LabelAnchor(const Session& session)
        : lage_(value_scale(session, 1)), hoehe_(value_scale(session, 4)), session_(session) {}

    static bool is_position_change(const PointRow& row) { return std::abs(row.pu_wert_lage) == 1; }
    static bool is_height_change(const PointRow& row) { return std::abs(row.pu_wert_hoehe) == 4; }

    [[nodiscard]] AnchorOffset offset(const PointRow& row) const {
        if (is_position_change(row)) {
            return {row.pu_wert_rechts * lage_, row.pu_wert_hoch * lage_};
        }
        if (is_height_change(row)) {
            return {epoch_shift(session_, row.pu_epoche), row.pu_wert_dh * hoehe_};
        }
        return {};
    }

 private:
    double lage_;
    double hoehe_;
    const Session& session_;
};

}  // namespace veldra
