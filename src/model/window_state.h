#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace veldra {

/// The one step that can be taken back; a new one replaces it.
struct Undo {
    std::int16_t undo_art = 0;            ///< `undo_kind`
    std::int32_t undo_index = 0;          ///< of the label
    std::array<double, 4> undo_wert{};    ///< what was there before
    std::string caption = "Rückgängig:";  ///< of menu entry and button, UTF-8
    /// A change's label goes by its record, which keeps its number when rows are read anew.
    std::int32_t undo_satz = 0;
    bool undo_satz_neu = false;  ///< and had not been moved before
};

/// What the main window is to show beside the picture. Which commands it offers, and its title,
/// follow from the session: commands/offered_commands.h.
struct WindowState {
    /// Title without the part and what is shown of it, UTF-8.
    std::string fenstertitel = "VELDRA - [keine Graphikdatei eröffnet]";
    bool projekt = false;  ///< started with the profile of a project, which cannot be left
    bool frm_netzteile_shown = false;  ///< the dialog of network parts is to be open
    /// Counts the loads of the table of parts: an open dialog of an older one begins anew.
    std::uint32_t frm_netzteile_load = 0;
    bool frm_massstab_shown = false;  ///< the dialog of scale bars is to be open
    bool lbl_legende_visible = false;
    bool sheets_moving = false;  ///< frames and texts of the sheets are not drawn meanwhile
    int mouse_pointer = 0;       ///< of the picture: 0 default, 2 cross, 11 hourglass, 99 moving
    Undo undo;
};

}  // namespace veldra
