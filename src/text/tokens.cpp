#include "text/tokens.h"

#include "text/codepage.h"
#include "text/numbers.h"

namespace veldra {

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
        const Word word = cursor_.next();
        keep(word.status, word.text);
    }
    const KeptWord& kept = words_[n];
    return {kept.status, line_.substr(kept.begin, kept.size)};
}

double Record::number(int n, double missing) {
    if (n == found_ + 1 && n <= kept_words) {
        double value = 0;
        if (const std::string_view text = cursor_.next_plain_decimal(value); !text.empty()) {
            keep(0, text);
            return value;
        }
    }
    const Word found = word(n);
    return found.found() ? zahl_wert(found.text) : missing;
}

std::string_view Record::rest() const {
    return rest_begin_ < line_.size() ? trim(line_.substr(rest_begin_)) : std::string_view();
}

}  // namespace veldra
