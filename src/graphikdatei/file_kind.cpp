#include "graphikdatei/file_kind.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "graphikdatei/keywords.h"
#include "os/files.h"
#include "text/fatal_error.h"
#include "text/tokens.h"

namespace veldra {

namespace {

constexpr std::size_t looked_at = std::size_t{64} * 1024;

std::string first_bytes(const std::string& path) {
    InputFile file(path);
    std::string bytes(looked_at, '\0');
    std::size_t size = 0;
    while (size < bytes.size()) {
        const std::size_t count = file.read(bytes.data() + size, bytes.size() - size);
        if (count == 0) {
            break;
        }
        size += count;
    }
    bytes.resize(size);
    return bytes;
}

/// NULs part words, tabs and the ends of lines, pages and files are there in texts; other control
/// characters are not.
bool is_no_text(char c) {
    constexpr std::string_view of_texts("\0\t\n\v\f\r\x1A", 7);
    return static_cast<unsigned char>(c) < ' ' && of_texts.find(c) == std::string_view::npos;
}

bool is_blank(char c) {
    return c == ' ' || c == '\0' || c == '\r' || c == '\n';
}

/// Every record has at least one word behind its keyword.
bool is_record(std::string_view line) {
    Record record(line);
    return record.word(2).found() &&
           std::any_of(keyword::all.begin(), keyword::all.end(),
                       [&record](std::string_view name) { return record.is(name); });
}

bool holds_record(std::string_view text) {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        if (is_record(line)) {
            return true;
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return false;
}

}  // namespace

FileKind kind_of_file(const std::string& path) {
    std::string bytes;
    try {
        bytes = first_bytes(path);
    } catch (const FatalError&) {
        return FileKind::graphic;
    }
    if (std::any_of(bytes.begin(), bytes.end(), is_no_text)) {
        return FileKind::binary;
    }
    const bool blank = std::all_of(bytes.begin(), bytes.end(), is_blank);
    return blank || holds_record(bytes) ? FileKind::graphic : FileKind::other_text;
}

}  // namespace veldra
