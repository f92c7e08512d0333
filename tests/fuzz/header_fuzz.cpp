// The header pass.

#include "fuzz_support.h"
#include "graphikdatei/header_pass.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace veldra;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    Session session;
    fuzz::set_file(session, bytes);
    if (!fuzz::runs([&] { kopf_lesen(session); })) {
        return 0;
    }
    fuzz::require(session.netz.count() <= fuzz::line_count(bytes), "a part has a line");
    fuzz::require(session.part.netz_aktuell == (session.netz.count() > 0 ? 1 : 0),
                  "the first part is the current one");
    const std::string once = fuzz::tables_text(session);
    fuzz::reset_session(session, session.graphikdatei);
    kopf_lesen(session);
    fuzz::require(fuzz::tables_text(session) == once, "the pass can be repeated");
    fuzz::set_file(session, fuzz::with_indented_lines(bytes));
    kopf_lesen(session);
    fuzz::require(fuzz::tables_text(session) == once, "blanks before a record do not count");
    return 0;
}
