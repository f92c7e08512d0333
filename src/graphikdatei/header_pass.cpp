#include "graphikdatei/header_pass.h"

#include <cmath>

#include "graphikdatei/keywords.h"
#include "graphikdatei/record_fields.h"

namespace veldra {

namespace {

/// Orientation, margin and legend position packed into one number.
struct LayoutCode {
    int orientation = 0;
    int margin = 0;
    int legend = 0;
};

LayoutCode split_layout(std::int16_t code) {
    const int margin = static_cast<int>(std::floor(code / 4.0)) % 4;
    return {code % 4, margin, static_cast<int>(std::floor(code / 16.0))};
}

/// The plot settings that a record states; `denominator` is its scale.
PlotSettings read_plot_settings(double denominator, Record& record, const RecordSource& source) {
    PlotSettings plot;
    plot.plot_massstab = 1 / denominator;
    if (!record.word(5).found()) {
        return plot;
    }
    const LayoutCode layout =
        split_layout(source.integer(record.number(5), "MA\xDFSTABGRUNDRISS T5"));
    if (layout.orientation != 1 && layout.orientation != 2) {
        return plot;
    }
    plot.plot_ausrichtung = static_cast<std::int16_t>(layout.orientation);
    plot.plot_null_rechts = record.number(3);
    plot.plot_null_hoch = record.number(4);
    if (layout.margin >= 1) {
        plot.plot_heftrand = static_cast<std::int16_t>(layout.margin);
    }
    if (layout.legend >= 1 && layout.legend <= 4) {
        plot.plot_legendenlage = static_cast<std::int16_t>(layout.legend);
    }
    if (source.integer(record.number(6), "MA\xDFSTABGRUNDRISS T6") == 1) {
        plot.plot_blatt_auto = table_false;
        plot.plot_blatt_rechts = source.integer(record.number(7), "plot_blatt_rechts");
        plot.plot_blatt_hoch = source.integer(record.number(8), "plot_blatt_hoch");
    }
    return plot;
}

void read_plot_scale(Session& session, Record& record, const RecordSource& source) {
    const double denominator = record.number(2);
    if (!record.word(2).found() || denominator < 1) {
        return;
    }
    session.plot = read_plot_settings(denominator, record, source);
    if (session.netz_aktuell > 0) {
        store_plot_settings(session);
    }
}

void read_vector_scales(Session& session, Record& record) {
    if (!record.word(7).found()) {
        return;
    }
    for (std::size_t slot = 1; slot <= 6; ++slot) {
        const double denominator = record.number(static_cast<int>(slot) + 1);
        if (denominator != 0) {
            session.vektor_massstab[slot] = 1 / denominator;
            session.vektor_massstab_plot[slot] = 1 / denominator;
        }
    }
}

void open_part(Session& session, const Record& record, const RecordSource& source) {
    if (!record.has_rest()) {
        throw source.error(5, keyword::netzteil);
    }
    session.netz_aktuell = session.netz.append();
    session.netz[session.netz_aktuell].netz_name = record.rest();
}

void read_record(Session& session, Record& record, const RecordSource& source) {
    switch (record.initial()) {
        case 'N':
            if (record.is(keyword::netzteil)) {
                open_part(session, record, source);
            }
            break;
        case 'V':
            if (record.is(keyword::verfahrenlegende) && record.has_rest()) {
                session.titel[0].setTitelText(trim(one_line(record.rest())));
            }
            break;
        case 'M':
            if (record.is(keyword::massstabgrundriss)) {
                read_plot_scale(session, record, source);
            } else if (record.is(keyword::massstabvektoren)) {
                read_vector_scales(session, record);
            }
            break;
        default:
            break;
    }
}

/// The list of parts belongs to the file before until the end of the pass.
void close_part_list(WindowState& window) {
    window[MenuItem::m_ansicht_netzteile].enabled = false;
    window[MenuItem::m_ansicht_netzteile].checked = false;
    window[ToolButton::netzteile].enabled = false;
    window.frm_netzteile_shown = false;
    ++window.frm_netzteile_load;
}

}  // namespace

void kopf_lesen(Session& session) {
    close_part_list(session.window);
    session.netz.clear();
    session.netz_aktuell = 0;
    session.plot = PlotSettings{};

    RecordSource source(working_path(session), "NVM", session.work);
    std::string_view line;
    while (source.next(line)) {
        Record record(line);
        read_record(session, record, source);
    }

    if (session.netz.count() >= 1) {
        session.netz_aktuell = 1;
        load_plot_settings(session);
        session.window[MenuItem::m_ansicht_netzteile].enabled = true;
        session.window[MenuItem::m_ansicht_netzteile].checked = true;
        session.window.frm_netzteile_shown = true;
    }
    constexpr int save = 2;
    plot_merken(session, save);
}

}  // namespace veldra
