#include "graphikdatei/tokens.h"

#include "graphikdatei/codepage.h"
#include "graphikdatei/numbers.h"

namespace veldra {

bool TokenCursor::next_plain_decimal(Word& word, double& value) {
    std::size_t at = at_;
    while (at < line_.size() && is_separator(line_[at])) {
        ++at;
    }
    const std::size_t length = read_plain_decimal(line_.substr(at), value);
    if (length == 0 || line_.size() > longest_line) {
        return false;
    }
    word = {0, line_.substr(at, length)};
    at_ = at + length;
    return true;
}

Word suche_wort(std::string_view line, int n) {
    TokenCursor cursor(line);
    Word word;
    for (int i = 1; i <= n; ++i) {
        word = cursor.next();
        if (word.status == 1 || word.status == 3) {
            return word;
        }
    }
    return word;
}

Record::Record(std::string_view line) : line_(line), cursor_(line), keyword_(cursor_.next()) {
    if (keyword_.found()) {
        initial_ = upper_case(keyword_.text.front());
        // One character separates the keyword from the rest: a quoted keyword's closing quote, or
        // the separator behind a plain one.
        const auto begin = static_cast<std::size_t>(keyword_.text.data() - line.data());
        rest_begin_ = begin + keyword_.text.size() + 1;
    }
}

bool Record::is(std::string_view name) const {
    const std::string_view keyword = keyword_.text;
    if (keyword.empty() || keyword.size() > name.size()) {
        return false;
    }
    if (keyword == name) {
        return true;
    }
    for (std::size_t i = 0; i < keyword.size(); ++i) {
        if (upper_case(keyword[i]) != name[i]) {
            return false;
        }
    }
    return true;
}

Word Record::word(int n) {
    if (n > kept_words) {
        return suche_wort(line_, n);
    }
    while (found_ < n) {
        keep(cursor_.next());
    }
    const KeptWord& kept = words_[n];
    return {kept.status, line_.substr(kept.begin, kept.size)};
}

void Record::keep(const Word& word) {
    const std::ptrdiff_t begin = word.found() ? word.text.data() - line_.data() : 0;
    words_[++found_] = {static_cast<std::uint16_t>(begin),
                        static_cast<std::uint16_t>(word.text.size()),
                        static_cast<std::uint16_t>(word.status)};
}

std::optional<double> Record::optional_number(int n) {
    Word found;
    double value = 0;
    if (n == found_ + 1 && n <= kept_words && cursor_.next_plain_decimal(found, value)) {
        keep(found);
        return value;
    }
    found = word(n);
    return found.found() ? std::optional(zahl_wert(found.text)) : std::nullopt;
}

std::string_view Record::rest() const {
    return rest_begin_ < line_.size() ? trim(line_.substr(rest_begin_)) : std::string_view();
}

}  // namespace veldra
