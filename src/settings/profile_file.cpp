#include "settings/profile_file.h"

#include <algorithm>
#include <optional>

#include "os/files.h"
#include "text/codepage.h"
#include "text/fatal_error.h"

namespace veldra {

namespace {

constexpr std::string_view white_space = " \t";
constexpr std::string_view new_line_end = "\r\n";
constexpr std::string_view utf8_mark = "\xEF\xBB\xBF";

/// How many bytes follow the first one of a sequence of UTF-8; none if it cannot begin one.
std::optional<std::size_t> followers(unsigned char first) {
    if (first < 0x80) {
        return 0;
    }
    if (first < 0xC2 || first > 0xF4) {
        return std::nullopt;
    }
    return first < 0xE0 ? 1 : first < 0xF0 ? 2 : 3;
}

/// Whether the bytes are UTF-8 and hold anything beyond ASCII.
bool shows_as_utf8(std::string_view bytes) {
    bool beyond_ascii = false;
    for (std::size_t at = 0; at < bytes.size();) {
        const auto count = followers(static_cast<unsigned char>(bytes[at]));
        if (!count || at + *count >= bytes.size()) {
            return false;
        }
        const std::string_view following = bytes.substr(at + 1, *count);
        if (!std::all_of(following.begin(), following.end(), [](char byte) {
                return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
            })) {
            return false;
        }
        beyond_ascii = beyond_ascii || *count > 0;
        at += *count + 1;
    }
    return beyond_ascii;
}

std::string_view strip(std::string_view text) {
    const std::size_t first = text.find_first_not_of(white_space);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(white_space) - first + 1);
}

std::string_view without_quotes(std::string_view value) {
    const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                        (value.front() == '"' || value.front() == '\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
}

}  // namespace

ProfileFile::ProfileFile(std::string_view bytes) : marked_(bytes.starts_with(utf8_mark)) {
    bytes.remove_prefix(marked_ ? utf8_mark.size() : 0);
    utf8_ = marked_ || shows_as_utf8(bytes);
    while (!bytes.empty()) {
        const std::size_t feed = bytes.find('\n');
        const std::size_t size = feed == std::string_view::npos ? bytes.size() : feed + 1;
        const std::string_view whole = bytes.substr(0, size);
        std::size_t text_size = feed == std::string_view::npos ? size : feed;
        if (text_size < size && text_size > 0 && whole[text_size - 1] == '\r') {
            --text_size;
        }
        lines_.push_back(make_line(whole.substr(0, text_size), whole.substr(text_size)));
        bytes.remove_prefix(size);
    }
}

std::string ProfileFile::decoded(std::string_view bytes) const {
    return utf8_ ? from_utf8(bytes) : std::string(bytes);
}

std::string ProfileFile::encoded(std::string_view windows_1252) const {
    return utf8_ ? to_utf8(windows_1252) : std::string(windows_1252);
}

ProfileFile::Line ProfileFile::make_line(std::string_view text, std::string_view end) const {
    Line line{.text = std::string(text), .end = std::string(end), .name = {}};
    const std::string_view content = strip(text);
    if (content.empty()) {
        line.kind = Kind::blank;
        return line;
    }
    if (content.front() == ';') {
        return line;
    }
    const std::size_t closing = content.find(']');
    if (content.front() == '[' && closing != std::string_view::npos) {
        line.kind = Kind::section;
        line.name = upper_case(decoded(strip(content.substr(1, closing - 1))));
        return line;
    }
    const std::size_t equals = text.find('=');
    if (equals != std::string_view::npos) {
        line.kind = Kind::key;
        line.name = upper_case(decoded(strip(text.substr(0, equals))));
        line.value_from = std::min(text.find_first_not_of(white_space, equals + 1), text.size());
    }
    return line;
}

std::string ProfileFile::line_value(const Line& line) const {
    const std::string_view text = line.text;
    return decoded(without_quotes(strip(text.substr(line.value_from)))).substr(0, max_value_length);
}

ProfileFile ProfileFile::load(const std::string& path) {
    bool unread = false;
    return load(path, unread);
}

ProfileFile ProfileFile::load(const std::string& path, bool& unread) {
    unread = false;
    try {
        return load_for_update(path);
    } catch (const FatalError&) {
        unread = true;
        return {};
    }
}

ProfileFile ProfileFile::load_for_update(const std::string& path) {
    const auto bytes = read_file_if_any(path);
    return bytes ? ProfileFile(*bytes) : ProfileFile();
}

void ProfileFile::save(const std::string& path) const {
    ReplacedFile file(path);
    file.write(bytes());
    file.commit();
}

std::string ProfileFile::bytes() const {
    std::string all(marked_ ? utf8_mark : "");
    for (const Line& line : lines_) {
        all += line.text;
        all += line.end;
    }
    return all;
}

/// Index of the section's line, or the number of lines.
std::size_t ProfileFile::find_section(std::string_view section) const {
    const std::string wanted = upper_case(strip(section));
    const auto found = std::find_if(lines_.begin(), lines_.end(), [&](const Line& line) {
        return line.kind == Kind::section && line.name == wanted;
    });
    return static_cast<std::size_t>(found - lines_.begin());
}

/// Index of the key's line within the section that begins at `section_line`, or the number of
/// lines.
std::size_t ProfileFile::find_key(std::size_t section_line, std::string_view key) const {
    const std::string wanted = upper_case(strip(key));
    for (std::size_t i = section_line + 1; i < lines_.size(); ++i) {
        if (lines_[i].kind == Kind::section) {
            break;
        }
        if (lines_[i].kind == Kind::key && lines_[i].name == wanted) {
            return i;
        }
    }
    return lines_.size();
}

/// Index behind the last line of a section that is not blank.
std::size_t ProfileFile::section_tail(std::size_t section_line) const {
    std::size_t tail = section_line + 1;
    for (std::size_t i = tail; i < lines_.size() && lines_[i].kind != Kind::section; ++i) {
        if (lines_[i].kind != Kind::blank) {
            tail = i + 1;
        }
    }
    return tail;
}

std::string ProfileFile::get(std::string_view section, std::string_view key) const {
    const std::size_t at = find_key(find_section(section), key);
    return at < lines_.size() ? line_value(lines_[at]) : std::string();
}

std::int64_t ProfileFile::line_number(std::string_view section, std::string_view key) const {
    const std::size_t at = find_key(find_section(section), key);
    return at < lines_.size() ? static_cast<std::int64_t>(at) + 1 : 0;
}

std::size_t ProfileFile::insert_line(std::size_t at, std::string_view text) {
    if (at > 0 && lines_[at - 1].end.empty()) {
        lines_[at - 1].end = new_line_end;
    }
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(at),
                  make_line(encoded(text), new_line_end));
    return at;
}

void ProfileFile::set(std::string_view section, std::string_view key, std::string_view value) {
    std::size_t section_line = find_section(section);
    if (section_line == lines_.size()) {
        section_line = insert_line(lines_.size(), "[" + std::string(section) + "]");
    }
    std::size_t at = find_key(section_line, key);
    if (at == lines_.size()) {
        at = insert_line(section_tail(section_line), std::string(key) + "=");
    }
    Line& line = lines_[at];
    if (line_value(line) != value) {
        line.text.replace(line.value_from, std::string::npos, encoded(one_line(value)));
    }
}

FatalError unread_profile(const std::string& path) {
    return FatalError(path +
                      ": Das Profil konnte nicht gelesen werden und bleibt deshalb, wie es ist.");
}

bool profile_gives_back(std::string_view value) {
    ProfileFile file;
    file.set("A", "B", value);
    return file.get("A", "B") == value;
}

}  // namespace veldra
