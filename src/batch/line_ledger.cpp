#include "batch/line_ledger.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include <fmt/format.h>

#include "graphikdatei/keywords.h"
#include "graphikdatei/line_reader.h"
#include "text/codepage.h"
#include "text/fatal_error.h"
#include "text/plain_decimal.h"
#include "text/tokens.h"

namespace veldra::batch {

namespace {

/// Keywords that hold for the whole file, or open a part; the others are records of a part.
bool is_file_keyword(std::string_view keyword) {
    return keyword == keyword::netzteil || keyword == keyword::verfahrenlegende ||
           keyword == keyword::massstabgrundriss || keyword == keyword::massstabvektoren ||
           keyword == keyword::titel1;
}

/// How many tokens from the second on are coordinates.
int coordinates_of(std::string_view keyword) {
    for (const std::string_view line :
         {keyword::distanz, keyword::gps_strecke, keyword::richtung, keyword::gps_richtung,
          keyword::orientierungsrichtung, keyword::zenitwinkel, keyword::hoehenunterschied,
          keyword::gps_hoehenunterschied, keyword::gps_raumvektor}) {
        if (keyword == line) {
            return 4;
        }
    }
    for (const std::string_view point :
         {keyword::punktsignatur, keyword::lageaenderung, keyword::hoehenaenderung,
          keyword::lagerestklaffungen, keyword::hoehenrestklaffungen, keyword::lagefehlerellipse,
          keyword::hoehenfehler}) {
        if (keyword == point) {
            return 2;
        }
    }
    return 0;
}

std::string_view digits_at(std::string_view& text) {
    const auto end = std::find_if_not(text.begin(), text.end(), is_decimal_digit);
    const std::string_view digits = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(digits.size());
    return digits;
}

bool take_one_of(std::string_view& text, std::string_view characters) {
    if (text.empty() || characters.find(text.front()) == std::string_view::npos) {
        return false;
    }
    text.remove_prefix(1);
    return true;
}

/// A sign, digits with at most one point or comma, and perhaps a power of ten.
bool is_plain_number(std::string_view text) {
    take_one_of(text, "+-");
    std::size_t digits = digits_at(text).size();
    if (take_one_of(text, ".,")) {
        digits += digits_at(text).size();
    }
    if (digits == 0) {
        return false;
    }
    if (take_one_of(text, "eEdD")) {
        take_one_of(text, "+-");
        return !digits_at(text).empty() && text.empty();
    }
    return text.empty();
}

bool is_blank(std::string_view line) {
    return line.size() > longest_line ||
           line.find_first_not_of(std::string_view(" \0", 2)) == std::string_view::npos;
}

class Ledger {
 public:
    void take(std::string_view line, std::int64_t number, bool in_part) {
        if (is_blank(line)) {
            ++blank_;
            return;
        }
        Record record(line);
        const auto keyword = keyword_of(record);
        if (!keyword || (!in_part && !is_file_keyword(*keyword))) {
            unknown_.push_back({number, first_word(line)});
            return;
        }
        ++known_[*keyword];
        note_coordinates(record, *keyword, number);
    }

    LineLedger close(std::int64_t lines) {
        LineLedger ledger;
        ledger.lines = lines;
        std::int64_t sum = blank_ + static_cast<std::int64_t>(unknown_.size());
        for (const auto& [keyword, count] : known_) {
            ledger.kinds[to_utf8(keyword)] = count;
            sum += count;
        }
        if (blank_ > 0) {
            ledger.kinds[blank_kind] = blank_;
        }
        if (!unknown_.empty()) {
            ledger.kinds[unknown_kind] = static_cast<std::int64_t>(unknown_.size());
        }
        if (sum != lines) {
            throw FatalError(fmt::format("Protokoll: {} Zeilen, davon {} gezählt", lines, sum));
        }
        ledger.unknown = std::move(unknown_);
        ledger.odd_coordinates = std::move(odd_);
        return ledger;
    }

 private:
    /// The first keyword that the record's may stand for.
    static std::optional<std::string_view> keyword_of(const Record& record) {
        const auto found = std::find_if(keyword::all.begin(), keyword::all.end(),
                                        [&](std::string_view name) { return record.is(name); });
        return found == keyword::all.end() ? std::nullopt : std::optional(*found);
    }

    static std::string first_word(std::string_view line) {
        const Word word = suche_wort(line, 1);
        return to_utf8(word.found() ? word.text : line);
    }

    void note_coordinates(Record& record, std::string_view keyword, std::int64_t number) {
        for (int token = 2; token < 2 + coordinates_of(keyword); ++token) {
            const Word word = record.word(token);
            if (word.found() && !is_plain_number(word.text)) {
                odd_.push_back({number, to_utf8(keyword), token, to_utf8(word.text)});
            }
        }
    }

    std::int64_t blank_ = 0;
    std::map<std::string_view, std::int64_t> known_;
    std::vector<UnknownLine> unknown_;
    std::vector<OddCoordinate> odd_;
};

/// Whether the records before the first part belong to one: a file without parts is one.
bool has_parts(const std::string& path) {
    LineReader reader(path);
    std::string_view line;
    while (reader.next(line)) {
        const Record record(line);
        if (record.initial() == 'N' && record.is(keyword::netzteil)) {
            return true;
        }
    }
    return false;
}

}  // namespace

LineLedger ledger_of(const std::string& path) {
    bool in_part = !has_parts(path);
    Ledger ledger;
    LineReader reader(path);
    std::string_view line;
    while (reader.next(line)) {
        const Record record(line);
        in_part = in_part || (record.initial() == 'N' && record.is(keyword::netzteil));
        ledger.take(line, reader.line_number(), in_part);
    }
    return ledger.close(reader.line_number());
}

}  // namespace veldra::batch
