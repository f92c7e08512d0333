#include "model/tables.h"

#include <algorithm>
#include <bit>

#include "text/numbers.h"

namespace veldra {

namespace {

constexpr std::string_view key_mask = "#0000000.00";
constexpr std::size_t field_width = 11;
/// Centimetres whose text fills 11 characters at most.
constexpr std::int64_t widest_positive = 9999999999;
constexpr std::int64_t widest_negative = -999999999;

std::uint64_t coordinate_bits(double value) {
    return std::bit_cast<std::uint64_t>(value == 0.0 ? 0.0 : value);
}

std::uint64_t point_hash(double rechts, double hoch) {
    return mix_bits(coordinate_bits(rechts) * 0x9E3779B97F4A7C15ULL + coordinate_bits(hoch));
}

/// Asks the memory for all cache lines of a row.
template <typename Row>
void prefetch_memory(const Row& row) {
    constexpr std::size_t cache_line = 64;
    const auto* bytes = reinterpret_cast<const char*>(&row);
    for (std::size_t at = 0; at < sizeof(Row); at += cache_line) {
        __builtin_prefetch(bytes + at);
    }
}

std::string centimetre_field(std::int64_t centimetres) {
    std::string digits = std::to_string(centimetres < 0 ? -centimetres : centimetres);
    if (digits.size() < 9) {
        digits.insert(0, 9 - digits.size(), '0');
    }
    digits.insert(digits.size() - 2, 1, '.');
    if (centimetres < 0) {
        digits.insert(0, 1, '-');
    }
    if (digits.size() < field_width) {
        digits.insert(0, field_width - digits.size(), ' ');
    }
    return digits;
}

double field_value(std::string_view text, std::size_t position) {
    return position < text.size() ? zahl_wert(text.substr(position, field_width)) : 0.0;
}

}  // namespace

LineKey::LineKey(const LineCoordinates& ends) {
    bool fits = true;
    const auto centimetres = [&fits](double metres) {
        const std::int64_t whole = whole_centimetres(metres);
        fits = fits && whole <= widest_positive && whole >= widest_negative;
        return whole;
    };
    parts_ = {centimetres(ends.x1), centimetres(ends.y1), centimetres(ends.x2),
              centimetres(ends.y2)};
    if (!fits) {
        parts_ = std::bit_cast<std::array<std::int64_t, 4>>(ends);
    }
}

std::string LineKey::field(std::size_t part) const {
    return is_ordinary() ? centimetre_field(parts_[part])
                         : zahl_text(std::bit_cast<double>(parts_[part]), key_mask, " ");
}

std::string LineKey::text() const {
    return field(0) + field(1) + field(2) + field(3);
}

std::string LineKey::reversed_text() const {
    return field(2) + field(3) + field(0) + field(1);
}

LineCoordinates LineKey::read_back() const {
    const std::string whole = text();
    return {field_value(whole, 0), field_value(whole, field_width),
            field_value(whole, 2 * field_width), field_value(whole, 3 * field_width)};
}

bool LineKey::ends_equal() const {
    return is_ordinary() ? parts_[0] == parts_[2] && parts_[1] == parts_[3]
                         : field(0) + field(1) == field(2) + field(3);
}

std::uint64_t LineKey::symmetric_hash() const {
    const auto end_hash = [this](std::size_t i) {
        return mix_bits(static_cast<std::uint64_t>(parts_[i]) * 0x9E3779B97F4A7C15ULL +
                        static_cast<std::uint64_t>(parts_[i + 1]));
    };
    return mix_bits(end_hash(0) + end_hash(2));
}

void derive_value_modes(ObjectSelection& obj) {
    constexpr std::array<std::int16_t, 9> lage{0, 1, 0, 1, 2, 0, 2, 3, 0};
    constexpr std::array<std::int16_t, 9> hoehe{0, 0, 1, 1, 0, 2, 2, 0, 3};
    const auto puwe = static_cast<std::size_t>(obj.obj_puwe);
    obj.obj_wert_lage = lage.at(puwe);
    obj.obj_wert_hoehe = hoehe.at(puwe);
}

void set_selection_defaults(ObjectSelection& obj) {
    ObjectSelection defaults;
    defaults.obj_bezu_elli = obj.obj_bezu_elli;
    defaults.obj_bezu_abbi = obj.obj_bezu_abbi;
    obj = defaults;
}

PointTable::Search::Search(double rechts_wanted, double hoch_wanted)
    : rechts(rechts_wanted), hoch(hoch_wanted), hash(point_hash(rechts, hoch)) {}

std::int32_t PointTable::punkt_finden(const Search& search) const {
    const auto matches = [&](std::int32_t row) {
        const PointRow& point = (*this)[row];
        return point.pu_rechts == search.rechts && point.pu_hoch == search.hoch;
    };
    const std::int32_t value_row = value_index_.find(search.hash, matches);
    return value_row != 0 ? value_row : signature_index_.find(search.hash, matches);
}

std::int32_t PointTable::signature_at(double rechts, double hoch) const {
    const Search search(rechts, hoch);
    return signature_index_.find(search.hash, [&](std::int32_t row) {
        return (*this)[row].pu_rechts == rechts && (*this)[row].pu_hoch == hoch;
    });
}

void PointTable::prefetch(const Search& search) const {
    signature_index_.prefetch(search.hash);
    value_index_.prefetch(search.hash);
}

void PointTable::prefetch_row(const Search& search) const {
    prefetch_memory((*this)[signature_index_.candidate(search.hash)]);
}

std::int32_t PointTable::punkt_neu(const Search& search) {
    const std::int32_t row = append();
    PointRow& point = (*this)[row];
    point.pu_rechts = search.rechts;
    point.pu_hoch = search.hoch;
    FlatIndex& index = open_ ? signature_index_ : value_index_;
    index.put(search.hash, row, [&](std::int32_t other) {
        return (*this)[other].pu_rechts == search.rechts && (*this)[other].pu_hoch == search.hoch;
    });
    return row;
}

std::int32_t PointTable::punkt_suchen_neu(const Search& search) {
    const std::int32_t row = punkt_finden(search);
    return row != 0 ? row : punkt_neu(search);
}

void PointTable::close_signature_rows() {
    pu_anzahl_signatur = count();
    open_ = false;
}

PointTable PointTable::copy() const {
    PointTable other;
    static_cast<RowTable&>(other) = RowTable::copy();
    other.pu_anzahl_signatur = pu_anzahl_signatur;
    other.values_read = values_read;
    other.signature_index_ = signature_index_;
    other.value_index_ = value_index_;
    other.open_ = open_;
    return other;
}

void PointTable::drop_value_rows() {
    truncate(pu_anzahl_signatur);
    value_index_.clear();
}

void PointTable::clear() {
    RowTable::clear();
    signature_index_.clear();
    value_index_.clear();
    pu_anzahl_signatur = 0;
    values_read = false;
    open_ = true;
}

std::int16_t punkt_klasse(const PointRow& point) {
    if (point.pu_art_lage == 0) {
        return 0;
    }
    if (point.pu_art_lage != 1) {
        return 3;
    }
    return point.pu_art_hoehe < 2    ? std::int16_t{1}
           : point.pu_art_hoehe == 2 ? std::int16_t{2}
                                     : std::int16_t{3};
}

LineTable::Found LineTable::lin_suchen(const Search& search) {
    const LineKey& key = search.key;
    if (key.ends_equal()) {
        return {0, true};
    }
    if (!key.is_ordinary()) {
        return suchen_long(key);
    }
    const auto matches = [&](std::int32_t row) {
        const LineKey& other = (*this)[row].lin_schluessel;
        return other.equals(key) || other.is_reverse_of(key);
    };
    const std::int32_t row = index_.find_or_put(search.hash, count() + 1, matches);
    if (row <= count()) {
        return {(*this)[row].lin_schluessel.equals(key) ? row : -row, false};
    }
    (*this)[append()].lin_schluessel = key;
    return {row, false};
}

void LineTable::prefetch_row(const Search& search) const {
    prefetch_memory((*this)[index_.candidate(search.hash)]);
}

/// Keys longer than their fields are compared as texts: two divisions into fields may agree.
LineTable::Found LineTable::suchen_long(const LineKey& key) {
    const std::string text = key.text();
    if (const auto found = long_rows_.find(text); found != long_rows_.end()) {
        return {found->second, false};
    }
    if (const auto found = long_rows_.find(key.reversed_text()); found != long_rows_.end()) {
        return {-found->second, false};
    }
    const std::int32_t added = append();
    (*this)[added].lin_schluessel = key;
    long_rows_.emplace(text, added);
    return {added, false};
}

void LineTable::clear() {
    RowTable::clear();
    index_.clear();
    long_rows_.clear();
    fernziel_anzahl = 0;
}

}  // namespace veldra
