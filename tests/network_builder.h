#pragma once

#include <cstdint>
#include <string>

#include "model/session.h"

namespace veldra::test {

/// Everything off: no labels, signatures, values, observations, districts, boundaries.
inline void show_nothing(Session& session) {
    ObjectSelection& obj = session.part.obj;
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
    session.part.obj.obj_puwe = obj_puwe;
    derive_value_modes(session.part.obj);
}

/// Appends a row and returns it. Rows count as those of the point pass until `end_points`.
inline PointRow& add_point(Session& session, double rechts, double hoch) {
    ++session.part.tables_revision;
    return session.part.pu[session.part.pu.punkt_neu(rechts, hoch)];
}

inline void end_points(Session& session) {
    session.part.pu.close_signature_rows();
}

/// Appends an observation line and returns its row.
inline LineRow& add_line(Session& session, const LineCoordinates& ends) {
    ++session.part.tables_revision;
    return session.part.lin[session.part.lin.lin_suchen(ends).index];
}

}  // namespace veldra::test
