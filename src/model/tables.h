#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "model/flat_index.h"
#include "model/row_table.h"

namespace veldra {

/// Booleans of the tables are 16-bit integers.
constexpr std::int16_t table_true = -1;
constexpr std::int16_t table_false = 0;
[[nodiscard]] constexpr std::int16_t table_boolean(bool value) {
    return value ? table_true : table_false;
}

/// A network part of the file. Texts here and below are Windows-1252.
struct NetworkPartRow {
    std::string netz_name;
    double netz_massstab = -99.0;         ///< 1/M of the plot scale; -99: the part is not plotted
    std::int16_t netz_ausrichtung = -99;  ///< 1 Hochformat, 2 Querformat
    std::int16_t netz_heftrand = 2;       ///< 1 oben, 2 links, 3 kein Heftrand
    std::int16_t netz_legendenlage = 4;   ///< 1 to 4
    std::int16_t netz_blatt_auto = table_true;
    std::int32_t netz_blatt_rechts = 1;
    std::int32_t netz_blatt_hoch = 1;
    double netz_null_rechts = 0;  ///< plotter zero point, metres
    double netz_null_hoch = 0;
    std::int16_t netz_plotmarke = table_true;
};

/// The plot settings of the current part.
struct PlotSettings {
    double plot_massstab = -99.0;
    std::int16_t plot_ausrichtung = -99;
    std::int16_t plot_heftrand = 2;
    std::int16_t plot_legendenlage = 4;
    std::int16_t plot_blatt_auto = table_true;
    std::int16_t plot_blatt_rechts = 0;
    std::int16_t plot_blatt_hoch = 0;
    double plot_null_rechts = 0;
    double plot_null_hoch = 0;
};

/// A text that is empty in nearly all rows: one pointer instead of a string.
class SparseText {
 public:
    void set(std::string_view text) {
        text_ = text.empty() ? nullptr : std::make_unique<std::string>(text);
    }
    [[nodiscard]] std::string_view view() const {
        return text_ ? std::string_view(*text_) : std::string_view();
    }

 private:
    std::unique_ptr<std::string> text_;
};

/// Four coordinates of an observation line.
struct LineCoordinates {
    double x1 = 0;  ///< easting of the first end, metres
    double y1 = 0;
    double x2 = 0;
    double y2 = 0;
};

/// An observation line's key: the four coordinates in text fields of 11 characters, rounded to two
/// decimals. Kept as whole centimetres, from which the text follows; a key with a coordinate that
/// does not fit its field keeps the coordinates themselves.
class LineKey {
 public:
    LineKey() = default;
    /// Coordinates in metres: the first end's easting and northing, then the second end's.
    explicit LineKey(const LineCoordinates& ends);

    /// The text, 44 characters in the ordinary case; "" for row 0.
    [[nodiscard]] std::string text() const;
    /// The coordinates as read back from the fields at positions 1, 12, 23, 34 of the text.
    [[nodiscard]] LineCoordinates coordinates() const {
        if (!is_ordinary()) {
            return read_back();
        }
        const auto metres = [](std::int64_t centimetres) {
            return static_cast<double>(centimetres) / 100.0;
        };
        return {metres(parts_[0]), metres(parts_[1]), metres(parts_[2]), metres(parts_[3])};
    }
    /// Both ends have the same key.
    [[nodiscard]] bool ends_equal() const;
    /// The text with its ends exchanged.
    [[nodiscard]] std::string reversed_text() const;
    /// All coordinates fit their fields; the following three are for such keys only.
    [[nodiscard]] bool is_ordinary() const {
        std::uint64_t all = 0;
        for (const std::int64_t part : parts_) {
            all |= static_cast<std::uint64_t>(part < 0 ? ~part : part);
        }
        return all < beyond_all_fields;
    }
    [[nodiscard]] bool equals(const LineKey& other) const { return parts_ == other.parts_; }
    [[nodiscard]] bool is_reverse_of(const LineKey& other) const {
        return parts_[0] == other.parts_[2] && parts_[1] == other.parts_[3] &&
               parts_[2] == other.parts_[0] && parts_[3] == other.parts_[1];
    }
    /// A hash that is the same for a key and its reverse.
    [[nodiscard]] std::uint64_t symmetric_hash() const;

 private:
    /// Above the centimetres of any field, and far below the bits of a 64-bit float that has none.
    static constexpr std::uint64_t beyond_all_fields = std::uint64_t{1} << 34U;

    [[nodiscard]] std::string field(std::size_t part) const;
    [[nodiscard]] LineCoordinates read_back() const;

    /// Centimetres, or the bits of four coordinates of which one at least is too long for its
    /// field.
    std::array<std::int64_t, 4> parts_{};
};

/// An observation line between two points.
struct LineRow {
    LineKey lin_schluessel;
    std::int16_t lin_typ_hin = 0;     ///< 0 none, 11, 12
    std::int16_t lin_typ_seite = 0;   ///< 0 none, 1 terrestrial, 2 GPS, 10 orientation
    std::int16_t lin_typ_rueck = 0;   ///< as lin_typ_hin
    std::int16_t lin_klasse_von = 3;  ///< class of the first end
    std::int16_t lin_klasse_nach = 3;
    double lin_ev_hin = 1000.0;
    double lin_nv_hin = -99.0;
    double lin_ep_hin = -99.0;
    double lin_ev_seite = 1000.0;
    double lin_nv_seite = -99.0;
    double lin_ep_seite = -99.0;
    double lin_ev_rueck = 1000.0;
    double lin_nv_rueck = -99.0;
    double lin_ep_rueck = -99.0;
    SparseText lin_fernziel;
};

/// A point, or a value of a point that stands in a row of its own.
struct PointRow {
    // What observations look for stands side by side.
    double pu_rechts = 0;  ///< easting, metres
    double pu_hoch = 0;    ///< northing, metres
    std::int16_t pu_art_lage = 0;
    std::int16_t pu_art_hoehe = 0;
    std::int16_t pu_signatur = 0;
    std::int16_t pu_wert_lage = 0;
    std::int16_t pu_wert_hoehe = 0;
    std::int16_t pu_epoche = 0;
    std::int32_t pu_satz =
        0;  ///< of a change: number of its record among those of the part, from 1
    std::string pu_bez;
    double pu_bez_hoch = 0;     ///< label offset, percent of font height
    double pu_bez_rechts = 0;   ///< 0: the label stands at its standard position
    double pu_wert_rechts = 0;  ///< centimetres
    double pu_wert_hoch = 0;
    double pu_wert_dh = 0;  ///< centimetres, or gon for an ellipse
    double pu_ev_lage = 1000.0;
    double pu_nv_lage = -99.0;
    double pu_ep_lage = -99.0;
    double pu_ev_hoehe = 1000.0;
    double pu_nv_hoehe = -99.0;
    double pu_eh_hoehe = -99.0;
};

/// Where the label of a change was moved to, percent of font height.
struct EpochOffset {
    double rechts = 0;
    double hoch = 0;
    // The change itself, which need not be shown any more.
    double pu_rechts = 0;  ///< easting of its point, metres
    double pu_hoch = 0;
    std::int16_t pu_epoche = 0;
    bool hoehe = false;       ///< of the height; else of the position
    std::string pu_bez = {};  ///< text of its epoch
};
/// Moved labels of changes by the number of their record (PointRow::pu_satz).
using EpochOffsets = std::unordered_map<std::int32_t, EpochOffset>;

/// A numbering district label that was moved.
struct NubezOffsetRow {
    std::string nuoff_bez;
    double nuoff_rechts = 0;
    double nuoff_hoch = 0;
};

/// The largest value of a kind.
struct Maximum {
    double wert = 0;
    double rechts = -99.0;
    double hoch = -99.0;
    std::string bez;
    std::string epoche;
};

/// What is shown of the current part.
struct ObjectSelection {
    std::int16_t obj_pube = 1;
    std::int16_t obj_pusi = 1;
    std::int16_t obj_puwe = 0;
    std::int16_t obj_wert_lage = 0;   ///< derived: see derive_value_modes
    std::int16_t obj_wert_hoehe = 0;  ///< derived
    std::int16_t obj_epbe = table_false;
    std::int16_t obj_test_restkl = table_false;
    std::int16_t obj_nube = 1;
    std::int16_t obj_nbez = 1;
    std::int16_t obj_beob = 1;
    std::int16_t obj_test_beob = table_false;
    std::int16_t obj_test = 1;
    std::int16_t obj_verw = 3;
    std::int16_t obj_bezu = -99;
    std::int32_t obj_bezu_elli = 0;  ///< 0 while unset; survives a change of part
    std::int32_t obj_bezu_abbi = 0;  ///< 0 while unset; survives a change of part
    std::int32_t obj_nube_meridian = -99;
};

/// Sets obj_wert_lage and obj_wert_hoehe from obj_puwe (0 to 8).
void derive_value_modes(ObjectSelection& obj);
/// The selection at every read of a part. Ellipsoid and mapping stay.
void set_selection_defaults(ObjectSelection& obj);

/// The points of the current part. Rows up to `pu_anzahl_signatur` come from the point pass, those
/// behind from the value pass.
class PointTable : public RowTable<PointRow> {
 public:
    std::int32_t pu_anzahl_signatur = 0;
    /// The value pass has been over the rows, which have nothing but defaults for values before.
    bool values_read = false;

    /// Coordinates prepared for a search.
    struct Search {
        Search(double rechts_wanted, double hoch_wanted);

        double rechts;
        double hoch;
        std::uint64_t hash;
    };
    /// The row with exactly these coordinates, the last if there are several; 0 if none.
    [[nodiscard]] std::int32_t punkt_finden(const Search& search) const;
    [[nodiscard]] std::int32_t punkt_finden(double rechts, double hoch) const {
        return punkt_finden(Search(rechts, hoch));
    }
    /// Asks the memory for the place of a row.
    void prefetch(const Search& search) const;
    /// Asks for the row itself, once its place is at hand.
    void prefetch_row(const Search& search) const;
    /// Appends a row with the defaults and gives its index.
    std::int32_t punkt_neu(const Search& search);
    std::int32_t punkt_neu(double rechts, double hoch) { return punkt_neu(Search(rechts, hoch)); }
    /// The row of exactly these coordinates, appended if there is none.
    std::int32_t punkt_suchen_neu(const Search& search);
    /// The row of the point pass with exactly these coordinates; 0 if none.
    [[nodiscard]] std::int32_t signature_at(double rechts, double hoch) const;
    std::int32_t punkt_suchen_neu(double rechts, double hoch) {
        return punkt_suchen_neu(Search(rechts, hoch));
    }
    /// Declares all rows so far to be those of the point pass.
    void close_signature_rows();
    /// Another table of the same points.
    [[nodiscard]] PointTable copy() const;
    /// Drops the rows behind pu_anzahl_signatur.
    void drop_value_rows();
    void clear();

 private:
    FlatIndex signature_index_;
    FlatIndex value_index_;
    bool open_ = true;  ///< the point pass is filling the table
};

/// Class 0 to 3 of a point, from its two kinds.
[[nodiscard]] std::int16_t punkt_klasse(const PointRow& point);

/// The observation lines of the current part, one row for each unordered pair of points.
class LineTable : public RowTable<LineRow> {
 public:
    /// Number of rows whose record named a remote target.
    std::int32_t fernziel_anzahl = 0;

    /// Two ends prepared for a search.
    struct Search {
        explicit Search(const LineCoordinates& ends) : key(ends), hash(key.symmetric_hash()) {}

        LineKey key;
        std::uint64_t hash;
    };
    /// Result of lin_suchen: the row, negative if the row runs the other way; 0 with `same`.
    struct Found {
        std::int32_t index = 0;
        bool same = false;
    };
    /// The row between two ends, appended if there is none. Ends that agree to a centimetre are
    /// one point and give no row.
    Found lin_suchen(const Search& search);
    Found lin_suchen(const LineCoordinates& ends) { return lin_suchen(Search(ends)); }
    /// Asks the memory for the place of a row.
    void prefetch(const Search& search) const { index_.prefetch(search.hash); }
    /// Asks for the row itself, once its place is at hand.
    void prefetch_row(const Search& search) const;
    void clear();

 private:
    Found suchen_long(const LineKey& key);

    FlatIndex index_;
    std::unordered_map<std::string, std::int32_t> long_rows_;  ///< keys that overflow their fields
};

}  // namespace veldra
