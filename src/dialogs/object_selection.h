#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "commands/lifecycle.h"
#include "model/session.h"

namespace veldra {

// What the dialog frmObjekte shows and allows, without its window. Texts are UTF-8.

/// Reference systems that `obj_bezu` can name: 0 local, 1 DHDN, 2 ETRS 89, 3 another one.
constexpr std::size_t reference_systems = 4;
/// Test values that `obj_test` can name, from 1.
constexpr std::size_t test_values = 3;

/// No option of a group is chosen.
constexpr std::int16_t no_option = -1;

/// Which controls can be used and what those show that do not simply follow their variable.
struct SelectionControls {
    bool chk_epbe = false;
    bool chk_test_restkl = false;
    bool chk_test_beob = false;

    bool fra_test = false;
    std::array<bool, test_values + 1> opt_test{};  ///< by code; 0 unused
    std::string_view opt_test_3_caption;

    bool fra_bezug = false;
    std::array<bool, reference_systems> opt_bezu{};
    std::int16_t opt_bezu_checked = no_option;
    bool cbo_bezu = false;           ///< both combo boxes and their labels
    std::int32_t cbo_bezu_elli = 1;  ///< entry shown, from 1
    std::int32_t cbo_bezu_abbi = 1;

    bool fra_nummebez = false;
    std::int16_t opt_nube_checked = 0;
    bool opt_nbez = false;      ///< the choice of labels and its caption
    bool nubemerit = false;     ///< text, buttons and caption of the meridian strip
    std::string txt_nubemerit;  ///< "" while there is none

    bool fra_verwaltung = false;
    std::int16_t opt_verw_checked = 0;
};

/// The controls that belong to a selection. `roh_rw_min` is the smallest easting of the part,
/// metres: above 15 whole million metres it has a zone, otherwise a strip.
[[nodiscard]] SelectionControls selection_controls(const ObjectSelection& obj, double roh_rw_min);

/// Moves a test that the point values do not have to the first one. To be called after each change
/// of what the tests depend on.
void settle_test(ObjectSelection& obj);

/// Takes another reference system, ellipsoid or mapping (codes as in ObjectSelection) and settles
/// what follows from it.
void choose_reference_system(Session& session, std::int16_t obj_bezu);
void choose_ellipsoid(Session& session, std::int32_t obj_bezu_elli);
void choose_mapping(Session& session, std::int32_t obj_bezu_abbi);

constexpr std::int32_t meridian_strips = 120;  ///< strips are 0 to 119

/// A strip within 0 to 119: above that the first, below it the last.
[[nodiscard]] std::int32_t wrapped_meridian(std::int64_t strip);
/// The text is the number of a strip.
[[nodiscard]] bool is_meridian(std::string_view text);
/// Takes the strip that the user has typed; what is no number counts as 0.
void type_meridian(ObjectSelection& obj, std::string_view text);
/// Goes to the next strip (1) or the one before (-1).
void step_meridian(ObjectSelection& obj, int step);

/// How frmObjekte is left.
enum class SelectionLeft { by_ok, by_closing };

/// Takes the selection: reads what it asks for of the current part, measures the extents and draws.
/// The view stays unless there is nothing to show; by OK the plotter zero point then goes to the
/// corner of the extents. Without a file nothing is read or drawn.
///
/// When the reading fails (FatalError) or is given up (WorkCancelled), the selection `before` is in
/// force again, with everything that was read for it.
void auswahl_uebernehmen(Session& session, const ObjectSelection& before, SelectionLeft left,
                         const Desk& desk);

/// Takes another limit of EV, `stndwert`, below which the other test values are hidden: reads
/// observations and point values of the current part anew, measures the extents and draws. Without
/// a file nothing is read or drawn.
///
/// When the reading fails (FatalError) or is given up (WorkCancelled), the limit `before` is in
/// force again, also as the one to return to, with everything that was read for it.
void grenzwert_uebernehmen(Session& session, double before, const Desk& desk);

}  // namespace veldra
