// The value pass, for each choice of values.

#include "fuzz_support.h"
#include "graphikdatei/header_pass.h"
#include "graphikdatei/point_pass.h"
#include "graphikdatei/value_pass.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace veldra;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    Session session;
    fuzz::set_file(session, bytes);
    if (!fuzz::runs([&] {
            kopf_lesen(session);
            punkt_lesen(session);
        })) {
        return 0;
    }
    const std::int32_t points = session.part.pu.count();
    for (std::int16_t choice = 0; choice <= 8; ++choice) {
        session.part.obj.obj_puwe = choice;
        derive_value_modes(session.part.obj);
        if (!fuzz::runs([&] { wert_lesen(session); })) {
            continue;
        }
        fuzz::require(session.part.pu.pu_anzahl_signatur == points, "the points stay");
        fuzz::require(session.part.pu.count() - points <= fuzz::line_count(bytes),
                      "a row has a line");
        const std::string once = fuzz::tables_text(session);
        wert_lesen(session);
        fuzz::require(fuzz::tables_text(session) == once, "the pass can be repeated");
        fuzz::write_file("ve.dat", fuzz::with_indented_lines(bytes));
        wert_lesen(session);
        fuzz::require(fuzz::tables_text(session) == once, "blanks before a record do not count");
        fuzz::write_file("ve.dat", bytes);
    }
    return 0;
}
