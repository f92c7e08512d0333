#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "text/plain_decimal.h"

namespace veldra {

/// Longest line that has tokens; positions in a line are 16-bit.
constexpr std::size_t longest_line = 32767;

/// Result of the word finder.
struct Word {
    /// 0 found; 1 no such token; 2 the token is an empty quoted one; 3 the line is too long.
    int status = 1;
    std::string_view text;  ///< without quotes; empty unless found

    [[nodiscard]] bool found() const { return status == 0; }
};

/// Walks over the tokens of a line: runs of characters between blanks and NULs. A token that
/// begins with a double quote runs to the next one, or to the end of the line less one character.
class TokenCursor {
 public:
    explicit TokenCursor(std::string_view line)
        : at_(line.data()),
          end_(line.data() + (line.size() > longest_line ? 0 : line.size())),
          status_at_end_(line.size() > longest_line ? 3 : 1) {}

    /// Where the next token is looked for.
    [[nodiscard]] const char* position() const { return at_; }

    /// The next token. After one that is missing (status 1 or 3) all further ones are.
    Word next() {
        skip_separators();
        if (at_ == end_) {
            return {status_at_end_, {}};
        }
        if (*at_ == '"') {
            return quoted(at_ + 1);
        }
        const char* const start = at_;
        while (at_ != end_ && !is_separator(*at_)) {
            ++at_;
        }
        return {0, text_of(start, at_)};
    }

    /// The next token if it is a plain decimal; its text is empty, and the cursor stays before it,
    /// otherwise.
    std::string_view next_plain_decimal(double& value) {
        skip_separators();
        const char* const start = at_;
        const char* const stop = read_plain_decimal(start, end_, value);
        if (stop == nullptr) {
            return {};
        }
        at_ = stop;
        return text_of(start, stop);
    }

 private:
    static bool is_separator(char c) { return c == ' ' || c == '\0'; }

    static std::string_view text_of(const char* start, const char* stop) {
        return {start, static_cast<std::size_t>(stop - start)};
    }

    void skip_separators() {
        while (at_ != end_ && is_separator(*at_)) {
            ++at_;
        }
    }

    Word quoted(const char* start) {
        const std::size_t quote = text_of(start, end_).find('"');
        // Without a closing quote the last character counts as one.
        const char* const stop = quote != std::string_view::npos ? start + quote : end_ - 1;
        at_ = quote != std::string_view::npos ? stop + 1 : end_;
        return stop > start ? Word{0, text_of(start, stop)} : Word{2, {}};
    }

    const char* at_;
    const char* end_;
    int status_at_end_;  ///< of a token that is missing
};

/// Token `n` of a line, counted from 1.
[[nodiscard]] Word suche_wort(std::string_view line, int n);

/// The first token of a line as a record's keyword, and what stands behind it.
class Record {
 public:
    explicit Record(std::string_view line);

    /// False for a line without a first token; it has no keyword and matches nothing.
    [[nodiscard]] bool has_keyword() const { return keyword_.found(); }
    [[nodiscard]] std::string_view keyword() const { return keyword_.text; }
    /// First character of the keyword in upper case, 0 without keyword.
    [[nodiscard]] char initial() const { return initial_; }
    /// The keyword is a non-empty prefix of `name`, which is in upper case, whatever its own case.
    [[nodiscard]] bool is(std::string_view name) const;

    /// Token `n` from 2 on. Tokens are found one after another and kept, so asking for a later one
    /// finds those before it too.
    [[nodiscard]] Word word(int n);
    /// Token `n` as a number; `missing` if there is none.
    [[nodiscard]] double number(int n, double missing = 0.0);

    /// There is something behind the keyword, be it blanks only.
    [[nodiscard]] bool has_rest() const { return rest_begin_ <= line_.size(); }
    /// The line behind the keyword and one separator, without blanks at both ends.
    [[nodiscard]] std::string_view rest() const;

 private:
    static constexpr int kept_words = 16;

    /// A word already found. No initialisers: a record is made for each line of a file, and only
    /// the words asked for are ever written.
    struct KeptWord {
        std::uint16_t begin;
        std::uint16_t size;
        std::uint16_t status;
    };

    void keep(int status, std::string_view text) {
        const std::ptrdiff_t begin = status == 0 ? text.data() - line_.data() : 0;
        words_[++found_] = {static_cast<std::uint16_t>(begin),
                            static_cast<std::uint16_t>(text.size()),
                            static_cast<std::uint16_t>(status)};
    }

    std::string_view line_;
    TokenCursor cursor_;
    Word keyword_;
    char initial_ = 0;
    std::size_t rest_begin_ = 0;
    int found_ = 1;
    KeptWord words_[kept_words + 1];
};

}  // namespace veldra
