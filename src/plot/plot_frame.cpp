#include "plot/plot_frame.h"

#include <algorithm>

#include "drawing/fonts.h"
#include "drawing/pen.h"
#include "drawing/title.h"
#include "plot/application_printer.h"
#include "plot/fitted_font.h"
#include "plot/sheet_division.h"
#include "plot/sheet_number.h"
#include "text/numbers.h"

namespace veldra {

namespace {

using pen::black;
using pen::solid;

/// Net area of a sheet on the page, millimetres from its upper left corner.
struct NetArea {
    double left;
    double top;
    double right;
    double bottom;
    double foot;  ///< lower end of the printable area
};

NetArea net_area(const SheetGeometry& sheet) {
    return {sheet.rand_links * 1000, sheet.rand_oben * 1000,
            (sheet.papier_breite + sheet.rand_links) * 1000,
            (sheet.papier_hoehe + sheet.rand_oben) * 1000,
            (sheet.papier_hoehe + sheet.rand_oben + sheet.rand_unten) * 1000};
}

bool at_the_right(std::int16_t lage) {
    return lage == 3 || lage == 4;
}
bool at_the_top(std::int16_t lage) {
    return lage == 1 || lage == 3;
}
bool has_legend(std::int16_t lage) {
    return lage >= 1 && lage <= 4;
}

class Frame {
 public:
    Frame(Session& session, Printer& printer, const LegendSize& legend, const SheetPlace& place)
        : session_(session),
          printer_(printer),
          page_(printer.page()),
          legend_(legend),
          place_(place),
          net_(net_area(session.sheet)) {}

    void draw() {
        page_.DrawStyle(solid);
        page_.ForeColor(black);
        page_.DrawWidth(1);
        draw_corner_marks();
        draw_foot_lines();
        draw_legend();
    }

 private:
    void line(double x1, double y1, double x2, double y2) {
        page_.Line(static_cast<float>(x1), static_cast<float>(y1), static_cast<float>(x2),
                   static_cast<float>(y2));
    }

    /// An angle of two strokes into the net area.
    void mark(double x, double y, double to_x, double to_y) {
        line(x, y, x, to_y);
        line(x, y, to_x, y);
    }

    void draw_corner_marks() {
        constexpr double length = 5;
        mark(net_.left, net_.top, net_.left + length, net_.top + length);
        mark(net_.left, net_.bottom, net_.left + length, net_.bottom - length);
        mark(net_.right, net_.top, net_.right - length, net_.top + length);
        mark(net_.right, net_.bottom, net_.right - length, net_.bottom - length);
    }

    void print(const std::string& text, double x, double y, const FontSpec& font, float size) {
        if (!text.empty()) {
            page_.Print(text, x, y, fitted_font(session_, printer_, font, size), black);
        }
    }

    void draw_foot_lines() {
        const Settings& settings = session_.settings;
        print(SheetNumberText(session_), net_.left, net_.foot - 11, district_label_font(settings),
              settings.nubsizplo);
        if (place_.columns > 1 || place_.rows > 1) {
            constexpr float digit_height = 1.9F;
            print(session_.titel[0].getTitelText() + ", " + sheet_title(place_), net_.left,
                  net_.foot - 4, {"Times New Roman", 0, 0, 0, 0}, digit_height);
        }
    }

    void draw_legend() {
        const std::optional<PagePoint> corner = legend_corner(session_, legend_, place_);
        if (!corner) {
            return;
        }
        page_.DrawWidth(session_.settings.faktorStrich);
        const double right = corner->x + legend_.width;
        const double bottom = corner->y + legend_.height;
        line(corner->x, corner->y, right, corner->y);
        line(right, corner->y, right, bottom);
        line(right, bottom, corner->x, bottom);
        line(corner->x, bottom, corner->x, corner->y);
        const double x = corner->x + 3;
        double y = corner->y + 2;
        for (const LegendLine& entry : legend_.lines) {
            const float size = entry.zeile->getTitelSize();
            FontSpec font = fitted_font(session_, printer_, title_font(*entry.zeile), size);
            font.points *= legend_.shrink;
            if (!entry.text.empty()) {
                page_.Print(entry.text, x, y, font, black);
            }
            y += line_height_per_digit * static_cast<double>(size) * legend_.shrink;
        }
    }

    Session& session_;
    Printer& printer_;
    PageTarget& page_;
    const LegendSize& legend_;
    const SheetPlace& place_;
    NetArea net_;
};

/// The ground under a legend of this size.
LegendBox legend_box(const Session& session, const LegendSize& legend) {
    const PlotSettings& plot = session.plot;
    const double s = plot.plot_massstab;
    const double right =
        plot.plot_null_rechts + plot.plot_blatt_rechts * session.sheet.papier_breite / s;
    const double top = plot.plot_null_hoch + plot.plot_blatt_hoch * session.sheet.papier_hoehe / s;
    const double w = legend.width / s / 1000;
    const double h = legend.height / s / 1000;
    if (!has_legend(plot.plot_legendenlage)) {
        return {};
    }
    LegendBox box;
    box.legende_rw_min = at_the_right(plot.plot_legendenlage) ? right - w : plot.plot_null_rechts;
    box.legende_rw_max = at_the_right(plot.plot_legendenlage) ? right : plot.plot_null_rechts + w;
    box.legende_hw_min = at_the_top(plot.plot_legendenlage) ? top - h : plot.plot_null_hoch;
    box.legende_hw_max = at_the_top(plot.plot_legendenlage) ? top : plot.plot_null_hoch + h;
    return box;
}

constexpr double legend_border = 6;  // on both sides of the lines together, millimetres

/// The line, broken at blanks as far as that makes its rows no wider than `most`, millimetres.
std::vector<std::string> broken_at_blanks(PaperTextSize& paper_text, const std::string& line,
                                          double most) {
    const auto too_wide = [&](const std::string& text) {
        return paper_text.text_size(text).width * 1000 > most;
    };
    if (!too_wide(line)) {
        return {line};
    }
    std::vector<std::string> rows{""};
    for (std::size_t at = 0; at <= line.size();) {
        const std::size_t end = std::min(line.find(' ', at), line.size());
        const std::string word = line.substr(at, end - at);
        const std::string longer = rows.back().empty() ? word : rows.back() + ' ' + word;
        if (!rows.back().empty() && too_wide(longer)) {
            rows.push_back(word);
        } else {
            rows.back() = longer;
        }
        at = end + 1;
    }
    return rows;
}

/// The legend with lines of a share of their size, for a sheet of this width, millimetres.
LegendSize legend_in(const Session& session, PaperTextSize& paper_text, double shrink,
                     double sheet_width) {
    LegendSize legend{0, 4, {}, shrink};
    for (const LegendLine& line : legend_lines(session)) {
        const float size = line.zeile->getTitelSize();
        paper_text.set_font(title_font(*line.zeile), size);
        for (std::string& row :
             broken_at_blanks(paper_text, line.text, (sheet_width - legend_border) / shrink)) {
            legend.height += line_height_per_digit * static_cast<double>(size) * shrink;
            legend.width = std::max(legend.width, paper_text.text_size(row).width * 1000 * shrink);
            legend.lines.push_back({std::move(row), line.zeile});
        }
    }
    legend.width += legend_border;
    return legend;
}

}  // namespace

FontSpec title_font(const Titelzeile& zeile) {
    // Where there is no printer widths follow from the proportions at any size in points.
    constexpr double any_size = 10;
    return {zeile.getTitelFont(), any_size, zeile.getTitelBold(), zeile.getTitelItal(),
            zeile.getTitelUndr()};
}

std::vector<LegendLine> legend_lines(const Session& session) {
    std::vector<LegendLine> lines;
    for (std::size_t i = 0; i < session.titel.size(); ++i) {
        const Titelzeile& zeile = session.titel[i];
        std::string text = zeile.getTitelText();
        if (text.empty() && i == 1) {
            continue;
        }
        if (text.empty() && i >= 2) {
            text =
                BuildTitle(session, i == 2 ? title_code::legend_line_3 : title_code::legend_line_4);
        }
        lines.push_back({std::move(text), &zeile});
    }
    return lines;
}

void count_plot_sheets(Session& session) {
    PlotSettings& plot = session.plot;
    const Extents& extents = session.extents;
    // An empty part may have its zero point wherever it likes.
    const bool counted = !part_is_empty(session) || sheets_can_be_counted(session);
    if (plot.plot_blatt_auto == table_true && counted) {
        plot.plot_blatt_rechts = sheet_count(session, extents.gesamt_rw_max - plot.plot_null_rechts,
                                             session.sheet.papier_breite, "plot_blatt_rechts");
        plot.plot_blatt_hoch = sheet_count(session, extents.gesamt_hw_max - plot.plot_null_hoch,
                                           session.sheet.papier_hoehe, "plot_blatt_hoch");
    }
    plot.plot_blatt_rechts = std::max<std::int16_t>(plot.plot_blatt_rechts, 1);
    plot.plot_blatt_hoch = std::max<std::int16_t>(plot.plot_blatt_hoch, 1);
}

LegendSize ComputeLegendSize(Session& session, PaperTextSize& paper_text) {
    const SheetGeometry& sheet = session.sheet;
    LegendSize legend = legend_in(session, paper_text, 1, sheet.papier_breite * 1000);
    // Without a sheet there is nothing to fit on.
    const bool has_sheet = sheet.papier_breite > 0 && sheet.papier_hoehe > 0;
    constexpr double smallest = 0.05;
    while (
        has_sheet && legend.shrink > smallest &&
        (legend.width > sheet.papier_breite * 1000 || legend.height > sheet.papier_hoehe * 1000)) {
        constexpr double step = 0.95;
        legend = legend_in(session, paper_text, legend.shrink * step, sheet.papier_breite * 1000);
    }
    count_plot_sheets(session);
    session.legende = legend_box(session, legend);
    return legend;
}

std::optional<PagePoint> legend_corner(const Session& session, const LegendSize& legend,
                                       const SheetPlace& place) {
    const std::int16_t lage = session.plot.plot_legendenlage;
    const bool on_this_sheet = place.column == (at_the_right(lage) ? place.columns : 1) &&
                               place.row == (at_the_top(lage) ? place.rows : 1);
    if (!has_legend(lage) || !on_this_sheet) {
        return std::nullopt;
    }
    const NetArea net = net_area(session.sheet);
    return PagePoint{at_the_right(lage) ? net.right - legend.width : net.left,
                     at_the_top(lage) ? net.top : net.bottom - legend.height};
}

std::string sheet_title(const SheetPlace& place) {
    const auto number = [](std::int16_t value) { return zahl_text(value, "##0", ""); };
    return "Blatt " + number(place.column) + "." + number(place.row) + " (" +
           number(place.columns) + "." + number(place.rows) + ")";
}

void report_printer_failure(UserInterface& ui, const PrinterError& error) {
    std::string text = "Drucker-PC bzw. Netz nicht erreichbar";
    if (const std::string reason = error.what(); !reason.empty()) {
        text += "\n" + reason;
    }
    ui.message_box(MessageStyle::critical, "Netzteil(e) plotten", text);
}

void PlotFrame(Session& session, Printer& printer, const LegendSize& legend,
               const SheetPlace& place) {
    Frame(session, printer, legend, place).draw();
}

}  // namespace veldra
