#include "commands/startup.h"

#include "os/files.h"
#include "settings/defaults.h"
#include "settings/profile_file.h"
#include "settings/start_profile.h"
#include "text/codepage.h"
#include "view/viewport.h"

namespace veldra {

namespace {

constexpr std::string_view project_section = "VELDRA";

void disable_file_commands(WindowState& window) {
    for (const ToolButton button :
         {ToolButton::rueckgaengig, ToolButton::netzteile, ToolButton::massstaebe,
          ToolButton::lupe_plus, ToolButton::lupe_minus, ToolButton::schiebe_rechts,
          ToolButton::schiebe_links, ToolButton::schiebe_hoch, ToolButton::schiebe_runter,
          ToolButton::schiebe_original, ToolButton::plot_ein, ToolButton::plot_aus}) {
        window[button].enabled = false;
    }
    for (const MenuItem item :
         {MenuItem::m_torvel_objekte, MenuItem::m_torvel_ansicht, MenuItem::m_torvel_plotten,
          MenuItem::m_torvel_optionen, MenuItem::m_ansicht_netzteile, MenuItem::m_ansicht_massstab,
          MenuItem::m_plotten_aus, MenuItem::m_plotten_einstellungen, MenuItem::m_plotten_null,
          MenuItem::m_plotten_aktuell, MenuItem::m_plotten_alle}) {
        window[item].enabled = false;
    }
    clear_undo(window);
}

/// A project that has been started cannot be left for another file.
void hide_leaving_commands(WindowState& window) {
    for (const MenuItem item :
         {MenuItem::m_datei_beliebig, MenuItem::m_datei_n1, MenuItem::m_datei_n3,
          MenuItem::m_datei_alt_1, MenuItem::m_datei_alt_2, MenuItem::m_datei_alt_3,
          MenuItem::m_datei_alt_4, MenuItem::m_torvel_hilfe}) {
        window[item].visible = false;
    }
    window[ToolButton::datei_oeffnen].enabled = false;
}

void projektprofil_lesen(Session& session, ProgramRun& run) {
    hide_leaving_commands(session.window);
    run.ini_datei = project_profile(run.folders, run.befehlszeile);
    const ProfileFile profile = ProfileFile::load(run.ini_datei);
    const std::string icon = to_utf8(profile.get(project_section, "Icon"));
    if (!icon.empty() && datei_vorhanden(run.folders.program + "/" + icon)) {
        run.icon_datei = run.folders.program + "/" + icon;
    }
    session.graphikdatei = to_utf8(profile.get(project_section, "Graphikdatei"));
    session.window.fenstertitel = "VELDRA [" + session.graphikdatei + "]";
    const std::string title = to_utf8(profile.get(project_section, "Titel"));
    if (!title.empty()) {
        session.window.fenstertitel = title;
    }
    session.window.caption = session.window.fenstertitel;
}

}  // namespace

void befehlszeile_deuten(ProgramRun& run) {
    if (!run.is_project() || datei_vorhanden(project_profile(run.folders, run.befehlszeile))) {
        return;
    }
    const std::string path = absolute_path(run.befehlszeile);
    // A file that cannot be read is a graphic file too: opening it tells why.
    if (file_stamp(path) != FileStamp{} && !ordner_vorhanden(path)) {
        run.start_datei = path;
        run.befehlszeile.clear();
    }
}

void start_vorbereiten(Session& session, ProgramRun& run) {
    LongWork* const listener = session.work;  // of the command that brings the program up
    session = Session();
    session.work = listener;
    run.programm_aktiv = true;
    standard_alle(session);
    disable_file_commands(session.window);
    zuletzt_menue(session);
}

void startprofil_lesen(Session& session, ProgramRun& run) {
    if (run.is_project()) {
        projektprofil_lesen(session, run);
        return;
    }
    run.ini_datei = prepare_plain_profile(run.folders);
    start_lesen(session, run.ini_datei);
    zuletzt_menue(session);
}

void unbekannte_angabe_melden(const ProgramRun& run, UserInterface& ui) {
    if (run.is_project() && file_stamp(run.ini_datei) == FileStamp{}) {
        ui.message_box(
            MessageStyle::exclamation, "VELDRA",
            run.befehlszeile + "\nist weder der Name einer Graphikdatei noch der eines Profils.");
    }
}

void projektdatei_oeffnen(Session& session, const Desk& desk) {
    if (!datei_vorhanden(session.graphikdatei) ||
        !can_be_read_again(session.graphikdatei, desk.ui) ||
        !may_open(session.graphikdatei, desk)) {
        return;
    }
    const std::string fenstertitel = session.window.fenstertitel;
    datei_setzen(session, session.graphikdatei);
    session.window.fenstertitel = fenstertitel;  // the project's own title stays
    zuletzt_aktualisieren(session);
    vektor_standard(session);
    datei_lesen(session, desk);
}

}  // namespace veldra
