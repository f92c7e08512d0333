// The writer of the final form: leaving a file right after opening it.

#include "fuzz_support.h"
#include "graphikdatei/header_pass.h"
#include "graphikdatei/keywords.h"
#include "graphikdatei/line_reader.h"
#include "graphikdatei/writer.h"
#include "text/numbers.h"
#include "text/tokens.h"

namespace {

using namespace veldra;

/// Opens the file of the session; false if it cannot be opened.
bool open(Session& session) {
    fuzz::reset_session(session, session.graphikdatei);
    const bool opened = fuzz::runs([&] { kopf_lesen(session); });
    session.datei_geladen = opened ? 1 : 0;
    return opened;
}

int word_count(std::string_view line) {
    TokenCursor cursor(line);
    int count = 0;
    while (cursor.next().found()) {
        ++count;
    }
    return count;
}

/// True if each number that the writer has put into columns fits its column, so that it can be read
/// back.
bool columns_fit(const std::string& path) {
    constexpr std::size_t longest_scale = 14;
    LineReader reader(path);
    std::string_view line;
    while (reader.next(line)) {
        const Record record(line);
        // The scales stand in the second line; one too wide runs into its keyword.
        if (reader.line_number() == 2 && !record.is(keyword::massstabvektoren)) {
            return false;
        }
        if (record.is(keyword::massstabvektoren)) {
            if (word_count(line) != 7) {
                return false;
            }
            // A scale that its column rounds to 0 reads back as "leave it alone".
            for (int slot = 2; slot <= 7; ++slot) {
                if (zahl_wert(suche_wort(line, slot).text) == 0) {
                    return false;
                }
            }
        } else if (record.is(keyword::massstabgrundriss)) {
            const int words = word_count(line);
            if ((words != 2 && words != 5 && words != 8) ||
                suche_wort(line, 2).text.size() > longest_scale) {
                return false;
            }
        }
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    Session session;
    fuzz::set_file(session, bytes);
    const std::string path = session.graphikdatei;
    const std::string lasting = fuzz::lasting_lines(path);
    if (!open(session)) {
        fuzz::require(fuzz::file_bytes(path) == bytes, "a file that cannot be opened stays");
        return 0;
    }
    endfassung_schreiben(session);
    fuzz::require(session.datei_geladen == 0, "the file is closed");
    if (!columns_fit(path)) {
        return 0;
    }
    fuzz::require(fuzz::lasting_lines(path) == lasting,
                  "unknown records and parts keep their places");
    const std::string once = fuzz::file_bytes(path);
    fuzz::require(open(session), "what was written can be read");
    endfassung_schreiben(session);
    fuzz::require(fuzz::file_bytes(path) == once, "writing twice is writing once");
    return 0;
}
