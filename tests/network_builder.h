#pragma once

#include <cstdint>
#include <string>

#include "model/session.h"

namespace veldra::test {

/// Everything off: no labels, signatures, values, observations, districts, boundaries.
inline void show_nothing(Session& session) {
    ObjectSelection& obj = session.obj;
    obj.obj_pube = 0;
    obj.obj_pusi = 0;
    obj.obj_puwe = 0;
    derive_value_modes(obj);
    obj.obj_nube = 0;
    obj.obj_nbez = 0;
    obj.obj_beob = 0;
    obj.obj_verw = 0;
}

inline void show_values(Session& session, std::int16_t obj_puwe) {
    session.obj.obj_puwe = obj_puwe;
    derive_value_modes(session.obj);
}

/// Appends a row and returns it. Rows count as those of the point pass until `end_points`.
inline PointRow& add_point(Session& session, double rechts, double hoch) {
    ++session.tables_revision;
    return session.pu[session.pu.punkt_neu(rechts, hoch)];
}

inline void end_points(Session& session) {
    session.pu.close_signature_rows();
}

/// Appends an observation line and returns its row.
inline LineRow& add_line(Session& session, const LineCoordinates& ends) {
    ++session.tables_revision;
    return session.lin[session.lin.lin_suchen(ends).index];
}

}  // namespace veldra::test
