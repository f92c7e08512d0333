#include "graphikdatei/observation_pass.h"

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>
#include <vector>

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

/// Test values of an observation; what its record lacks is absent.
struct TestTriple {
    std::optional<double> ev;
    std::optional<double> nv;
    std::optional<double> ep;
};

/// Takes them from tokens n to n + 2.
TestTriple read_triple(Record& record, int n) {
    return {record.optional_number(n), record.optional_number(n + 1),
            record.optional_number(n + 2)};
}

/// The smallest EV and the largest NV and EP stay; an EV below the limit hides the others.
void beob_werte(const TestTriple& triple, double ev_grenze, SlotValues slot) {
    if (!triple.ev) {
        return;
    }
    slot.ev = *triple.ev < slot.ev ? *triple.ev : slot.ev;
    if (*triple.ev < ev_grenze) {
        return;
    }
    slot.nv = triple.nv && *triple.nv > slot.nv ? *triple.nv : slot.nv;
    slot.ep = triple.ep && *triple.ep > slot.ep ? *triple.ep : slot.ep;
}

LineCoordinates read_ends(Record& record) {
    return {record.number(2), record.number(3), record.number(4), record.number(5)};
}

void set_both_classes(Session& session, const LineCoordinates& ends, std::int32_t index) {
    lin_klasse_setzen(session, ends.x1, ends.y1, index);
    lin_klasse_setzen(session, ends.x2, ends.y2, -index);
}

void add_directed(Session& session, const TestTriple& triple, std::int32_t index,
                  std::int16_t type) {
    LineRow& row = session.lin[std::abs(index)];
    (index > 0 ? row.lin_typ_hin : row.lin_typ_rueck) = type;
    beob_werte(triple, session.settings.stndwert,
               index > 0 ? forward_values(row) : backward_values(row));
}

void add_undirected(Session& session, const TestTriple& triple, std::int32_t index,
                    std::int16_t type) {
    LineRow& row = session.lin[std::abs(index)];
    row.lin_typ_seite = type;
    beob_werte(triple, session.settings.stndwert, undirected_values(row));
}

void add_orientation(Session& session, const std::optional<std::string>& target,
                     const LineCoordinates& ends, std::int32_t index) {
    if (index < 0) {
        return;
    }
    LineRow& row = session.lin[index];
    if (row.lin_typ_seite != 0 || row.lin_typ_hin != 0 || row.lin_typ_rueck != 0) {
        return;
    }
    row.lin_typ_seite = orientation;
    lin_klasse_setzen(session, ends.x1, ends.y1, index);
    if (target) {
        row.lin_fernziel.set(*target);
        ++session.lin.fernziel_anzahl;
    }
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
    Kind kind;
    LineCoordinates ends;
    LineTable::Search search;
    TestTriple triple;
    std::optional<std::string> target;  ///< of an orientation direction
};

PendingObservation read_pending(const Session& session, Record& record, Kind kind) {
    const LineCoordinates ends = read_ends(record);
    PendingObservation pending{kind, ends, LineTable::Search(session.lin, ends), {}, {}};
    session.pu.prefetch(ends.x1, ends.y1);
    session.pu.prefetch(ends.x2, ends.y2);
    if (kind.storage != Storage::ray) {
        pending.triple = read_triple(record, 6);
    } else if (const Word target = record.word(6); target.found()) {
        pending.target = target.text;
    }
    return pending;
}

void store(Session& session, const PendingObservation& pending) {
    const LineTable::Found found = session.lin.lin_suchen(pending.search);
    if (found.same) {
        return;
    }
    const Kind kind = pending.kind;
    if (kind.storage == Storage::ray) {
        add_orientation(session, pending.target, pending.ends, found.index);
        return;
    }
    if (session.lin[std::abs(found.index)].lin_typ_seite == orientation) {
        return;
    }
    set_both_classes(session, pending.ends, found.index);
    if (kind.storage == Storage::directed) {
        add_directed(session, pending.triple, found.index, kind.type);
    } else {
        add_undirected(session, pending.triple, found.index, kind.type);
    }
}

/// Stores observations in their order, each some records after it was read: the memory then has had
/// the time to bring the rows of its line and its points, which lie anywhere in large tables.
class DelayedStore {
 public:
    explicit DelayedStore(Session& session) : session_(session) { waiting_.reserve(delay); }

    void add(PendingObservation pending) {
        if (waiting_.size() < delay) {
            waiting_.push_back(std::move(pending));
            return;
        }
        // Half way through its wait an observation's index slots are here, and its points can be
        // asked for.
        const LineCoordinates& soon = waiting_[(next_ + delay / 2) % delay].ends;
        session_.pu.prefetch_row(soon.x1, soon.y1);
        session_.pu.prefetch_row(soon.x2, soon.y2);
        store(session_, waiting_[next_]);
        waiting_[next_] = std::move(pending);
        next_ = (next_ + 1) % delay;
    }

    void finish() {
        for (std::size_t i = 0; i < waiting_.size(); ++i) {
            store(session_, waiting_[(next_ + i) % waiting_.size()]);
        }
        waiting_.clear();
        next_ = 0;
    }

 private:
    static constexpr std::size_t delay = 32;

    Session& session_;
    std::vector<PendingObservation> waiting_;
    std::size_t next_ = 0;  ///< the one that has waited longest
};

void read_vector(Session& session, Record& record, const RecordSource& source) {
    LineCoordinates ends = read_ends(record);
    if (ends.x1 > ends.x2) {
        std::swap(ends.x1, ends.x2);
        std::swap(ends.y1, ends.y2);
    }
    const LineTable::Found found = session.lin.lin_suchen(ends);
    if (found.same) {
        return;
    }
    if (found.index < 0) {
        throw source.error(9, keyword::gps_raumvektor);
    }
    set_both_classes(session, ends, found.index);
    LineRow& row = session.lin[found.index];
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
    const std::int32_t point = session.pu.punkt_finden(rechts, hoch);
    if (point == 0) {
        return;
    }
    LineRow& row = session.lin[std::abs(index)];
    (index > 0 ? row.lin_klasse_von : row.lin_klasse_nach) = punkt_klasse(session.pu[point]);
}

void beob_lesen(Session& session) {
    session.lbl_fzbez.clear();
    session.lin.clear();
    ++session.tables_revision;
    const std::int16_t choice = session.obj.obj_beob;
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
            plain.add(read_pending(session, record, kind));
        }
    }
    plain.finish();
    session.lbl_fzbez.resize(static_cast<std::size_t>(session.lin.fernziel_anzahl) + 1);
}

}  // namespace veldra
