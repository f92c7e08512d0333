#include "shell/file_commands.h"

#include "graphikdatei/writer.h"
#include "platform/os/files.h"
#include "plot/application_printer.h"
#include "settings/profile.h"
#include "settings/start_profile.h"

namespace veldra {

void datei_alt_oeffnen(Session& session, int index, const Desk& desk) {
    constexpr std::size_t longest_no_path = 3;
    const std::string path = session.zuletzt_datei[static_cast<std::size_t>(index)];
    if (path.size() <= longest_no_path) {
        return;
    }
    if (!datei_vorhanden(path)) {
        desk.ui.message_box(MessageStyle::exclamation, "VELDRA - Datei auswählen",
                            "gewünschte Datei ist nicht vorhanden,\n"
                            "wurde vermutlich zwischenzeitig gelöscht.\n"
                            "Bitte andere Datei wählen.");
        zuletzt_entfernen(session, index);
        return;
    }
    datei_neu_laden(session, path, OpenedBy::recent_menu, desk);
}

void programm_ende(Session& session, ProgramRun& run, const Desk& desk) {
    if (desk.printer != nullptr && desk.print_dialog != nullptr) {
        ask_for_default_printer(session, *desk.printer, desk.ui, *desk.print_dialog);
    }
    arbeitskopie_schreiben(session);
    endfassung_schreiben(session);
    // The profile of a project that never was may lie in a folder that is not there yet.
    if (const std::size_t end = run.ini_datei.rfind('/'); end != std::string::npos && end > 0) {
        create_folder(run.ini_datei.substr(0, end));
    }
    profil_schreiben(session, run.ini_datei);
    if (!run.is_project()) {
        start_schreiben(session, run.ini_datei);
    }
    run.programm_aktiv = false;
}

}  // namespace veldra
