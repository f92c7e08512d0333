#include "graphikdatei/value_pass.h"

#include <cmath>
#include <limits>

#include "graphikdatei/change_records.h"
#include "graphikdatei/delay_line.h"
#include "graphikdatei/part_filter.h"
#include "graphikdatei/record_fields.h"

namespace veldra {

namespace {

/// Modes of the selection.
constexpr std::int16_t changes = 1;
constexpr std::int16_t residuals = 2;
constexpr std::int16_t errors = 3;

void reset_values(Session& session) {
    ++session.tables_revision;
    if (!session.pu.values_read) {
        session.pu.values_read = true;
        return;
    }
    session.pu.drop_value_rows();
    const PointRow empty;
    for (std::int32_t i = 1; i <= session.pu.count(); ++i) {
        PointRow& point = session.pu[i];
        point.pu_wert_lage = empty.pu_wert_lage;
        point.pu_wert_hoehe = empty.pu_wert_hoehe;
        point.pu_wert_rechts = empty.pu_wert_rechts;
        point.pu_wert_hoch = empty.pu_wert_hoch;
        point.pu_wert_dh = empty.pu_wert_dh;
        point.pu_ev_lage = empty.pu_ev_lage;
        point.pu_nv_lage = empty.pu_nv_lage;
        point.pu_ep_lage = empty.pu_ep_lage;
        point.pu_ev_hoehe = empty.pu_ev_hoehe;
        point.pu_nv_hoehe = empty.pu_nv_hoehe;
        point.pu_eh_hoehe = empty.pu_eh_hoehe;
    }
}

/// Takes EV and NV from tokens n and n + 1: the smallest EV and the largest NV stay, and an EV
/// below the limit hides its NV.
void wert_statistik(Record& record, int n, double ev_grenze, double& ev_slot, double& nv_slot) {
    if (!record.word(n).found()) {
        return;
    }
    const double ev = record.number(n);
    ev_slot = ev < ev_slot ? ev : ev_slot;
    if (ev < ev_grenze) {
        return;
    }
    const double nv = record.number(n + 1);
    nv_slot = nv > nv_slot ? nv : nv_slot;
}

/// Reads the value records of one part. A change is remembered, since the epochs behind it hold
/// only differences and no coordinates.
class ValueReader {
 public:
    ValueReader(Session& session, const RecordSource& source)
        : points_(session.pu),
          moved_labels_(session.epochen_bez),
          mode_lage_(session.obj.obj_wert_lage),
          mode_hoehe_(session.obj.obj_wert_hoehe),
          ev_grenze_(session.settings.stndwert),
          source_(source) {}

    void read(Record& record) {
        switch (changes_.take(record)) {
            case ChangeRecord::lage:
                read_horizontal_change(record);
                break;
            case ChangeRecord::hoehe:
                read_height_change(record);
                break;
            case ChangeRecord::lage_epoche:
                read_horizontal_epoch(record);
                break;
            case ChangeRecord::hoehe_epoche:
                read_height_epoch(record);
                break;
            case ChangeRecord::none:
                read_value(record);
                break;
        }
    }

    /// Stores what still waits.
    void finish() {
        while (!ellipses_.is_empty()) {
            store_first_ellipse();
        }
    }

 private:
    struct Ellipse {
        explicit Ellipse(const Position& position) : point(position.rechts, position.hoch) {}

        PointTable::Search point;
        double major = 0;
        double minor = 0;
        double direction = absent;  ///< an ellipse without one only makes its point known
    };

    void read_value(Record& record) {
        switch (record.initial()) {
            case 'L':
                if (record.is(keyword::lagerestklaffungen)) {
                    read_horizontal_residual(record);
                } else if (record.is(keyword::lagefehlerellipse)) {
                    read_ellipse(record);
                }
                break;
            case 'H':
                if (record.is(keyword::hoehenrestklaffungen)) {
                    read_height_residual(record);
                } else if (record.is(keyword::hoehenfehler)) {
                    read_height_error(record);
                }
                break;
            default:
                break;
        }
    }

    /// A new row at the parent's coordinates with the running totals and, from token `n` on, the
    /// epoch text and the label offsets.
    void add_change(Record& record, ChangeRecord kind) {
        const int n = epoch_text_token(kind);
        PointRow& point = points_[points_.punkt_neu(position_.rechts, position_.hoch)];
        if (kind == ChangeRecord::lage || kind == ChangeRecord::lage_epoche) {
            point.pu_wert_rechts = total_rechts_;
            point.pu_wert_hoch = total_hoch_;
            point.pu_wert_lage = at_ap_ ? std::int16_t{1} : std::int16_t{-1};
        } else {
            point.pu_wert_dh = total_hoch_;
            point.pu_wert_hoehe = at_ap_ ? std::int16_t{4} : std::int16_t{-4};
        }
        point.pu_epoche = epoch_;
        point.pu_bez = record.word(n).text;
        if (record.word(n + 2).found()) {
            point.pu_bez_rechts = record.number(n + 1);
            point.pu_bez_hoch = record.number(n + 2);
        }
        point.pu_satz = changes_.number();
        if (const auto moved = moved_labels_.find(point.pu_satz); moved != moved_labels_.end()) {
            point.pu_bez_rechts = moved->second.rechts;
            point.pu_bez_hoch = moved->second.hoch;
        }
    }

    void read_horizontal_change(Record& record) {
        if (mode_lage_ != changes) {
            return;
        }
        position_ = read_position(record);
        total_rechts_ = record.number(4);
        total_hoch_ = record.number(5);
        at_ap_ = flag_value(record.word(6)) != 0;
        epoch_ = 0;
        add_change(record, ChangeRecord::lage);
    }

    void read_height_change(Record& record) {
        if (mode_hoehe_ != changes) {
            return;
        }
        position_ = read_position(record);
        total_hoch_ = record.number(4);
        at_ap_ = flag_value(record.word(5)) != 0;
        epoch_ = 0;
        add_change(record, ChangeRecord::hoehe);
    }

    void read_horizontal_epoch(Record& record) {
        if (mode_lage_ != changes) {
            return;
        }
        count_epoch();
        total_rechts_ += record.number(2);
        total_hoch_ += record.number(3);
        add_change(record, ChangeRecord::lage_epoche);
    }

    void read_height_epoch(Record& record) {
        if (mode_hoehe_ != changes) {
            return;
        }
        count_epoch();
        total_hoch_ += record.number(2);
        add_change(record, ChangeRecord::hoehe_epoche);
    }

    void count_epoch() {
        if (epoch_ == std::numeric_limits<std::int16_t>::max()) {
            throw source_.error(6, "pu_epoche");
        }
        ++epoch_;
    }

    PointRow& point_at(Record& record) {
        finish();
        const Position position = read_position(record);
        return points_[points_.punkt_suchen_neu(position.rechts, position.hoch)];
    }

    void read_horizontal_residual(Record& record) {
        if (mode_lage_ != residuals) {
            return;
        }
        PointRow& point = point_at(record);
        point.pu_wert_rechts = record.number(4);
        point.pu_wert_hoch = record.number(5);
        const std::int16_t flag = flag_value(record.word(6));
        set_residual_state(flag, 2, point.pu_wert_lage);
        if (flag == 1 && mode_hoehe_ == 0 && record.word(10).found()) {
            wert_statistik(record, 7, ev_grenze_, point.pu_ev_lage, point.pu_nv_lage);
            wert_statistik(record, 9, ev_grenze_, point.pu_ev_hoehe, point.pu_nv_hoehe);
        }
    }

    void read_height_residual(Record& record) {
        if (mode_hoehe_ != residuals) {
            return;
        }
        PointRow& point = point_at(record);
        point.pu_wert_dh = record.number(4);
        const std::int16_t flag = flag_value(record.word(5));
        set_residual_state(flag, 5, point.pu_wert_hoehe);
        if (flag == 1 && mode_lage_ == 0) {
            wert_statistik(record, 6, ev_grenze_, point.pu_ev_lage, point.pu_nv_lage);
        }
    }

    static void set_residual_state(std::int16_t flag, std::int16_t at_ap, std::int16_t& state) {
        if (flag == 1) {
            state = at_ap;
        } else if (flag == 0) {
            state = static_cast<std::int16_t>(-at_ap);
        }
    }

    /// Ellipses wait for their points, since there are many of them.
    void read_ellipse(Record& record) {
        if (mode_lage_ != errors) {
            return;
        }
        if (ellipses_.is_full()) {
            store_first_ellipse();
        }
        Ellipse& ellipse = ellipses_.enter(read_position(record));
        points_.prefetch(ellipse.point);
        ellipse.major = record.number(4);
        ellipse.minor = record.number(5);
        ellipse.direction = record.number(6, absent);
        if (const Ellipse* soon = ellipses_.half_way()) {
            points_.prefetch_row(soon->point);
        }
    }

    void store_first_ellipse() {
        const Ellipse& ellipse = ellipses_.first();
        PointRow& point = points_[points_.punkt_suchen_neu(ellipse.point)];
        if (!std::isnan(ellipse.direction)) {
            point.pu_wert_rechts = ellipse.major;
            point.pu_wert_hoch = ellipse.minor;
            point.pu_wert_dh = ellipse.direction;
            point.pu_wert_lage = -3;
        }
        ellipses_.leave();
    }

    void read_height_error(Record& record) {
        if (mode_hoehe_ != errors) {
            return;
        }
        PointRow& point = point_at(record);
        if (record.word(4).found()) {
            point.pu_wert_dh = record.number(4);
            point.pu_wert_hoehe = -6;
        }
    }

    PointTable& points_;
    const EpochOffsets& moved_labels_;
    std::int16_t mode_lage_;
    std::int16_t mode_hoehe_;
    double ev_grenze_;
    const RecordSource& source_;

    ChangeRecords changes_;
    Position position_;
    bool at_ap_ = false;
    double total_rechts_ = 0;
    double total_hoch_ = 0;
    std::int16_t epoch_ = 0;
    DelayLine<Ellipse, 16> ellipses_;
};

}  // namespace

void wert_lesen(Session& session) {
    reset_values(session);
    PartFilter part(session);
    RecordSource source(working_path(session), "NLH", session.work);
    ValueReader reader(session, source);
    std::string_view line;
    while (source.next(line)) {
        Record record(line);
        if (!part.opens_part(record) && part.inside()) {
            reader.read(record);
        }
    }
    reader.finish();
}

}  // namespace veldra
