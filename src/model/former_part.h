#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "model/session.h"

namespace veldra {

/// What the session holds of the current network part, kept while another part or another selection
/// is read. Unless that comes to its end (`replaced`), all of it comes back: a reading that fails
/// or is given up leaves the session as it was.
class FormerPart {
 public:
    enum class Points : std::uint8_t {
        moved,   ///< another part begins without any
        copied,  ///< the reading changes their values
        kept     ///< the reading leaves them alone
    };

    /// Takes the lines away, and the points as told. `obj` is the selection that comes back.
    FormerPart(Session& session, Points points, const ObjectSelection& obj);
    ~FormerPart();
    FormerPart(const FormerPart&) = delete;
    FormerPart& operator=(const FormerPart&) = delete;

    /// The new state stands; the former one goes.
    void replaced();

 private:
    void restore();
    void restore_points();

    Session& session_;
    Points points_;
    bool replaced_ = false;
    std::int32_t netz_aktuell_;
    std::int16_t plotmodus_;
    PlotSettings plot_;
    PlotSettings plot_merk_;
    std::array<Titelzeile, 4> titel_;
    ObjectSelection obj_;
    Extents extents_;
    SheetGeometry sheet_;
    LineTable lin_;
    std::vector<Label> lbl_fzbez_;
    PointTable pu_;
    RowTable<NubezOffsetRow> nuoff_;
    EpochOffsets epochen_bez_;
    std::vector<Label> lbl_pubez_;
    std::vector<Label> lbl_nubez_;
};

}  // namespace veldra
