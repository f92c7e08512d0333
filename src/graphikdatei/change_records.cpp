#include "graphikdatei/change_records.h"

#include <cstddef>

#include "graphikdatei/keywords.h"
#include "text/numbers.h"

namespace veldra {

namespace {

bool is_separator(char c) {
    return c == ' ' || c == '\0';
}

/// A token as it stands in its line, quotes included.
struct RawToken {
    std::size_t begin = 0;
    std::size_t end = 0;
    bool there = false;
};

RawToken raw_token(std::string_view line, int n) {
    TokenCursor cursor(line);
    const char* before = cursor.position();
    for (int i = 1; i <= n; ++i) {
        before = cursor.position();
        const int status = cursor.next().status;
        if (status != 0 && status != 2) {
            return {line.size(), line.size(), false};
        }
    }
    auto begin = static_cast<std::size_t>(before - line.data());
    while (is_separator(line[begin])) {
        ++begin;
    }
    return {begin, static_cast<std::size_t>(cursor.position() - line.data()), true};
}

void separate(std::string& line) {
    if (!line.empty() && !is_separator(line.back())) {
        line += ' ';
    }
}

/// Adds what lies between two tokens, or behind the last one.
void add_rest(std::string& line, std::string_view rest) {
    if (!rest.empty() && !is_separator(rest.front())) {
        line += ' ';
    }
    line += rest;
}

/// The line up to its last token of these. A quote that is not closed has swallowed the line's last
/// character and would swallow what comes behind, so it is closed there.
std::string up_to_token(std::string_view line, const RawToken& last) {
    const std::string_view raw = line.substr(last.begin, last.end - last.begin);
    if (raw.front() != '"' || raw.find('"', 1) != std::string_view::npos) {
        return std::string(line.substr(0, last.end));
    }
    return std::string(line.substr(0, raw.size() > 1 ? last.end - 1 : last.end)) + '"';
}

/// The line up to its epoch text; tokens that are missing are filled with what they count as.
std::string up_to_text(std::string_view line, int text_token) {
    int there = text_token;
    while (there > 1 && !raw_token(line, there).there) {
        --there;
    }
    std::string filled = up_to_token(line, raw_token(line, there));
    for (int n = there + 1; n <= text_token; ++n) {
        filled += n < text_token ? " 0" : " \"\"";
    }
    return filled;
}

}  // namespace

ChangeRecord ChangeRecords::take(const Record& record) {
    switch (record.initial()) {
        case 'L':
            if (record.is(keyword::lageaenderung)) {
                continued_ = ChangeRecord::lage_epoche;
                return counted(ChangeRecord::lage);
            }
            break;
        case 'H':
            if (record.is(keyword::hoehenaenderung)) {
                continued_ = ChangeRecord::hoehe_epoche;
                return counted(ChangeRecord::hoehe);
            }
            break;
        case 'N':
            if (continued_ != ChangeRecord::none && record.is(keyword::naechsteepoche)) {
                return counted(continued_);
            }
            break;
        default:
            break;
    }
    return ChangeRecord::none;
}

int epoch_text_token(ChangeRecord kind) {
    switch (kind) {
        case ChangeRecord::lage:
            return 7;
        case ChangeRecord::hoehe:
            return 6;
        case ChangeRecord::lage_epoche:
            return 4;
        default:
            return 3;
    }
}

std::string epoch_offset_text(double offset) {
    std::string text = zahl_text(offset, "0.0", "");
    return text == "0.0" ? "0.1" : text;
}

std::string with_offsets(std::string_view line, int text_token, std::string_view rechts_text,
                         std::string_view hoch_text) {
    const RawToken rechts = raw_token(line, text_token + 1);
    const RawToken hoch = raw_token(line, text_token + 2);
    std::string moved =
        rechts.there ? std::string(line.substr(0, rechts.begin)) : up_to_text(line, text_token);
    separate(moved);
    moved += rechts_text;
    if (hoch.there) {
        moved += line.substr(rechts.end, hoch.begin - rechts.end);
    }
    separate(moved);
    moved += hoch_text;
    if (hoch.there) {
        add_rest(moved, line.substr(hoch.end));
    }
    return moved.size() > longest_line ? std::string(line) : moved;
}

std::string with_label_offset(std::string_view line, ChangeRecord kind, const EpochOffset& offset) {
    return with_offsets(line, epoch_text_token(kind), epoch_offset_text(offset.rechts),
                        epoch_offset_text(offset.hoch));
}

}  // namespace veldra
