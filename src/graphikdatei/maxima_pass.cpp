#include "graphikdatei/maxima_pass.h"

#include <cmath>

#include "graphikdatei/keywords.h"
#include "graphikdatei/record_fields.h"
#include "text/codepage.h"

namespace veldra {

namespace {

/// The slots of the maxima, in the order of all six-slot tables.
enum Slot : std::size_t {
    lage_aenderung = 1,
    lage_rest = 2,
    lage_ellipse = 3,
    hoehe_aenderung = 4,
    hoehe_rest = 5,
    hoehe_fehler = 6
};

/// The change that a following epoch continues.
struct Parent {
    enum class Kind : std::uint8_t { none, lage, hoehe } kind = Kind::none;
    Position position;
    bool at_ap = false;
    double rechts = 0;  ///< running totals, centimetres
    double hoch = 0;    ///< of a height change: its only total
};

class MaximaScan {
 public:
    explicit MaximaScan(Session& session) : session_(session) {}

    void read(Record& record) {
        switch (record.initial()) {
            case 'L':
                read_horizontal(record);
                break;
            case 'H':
                read_height(record);
                break;
            case 'N':
                if (record.is(keyword::naechsteepoche)) {
                    read_next_epoch(record);
                }
                break;
            default:
                break;
        }
    }

 private:
    void read_horizontal(Record& record) {
        if (record.is(keyword::lageaenderung)) {
            if (record.word(5).found()) {
                parent_ = {Parent::Kind::lage, read_position(record),
                           flag_value(record.word(6)) != 0, record.number(4), record.number(5)};
                take_horizontal_change(record.word(7));
            }
        } else if (record.is(keyword::lagerestklaffungen)) {
            if (record.word(5).found()) {
                take_single(lage_rest, flag_value(record.word(6)) != 0,
                            length(record.number(4), record.number(5)), record);
            }
        } else if (record.is(keyword::lagefehlerellipse) && record.word(6).found()) {
            take_single(lage_ellipse, false, std::fabs(record.number(4)), record);
        }
    }

    void read_height(Record& record) {
        const bool change = record.is(keyword::hoehenaenderung);
        const bool rest = !change && record.is(keyword::hoehenrestklaffungen);
        const bool error = !change && !rest && record.is(keyword::hoehenfehler);
        if (!(change || rest || error) || !record.word(4).found()) {
            return;
        }
        if (change) {
            parent_ = {Parent::Kind::hoehe, read_position(record), flag_value(record.word(5)) != 0,
                       0, record.number(4)};
            take_height_change(record.word(6));
            return;
        }
        const bool at_ap = rest && flag_value(record.word(5)) != 0;
        take_single(rest ? hoehe_rest : hoehe_fehler, at_ap, std::fabs(record.number(4)), record);
    }

    void read_next_epoch(Record& record) {
        if (!record.word(2).found()) {
            return;
        }
        if (parent_.kind == Parent::Kind::lage) {
            parent_.rechts += record.number(2);
            parent_.hoch += record.number(3);
            take_horizontal_change(record.word(4));
        } else if (parent_.kind == Parent::Kind::hoehe) {
            parent_.hoch += record.number(2);
            take_height_change(record.word(3));
        }
    }

    void take_horizontal_change(const Word& epoch) {
        take(lage_aenderung, parent_.at_ap, length(parent_.rechts, parent_.hoch), epoch.text,
             [this] { return parent_.position; });
    }

    void take_height_change(const Word& epoch) {
        take(hoehe_aenderung, parent_.at_ap, parent_.hoch, epoch.text,
             [this] { return parent_.position; });
    }

    /// A value that no epochs continue.
    void take_single(Slot slot, bool at_ap, double value, Record& record) {
        take(slot, at_ap, value, {}, [&record] { return read_position(record); });
        parent_ = {};
    }

    static double length(double rechts, double hoch) {
        return std::sqrt(rechts * rechts + hoch * hoch);
    }

    /// The place is asked for only where it is needed.
    template <typename PositionOf>
    void take(Slot slot, bool at_ap, double value, std::string_view epoch, PositionOf position_of) {
        Maximum& maximum = (at_ap ? session_.max_ap : session_.max_np)[slot];
        if (std::fabs(value) > std::fabs(maximum.wert)) {
            const Position position = position_of();
            maximum.wert = value;
            maximum.rechts = position.rechts;
            maximum.hoch = position.hoch;
            maximum.epoche = epoch;
        }
    }

    Session& session_;
    Parent parent_;
};

/// Takes the label of a point for the maxima that lie there.
void name_maxima(Session& session, Record& record) {
    const double rechts = record.number(2);
    for (auto* maxima : {&session.max_ap, &session.max_np}) {
        for (std::size_t slot = 1; slot < maxima->size(); ++slot) {
            Maximum& maximum = (*maxima)[slot];
            if (maximum.rechts == rechts && maximum.hoch == record.number(3) &&
                record.word(7).found() && upper_case(record.keyword()) == keyword::punktsignatur) {
                maximum.bez = record.word(7).text;
            }
        }
    }
}

}  // namespace

void maxima_lesen(Session& session) {
    session.max_ap = {};
    session.max_np = {};
    const std::string path = working_path(session);
    std::string_view line;
    {
        RecordSource source(path, "LHN", session.work);
        MaximaScan scan(session);
        while (source.next(line)) {
            Record record(line);
            scan.read(record);
        }
    }
    RecordSource source(path, "P", session.work);
    while (source.next(line)) {
        Record record(line);
        if (record.initial() == 'P') {
            name_maxima(session, record);
        }
    }
}

}  // namespace veldra
