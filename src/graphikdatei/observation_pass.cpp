#include "graphikdatei/observation_pass.h"

#include <cmath>
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "graphikdatei/delay_line.h"
#include "graphikdatei/part_filter.h"
#include "graphikdatei/record_fields.h"

namespace veldra {

namespace {

constexpr std::int16_t terrestrial = 1;
constexpr std::int16_t gps = 2;
constexpr std::int16_t orientation = 10;
constexpr std::int16_t direction = 11;
constexpr std::int16_t gps_direction = 12;

/// Test values of one slot of a row.
struct SlotValues {
    double& ev;
    double& nv;
    double& ep;
};

SlotValues forward_values(LineRow& row) {
    return {row.lin_ev_hin, row.lin_nv_hin, row.lin_ep_hin};
}
SlotValues undirected_values(LineRow& row) {
    return {row.lin_ev_seite, row.lin_nv_seite, row.lin_ep_seite};
}
SlotValues backward_values(LineRow& row) {
    return {row.lin_ev_rueck, row.lin_nv_rueck, row.lin_ep_rueck};
}

/// Test values of an observation; what its record lacks is `absent`.
struct TestTriple {
    double ev = absent;
    double nv = absent;
    double ep = absent;
};

/// Takes them from tokens n to n + 2.
TestTriple read_triple(Record& record, int n) {
    const double ev = record.number(n, absent);
    const double nv = record.number(n + 1, absent);
    return {ev, nv, record.number(n + 2, absent)};
}

/// The smallest EV and the largest NV and EP stay; an EV below the limit hides the others.
void beob_werte(const TestTriple& triple, double ev_grenze, SlotValues slot) {
    if (std::isnan(triple.ev)) {
        return;
    }
    slot.ev = triple.ev < slot.ev ? triple.ev : slot.ev;
    if (triple.ev < ev_grenze) {
        return;
    }
    // What is absent is above nothing.
    slot.nv = triple.nv > slot.nv ? triple.nv : slot.nv;
    slot.ep = triple.ep > slot.ep ? triple.ep : slot.ep;
}

LineCoordinates read_ends(Record& record) {
    return {record.number(2), record.number(3), record.number(4), record.number(5)};
}

/// Instead of a class where there is no point.
constexpr std::int16_t no_point = -1;

/// Finds the classes of points. Observations come station by station, so the same points are asked
/// for again and again within a short time, and the table of points is large: what was found last
/// is kept.
class PointClasses {
 public:
    explicit PointClasses(const PointTable& points) : points_(points), found_(kept) {}

    /// Asks the memory for what class_of will need.
    void prefetch(const PointTable::Search& point) const {
        if (!found_[place(point)].is(point)) {
            points_.prefetch(point);
        }
    }
    void prefetch_row(const PointTable::Search& point) const {
        if (!found_[place(point)].is(point)) {
            points_.prefetch_row(point);
        }
    }

    /// The class; no_point if there is none.
    [[nodiscard]] std::int16_t class_of(const PointTable::Search& point) {
        Found& found = found_[place(point)];
        if (!found.is(point)) {
            const std::int32_t row = points_.punkt_finden(point);
            found = {point.rechts, point.hoch, row != 0 ? punkt_klasse(points_[row]) : no_point};
        }
        return found.klasse;
    }

 private:
    static constexpr std::size_t kept = 4096;

    struct Found {
        double rechts = absent;
        double hoch = 0;
        std::int16_t klasse = no_point;

        [[nodiscard]] bool is(const PointTable::Search& point) const {
            return rechts == point.rechts && hoch == point.hoch;
        }
    };

    static std::size_t place(const PointTable::Search& point) { return point.hash % kept; }

    const PointTable& points_;
    std::vector<Found> found_;
};

/// Sets the class of an end, if there is such a point: of the second one if the row number is
/// negative.
void set_end_class(LineTable& lines, std::int16_t klasse, std::int32_t index) {
    if (klasse != no_point) {
        LineRow& row = lines[std::abs(index)];
        (index > 0 ? row.lin_klasse_von : row.lin_klasse_nach) = klasse;
    }
}

void add_directed(Session& session, const TestTriple& triple, std::int32_t index,
                  std::int16_t type) {
    LineRow& row = session.part.lin[std::abs(index)];
    (index > 0 ? row.lin_typ_hin : row.lin_typ_rueck) = type;
    beob_werte(triple, session.settings.stndwert,
               index > 0 ? forward_values(row) : backward_values(row));
}

void add_undirected(Session& session, const TestTriple& triple, std::int32_t index,
                    std::int16_t type) {
    LineRow& row = session.part.lin[std::abs(index)];
    row.lin_typ_seite = type;
    beob_werte(triple, session.settings.stndwert, undirected_values(row));
}

/// How an observation of a pass is stored.
enum class Storage : std::uint8_t { none, ray, undirected, directed, vector };
struct Kind {
    Storage storage = Storage::none;
    std::int16_t type = 0;
};

Kind horizontal_kind(const Record& record) {
    switch (record.initial()) {
        case 'O':
            return record.is(keyword::orientierungsrichtung) ? Kind{Storage::ray} : Kind{};
        case 'D':
            return record.is(keyword::distanz) ? Kind{Storage::undirected, terrestrial} : Kind{};
        case 'R':
            return record.is(keyword::richtung) ? Kind{Storage::directed, direction} : Kind{};
        case 'G':
            return record.is(keyword::gps_strecke)    ? Kind{Storage::undirected, gps}
                   : record.is(keyword::gps_richtung) ? Kind{Storage::directed, gps_direction}
                                                      : Kind{};
        default:
            return {};
    }
}

Kind height_kind(const Record& record) {
    switch (record.initial()) {
        case 'H':
            return record.is(keyword::hoehenunterschied) ? Kind{Storage::undirected, terrestrial}
                                                         : Kind{};
        case 'G':
            return record.is(keyword::gps_hoehenunterschied) ? Kind{Storage::undirected, gps}
                                                             : Kind{};
        case 'Z':
            return record.is(keyword::zenitwinkel) ? Kind{Storage::directed, direction} : Kind{};
        default:
            return {};
    }
}

Kind vector_kind(const Record& record) {
    return record.initial() == 'G' && record.is(keyword::gps_raumvektor) ? Kind{Storage::vector}
                                                                         : Kind{};
}

/// An observation that has been read and waits for its rows.
struct PendingObservation {
    PendingObservation(Kind its_kind, const LineCoordinates& ends)
        : kind(its_kind), line(ends), from(ends.x1, ends.y1), to(ends.x2, ends.y2) {}

    Kind kind;
    LineTable::Search line;
    PointTable::Search from;
    PointTable::Search to;
    TestTriple triple;
    std::optional<std::string> target;  ///< of an orientation direction
};

/// Stores observations in their order, each some records after it was read.
class DelayedStore {
 public:
    explicit DelayedStore(Session& session) : session_(session), classes_(session.part.pu) {}

    void add(Record& record, Kind kind) {
        if (waiting_.is_full()) {
            store_first();
        }
        read(record, waiting_.enter(kind, read_ends(record)));
        if (const PendingObservation* soon = waiting_.half_way()) {
            prefetch_rows(*soon);
        }
    }

    void finish() {
        while (!waiting_.is_empty()) {
            store_first();
        }
    }

 private:
    void store_first() {
        store(waiting_.first());
        waiting_.leave();
    }

    void read(Record& record, PendingObservation& pending) const {
        session_.part.lin.prefetch(pending.line);
        classes_.prefetch(pending.from);
        classes_.prefetch(pending.to);
        if (pending.kind.storage != Storage::ray) {
            pending.triple = read_triple(record, 6);
        } else if (const Word target = record.word(6); target.found()) {
            pending.target = target.text;
        }
    }

    void prefetch_rows(const PendingObservation& pending) const {
        session_.part.lin.prefetch_row(pending.line);
        classes_.prefetch_row(pending.from);
        classes_.prefetch_row(pending.to);
    }

    void store(const PendingObservation& pending) {
        const LineTable::Found found = session_.part.lin.lin_suchen(pending.line);
        if (found.same) {
            return;
        }
        const Kind kind = pending.kind;
        if (kind.storage == Storage::ray) {
            add_orientation(pending, found.index);
            return;
        }
        if (session_.part.lin[std::abs(found.index)].lin_typ_seite == orientation) {
            return;
        }
        set_end_class(session_.part.lin, classes_.class_of(pending.from), found.index);
        set_end_class(session_.part.lin, classes_.class_of(pending.to), -found.index);
        if (kind.storage == Storage::directed) {
            add_directed(session_, pending.triple, found.index, kind.type);
        } else {
            add_undirected(session_, pending.triple, found.index, kind.type);
        }
    }

    void add_orientation(const PendingObservation& pending, std::int32_t index) {
        if (index < 0) {
            return;
        }
        LineRow& row = session_.part.lin[index];
        if (row.lin_typ_seite != 0 || row.lin_typ_hin != 0 || row.lin_typ_rueck != 0) {
            return;
        }
        row.lin_typ_seite = orientation;
        set_end_class(session_.part.lin, classes_.class_of(pending.from), index);
        if (pending.target) {
            row.lin_fernziel.set(*pending.target);
            ++session_.part.lin.fernziel_anzahl;
        }
    }

    Session& session_;
    PointClasses classes_;
    DelayLine<PendingObservation, 32> waiting_;
};

void read_vector(Session& session, Record& record, const RecordSource& source) {
    LineCoordinates ends = read_ends(record);
    if (ends.x1 > ends.x2) {
        std::swap(ends.x1, ends.x2);
        std::swap(ends.y1, ends.y2);
    }
    const LineTable::Found found = session.part.lin.lin_suchen(ends);
    if (found.same) {
        return;
    }
    if (found.index < 0) {
        throw source.error(9, keyword::gps_raumvektor);
    }
    lin_klasse_setzen(session, ends.x1, ends.y1, found.index);
    lin_klasse_setzen(session, ends.x2, ends.y2, -found.index);
    LineRow& row = session.part.lin[found.index];
    row.lin_typ_hin = direction;
    row.lin_typ_seite = gps;
    row.lin_typ_rueck = direction;
    if (record.word(14).found()) {
        const double ev_grenze = session.settings.stndwert;
        beob_werte(read_triple(record, 6), ev_grenze, forward_values(row));
        beob_werte(read_triple(record, 9), ev_grenze, undirected_values(row));
        beob_werte(read_triple(record, 12), ev_grenze, backward_values(row));
    }
}

}  // namespace

void lin_klasse_setzen(Session& session, double rechts, double hoch, std::int32_t index) {
    if (const std::int32_t point = session.part.pu.punkt_finden(rechts, hoch); point != 0) {
        set_end_class(session.part.lin, punkt_klasse(session.part.pu[point]), index);
    }
}

void beob_lesen(Session& session) {
    session.part.lbl_fzbez.clear();
    session.part.lin.clear();
    ++session.part.tables_revision;
    const std::int16_t choice = session.part.obj.obj_beob;
    if (choice < 1 || choice > 3) {
        return;
    }
    const auto kind_of = choice == 1 ? horizontal_kind : choice == 2 ? height_kind : vector_kind;
    PartFilter part(session);
    RecordSource source(working_path(session),
                        choice == 1   ? "NODGR"
                        : choice == 2 ? "NHGZ"
                                      : "NG",
                        session.work);
    DelayedStore plain(session);
    std::string_view line;
    while (source.next(line)) {
        Record record(line);
        if (part.opens_part(record) || !part.inside()) {
            continue;
        }
        const Kind kind = kind_of(record);
        if (kind.storage == Storage::vector) {
            read_vector(session, record, source);
        } else if (kind.storage != Storage::none) {
            plain.add(record, kind);
        }
    }
    plain.finish();
    session.part.lbl_fzbez.resize(static_cast<std::size_t>(session.part.lin.fernziel_anzahl) + 1);
}

}  // namespace veldra
