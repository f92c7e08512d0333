// The maxima pass.

#include "fuzz_support.h"
#include "graphikdatei/maxima_pass.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace veldra;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    Session session;
    fuzz::set_file(session, bytes);
    if (!fuzz::runs([&] { maxima_lesen(session); })) {
        return 0;
    }
    const std::string once = fuzz::tables_text(session);
    maxima_lesen(session);
    fuzz::require(fuzz::tables_text(session) == once, "the pass can be repeated");
    fuzz::set_file(session, fuzz::with_indented_lines(bytes));
    maxima_lesen(session);
    fuzz::require(fuzz::tables_text(session) == once, "blanks before a record do not count");
    return 0;
}
