#include "graphikdatei/record_fields.h"

#include "graphikdatei/keywords.h"
#include "text/codepage.h"
#include "text/numbers.h"

namespace veldra {

RecordSource::RecordSource(const std::string& path, std::string_view initials, LongWork* work)
    : path_(path), reader_(path, work) {
    for (std::size_t byte = 0; byte < wanted_.size(); ++byte) {
        const char c = upper_case(static_cast<char>(byte));
        // Blanks, NULs and a quote may stand before a keyword.
        wanted_[byte] =
            c == ' ' || c == '\0' || c == '"' || initials.find(c) != std::string_view::npos;
    }
}

FatalError RecordSource::error(int code, std::string_view field) const {
    return runtime_error_at(code, {path_, reader_.line_number(), to_utf8(field)});
}

std::int16_t RecordSource::integer(double value, std::string_view field) const {
    const auto integer = to_int16(value);
    if (!integer) {
        throw error(6, field);
    }
    return *integer;
}

std::int16_t flag_value(const Word& word) {
    if (!word.found()) {
        return 0;
    }
    if (word.text.size() > 1) {
        return 1;
    }
    return static_cast<std::int16_t>(zahl_wert(word.text));
}

std::optional<NubezOffsetRow> district_label(Record& record) {
    const std::string_view first = record.word(2).text;
    const bool with_series = first == "L" || first == "C";
    const int required = with_series ? 5 : 4;
    if (!record.word(required).found()) {
        return std::nullopt;
    }
    NubezOffsetRow row;
    row.nuoff_bez = first;
    if (with_series) {
        row.nuoff_bez += ' ';
        row.nuoff_bez += record.word(3).text;
    }
    row.nuoff_rechts = record.number(required - 1);
    row.nuoff_hoch = record.number(required);
    return row;
}

int title_line(const Record& record) {
    return record.is(keyword::titel2)   ? 1
           : record.is(keyword::titel3) ? 2
           : record.is(keyword::titel4) ? 3
                                        : -1;
}

}  // namespace veldra
