#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "model/session.h"

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

/// What a menu entry offers now.
struct MenuItemState {
    bool enabled = true;
    bool visible = true;
    bool checked = false;
    std::string caption;  ///< UTF-8; empty: the designed caption stands

    bool operator==(const MenuItemState&) const = default;
};

/// What a button offers now.
struct ToolButtonState {
    bool enabled = true;
    std::string tool_tip;  ///< UTF-8; empty: the designed text stands

    bool operator==(const ToolButtonState&) const = default;
};

/// What all menu entries and buttons offer now.
struct OfferedCommands {
    std::array<MenuItemState, static_cast<std::size_t>(MenuItem::count)> menu;
    std::array<ToolButtonState, static_cast<std::size_t>(ToolButton::count)> tools;

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

    bool operator==(const OfferedCommands&) const = default;
};

/// What menus and toolbar offer as the session stands between two commands: the one answer for the
/// window, and for whoever asks whether something can be done now.
[[nodiscard]] OfferedCommands offered_commands(const Session& session);

/// A file is open and its part in view has something to draw.
[[nodiscard]] bool shows_network(const Session& session);

/// The title of the main window, UTF-8: the file, the part, what is shown of it.
[[nodiscard]] std::string window_title(const Session& session);

}  // namespace veldra
