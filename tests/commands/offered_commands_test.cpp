#include "commands/offered_commands.h"

#include <functional>
#include <initializer_list>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "dialogs/network_parts.h"
#include "dialogs/scale_bars.h"
#include "model/undo.h"

namespace veldra {
namespace {

constexpr MenuItem recent[] = {MenuItem::m_datei_alt_1, MenuItem::m_datei_alt_2,
                               MenuItem::m_datei_alt_3, MenuItem::m_datei_alt_4};

/// A state of the program, and all that it withdraws from what a program that shows a network with
/// parts on the screen offers.
struct State {
    const char* name;
    std::function<void(Session&)> reach;
    std::set<MenuItem> entries_off;
    std::set<ToolButton> buttons_off;
};

void open_file(Session& session) {
    session.datei_geladen = 1;
    session.zuletzt_datei = {"", "/a", "/b", "/c", "/d"};
    session.printer.drucker_ok = table_true;
    session.printer.drucker_name = "Plotter";
    session.part.netz_aktuell = session.netz.append();
    session.netz[1].netz_name = "Nord";
    session.part.pu.punkt_neu(1010, 2020);
    session.window.undo = {undo_kind::zoom_in, 0, {}, undo_caption::zoom_in};
}

const std::set<MenuItem> of_plot_mode{MenuItem::m_plotten_aus,  MenuItem::m_plotten_einstellungen,
                                      MenuItem::m_plotten_null, MenuItem::m_plotten_aktuell,
                                      MenuItem::m_plotten_alle, MenuItem::m_datei_plot};

const std::set<ToolButton> of_view{ToolButton::lupe_plus,       ToolButton::lupe_minus,
                                   ToolButton::schiebe_rechts,  ToolButton::schiebe_links,
                                   ToolButton::schiebe_hoch,    ToolButton::schiebe_runter,
                                   ToolButton::schiebe_original};

template <typename Element>
std::set<Element> together(std::initializer_list<std::set<Element>> sets) {
    std::set<Element> all;
    for (const std::set<Element>& set : sets) {
        all.insert(set.begin(), set.end());
    }
    return all;
}

std::vector<State> states() {
    using Entries = std::set<MenuItem>;
    using Buttons = std::set<ToolButton>;
    const Entries of_network{MenuItem::m_torvel_ansicht, MenuItem::m_torvel_plotten,
                             MenuItem::m_torvel_optionen, MenuItem::m_ansicht_massstab};
    const auto empty_part = [](Session& session) { session.part.pu.clear(); };
    return {
        {"a network on the screen", [](Session&) {}, of_plot_mode, {ToolButton::plot_aus}},
        {"its preview", [](Session& session) { session.plotmodus = 1; },
         Entries{MenuItem::m_plotten_ein, MenuItem::m_ansicht_massstab},
         Buttons{ToolButton::plot_ein, ToolButton::massstaebe}},
        {"an empty part on the screen", empty_part, together({of_plot_mode, of_network}),
         together({of_view,
                   Buttons{ToolButton::massstaebe, ToolButton::plot_ein, ToolButton::plot_aus}})},
        {"the preview of an empty part",
         [empty_part](Session& session) {
             empty_part(session);
             session.plotmodus = 1;
         },
         together({of_plot_mode, of_network, Entries{MenuItem::m_plotten_ein}}),
         together({of_view, Buttons{ToolButton::massstaebe, ToolButton::plot_ein}})},
        {"lines alone",
         [empty_part](Session& session) {
             empty_part(session);
             session.part.lin.lin_suchen({10, 20, 40, 60});
         },
         of_plot_mode,
         {ToolButton::plot_aus}},
        {"both side dialogs open",
         [](Session& session) {
             show_network_parts(session.window, true);
             open_scale_bars(session);
         },
         of_plot_mode,
         Buttons{ToolButton::plot_aus, ToolButton::netzteile, ToolButton::massstaebe}},
        {"both side dialogs closed again",
         [](Session& session) {
             show_network_parts(session.window, true);
             open_scale_bars(session);
             show_network_parts(session.window, false);
             close_scale_bars(session);
         },
         of_plot_mode,
         {ToolButton::plot_aus}},
        {"a file without parts",
         [](Session& session) {
             session.netz.clear();
             session.part.netz_aktuell = 0;
         },
         together({of_plot_mode, Entries{MenuItem::m_ansicht_netzteile}}),
         Buttons{ToolButton::plot_aus, ToolButton::netzteile}},
        {"nothing to undo", [](Session& session) { clear_undo(session.window); },
         together({of_plot_mode, Entries{MenuItem::m_ansicht_undo}}),
         Buttons{ToolButton::plot_aus, ToolButton::rueckgaengig}},
        {"no printer",
         [](Session& session) { session.printer.drucker_ok = table_false; },
         together({of_plot_mode, Entries{MenuItem::m_optionen_drucker}}),
         {ToolButton::plot_aus}},
        {"a project", [](Session& session) { session.window.projekt = true; }, of_plot_mode,
         Buttons{ToolButton::plot_aus, ToolButton::datei_oeffnen}},
        {"one recent file",
         [](Session& session) {
             session.zuletzt_datei = {"", "/a", "", "", ""};
         },
         together({of_plot_mode, Entries{recent[1], recent[2], recent[3]}}),
         {ToolButton::plot_aus}},
        {"no file", [](Session& session) { session = Session(); },
         together({of_plot_mode, of_network,
                   Entries{MenuItem::m_torvel_objekte, MenuItem::m_datei_bild,
                           MenuItem::m_datei_uebernehmen, MenuItem::m_ansicht_undo,
                           MenuItem::m_ansicht_netzteile, MenuItem::m_optionen_drucker, recent[0],
                           recent[1], recent[2], recent[3]}}),
         together({of_view,
                   Buttons{ToolButton::rueckgaengig, ToolButton::netzteile, ToolButton::massstaebe,
                           ToolButton::plot_ein, ToolButton::plot_aus}})},
    };
}

TEST(OfferedCommands, EachStateWithdrawsItsCommandsAndNoOther) {
    for (const State& state : states()) {
        Session session;
        open_file(session);
        state.reach(session);
        const OfferedCommands offered = offered_commands(session);
        for (std::size_t i = 0; i < offered.menu.size(); ++i) {
            const auto item = static_cast<MenuItem>(i);
            EXPECT_EQ(offered[item].enabled, !state.entries_off.contains(item))
                << state.name << ", entry " << i;
        }
        for (std::size_t i = 1; i < offered.tools.size(); ++i) {
            const auto button = static_cast<ToolButton>(i);
            EXPECT_EQ(offered[button].enabled, !state.buttons_off.contains(button))
                << state.name << ", button " << i;
        }
    }
}

TEST(OfferedCommands, EntriesOfOpenDialogsAreChecked) {
    Session session;
    open_file(session);
    for (const bool shown : {true, false}) {
        session.window.frm_netzteile_shown = shown;
        session.window.frm_massstab_shown = !shown;
        const OfferedCommands offered = offered_commands(session);
        EXPECT_EQ(offered[MenuItem::m_ansicht_netzteile].checked, shown);
        EXPECT_EQ(offered[MenuItem::m_ansicht_massstab].checked, !shown);
    }
}

TEST(OfferedCommands, AProjectHidesWhatWouldLeaveIt) {
    Session session;
    open_file(session);
    const std::set<MenuItem> leaving{MenuItem::m_datei_beliebig,
                                     MenuItem::m_datei_n1,
                                     MenuItem::m_datei_n3,
                                     recent[0],
                                     recent[1],
                                     recent[2],
                                     recent[3],
                                     MenuItem::m_torvel_hilfe};
    for (const bool project : {false, true}) {
        session.window.projekt = project;
        const OfferedCommands offered = offered_commands(session);
        for (std::size_t i = 0; i < offered.menu.size(); ++i) {
            const auto item = static_cast<MenuItem>(i);
            EXPECT_EQ(offered[item].visible, !project || !leaving.contains(item)) << i;
        }
    }
}

TEST(OfferedCommands, CaptionsNameFilesStepAndPrinter) {
    Session session;
    open_file(session);
    session.zuletzt_datei[2].clear();
    OfferedCommands offered = offered_commands(session);
    EXPECT_EQ(offered[recent[0]].caption, "&1: /a");
    EXPECT_EQ(offered[recent[1]].caption, "&2: ");
    EXPECT_EQ(offered[recent[3]].caption, "&4: /d");
    EXPECT_EQ(offered[MenuItem::m_ansicht_undo].caption, "Rückgängig: Vergrößern");
    EXPECT_EQ(offered[ToolButton::rueckgaengig].tool_tip, "Rückgängig: Vergrößern");
    EXPECT_EQ(offered[MenuItem::m_optionen_drucker].caption, "&Anwendungsdrucker: Plotter");
    clear_undo(session.window);
    session.printer.drucker_ok = table_false;
    offered = offered_commands(session);
    EXPECT_EQ(offered[MenuItem::m_ansicht_undo].caption, "Rückgängig:");
    EXPECT_EQ(offered[ToolButton::rueckgaengig].tool_tip, "Rückgängig:");
    EXPECT_EQ(offered[MenuItem::m_optionen_drucker].caption, "Druckertreiber nicht verfügbar");
}

TEST(WindowTitle, NamesFilePartAndContent) {
    Session session;
    EXPECT_EQ(window_title(session), "VELDRA - [keine Graphikdatei eröffnet]");
    session.window.fenstertitel = "VELDRA - netz.dat";
    session.datei_geladen = 1;
    session.part.obj.obj_beob = 2;
    EXPECT_EQ(window_title(session), "VELDRA - netz.dat: Höhenbeobachtungen");
    session.part.netz_aktuell = session.netz.append();
    session.netz[1].netz_name =
        "S\xFC"
        "d 1";
    EXPECT_EQ(window_title(session), "VELDRA - netz.dat (Süd 1): Höhenbeobachtungen");
    session.part.obj.obj_beob = 0;
    session.part.obj.obj_test_restkl = table_true;
    session.part.obj.obj_puwe = 6;
    session.part.obj.obj_wert_lage = 2;
    session.part.obj.obj_wert_hoehe = 2;
    EXPECT_EQ(window_title(session),
              "VELDRA - netz.dat (Süd 1): Lagerestklaffungen, EV, Höhenrestklaffungen, EV");
}

}  // namespace
}  // namespace veldra
