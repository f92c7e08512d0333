#include "graphikdatei/point_pass.h"

#include <cmath>
#include <unordered_map>

#include "graphikdatei/delay_line.h"
#include "graphikdatei/part_filter.h"
#include "graphikdatei/record_fields.h"
#include "text/codepage.h"
#include "text/numbers.h"

namespace veldra {

namespace {

void reset_points(Session& session) {
    session.pu.clear();
    session.nuoff.clear();
    session.epochen_bez.clear();
    session.lbl_pubez.clear();
    session.lbl_nubez.clear();
    ++session.tables_revision;
}

/// A signature record that has been read and waits for its row.
struct Signature {
    explicit Signature(const Position& position) : point(position.rechts, position.hoch) {}

    PointTable::Search point;
    std::int16_t lage = -1;
    std::int16_t hoehe = -1;
    std::int16_t flag = -1;
    double offset_rechts = absent;  ///< of the label, or none
    double offset_hoch = absent;
    bool has_label = false;
    std::string label;
};

/// Stores signatures in their order, each some records after it was read.
class Signatures {
 public:
    explicit Signatures(PointTable& points) : points_(points) {}

    void read(Record& record, const RecordSource& source) {
        const Position position = read_position(record);
        const double lage = record.number(4);
        const double hoehe = record.number(5);
        const double flag = record.number(6, absent);
        if (std::isnan(flag)) {
            return;
        }
        if (waiting_.is_full()) {
            store_first();
        }
        Signature& signature = waiting_.enter(position);
        points_.prefetch(signature.point);
        signature.lage = source.integer(lage, "pu_art_lage");
        signature.hoehe = source.integer(hoehe, "pu_art_hoehe");
        signature.flag = source.integer(flag, "pu_signatur");
        if (const Word label = record.word(7); label.found()) {
            signature.has_label = true;
            signature.label = trim(label.text);
        }
        if (record.word(9).found()) {
            signature.offset_rechts = record.number(8);
            signature.offset_hoch = record.number(9);
        }
    }

    void finish() {
        while (!waiting_.is_empty()) {
            store_first();
        }
    }

 private:
    void store_first() {
        Signature& signature = waiting_.first();
        store(signature, points_[points_.punkt_suchen_neu(signature.point)]);
        waiting_.leave();
    }

    static void store(Signature& signature, PointRow& point) {
        const auto is_kind = [](std::int16_t kind) { return kind >= 0 && kind <= 9; };
        if (is_kind(signature.lage)) {
            point.pu_art_lage = signature.lage;
        }
        if (is_kind(signature.hoehe)) {
            point.pu_art_hoehe = signature.hoehe;
        }
        if (signature.flag == 1) {
            point.pu_signatur = 1;
        } else if (signature.flag == 0) {
            point.pu_signatur = -1;
        }
        if (signature.has_label) {
            point.pu_bez = std::move(signature.label);
        }
        if (!std::isnan(signature.offset_hoch)) {
            point.pu_bez_rechts = signature.offset_rechts;
            point.pu_bez_hoch = signature.offset_hoch;
        }
    }

    PointTable& points_;
    DelayLine<Signature, 16> waiting_;
};

/// Reads moved district labels; a later one of the same name replaces the earlier.
class DistrictLabels {
 public:
    explicit DistrictLabels(RowTable<NubezOffsetRow>& rows) : rows_(rows) {}

    void read(Record& record) {
        if (const auto label = district_label(record)) {
            rows_[row_of(label->nuoff_bez)] = *label;
        }
    }

 private:
    std::int32_t row_of(const std::string& name) {
        const auto [entry, added] = index_.try_emplace(name, 0);
        if (added) {
            entry->second = rows_.append();
        }
        return entry->second;
    }

    RowTable<NubezOffsetRow>& rows_;
    std::unordered_map<std::string, std::int32_t> index_;
};

/// Takes token `n` into `field` if its rounded value lies in the range; a comma ends the number.
template <typename Integer>
void take_in_range(Record& record, int n, int least, int greatest, Integer& field) {
    const double value = std::nearbyint(numeric_prefix(record.word(n).text));
    if (value >= least && value <= greatest) {
        field = static_cast<Integer>(value);
    }
}

void take_boolean(Record& record, int n, std::int16_t& field) {
    std::int16_t value = field == table_false ? std::int16_t{0} : std::int16_t{1};
    take_in_range(record, n, 0, 1, value);
    field = value == 1 ? table_true : table_false;
}

void read_selection(ObjectSelection& obj, Record& record) {
    if (!record.word(14).found()) {
        return;
    }
    take_in_range(record, 2, 0, 1, obj.obj_pube);
    take_in_range(record, 3, 0, 1, obj.obj_pusi);
    take_in_range(record, 4, 0, 8, obj.obj_puwe);
    derive_value_modes(obj);
    take_boolean(record, 5, obj.obj_test_restkl);
    take_in_range(record, 6, 0, 5, obj.obj_nube);
    take_in_range(record, 7, 0, 2, obj.obj_nbez);
    take_in_range(record, 8, 0, 7, obj.obj_verw);
    take_in_range(record, 9, 0, 3, obj.obj_beob);
    take_boolean(record, 10, obj.obj_test_beob);
    take_in_range(record, 11, 1, 3, obj.obj_test);
    take_in_range(record, 12, 0, 3, obj.obj_bezu);
    take_in_range(record, 13, 1, 5, obj.obj_bezu_elli);
    take_in_range(record, 14, 1, 2, obj.obj_bezu_abbi);
    if (obj.obj_bezu == 1) {
        obj.obj_bezu_elli = 1;
        obj.obj_bezu_abbi = 1;
    } else if (obj.obj_bezu == 2) {
        obj.obj_bezu_elli = 4;
        obj.obj_bezu_abbi = 2;
    }
    if (record.word(15).found()) {
        const auto meridian = to_int32(numeric_prefix(record.word(15).text));
        obj.obj_nube_meridian = meridian.value_or(obj.obj_nube_meridian);
    }
    if (record.word(16).found()) {
        take_boolean(record, 16, obj.obj_epbe);
    }
}

void read_title(Session& session, const Record& record) {
    const int line = title_line(record);
    if (line > 0 && record.has_rest()) {
        session.titel[static_cast<std::size_t>(line)].setTitelText(trim(one_line(record.rest())));
    }
}

}  // namespace

void punkt_lesen(Session& session) {
    reset_points(session);
    PartFilter part(session);
    Signatures signatures(session.pu);
    DistrictLabels districts(session.nuoff);
    RecordSource source(working_path(session), "NPOT", session.work);
    std::string_view line;
    while (source.next(line)) {
        Record record(line);
        if (part.opens_part(record) || !part.inside()) {
            continue;
        }
        switch (record.initial()) {
            case 'P':
                if (record.is(keyword::punktsignatur)) {
                    signatures.read(record, source);
                }
                break;
            case 'N':
                if (record.is(keyword::numbezoffset)) {
                    districts.read(record);
                }
                break;
            case 'O':
                if (record.is(keyword::objekte)) {
                    read_selection(session.obj, record);
                }
                break;
            case 'T':
                read_title(session, record);
                break;
            default:
                break;
        }
    }
    signatures.finish();
    session.pu.close_signature_rows();
}

}  // namespace veldra
