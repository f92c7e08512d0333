#include "graphikdatei/memory_writer.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <string_view>
#include <utility>

#include "graphikdatei/change_records.h"
#include "graphikdatei/working_copies.h"
#include "graphikdatei/written_records.h"
#include "os/files.h"
#include "text/codepage.h"
#include "text/numbers.h"

namespace veldra {

namespace {

constexpr double no_ev = 1000.0;
constexpr double no_value = -99.0;

struct Place {
    double rechts = 0;
    double hoch = 0;
};

/// A record that grows field by field.
class FieldLine {
 public:
    explicit FieldLine(std::string_view keyword) : text_(keyword) {}

    FieldLine& number(double value, std::string_view mask = "0.0#####") {
        text_ += ' ' + zahl_text(value, mask, "");
        return *this;
    }
    FieldLine& place(const Place& place) {
        return number(place.rechts, "0.000").number(place.hoch, "0.000");
    }
    FieldLine& flag(bool set) { return word(set ? "1" : "0"); }
    FieldLine& word(std::string_view word) {
        text_ += ' ';
        text_ += word;
        return *this;
    }
    FieldLine& quoted(std::string_view bytes) {
        text_ += " \"" + one_line(bytes) + '"';
        return *this;
    }
    /// EV and NV of a residual; nothing if there are none.
    FieldLine& pair(double ev, double nv) {
        return ev == no_ev ? *this : number(ev).number(nv == no_value ? 0 : nv);
    }
    FieldLine& test(const std::array<double, 3>& ev_nv_ep) {
        for (std::size_t i = 0; i < ev_nv_ep.size() && !missing(i, ev_nv_ep[i]); ++i) {
            number(ev_nv_ep[i]);
        }
        return *this;
    }
    [[nodiscard]] const std::string& text() const { return text_; }

 private:
    static bool missing(std::size_t i, double value) {
        return value == (i == 0 ? no_ev : no_value);
    }

    std::string text_;
};

/// The points by their centimetre, which is all that a line knows of its ends.
class PointsOfLines {
 public:
    explicit PointsOfLines(const PointTable& points) {
        for (std::int32_t i = 1; i <= points.pu_anzahl_signatur; ++i) {
            const Place place{points[i].pu_rechts, points[i].pu_hoch};
            places_.emplace(key(place), place);
        }
    }

    [[nodiscard]] Place at(const Place& rounded) const {
        const auto found = places_.find(key(rounded));
        return found == places_.end() ? rounded : found->second;
    }

 private:
    using Key = std::pair<std::int64_t, std::int64_t>;
    static Key key(const Place& place) {
        return {whole_centimetres(place.rechts), whole_centimetres(place.hoch)};
    }

    std::map<Key, Place> places_;
};

/// The keywords of one kind of observation; "" where it has none.
struct ObservationWords {
    std::string_view side;
    std::string_view gps_side;
    std::string_view ray;
    std::string_view gps_ray;
};

class MemoryWriter {
 public:
    MemoryWriter(const Session& session, const std::string& target)
        : session_(session),
          out_(target, is_own_copy(session, target) ? NamedBy::program : NamedBy::program_as_new,
               session.graphikdatei),
          points_(session.pu) {}

    void write() {
        record("VerfahrenLegende " + session_.titel[0].getTitelText());
        record(vector_scale_record(session_));
        if (session_.netz_aktuell == 0) {
            plot_scale(session_.plot);
            current_part();
        }
        for (std::int32_t part = 1; part <= session_.netz.count(); ++part) {
            record("NETZTEIL " + session_.netz[part].netz_name);
            const bool current = part == session_.netz_aktuell;
            plot_scale(current ? session_.plot : plot_settings_of(session_.netz[part]));
            if (current) {
                current_part();
            }
        }
        out_.commit();
    }

 private:
    void record(std::string_view line) { write_record(out_, session_, line); }
    void record(const FieldLine& line) { record(line.text()); }

    void plot_scale(const PlotSettings& plot) {
        if (const auto line = plot_scale_record(plot)) {
            record(*line);
        }
    }

    void current_part() {
        write_part_block(out_, session_, [] {});
        for (std::int32_t i = 1; i <= session_.lin.count(); ++i) {
            observations(session_.lin[i]);
        }
        for (std::int32_t i = 1; i <= session_.pu.count(); ++i) {
            position_value(i);
            height_value(i);
        }
    }

    void observations(const LineRow& row) {
        switch (session_.obj.obj_beob) {
            case 1:
                if (row.lin_typ_seite == 10) {
                    record(ends("Orientierungsrichtung", row).quoted(row.lin_fernziel.view()));
                } else {
                    lines(row, {"Distanz", "GPS-Strecke", "Richtung", "GPS-Richtung"});
                }
                break;
            case 2:
                lines(row, {"H\xF6henunterschied", "GPS-H\xF6henunterschied", "Zenitwinkel", ""});
                break;
            case 3:
                record(ends("GPS-Raumvektor", row)
                           .number(row.lin_ev_hin)
                           .number(row.lin_nv_hin)
                           .number(row.lin_ep_hin)
                           .number(row.lin_ev_seite)
                           .number(row.lin_nv_seite)
                           .number(row.lin_ep_seite)
                           .number(row.lin_ev_rueck)
                           .number(row.lin_nv_rueck)
                           .number(row.lin_ep_rueck));
                break;
            default:
                break;
        }
    }

    void lines(const LineRow& row, const ObservationWords& words) {
        if (row.lin_typ_seite != 0) {
            record(ends(row.lin_typ_seite == 1 ? words.side : words.gps_side, row)
                       .test({row.lin_ev_seite, row.lin_nv_seite, row.lin_ep_seite}));
        }
        if (row.lin_typ_hin != 0) {
            record(ends(row.lin_typ_hin == 11 ? words.ray : words.gps_ray, row)
                       .test({row.lin_ev_hin, row.lin_nv_hin, row.lin_ep_hin}));
        }
        if (row.lin_typ_rueck != 0) {
            record(ends_back(row.lin_typ_rueck == 11 ? words.ray : words.gps_ray, row)
                       .test({row.lin_ev_rueck, row.lin_nv_rueck, row.lin_ep_rueck}));
        }
    }

    [[nodiscard]] FieldLine ends(std::string_view keyword, const LineRow& row) const {
        const LineCoordinates c = row.lin_schluessel.coordinates();
        return FieldLine(keyword).place(points_.at({c.x1, c.y1})).place(points_.at({c.x2, c.y2}));
    }
    [[nodiscard]] FieldLine ends_back(std::string_view keyword, const LineRow& row) const {
        const LineCoordinates c = row.lin_schluessel.coordinates();
        return FieldLine(keyword).place(points_.at({c.x2, c.y2})).place(points_.at({c.x1, c.y1}));
    }

    /// The epoch text and, for a moved label, its offsets.
    static FieldLine& label(FieldLine& line, const PointRow& row) {
        if (!row.pu_bez.empty() || row.pu_bez_rechts != 0) {
            line.quoted(row.pu_bez);
        }
        if (row.pu_bez_rechts != 0) {
            line.word(epoch_offset_text(row.pu_bez_rechts))
                .word(epoch_offset_text(row.pu_bez_hoch));
        }
        return line;
    }

    void position_value(std::int32_t i) {
        const PointRow& row = session_.pu[i];
        const Place place{row.pu_rechts, row.pu_hoch};
        switch (std::abs(row.pu_wert_lage)) {
            case 1:
                position_change(i);
                break;
            case 2: {
                FieldLine line("Lagerestklaffungen");
                line.place(place).number(row.pu_wert_rechts).number(row.pu_wert_hoch);
                record(line.flag(row.pu_wert_lage > 0)
                           .pair(row.pu_ev_lage, row.pu_nv_lage)
                           .pair(row.pu_ev_hoehe, row.pu_nv_hoehe));
                break;
            }
            case 3:
                record(FieldLine("Lagefehlerellipse")
                           .place(place)
                           .number(row.pu_wert_rechts)
                           .number(row.pu_wert_hoch)
                           .number(row.pu_wert_dh));
                break;
            default:
                break;
        }
    }

    void height_value(std::int32_t i) {
        const PointRow& row = session_.pu[i];
        const Place place{row.pu_rechts, row.pu_hoch};
        switch (std::abs(row.pu_wert_hoehe)) {
            case 4:
                height_change(i);
                break;
            case 5:
                record(FieldLine("H\xF6henrestklaffungen")
                           .place(place)
                           .number(row.pu_wert_dh)
                           .flag(row.pu_wert_hoehe > 0)
                           .pair(row.pu_ev_lage, row.pu_nv_lage));
                break;
            case 6:
                record(FieldLine("H\xF6henfehler").place(place).number(row.pu_wert_dh));
                break;
            default:
                break;
        }
    }

    /// An epoch states the difference to the one before, which is the row before.
    void position_change(std::int32_t i) {
        const PointRow& row = session_.pu[i];
        if (row.pu_epoche > 0) {
            const PointRow& before = session_.pu[i - 1];
            FieldLine line(
                "N\xE4"
                "chsteEpoche");
            line.number(row.pu_wert_rechts - before.pu_wert_rechts)
                .number(row.pu_wert_hoch - before.pu_wert_hoch);
            record(label(line, row));
            return;
        }
        FieldLine line("Lage\xE4nderung");
        line.place({row.pu_rechts, row.pu_hoch})
            .number(row.pu_wert_rechts)
            .number(row.pu_wert_hoch)
            .flag(row.pu_wert_lage > 0);
        record(label(line, row));
    }

    void height_change(std::int32_t i) {
        const PointRow& row = session_.pu[i];
        if (row.pu_epoche > 0) {
            FieldLine line(
                "N\xE4"
                "chsteEpoche");
            line.number(row.pu_wert_dh - session_.pu[i - 1].pu_wert_dh);
            record(label(line, row));
            return;
        }
        FieldLine line("H\xF6hen\xE4nderung");
        line.place({row.pu_rechts, row.pu_hoch}).number(row.pu_wert_dh).flag(row.pu_wert_hoehe > 0);
        record(label(line, row));
    }

    const Session& session_;
    ReplacedFile out_;
    PointsOfLines points_;
};

}  // namespace

void write_from_memory(Session& session, const std::string& target) {
    MemoryWriter(session, target).write();
    count_as_own_copy(session, target);
}

}  // namespace veldra
