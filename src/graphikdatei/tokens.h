#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

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
    explicit TokenCursor(std::string_view line) : line_(line) {}

    /// The next token. After one that is missing (status 1 or 3) all further ones are.
    Word next() {
        if (line_.size() > longest_line) {
            return {3, {}};
        }
        std::size_t at = at_;
        while (at < line_.size() && is_separator(line_[at])) {
            ++at;
        }
        if (at >= line_.size()) {
            at_ = at;
            return {1, {}};
        }
        if (line_[at] != '"') {
            const std::size_t start = at;
            while (at < line_.size() && !is_separator(line_[at])) {
                ++at;
            }
            at_ = at;
            return {0, line_.substr(start, at - start)};
        }
        return quoted(at + 1);
    }

    /// The next token if it is a plain decimal, in one scan; nothing happens otherwise.
    bool next_plain_decimal(Word& word, double& value);

 private:
    static bool is_separator(char c) { return c == ' ' || c == '\0'; }

    Word quoted(std::size_t start) {
        const std::size_t quote = line_.find('"', start);
        // Without a closing quote the last character counts as one.
        const std::size_t end = quote != std::string_view::npos ? quote : line_.size() - 1;
        at_ = quote != std::string_view::npos ? quote + 1 : line_.size();
        if (end <= start) {
            return {2, {}};
        }
        return {0, line_.substr(start, end - start)};
    }

    std::string_view line_;
    std::size_t at_ = 0;
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
    /// Token `n` as a number; none if it is missing.
    [[nodiscard]] std::optional<double> optional_number(int n);
    /// Token `n` as a number, 0 if it is missing.
    [[nodiscard]] double number(int n) { return optional_number(n).value_or(0.0); }

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

    void keep(const Word& word);

    std::string_view line_;
    TokenCursor cursor_;
    Word keyword_;
    char initial_ = 0;
    std::size_t rest_begin_ = 0;
    int found_ = 1;
    KeptWord words_[kept_words + 1];
};

}  // namespace veldra
