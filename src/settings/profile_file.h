#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "text/fatal_error.h"

namespace veldra {

/// A Windows profile file in memory: sections of `key=value` lines, as bytes in Windows-1252.
///
/// Editors of today save such files in UTF-8. One that begins with the mark of UTF-8, or whose
/// bytes beyond ASCII are all of them sequences of UTF-8, is read and written as UTF-8; names and
/// values are handed over in Windows-1252 all the same, with "?" for what that lacks.
///
/// Reading: the case of sections and keys does not count; of several sections or keys of one name
/// the first is taken; blanks and tabs round names and values do not count; a value in single or
/// double quotes loses them. A line that begins with ";", one without "=", and everything above
/// the first section holds nothing.
///
/// Writing touches the lines of the keys that are set and no other byte. The format cannot hold
/// every value: one that begins or ends with a blank, that stands in quotes, or that is longer than
/// `max_value_length` is written as it is and reads back without them, or cut.
class ProfileFile {
 public:
    /// A value is cut behind this many characters when it is read.
    static constexpr std::size_t max_value_length = 255;

    ProfileFile() = default;
    explicit ProfileFile(std::string_view bytes);

    /// The file at `path`; empty if it is missing or cannot be read.
    [[nodiscard]] static ProfileFile load(const std::string& path);
    /// The same, with `unread` telling whether there is one that could not be read.
    [[nodiscard]] static ProfileFile load(const std::string& path, bool& unread);
    /// The file at `path`, to be written back: empty if there is none. Throws FatalError if there
    /// is one that cannot be read, since writing would lose what it holds.
    [[nodiscard]] static ProfileFile load_for_update(const std::string& path);
    /// Replaces the file at `path` as a whole; throws FatalError, and then the old file stands.
    void save(const std::string& path) const;

    /// The value of a key; empty if the key or the section is missing.
    [[nodiscard]] std::string get(std::string_view section, std::string_view key) const;
    /// Number of the line that holds the key, from 1; 0 if there is none.
    [[nodiscard]] std::int64_t line_number(std::string_view section, std::string_view key) const;
    /// Puts a value in place of the one that the key has, or the key at the end of its section, or
    /// the section at the end of the file. A line that gives this value already stays as it is.
    /// Control characters of the value become blanks.
    void set(std::string_view section, std::string_view key, std::string_view value);

    [[nodiscard]] std::string bytes() const;

 private:
    enum class Kind : std::uint8_t { blank, section, key, other };
    struct Line {
        std::string text;
        std::string end;  ///< LF or CR LF; empty only in the last line
        Kind kind = Kind::other;
        std::string name;            ///< of a section or a key, in upper case
        std::size_t value_from = 0;  ///< in the line of a key: where its value begins
    };

    [[nodiscard]] Line make_line(std::string_view text, std::string_view end) const;
    [[nodiscard]] std::string line_value(const Line& line) const;
    [[nodiscard]] std::string decoded(std::string_view bytes) const;
    [[nodiscard]] std::string encoded(std::string_view windows_1252) const;
    [[nodiscard]] std::size_t find_section(std::string_view section) const;
    [[nodiscard]] std::size_t find_key(std::size_t section_line, std::string_view key) const;
    [[nodiscard]] std::size_t section_tail(std::size_t section_line) const;
    std::size_t insert_line(std::size_t at, std::string_view text);

    std::vector<Line> lines_;
    bool utf8_ = false;
    bool marked_ = false;  ///< the file begins with the mark of UTF-8
};

/// The error to end with instead of writing settings that were never read: what stands in the file
/// is the user's, and what stands in memory are the defaults.
[[nodiscard]] FatalError unread_profile(const std::string& path);

/// Whether a value is read back as it was written.
[[nodiscard]] bool profile_gives_back(std::string_view value);

}  // namespace veldra
