#include "commands/lifecycle.h"

#include <map>

#include "commands/file_watch.h"
#include "commands/write_back.h"
#include "graphikdatei/file_kind.h"
#include "graphikdatei/header_pass.h"
#include "graphikdatei/maxima_pass.h"
#include "graphikdatei/observation_pass.h"
#include "graphikdatei/point_pass.h"
#include "graphikdatei/take_over.h"
#include "graphikdatei/value_pass.h"
#include "graphikdatei/working_copies.h"
#include "graphikdatei/writer.h"
#include "model/former_part.h"
#include "model/hourglass.h"
#include "model/long_work.h"
#include "model/undo.h"
#include "os/files.h"
#include "plot/printer_adapters.h"
#include "reference/reference_system.h"
#include "text/codepage.h"
#include "view/viewport.h"

namespace veldra {

namespace {

constexpr int recent_files = 4;
/// How often the file is run through for what it holds as a whole (once for the parts, twice for
/// the maxima) and for a part (points, observations, values).
constexpr int readings_of_a_file = 3;
/// And once for what the user has put into it by hand.
constexpr int readings_for_the_watch = 1;
constexpr int readings_of_a_part = 3;

/// Paths are compared without regard to case: letters a to z and, in UTF-8, those of Latin-1.
std::string comparable(const std::string& path) {
    constexpr unsigned char latin1_lead = 0xC3;
    constexpr unsigned char division_sign = 0xB7;
    std::string folded = path;
    for (std::size_t i = 0; i < folded.size(); ++i) {
        const auto byte = static_cast<unsigned char>(folded[i]);
        const bool behind_lead = i > 0 && static_cast<unsigned char>(folded[i - 1]) == latin1_lead;
        const bool latin1 = behind_lead && byte >= 0xA0 && byte <= 0xBE && byte != division_sign;
        if (latin1 || (byte >= 'a' && byte <= 'z')) {
            folded[i] = static_cast<char>(byte - 0x20U);
        }
    }
    return folded;
}

}  // namespace

void datei_setzen(Session& session, const std::string& path) {
    session.graphikdatei = path;
    session.arbeitsdatei_basis = path;
    session.arbeitsdatei_suffix.clear();
    session.arbeitskopien.clear();
    session.arbeitsordner.reset();
    session.window.fenstertitel = "VELDRA [" + path + "]";
    session.part.titel[0].setTitelText(from_utf8(path));
}

bool can_be_read_again(const std::string& path, UserInterface& ui) {
    if (!sonderdatei_vorhanden(path)) {
        return true;
    }
    ui.message_box(MessageStyle::exclamation, "VELDRA - Datei auswählen",
                   path +
                       "\nist keine gewöhnliche Datei, sondern zum Beispiel eine Pipe oder ein "
                       "Gerät.\nSie kann hier nicht geöffnet werden.");
    return false;
}

bool may_open(const std::string& path, const Desk& desk) {
    if (desk.watch == nullptr || desk.watch->reserve(path)) {
        return true;
    }
    const std::string holder = desk.watch->holder();
    const bool wanted = desk.ui.message_box(
        MessageStyle::question_no_yes, "VELDRA - Datei auswählen",
        "Die Graphikdatei\n" + path + "\nist bereits in einem anderen VELDRA geöffnet" +
            (holder.empty() ? "" : " (" + holder + ")") +
            ".\nWer sie zuletzt verlässt, überschreibt die Änderungen des anderen.\n\n"
            "Trotzdem öffnen?");
    if (!wanted) {
        desk.watch->give_up();
    }
    return wanted;
}

namespace {

/// Leaving a file writes it anew line by line, which not every file outlives.
bool may_be_rewritten(const std::string& path, OpenedBy opened_by, const Desk& desk) {
    const FileKind kind = kind_of_file(path);
    if (kind == FileKind::graphic ||
        (kind == FileKind::other_text && opened_by != OpenedBy::name)) {
        return true;
    }
    return desk.ui.message_box(MessageStyle::question_no_yes, "VELDRA - Datei auswählen",
                               "Die Datei\n" + path +
                                   "\nsieht nicht nach einer Graphikdatei aus.\n"
                                   "Beim Verlassen wird sie als Graphikdatei neu geschrieben und "
                                   "kann dadurch unbrauchbar werden.\n\n"
                                   "Trotzdem öffnen?");
}

}  // namespace

void datei_neu_laden(Session& session, const std::string& path, OpenedBy opened_by,
                     const Desk& desk) {
    const std::string new_path(trim(path));
    if (!can_be_read_again(new_path, desk.ui) || !may_be_rewritten(new_path, opened_by, desk) ||
        !may_open(new_path, desk)) {
        return;
    }
    datei_zurueckschreiben(session, desk);
    datei_setzen(session, new_path);
    zuletzt_aktualisieren(session);
    if (opened_by == OpenedBy::recent_menu) {
        set_selection_defaults(session.part.obj);
    }
    vektor_standard(session);
    datei_lesen(session, desk);
}

namespace {

void read_whole_file_records(Session& session, const Desk& desk, int more_readings) {
    const Hourglass hourglass(session, desk.ui);
    expect_readings(session.work, readings_of_a_file + readings_of_a_part + more_readings);
    // The list of parts is the former file's until the header has been read.
    session.window.frm_netzteile_shown = false;
    ++session.window.frm_netzteile_load;
    kopf_lesen(session);
    session.window.frm_netzteile_shown = session.netz.count() >= 1;
    maxima_lesen(session);
}

/// The parts that are marked for plotting, which the file does not know.
class PlotMarks {
 public:
    explicit PlotMarks(const Session& session) {
        for (std::int32_t i = 1; i <= session.netz.count(); ++i) {
            marks_.emplace(session.netz[i].netz_name, session.netz[i].netz_plotmarke);
        }
    }
    void restore(Session& session) const {
        for (std::int32_t i = 1; i <= session.netz.count(); ++i) {
            const auto mark = marks_.find(session.netz[i].netz_name);
            if (mark != marks_.end()) {
                session.netz[i].netz_plotmarke = mark->second;
            }
        }
    }

 private:
    std::map<std::string, std::int16_t> marks_;
};

/// The first part of that name; the current one if there is none.
std::int32_t part_named(const Session& session, const std::string& name) {
    for (std::int32_t i = 1; i <= session.netz.count(); ++i) {
        if (session.netz[i].netz_name == name) {
            return i;
        }
    }
    return session.part.netz_aktuell;
}

}  // namespace

void datei_lesen(Session& session, const Desk& desk) {
    if (desk.watch != nullptr) {
        desk.watch->read_only().begin(session);
        desk.watch->follow(session.graphikdatei);
    }
    read_whole_file_records(session, desk, desk.watch != nullptr ? readings_for_the_watch : 0);
    if (desk.watch != nullptr) {
        desk.watch->keep(read_hand_work(session.graphikdatei, session.work));
    }
    netzteil_lesen(session, desk);
    erstansicht(session, desk);
}

TransferReport datei_erneut_lesen(Session& session, const Desk& desk) {
    const HandWork hand_work = current_hand_work(
        session, desk.watch != nullptr ? desk.watch->as_read() : HandWork(), nullptr);
    if (desk.watch != nullptr) {
        desk.watch->follow(session.graphikdatei);  // what changes from now on is asked about again
        desk.watch->keep(hand_work);
    }
    TransferReport report = transfer_into_working_copy(session, hand_work, session.graphikdatei);
    arbeitskopie_einlesen(session, desk);
    return report;
}

void arbeitskopie_einlesen(Session& session, const Desk& desk) {
    if (desk.watch != nullptr) {
        desk.watch->read_only().count_as_changed();
    }
    const std::string name = session.netz[session.part.netz_aktuell].netz_name;
    const PlotMarks marks(session);
    session.datei_geladen = 0;  // nothing is to be kept of what was read before
    session.part.titel[0].setTitelText(from_utf8(session.graphikdatei));
    vektor_standard(session);
    read_whole_file_records(session, desk, 0);
    marks.restore(session);
    if (session.netz.count() > 0) {
        session.part.netz_aktuell = part_named(session, name);
        load_plot_settings(session);
    }
    netzteil_lesen(session, desk);
    erstansicht(session, desk);
}

void netzteil_daten_lesen(Session& session, const SelectionChange& change) {
    clear_part_titles(session.part);
    set_selection_defaults(session.part.obj);
    punkt_lesen(session);
    if (change) {
        change(session.part.obj);
        derive_value_modes(session.part.obj);
    }
    beob_lesen(session);
    wert_lesen(session);
}

void netzteil_lesen(Session& session, const Desk& desk, const SelectionChange& change) {
    const Hourglass hourglass(session, desk.ui);
    netzteil_daten_lesen(session, change);
    ComputeSheetDivision(session, desk);
    ResolveSystem(session);
}

void erstansicht(Session& session, const Desk& desk) {
    constexpr std::int16_t with_margin = 1;
    const Extents& extents = session.part.extents;
    FitView(session, extents.gesamt_rw_min, extents.gesamt_hw_min, extents.gesamt_rw_max,
            extents.gesamt_hw_max, with_margin);
    desk.redraw();
    session.datei_geladen = 1;
    clear_undo(session.window);
    if (desk.watch != nullptr) {
        desk.watch->read_only().take_as_read(session);
    }
}

void netzteil_anzeigen(Session& session, std::int32_t part, const Desk& desk) {
    if (part == session.part.netz_aktuell) {
        return;
    }
    if (desk.watch != nullptr) {
        desk.watch->read_only().note_changes(session);
    }
    {
        const Hourglass hourglass(session, desk.ui);
        arbeitskopie_schreiben(session);
    }
    store_plot_settings(session);
    FormerPart former(session, FormerPart::Points::moved, session.part.obj);
    session.part.netz_aktuell = part;
    load_plot_settings(session);
    session.plotmodus = 0;
    expect_readings(session.work, readings_of_a_part);
    netzteil_lesen(session, desk);
    former.replaced();
    erstansicht(session, desk);
}

void zuletzt_aktualisieren(Session& session) {
    auto& recent = session.zuletzt_datei;
    const std::string current = comparable(session.graphikdatei);
    std::size_t place = recent_files;
    for (std::size_t i = 1; i <= recent_files; ++i) {
        if (comparable(recent[i]) == current) {
            place = i;
        }
    }
    for (std::size_t i = place; i > 1; --i) {
        recent[i] = recent[i - 1];
    }
    recent[1] = trim(session.graphikdatei);
}

void zuletzt_entfernen(Session& session, int index) {
    auto& recent = session.zuletzt_datei;
    for (auto i = static_cast<std::size_t>(index); i < recent_files; ++i) {
        recent[i] = recent[i + 1];
    }
    recent[recent_files].clear();
}

void forget_file(Session& session) {
    close_document(session);
    session.graphikdatei.clear();
    session.arbeitsdatei_basis.clear();
    session.netz.clear();
    session.part.netz_aktuell = 0;
    session.part.pu.clear();
    session.part.lin.clear();
    session.part.nuoff.clear();
    ++session.part.tables_revision;
    session.plotmodus = 0;
    WindowState& window = session.window;
    window.frm_netzteile_shown = false;
    window.frm_massstab_shown = false;
    window.lbl_legende_visible = false;
    clear_undo(window);
    window.fenstertitel = WindowState().fenstertitel;
}

}  // namespace veldra
