#include "dialogs/boundary_options.h"

#include <algorithm>
#include <exception>
#include <vector>

#include "drawing/boundaries.h"
#include "drawing/boundary_reduction.h"
#include "os/files.h"
#include "settings/profile_file.h"
#include "settings/profile_values.h"
#include "text/codepage.h"
#include "text/numbers.h"
#include "text/tokens.h"

namespace veldra {

namespace {

using DatumTexts = std::array<std::string, datum_row_count>;
using DatumRows = std::array<DatumRow, datum_row_count>;

class GivenUp final : public std::exception {};

/// Digits, at least one, with at most one point or comma.
bool is_decimal(std::string_view text) {
    const auto is_digit = [](char c) { return c >= '0' && c <= '9'; };
    const auto is_point = [](char c) { return c == '.' || c == ','; };
    return std::any_of(text.begin(), text.end(), is_digit) &&
           std::count_if(text.begin(), text.end(), is_point) <= 1 &&
           std::all_of(text.begin(), text.end(),
                       [&](char c) { return is_digit(c) || is_point(c); });
}

bool is_signed_decimal(std::string_view text) {
    const bool has_sign = !text.empty() && (text.front() == '-' || text.front() == '+');
    return is_decimal(text.substr(has_sign ? 1 : 0));
}

DatumTexts texts_of(const DatumRows& rows) {
    DatumTexts texts;
    std::transform(rows.begin(), rows.end(), texts.begin(), datum_row_text);
    return texts;
}

bool parse_rows(const DatumTexts& texts, DatumRows& rows) {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const std::optional<DatumRow> row = parse_datum_row(texts[i]);
        if (!row) {
            return false;
        }
        rows[i] = *row;
    }
    return true;
}

}  // namespace

const std::array<std::string_view, 5>& ellipsoid_names() {
    static constexpr std::array<std::string_view, 5> names{
        "Bessel", "Hayford (internatinal)", "WGS 72", "GRS 80 (WGS 84)", "Krassowsky"};
    return names;
}

const std::array<std::string_view, 2>& mapping_names() {
    static constexpr std::array<std::string_view, 2> names{"Gauß-Krüger (3°-Streifen)", "UTM"};
    return names;
}

BoundaryOptions boundary_options(const Settings& settings) {
    return {to_utf8(settings.verw_datei), settings.verw_elli, settings.verw_abbi,
            texts_of(settings.verw_datum), texts_of(settings.numbez_datum)};
}

BoundaryOptions standard_boundary_options() {
    return boundary_options(Settings());
}

std::optional<DatumRow> parse_datum_row(std::string_view text) {
    std::vector<double> numbers;
    TokenCursor tokens(text);
    for (Word word = tokens.next(); word.status != 1; word = tokens.next()) {
        if (!word.found() || !is_signed_decimal(word.text)) {
            return std::nullopt;
        }
        numbers.push_back(zahl_wert(word.text));
    }
    if (numbers.size() != 5) {
        return std::nullopt;
    }
    const DatumRow row{numbers[0], numbers[1], numbers[2], numbers[3], numbers[4]};
    return profile_gives_back(datum_row_text(row)) ? std::optional(row) : std::nullopt;
}

std::string datum_row_text(const DatumRow& row) {
    return DatumForm().text(row);
}

bool store_boundary_options(const BoundaryOptions& options, Settings& settings) {
    DatumRows gren;
    DatumRows numb;
    if (!parse_rows(options.gren_tr, gren) || !parse_rows(options.numb_tr, numb)) {
        return false;
    }
    settings.verw_datei = from_utf8(options.datei);
    settings.verw_elli = options.ellipsoid;
    settings.verw_abbi = options.abbildung;
    settings.verw_datum = gren;
    settings.numbez_datum = numb;
    return true;
}

std::string find_boundary_file(const Session& session, const std::string& datei) {
    // As it will be kept: what code page or profile lack does not lead to a file.
    const std::string kept = from_utf8(datei);
    std::string path = boundary_path(session, kept);
    return profile_gives_back(kept) && datei_vorhanden(path) ? path : std::string();
}

ReductionEnd optimise_boundaries(const Session& session, std::string& datei,
                                 const ReductionWatch& watch) {
    constexpr std::string_view suffix = "_neu";
    const std::string input = find_boundary_file(session, datei);
    if (input.empty()) {
        return ReductionEnd::no_file;
    }
    try {
        const auto progress = [&watch](double share) {
            if (!watch(share)) {
                throw GivenUp();
            }
        };
        reduce_boundaries(input, input + std::string(suffix), progress, NamedBy::program);
    } catch (const GivenUp&) {
        return ReductionEnd::cancelled;
    }
    datei += suffix;
    return ReductionEnd::done;
}

}  // namespace veldra
