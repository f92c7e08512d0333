#include "graphikdatei/written_records.h"

#include "text/codepage.h"
#include "text/fatal_error.h"
#include "text/numbers.h"
#include "text/tokens.h"

namespace veldra {

namespace {

constexpr std::string_view blank = " ";

void add_padded(std::string& line, double value, std::string_view mask) {
    const std::string text = zahl_text(value, mask, blank);
    if (!text.starts_with(' ') && !line.ends_with(' ')) {
        line += blank;
    }
    line += text;
}

std::string_view boolean_text(std::int16_t value) {
    return value == table_true ? " 1" : value == table_false ? " 0" : "";
}

int layout_code(const PlotSettings& plot) {
    const int legend = plot.plot_legendenlage;
    return plot.plot_ausrichtung + 4 * plot.plot_heftrand +
           (legend >= 1 && legend <= 4 ? 16 * legend : 0);
}

/// The label with its offsets; nothing for a point without one. `before` is the record up to it.
std::string label_fields(const PointRow& point, std::size_t before) {
    constexpr std::string_view offset_mask = "#######0.0";
    const std::string bytes = one_line(point.pu_bez);
    const std::string_view label = trim(bytes);
    if (label.empty()) {
        return {};
    }
    std::string offsets = "\"";
    add_padded(offsets, point.pu_bez_rechts, offset_mask);
    add_padded(offsets, point.pu_bez_hoch, offset_mask);
    const std::size_t taken = before + 1 + offsets.size();
    const std::size_t room = taken < longest_line ? longest_line - taken : 0;
    return '"' + std::string(label.substr(0, room)) + offsets;
}

}  // namespace

std::string title_record(std::size_t number, std::string_view text) {
    return "Titel" + std::to_string(number) + " " + one_line(text);
}

std::string selection_record(const ObjectSelection& obj) {
    std::string line = "Objekte";
    const auto add = [&line](int value) { add_padded(line, value, "#0"); };
    add(obj.obj_pube);
    add(obj.obj_pusi);
    add(obj.obj_puwe);
    line += boolean_text(obj.obj_test_restkl);
    add(obj.obj_nube);
    add(obj.obj_nbez);
    add(obj.obj_verw);
    add(obj.obj_beob);
    line += boolean_text(obj.obj_test_beob);
    add(obj.obj_test);
    add(obj.obj_bezu);
    add(obj.obj_bezu_elli);
    add(obj.obj_bezu_abbi);
    line += blank;
    line += zahl_text(obj.obj_nube_meridian, "###0", "");
    line += boolean_text(obj.obj_epbe);
    return line;
}

std::string signature_record(const PointRow& point) {
    constexpr std::string_view coordinate_mask = "########0.000";
    std::string line = "Punktsignatur ";
    add_padded(line, point.pu_rechts, coordinate_mask);
    add_padded(line, point.pu_hoch, coordinate_mask);
    add_padded(line, point.pu_art_lage, "#0");
    add_padded(line, point.pu_art_hoehe, "#0");
    line += point.pu_signatur == 1 ? " 1 " : " 0 ";
    return line + label_fields(point, line.size());
}

std::string district_label_record(const NubezOffsetRow& row) {
    constexpr std::string_view mask = "########0.000";
    std::string line = "NumbezOffset ";
    line += trim(row.nuoff_bez);
    add_padded(line, row.nuoff_rechts, mask);
    add_padded(line, row.nuoff_hoch, mask);
    return line;
}

std::string vector_scale_record(const Session& session) {
    std::string line = "Ma\xDFstabVektoren";
    for (std::size_t slot = 1; slot <= 6; ++slot) {
        add_padded(line, 1 / session.vektor_massstab[slot], "#####0.#");
    }
    return line;
}

std::optional<std::string> plot_scale_record(const PlotSettings& plot) {
    constexpr std::string_view count_mask = "#####0";
    constexpr std::string_view origin_mask = "##########0.000";
    if (plot.plot_massstab == -99.0) {
        return std::nullopt;
    }
    std::string line = "Ma\xDFstabGrundriss ";
    line += zahl_text(1 / plot.plot_massstab, "###########0", "");
    if (plot.plot_ausrichtung == 1 || plot.plot_ausrichtung == 2) {
        add_padded(line, plot.plot_null_rechts, origin_mask);
        add_padded(line, plot.plot_null_hoch, origin_mask);
        add_padded(line, layout_code(plot), count_mask);
        if (plot.plot_blatt_auto == table_false) {
            line += " 1";
            add_padded(line, plot.plot_blatt_rechts, count_mask);
            add_padded(line, plot.plot_blatt_hoch, count_mask);
        }
    }
    return line;
}

void write_line(ReplacedFile& out, std::string_view line) {
    out.write(line);
    out.write("\r\n");
}

void write_record(ReplacedFile& out, const Session& session, std::string_view line) {
    constexpr std::size_t shown = 60;
    if (line.size() > longest_line || line.find('\n') != std::string_view::npos) {
        throw FatalError(session.graphikdatei + ": Der Satz \"" +
                         to_utf8(one_line(line.substr(0, shown))) +
                         "\" ließe sich nicht als eine Zeile zurücklesen.");
    }
    write_line(out, line);
}

}  // namespace veldra
