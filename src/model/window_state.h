#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace veldra {

/// Menu entries of the main window, named as the controls. `m_datei_alt` has four elements.
enum class MenuItem : std::uint8_t {
    m_torvel_datei,
    m_datei_beliebig,
    m_datei_bild,  ///< the picture as a file
    m_datei_plot,  ///< the plot as a file
    m_datei_uebernehmen,
    m_datei_n1,
    m_datei_alt_1,
    m_datei_alt_2,
    m_datei_alt_3,
    m_datei_alt_4,
    m_datei_n3,
    m_datei_beenden,
    m_torvel_objekte,
    m_torvel_ansicht,
    m_ansicht_undo,
    m_ansicht_original,
    m_ansicht_halb,
    m_ansicht_netzteile,
    m_ansicht_massstab,  ///< the control's name has an ß
    m_torvel_plotten,
    m_plotten_ein,
    m_plotten_aus,
    m_plotten_einstellungen,
    m_plotten_null,
    m_plotten_aktuell,
    m_plotten_alle,
    m_torvel_optionen,
    m_optionen_darstellungen,
    m_optionen_legende,
    m_optionen_grenzen,
    m_optionen_drucker,
    m_torvel_hilfe,
    m_hilfe_handbuch,
    m_hilfe_neues,
    m_hilfe_proginfo,
    count
};

/// Buttons of `tlb_torvel` by their number from 1; the numbers between are separators.
enum class ToolButton : std::uint8_t {
    datei_oeffnen = 1,
    rueckgaengig = 3,
    netzteile = 5,
    massstaebe = 6,
    lupe_plus = 8,
    lupe_minus = 9,
    schiebe_rechts = 10,
    schiebe_links = 11,
    schiebe_hoch = 12,
    schiebe_runter = 13,
    schiebe_original = 14,
    plot_ein = 16,
    plot_aus = 17,
    beenden = 19,
    count = 20
};

struct MenuItemState {
    bool enabled = true;
    bool visible = true;
    bool checked = false;
    std::string caption;  ///< UTF-8; empty: the designed caption stands
};

struct ToolButtonState {
    bool enabled = true;
    std::string tool_tip;  ///< UTF-8; empty: the designed text stands
};

/// The one step that can be taken back; a new one replaces it.
struct Undo {
    std::int16_t undo_art = 0;          ///< 0 none, 1 and 2 a label, 3 the sheets, 4 and 5 the view
    std::int32_t undo_index = 0;        ///< of the label
    std::array<double, 4> undo_wert{};  ///< what was there before
    /// A change's label goes by its record, which keeps its number when rows are read anew.
    std::int32_t undo_satz = 0;
    bool undo_satz_neu = false;  ///< and had not been moved before
};

/// What the main window shows beside the picture. The window brings its controls into line with
/// this after each command; texts are UTF-8.
struct WindowState {
    std::string caption = "VELDRA - [keine Graphikdatei eröffnet]";
    std::string fenstertitel = "VELDRA - [keine Graphikdatei eröffnet]";
    std::array<MenuItemState, static_cast<std::size_t>(MenuItem::count)> menu;
    std::array<ToolButtonState, static_cast<std::size_t>(ToolButton::count)> tools;
    bool frm_netzteile_shown = false;  ///< the dialog of network parts is to be open
    /// Counts the loads of the table of parts: an open dialog of an older one begins anew.
    std::uint32_t frm_netzteile_load = 0;
    bool frm_massstab_shown = false;  ///< the dialog of scale bars is to be open
    bool lbl_legende_visible = false;
    bool sheets_moving = false;  ///< frames and texts of the sheets are not drawn meanwhile
    int mouse_pointer = 0;       ///< of the picture: 0 default, 2 cross, 11 hourglass, 99 moving
    Undo undo;

    MenuItemState& operator[](MenuItem item) { return menu[static_cast<std::size_t>(item)]; }
    ToolButtonState& operator[](ToolButton button) {
        return tools[static_cast<std::size_t>(button)];
    }
    const MenuItemState& operator[](MenuItem item) const {
        return menu[static_cast<std::size_t>(item)];
    }
    const ToolButtonState& operator[](ToolButton button) const {
        return tools[static_cast<std::size_t>(button)];
    }
};

}  // namespace veldra
