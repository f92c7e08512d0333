#include "graphikdatei/writer.h"

#include <optional>
#include <utility>
#include <vector>

#include "graphikdatei/codepage.h"
#include "graphikdatei/keywords.h"
#include "graphikdatei/line_reader.h"
#include "graphikdatei/numbers.h"
#include "graphikdatei/part_filter.h"
#include "graphikdatei/tokens.h"
#include "platform/os/files.h"
#include "shell/long_work.h"
#include "shell/working_copies.h"

namespace veldra {

namespace {

constexpr std::string_view blank = " ";

void write_line(ReplacedFile& out, std::string_view line) {
    out.write(line);
    out.write("\r\n");
}

std::string padded(double value, std::string_view mask) {
    return zahl_text(value, mask, blank);
}

std::string_view boolean_text(std::int16_t value) {
    return value == table_true ? " 1" : value == table_false ? " 0" : "";
}

std::string selection_line(const ObjectSelection& obj) {
    const auto two = [](int value) { return padded(value, "#0"); };
    std::string line = "Objekte";
    line += two(obj.obj_pube) + two(obj.obj_pusi) + two(obj.obj_puwe);
    line += boolean_text(obj.obj_test_restkl);
    line += two(obj.obj_nube) + two(obj.obj_nbez) + two(obj.obj_verw) + two(obj.obj_beob);
    line += boolean_text(obj.obj_test_beob);
    line += two(obj.obj_test) + two(obj.obj_bezu) + two(obj.obj_bezu_elli) + two(obj.obj_bezu_abbi);
    line += blank;
    line += zahl_text(obj.obj_nube_meridian, "###0", "");
    line += boolean_text(obj.obj_epbe);
    return line;
}

std::string signature_line(const PointRow& point) {
    constexpr std::string_view coordinate_mask = "########0.000";
    constexpr std::string_view offset_mask = "#######0.0";
    std::string line = "Punktsignatur ";
    line += padded(point.pu_rechts, coordinate_mask) + padded(point.pu_hoch, coordinate_mask);
    line += padded(point.pu_art_lage, "#0") + padded(point.pu_art_hoehe, "#0");
    line += point.pu_signatur == 1 ? " 1 " : " 0 ";
    if (!point.pu_bez.empty()) {
        line += '"' + point.pu_bez + '"';
        line += padded(point.pu_bez_rechts, offset_mask) + padded(point.pu_bez_hoch, offset_mask);
    }
    return line;
}

std::string district_label_line(const NubezOffsetRow& row) {
    constexpr std::string_view mask = "########0.000";
    std::string line = "NumbezOffset ";
    line += trim(row.nuoff_bez);
    return line + padded(row.nuoff_rechts, mask) + padded(row.nuoff_hoch, mask);
}

/// All that the session holds of the current part's own records.
void write_part_block(ReplacedFile& out, const Session& session, FollowedWriting& writing) {
    constexpr std::int32_t often = 4096;
    for (std::size_t i = 1; i < session.titel.size(); ++i) {
        const std::string& text = session.titel[i].getTitelText();
        if (!text.empty()) {
            write_line(out, "Titel" + std::to_string(i + 1) + " " + text);
        }
    }
    write_line(out, selection_line(session.obj));
    for (std::int32_t i = 1; i <= session.pu.count(); ++i) {
        if (i % often == 0) {
            writing.goes_on();
        }
        if (session.pu[i].pu_signatur != 0) {
            write_line(out, signature_line(session.pu[i]));
        }
    }
    for (std::int32_t i = 1; i <= session.nuoff.count(); ++i) {
        write_line(out, district_label_line(session.nuoff[i]));
    }
}

/// The part's block has taken the place of this record.
bool replaced_by_block(Record& record) {
    switch (record.initial()) {
        case 'T':
            return record.is(keyword::titel2) || record.is(keyword::titel3) ||
                   record.is(keyword::titel4);
        case 'O':
            return record.is(keyword::objekte);
        case 'P':
            return record.is(keyword::punktsignatur) && record.word(6).found();
        case 'N':
            return record.is(keyword::numbezoffset);
        default:
            return false;
    }
}

std::string vector_scale_line(const Session& session) {
    std::string line = "Ma\xDFstabVektoren";
    for (std::size_t slot = 1; slot <= 6; ++slot) {
        line += padded(1 / session.vektor_massstab[slot], "#####0.#");
    }
    return line;
}

int layout_code(const PlotSettings& plot) {
    const int legend = plot.plot_legendenlage;
    return plot.plot_ausrichtung + 4 * plot.plot_heftrand +
           (legend >= 1 && legend <= 4 ? 16 * legend : 0);
}

/// The line of the current plot settings; none for a part that is not plotted.
std::optional<std::string> plot_scale_line(const PlotSettings& plot) {
    constexpr std::string_view count_mask = "#####0";
    constexpr std::string_view origin_mask = "##########0.000";
    if (plot.plot_massstab == -99.0) {
        return std::nullopt;
    }
    std::string line = "Ma\xDFstabGrundriss ";
    line += zahl_text(1 / plot.plot_massstab, "###########0", "");
    if (plot.plot_ausrichtung == 1 || plot.plot_ausrichtung == 2) {
        line += padded(plot.plot_null_rechts, origin_mask);
        line += padded(plot.plot_null_hoch, origin_mask);
        line += padded(layout_code(plot), count_mask);
        if (plot.plot_blatt_auto == table_false) {
            line += " 1" + padded(plot.plot_blatt_rechts, count_mask) +
                    padded(plot.plot_blatt_hoch, count_mask);
        }
    }
    return line;
}

void write_plot_scale(ReplacedFile& out, const PlotSettings& plot) {
    if (const auto line = plot_scale_line(plot)) {
        write_line(out, *line);
    }
}

/// A file-wide record or a part's scale, which the final form states anew.
bool restated_in_final_form(const Record& record) {
    switch (record.initial()) {
        case 'V':
            return record.is(keyword::verfahrenlegende);
        case 'T':
            return record.is(keyword::titel1);
        case 'M':
            return record.is(keyword::massstabgrundriss) || record.is(keyword::massstabvektoren);
        default:
            return false;
    }
}

void copy_in_final_form(const Session& session, LineReader& in, ReplacedFile& out) {
    std::int32_t part = 0;
    std::string_view line;
    while (in.next(line)) {
        const Record record(line);
        if (!record.has_keyword()) {
            continue;
        }
        if (record.initial() == 'N' && record.is(keyword::netzteil)) {
            write_line(out, line);
            ++part;
            if (part <= session.netz.count()) {
                write_plot_scale(out, plot_settings_of(session.netz[part]));
            }
        } else if (!restated_in_final_form(record)) {
            write_line(out, line);
        }
    }
}

}  // namespace

void close_document(Session& session) {
    session.arbeitsdatei_suffix.clear();
    session.arbeitskopien.clear();
    session.arbeitsordner.reset();
    WindowState& window = session.window;
    for (const MenuItem item : {MenuItem::m_torvel_objekte, MenuItem::m_torvel_ansicht,
                                MenuItem::m_torvel_plotten, MenuItem::m_torvel_optionen}) {
        window[item].enabled = false;
    }
    for (const ToolButton button :
         {ToolButton::lupe_plus, ToolButton::lupe_minus, ToolButton::schiebe_rechts,
          ToolButton::schiebe_links, ToolButton::schiebe_hoch, ToolButton::schiebe_runter,
          ToolButton::schiebe_original, ToolButton::plot_ein, ToolButton::plot_aus}) {
        window[button].enabled = false;
    }
    session.datei_geladen = 0;
}

void arbeitskopie_schreiben(Session& session) {
    if (session.datei_geladen != 1) {
        return;
    }
    const WorkingCopyName next = next_working_copy(session);
    write_working_copy(session, next.path());
    session.arbeitsdatei_basis = next.base;
    session.arbeitsdatei_suffix = next.suffix;
}

void write_working_copy(Session& session, const std::string& target) {
    if (session.datei_geladen != 1) {
        return;
    }
    FollowedWriting writing(session.work);
    LineReader in(working_path(session), &writing);
    const bool replaces = is_own_copy(session, target);
    ReplacedFile out(target, replaces ? NamedBy::program : NamedBy::program_as_new,
                     session.graphikdatei);
    enum class State : std::uint8_t { outside, block_due, inside };
    State state = session.netz_aktuell == 0 ? State::block_due : State::outside;
    const std::string& name = session.netz[session.netz_aktuell].netz_name;
    std::string_view line;
    while (in.next(line)) {
        if (state == State::block_due) {
            write_part_block(out, session, writing);
            state = State::inside;
        }
        Record record(line);
        if (!record.has_keyword()) {
            continue;
        }
        if (record.initial() == 'N' && record.is(keyword::netzteil)) {
            state = record.rest() == name ? State::block_due : State::outside;
            write_line(out, line);
        } else if (state == State::outside || !replaced_by_block(record)) {
            write_line(out, line);
        }
    }
    out.commit();
    count_as_own_copy(session, target);
    writing.finish();
}

void write_final_form(Session& session, const std::string& target) {
    if (session.datei_geladen != 1) {
        return;
    }
    if (session.netz.count() >= 1) {
        store_plot_settings(session);
    }
    FollowedWriting writing(session.work);
    LineReader in(working_path(session), &writing);
    const bool copy = is_own_copy(session, target);
    ReplacedFile out(target, copy ? NamedBy::program : NamedBy::user,
                     copy ? session.graphikdatei : std::string());
    write_line(out, "VerfahrenLegende " + session.titel[0].getTitelText());
    write_line(out, vector_scale_line(session));
    if (session.netz_aktuell == 0) {
        write_plot_scale(out, session.plot);
    }
    copy_in_final_form(session, in, out);
    out.commit();
    if (copy) {
        count_as_own_copy(session, target);
    }
    writing.finish();
}

void endfassung_schreiben(Session& session, const std::string& target) {
    if (session.datei_geladen != 1) {
        return;
    }
    write_final_form(session, target);
    const std::vector<OwnCopy> copies = std::exchange(session.arbeitskopien, {});
    close_document(session);
    remove_copies(copies);
}

void endfassung_schreiben(Session& session) {
    endfassung_schreiben(session, session.graphikdatei);
}

}  // namespace veldra
