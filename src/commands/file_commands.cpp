#include "commands/file_commands.h"

#include <algorithm>
#include <cstddef>

#include "commands/file_watch.h"
#include "graphikdatei/file_kind.h"
#include "graphikdatei/take_over.h"
#include "model/hourglass.h"
#include "model/long_work.h"
#include "os/files.h"
#include "plot/application_printer.h"
#include "settings/profile.h"
#include "settings/start_profile.h"
#include "text/fatal_error.h"

namespace veldra {

namespace {

/// Characters of a path in UTF-8.
std::ptrdiff_t character_count(const std::string& path) {
    return std::count_if(path.begin(), path.end(), [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;  // none that continues one
    });
}

}  // namespace

void datei_alt_oeffnen(Session& session, int index, const Desk& desk) {
    constexpr std::ptrdiff_t longest_no_path = 3;
    const std::string path = session.zuletzt_datei[static_cast<std::size_t>(index)];
    if (character_count(path) <= longest_no_path) {
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

namespace {

constexpr std::size_t most_names = 10;  // what a message box has room for

void tell_what_was_taken_over(const Desk& desk, const TransferReport& report) {
    desk.ui.message_box(MessageStyle::information, "VELDRA - Einstellungen übernommen",
                        transfer_text(report, most_names));
}

void read_anew(Session& session, const Desk& desk) {
    try {
        tell_what_was_taken_over(desk, datei_erneut_lesen(session, desk));
    } catch (const WorkCancelled&) {
        if (session.arbeitsordner) {
            throw;  // which goes with the file
        }
        desk.ui.message_box(MessageStyle::information, "VELDRA - Graphikdatei geändert",
                            "Das Lesen wurde abgebrochen. Die geänderte Datei mit Ihren "
                            "Beschriftungen und Einstellungen liegt in der Arbeitskopie\n" +
                                working_path(session));
        throw;
    }
}

}  // namespace

void einstellungen_uebernehmen(Session& session, const std::string& path, const Desk& desk) {
    constexpr const char* title = "VELDRA - Einstellungen übernehmen";
    TransferReport report;
    try {
        if (same_file(path, session.graphikdatei)) {
            throw FatalError(path + ": ist die geöffnete Graphikdatei");
        }
        if (!can_be_read_again(path, desk.ui)) {
            return;
        }
        if (kind_of_file(path) != FileKind::graphic) {
            throw FatalError(path + ": sieht nicht nach einer Graphikdatei aus");
        }
        const Hourglass hourglass(session, desk.ui);
        report = take_over_from(session, path);
    } catch (const FatalError& failure) {
        desk.ui.message_box(MessageStyle::critical, title, failure.what());
        return;
    }
    arbeitskopie_einlesen(session, desk);
    tell_what_was_taken_over(desk, report);
}

void geaenderte_datei_pruefen(Session& session, const Desk& desk) {
    if (session.datei_geladen != 1 || desk.watch == nullptr || !desk.watch->rewritten()) {
        return;
    }
    const std::string without_reading =
        desk.watch->read_only().is_read_only()
            ? "Nein: Gezeigt wird weiter der bisherige Stand; die Datei ist schreibgeschützt und "
              "bleibt, wie sie jetzt ist."
            : "Nein: Beim Verlassen wird sie mit dem hier gezeigten Stand überschrieben.";
    const bool reload = desk.ui.message_box(
        MessageStyle::question_yes_no, "VELDRA - Graphikdatei geändert",
        "Ein anderes Programm hat die Graphikdatei\n" + session.graphikdatei +
            "\ngeändert. Soll sie neu gelesen werden?\n\n"
            "Ja: Verschobene Beschriftungen, Auswahl, Titel und Ploteinstellungen werden dabei "
            "übernommen.\n" +
            without_reading);
    if (reload) {
        read_anew(session, desk);
    } else {
        desk.watch->accept();
    }
}

namespace {

/// Takes a step of the end and keeps what went wrong, so that the others are taken as well.
template <typename Step>
void take_step(std::string& failures, const Step& step) {
    try {
        step();
    } catch (const FatalError& error) {
        if (!failures.ends_with(error.what())) {
            failures += (failures.empty() ? "" : "\n\n") + std::string(error.what());
        }
    }
}

void create_profile_folder(const ProgramRun& run) {
    // The profile of a project that never was may lie in a folder that is not there yet.
    if (const std::size_t end = run.ini_datei.rfind('/'); end != std::string::npos && end > 0) {
        create_folder(run.ini_datei.substr(0, end));
    }
}

}  // namespace

void programm_ende(Session& session, ProgramRun& run, const Desk& desk, Attendance attendance) {
    const bool has_printer = desk.printer != nullptr && desk.print_dialog != nullptr;
    if (attendance == Attendance::user && has_printer) {
        ask_for_default_printer(session, *desk.printer, desk.ui, *desk.print_dialog);
    }
    std::string failures;
    take_step(failures, [&] { datei_zurueckschreiben(session, desk, attendance); });
    take_step(failures, [&] {
        create_profile_folder(run);
        profil_schreiben(session, run.ini_datei);
    });
    if (!run.is_project()) {
        take_step(failures, [&] { start_schreiben(session, run.ini_datei); });
    }
    if (desk.watch != nullptr) {
        desk.watch->leave();
    }
    run.programm_aktiv = false;
    if (!failures.empty()) {
        throw FatalError(failures);
    }
}

}  // namespace veldra
