#include "commands/offered_commands.h"

#include <initializer_list>

#include "drawing/title.h"
#include "model/undo.h"
#include "text/codepage.h"

namespace veldra {

namespace {

void enable(OfferedCommands& offered, std::initializer_list<MenuItem> items, bool enabled) {
    for (const MenuItem item : items) {
        offered[item].enabled = enabled;
    }
}

void enable(OfferedCommands& offered, std::initializer_list<ToolButton> buttons, bool enabled) {
    for (const ToolButton button : buttons) {
        offered[button].enabled = enabled;
    }
}

/// Files: a project that has been started cannot be left for another one.
void offer_files(OfferedCommands& offered, const Session& session) {
    const WindowState& window = session.window;
    for (const MenuItem item : {MenuItem::m_datei_beliebig, MenuItem::m_datei_n1,
                                MenuItem::m_datei_n3, MenuItem::m_torvel_hilfe}) {
        offered[item].visible = !window.projekt;
    }
    offered[ToolButton::datei_oeffnen].enabled = !window.projekt;
    for (std::size_t i = 1; i < session.zuletzt_datei.size(); ++i) {
        const std::string& name = session.zuletzt_datei[i];
        MenuItemState& item =
            offered.menu[static_cast<std::size_t>(MenuItem::m_datei_alt_1) + i - 1];
        item.visible = !window.projekt;
        item.caption = "&" + std::to_string(i) + ": " + name;
        item.enabled = !name.empty();
    }
    enable(offered, {MenuItem::m_datei_bild, MenuItem::m_datei_uebernehmen},
           session.datei_geladen == 1);
}

/// The view, once something is drawn; another choice of objects is the way out of an empty part.
void offer_view(OfferedCommands& offered, const Session& session) {
    const bool drawn = shows_network(session);
    enable(offered, {MenuItem::m_torvel_objekte}, session.datei_geladen == 1);
    enable(offered,
           {MenuItem::m_torvel_ansicht, MenuItem::m_torvel_plotten, MenuItem::m_torvel_optionen},
           drawn);
    enable(offered,
           {ToolButton::lupe_plus, ToolButton::lupe_minus, ToolButton::schiebe_rechts,
            ToolButton::schiebe_links, ToolButton::schiebe_hoch, ToolButton::schiebe_runter,
            ToolButton::schiebe_original},
           drawn);
    const Undo& undo = session.window.undo;
    const bool can_undo = undo.undo_art != undo_kind::none;
    offered[MenuItem::m_ansicht_undo] = {can_undo, true, false, undo.caption};
    offered[ToolButton::rueckgaengig] = {can_undo, undo.caption};
}

/// Dialogs beside the picture: an entry is checked while its dialog is open, the button only opens.
void offer_side_dialogs(OfferedCommands& offered, const Session& session) {
    const WindowState& window = session.window;
    const bool has_parts = session.netz.count() > 0;
    offered[MenuItem::m_ansicht_netzteile].enabled = has_parts;
    offered[MenuItem::m_ansicht_netzteile].checked = window.frm_netzteile_shown;
    offered[ToolButton::netzteile].enabled = has_parts && !window.frm_netzteile_shown;
    const bool has_scale = shows_network(session) && session.plotmodus != 1;
    offered[MenuItem::m_ansicht_massstab].enabled = has_scale;
    offered[MenuItem::m_ansicht_massstab].checked = window.frm_massstab_shown;
    offered[ToolButton::massstaebe].enabled = has_scale && !window.frm_massstab_shown;
}

/// Plotting, from within the plot mode; nobody is kept in the preview of nothing.
void offer_plotting(OfferedCommands& offered, const Session& session) {
    const bool drawn = shows_network(session);
    const bool plotting = session.plotmodus == 1;
    enable(offered, {MenuItem::m_plotten_ein}, !plotting);
    enable(offered, {ToolButton::plot_ein}, drawn && !plotting);
    enable(offered,
           {MenuItem::m_plotten_einstellungen, MenuItem::m_plotten_null, MenuItem::m_plotten_alle,
            MenuItem::m_plotten_aktuell, MenuItem::m_plotten_aus, MenuItem::m_datei_plot},
           drawn && plotting);
    enable(offered, {ToolButton::plot_aus}, session.datei_geladen == 1 && plotting);
    const PrinterState& printer = session.printer;
    MenuItemState& entry = offered[MenuItem::m_optionen_drucker];
    entry.enabled = printer.drucker_ok != table_false;
    entry.caption = entry.enabled ? "&Anwendungsdrucker: " + printer.drucker_name
                                  : "Druckertreiber nicht verfügbar";
}

}  // namespace

bool shows_network(const Session& session) {
    return session.datei_geladen == 1 &&
           (session.part.pu.count() > 0 || session.part.lin.count() > 0);
}

OfferedCommands offered_commands(const Session& session) {
    OfferedCommands offered;
    offer_files(offered, session);
    offer_view(offered, session);
    offer_side_dialogs(offered, session);
    offer_plotting(offered, session);
    return offered;
}

std::string window_title(const Session& session) {
    std::string title = session.window.fenstertitel;
    if (session.datei_geladen != 1) {
        return title;
    }
    if (session.netz.count() > 0) {
        title += " (" + to_utf8(session.netz[session.part.netz_aktuell].netz_name) + ")";
    }
    return title + ": " + to_utf8(BuildTitle(session, title_code::objects));
}

}  // namespace veldra
