#include "batch/plot_protocol.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include <fmt/format.h>

#include "batch/rows_on_sheets.h"
#include "graphikdatei/part_filter.h"
#include "graphikdatei/record_fields.h"
#include "text/codepage.h"
#include "text/numbers.h"

namespace veldra::batch {

namespace {

constexpr std::int16_t orientation = 10;

// Modes of the values.
constexpr std::int16_t changes = 1;
constexpr std::int16_t residuals = 2;
constexpr std::int16_t errors = 3;

// Values of obj_beob.
constexpr std::int16_t horizontal = 1;
constexpr std::int16_t heights = 2;
constexpr std::int16_t vectors = 3;

/// What became of a record.
struct Outcome {
    enum class Fate : std::uint8_t { drawn, hidden, outside, refused, replaced };
    Fate fate = Fate::drawn;
    std::string reason = {};  ///< of a refusal

    static Outcome hidden() { return {Fate::hidden}; }
    static Outcome replaced() { return {Fate::replaced}; }
    static Outcome refused(std::string reason) { return {Fate::refused, std::move(reason)}; }
    static Outcome of(bool on_a_sheet) { return {on_a_sheet ? Fate::drawn : Fate::outside}; }
};

Outcome missing_token(int n) {
    return Outcome::refused(fmt::format("Angabe {} fehlt", n));
}

Outcome unknown_flag(int n) {
    return Outcome::refused(fmt::format("Angabe {} ist weder 0 noch 1", n));
}

bool is_flag(std::int16_t flag) {
    return flag == 0 || flag == 1;
}

/// The rows of the point pass. Their records come in the order in which the rows were appended, so
/// only records of points that have occurred before need a search.
class SignatureRows {
 public:
    explicit SignatureRows(const PointTable& points) : points_(points) {}

    std::size_t row_of(const Position& position) {
        const std::int32_t next = last_ + 1;
        if (next <= points_.pu_anzahl_signatur && points_[next].pu_rechts == position.rechts &&
            points_[next].pu_hoch == position.hoch) {
            last_ = next;
            return static_cast<std::size_t>(next);
        }
        if (rows_.empty()) {
            for (std::int32_t i = 1; i <= points_.pu_anzahl_signatur; ++i) {
                rows_.emplace(std::pair(points_[i].pu_rechts, points_[i].pu_hoch), i);
            }
        }
        return static_cast<std::size_t>(rows_.at({position.rechts, position.hoch}));
    }

 private:
    const PointTable& points_;
    std::int32_t last_ = 0;
    std::map<std::pair<double, double>, std::int32_t> rows_;
};

/// Rows of changes, one for each record and in their order.
class ChangeRows {
 public:
    explicit ChangeRows(const PointTable& points)
        : points_(points), last_(points.pu_anzahl_signatur) {}

    std::int32_t next() { return last_ < points_.count() ? ++last_ : 0; }

 private:
    const PointTable& points_;
    std::int32_t last_;
};

/// The record that holds for something at a row, as it was counted.
struct HoldingRecord {
    std::int64_t line = 0;
    ObjectKind kind{};
    Outcome::Fate fate{};
};
using HoldingRecords = std::unordered_map<std::size_t, HoldingRecord>;

class RecordCounter {
 public:
    RecordCounter(Session& session, const RowsOnSheets& rows, const RecordSource& source)
        : session_(session),
          obj_(session.obj),
          rows_(rows),
          source_(source),
          signature_rows_(session.pu),
          change_rows_(session.pu) {}

    void count(Record& record) {
        switch (record.initial()) {
            case 'P':
                count_point(record);
                break;
            case 'L':
            case 'N':
                count_value(record);
                break;
            case 'H':
                count_observation(record);
                count_value(record);
                break;
            default:
                count_observation(record);
                break;
        }
    }

    PartProtocol take() {
        std::stable_sort(
            protocol_.replaced.begin(), protocol_.replaced.end(),
            [](const ReplacedRecord& a, const ReplacedRecord& b) { return a.line < b.line; });
        return std::move(protocol_);
    }

 private:
    void add(ObjectKind kind, const Outcome& outcome) {
        ++protocol_.of(kind).read;
        ++counter(kind, outcome.fate);
        if (outcome.fate == Outcome::Fate::refused) {
            protocol_.refused.push_back({source_.line_number(), kind, outcome.reason});
        } else if (outcome.fate == Outcome::Fate::replaced) {
            protocol_.replaced.push_back({source_.line_number(), kind});
        }
    }

    std::int64_t& counter(ObjectKind kind, Outcome::Fate fate) {
        KindCount& count = protocol_.of(kind);
        switch (fate) {
            case Outcome::Fate::drawn:
                return count.drawn;
            case Outcome::Fate::hidden:
                return count.hidden;
            case Outcome::Fate::outside:
                return count.outside;
            case Outcome::Fate::refused:
                return count.refused;
            case Outcome::Fate::replaced:
                break;
        }
        return count.replaced;
    }

    /// Counts a record that takes the place of the one before at its row.
    void add_at(HoldingRecords& records, std::size_t row, ObjectKind kind, const Outcome& outcome) {
        add(kind, outcome);
        if (outcome.fate == Outcome::Fate::drawn || outcome.fate == Outcome::Fate::outside) {
            replace(records, row);
            records[row] = {source_.line_number(), kind, outcome.fate};
        }
    }

    /// What held at the row holds no longer.
    void replace(HoldingRecords& records, std::size_t row) {
        const auto holding = records.find(row);
        if (holding == records.end()) {
            return;
        }
        const HoldingRecord& record = holding->second;
        --counter(record.kind, record.fate);
        ++counter(record.kind, Outcome::Fate::replaced);
        protocol_.replaced.push_back({record.line, record.kind});
        records.erase(holding);
    }

    // Points and their labels.

    void count_point(Record& record) {
        constexpr int flag_token = 6;
        if (!record.is(keyword::punktsignatur)) {
            return;
        }
        if (!record.word(flag_token).found()) {
            add(ObjectKind::punktsignatur, missing_token(flag_token));
            return;
        }
        const std::size_t row = signature_rows_.row_of(read_position(record));
        const std::int16_t flag = to_int16(record.number(flag_token)).value_or(-1);
        add_at(signatures_, row, ObjectKind::punktsignatur,
               is_flag(flag) ? Outcome::of(rows_.signatures[row]) : unknown_flag(flag_token));
        const Word label = record.word(7);
        if (label.found()) {
            replace(labels_, row);
        }
        if (!trim(label.text).empty()) {
            add_at(labels_, row, ObjectKind::punktbezeichnung,
                   obj_.obj_pube == 1 ? Outcome::of(rows_.labels[row]) : Outcome::hidden());
        }
    }

    // Observations. A short keyword may stand for kinds of several passes; it counts for each.

    void count_observation(Record& record) {
        if (const auto kind = horizontal_kind(record)) {
            add(*kind, observation(record, horizontal, *kind == ObjectKind::orientierungsrichtung));
        }
        if (const auto kind = height_kind(record)) {
            add(*kind, observation(record, heights, false));
        }
        if (record.initial() == 'G' && record.is(keyword::gps_raumvektor)) {
            add(ObjectKind::gps_raumvektor, observation(record, vectors, false));
        }
    }

    static std::optional<ObjectKind> horizontal_kind(const Record& record) {
        switch (record.initial()) {
            case 'D':
                return kind_if(record, keyword::distanz, ObjectKind::distanz);
            case 'R':
                return kind_if(record, keyword::richtung, ObjectKind::richtung);
            case 'O':
                return kind_if(record, keyword::orientierungsrichtung,
                               ObjectKind::orientierungsrichtung);
            case 'G':
                return record.is(keyword::gps_strecke)
                           ? ObjectKind::gps_strecke
                           : kind_if(record, keyword::gps_richtung, ObjectKind::gps_richtung);
            default:
                return std::nullopt;
        }
    }

    static std::optional<ObjectKind> height_kind(const Record& record) {
        switch (record.initial()) {
            case 'H':
                return kind_if(record, keyword::hoehenunterschied, ObjectKind::hoehenunterschied);
            case 'G':
                return kind_if(record, keyword::gps_hoehenunterschied,
                               ObjectKind::gps_hoehenunterschied);
            case 'Z':
                return kind_if(record, keyword::zenitwinkel, ObjectKind::zenitwinkel);
            default:
                return std::nullopt;
        }
    }

    static std::optional<ObjectKind> kind_if(const Record& record, std::string_view name,
                                             ObjectKind kind) {
        return record.is(name) ? std::optional(kind) : std::nullopt;
    }

    /// Orientation directions and other observations exclude each other on a line; the first one
    /// in the file has it.
    Outcome observation(Record& record, std::int16_t choice, bool is_ray) {
        const LineCoordinates ends{record.number(2), record.number(3), record.number(4),
                                   record.number(5)};
        if (LineKey(ends).ends_equal()) {
            return Outcome::refused("Anfang und Ende fallen zusammen");
        }
        if (obj_.obj_beob != choice) {
            return Outcome::hidden();
        }
        const LineTable::Found found = session_.lin.lin_suchen(ends);
        const std::int32_t row = std::abs(found.index);
        const bool ray_in_row = session_.lin[row].lin_typ_seite == orientation;
        if (is_ray && !ray_in_row) {
            return Outcome::refused("auf der Linie liegt schon eine andere Beobachtung");
        }
        if (is_ray && found.index < 0) {
            return Outcome::refused("auf der Linie liegt schon eine Gegenrichtung");
        }
        if (!is_ray && ray_in_row) {
            return Outcome::refused("auf der Linie liegt schon eine Orientierungsrichtung");
        }
        if (is_ray && !rays_.insert(row).second) {
            return Outcome::replaced();
        }
        return Outcome::of(rows_.lines[static_cast<std::size_t>(row)]);
    }

    // Values.

    void count_value(Record& record) {
        if (record.initial() == 'L') {
            count_position_value(record);
        } else if (record.initial() == 'H') {
            count_height_value(record);
        } else if (record.is(keyword::naechsteepoche)) {
            count_next_epoch(record);
        }
    }

    void count_position_value(Record& record) {
        if (record.is(keyword::lageaenderung)) {
            parent_ = Parent::lage;
            count_change(record, ObjectKind::lageaenderung, 7);
        } else if (record.is(keyword::lagerestklaffungen)) {
            add_value(position_values_, record, ObjectKind::lagerestklaffungen,
                      is_flag(flag_value(record.word(6))) ? position_value(record, residuals)
                                                          : unknown_flag(6));
        } else if (record.is(keyword::lagefehlerellipse)) {
            add_value(position_values_, record, ObjectKind::lagefehlerellipse,
                      record.word(6).found() ? position_value(record, errors) : missing_token(6));
        }
    }

    void count_height_value(Record& record) {
        if (record.is(keyword::hoehenaenderung)) {
            parent_ = Parent::hoehe;
            count_change(record, ObjectKind::hoehenaenderung, 6);
        } else if (record.is(keyword::hoehenrestklaffungen)) {
            add_value(height_values_, record, ObjectKind::hoehenrestklaffungen,
                      is_flag(flag_value(record.word(5))) ? height_value(record, residuals)
                                                          : unknown_flag(5));
        } else if (record.is(keyword::hoehenfehler)) {
            add_value(height_values_, record, ObjectKind::hoehenfehler,
                      record.word(4).found() ? height_value(record, errors) : missing_token(4));
        }
    }

    void count_next_epoch(Record& record) {
        if (parent_ == Parent::none) {
            add(ObjectKind::naechsteepoche,
                Outcome::refused("davor steht keine Lage- oder Höhenänderung"));
            return;
        }
        count_change(record, ObjectKind::naechsteepoche, parent_ == Parent::lage ? 4 : 3);
    }

    void add_value(HoldingRecords& values, Record& record, ObjectKind kind,
                   const Outcome& outcome) {
        add_at(values, static_cast<std::size_t>(row_at(record)), kind, outcome);
    }

    Outcome position_value(Record& record, std::int16_t mode) {
        return obj_.obj_wert_lage == mode ? position_row(row_at(record)) : Outcome::hidden();
    }
    Outcome height_value(Record& record, std::int16_t mode) {
        return obj_.obj_wert_hoehe == mode ? height_row(row_at(record)) : Outcome::hidden();
    }

    /// A change or an epoch behind it, with the label in token `n`.
    void count_change(Record& record, ObjectKind kind, int n) {
        const bool lage = parent_ == Parent::lage;
        const bool with_label = record.word(n).found();
        if ((lage ? obj_.obj_wert_lage : obj_.obj_wert_hoehe) != changes) {
            add(kind, Outcome::hidden());
            if (with_label) {
                add(ObjectKind::epochenbezeichnung, Outcome::hidden());
            }
            return;
        }
        const std::int32_t row = change_rows_.next();
        add(kind, lage ? position_row(row) : height_row(row));
        if (with_label) {
            add(ObjectKind::epochenbezeichnung,
                obj_.obj_epbe == table_true
                    ? Outcome::of(rows_.labels[static_cast<std::size_t>(row)])
                    : Outcome::hidden());
        }
    }

    [[nodiscard]] std::int32_t row_at(Record& record) const {
        const Position position = read_position(record);
        return session_.pu.punkt_finden(position.rechts, position.hoch);
    }

    [[nodiscard]] Outcome position_row(std::int32_t row) const {
        return value_row(session_.pu[row].pu_wert_lage, rows_.position_values, row);
    }
    [[nodiscard]] Outcome height_row(std::int32_t row) const {
        return value_row(session_.pu[row].pu_wert_hoehe, rows_.height_values, row);
    }

    /// `state` is the value's kind, negative at new points. A pen of no width hides its group.
    [[nodiscard]] Outcome value_row(std::int16_t state, const RowMarks& marks,
                                    std::int32_t row) const {
        const auto slot = static_cast<std::size_t>(std::abs(state));
        const Settings& settings = session_.settings;
        const std::int16_t width = state > 0 ? settings.vektAdrw[slot] : settings.vektNdrw[slot];
        return width < 1 ? Outcome::hidden() : Outcome::of(marks[static_cast<std::size_t>(row)]);
    }

    enum class Parent : std::uint8_t { none, lage, hoehe };

    Session& session_;
    const ObjectSelection& obj_;
    const RowsOnSheets& rows_;
    const RecordSource& source_;
    SignatureRows signature_rows_;
    ChangeRows change_rows_;
    Parent parent_ = Parent::none;
    HoldingRecords signatures_;
    HoldingRecords labels_;
    HoldingRecords position_values_;
    HoldingRecords height_values_;
    std::unordered_set<std::int32_t> rays_;  ///< rows of lines with an orientation direction
    PartProtocol protocol_;
};

}  // namespace

std::string kind_name(ObjectKind kind) {
    constexpr std::array<std::string_view, object_kinds> names{
        keyword::punktsignatur,
        "Punktbezeichnung",
        keyword::distanz,
        keyword::gps_strecke,
        keyword::richtung,
        keyword::gps_richtung,
        keyword::orientierungsrichtung,
        keyword::zenitwinkel,
        keyword::hoehenunterschied,
        keyword::gps_hoehenunterschied,
        keyword::gps_raumvektor,
        keyword::lageaenderung,
        keyword::hoehenaenderung,
        keyword::naechsteepoche,
        "Epochenbezeichnung",
        keyword::lagerestklaffungen,
        keyword::hoehenrestklaffungen,
        keyword::lagefehlerellipse,
        keyword::hoehenfehler,
    };
    return to_utf8(names[static_cast<std::size_t>(kind)]);
}

PartProtocol count_part(Session& session, const PaperFonts& fonts, TextMeasurer& measurer) {
    const RowsOnSheets rows = rows_on_sheets(session, fonts, measurer);
    PartFilter part(session);
    RecordSource source(working_path(session), "NPDROGZHL");
    RecordCounter counter(session, rows, source);
    std::string_view line;
    while (source.next(line)) {
        Record record(line);
        if (!part.opens_part(record) && part.inside()) {
            counter.count(record);
        }
    }
    return counter.take();
}

}  // namespace veldra::batch
