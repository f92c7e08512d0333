// The observation pass, for each kind of observation.

#include "fuzz_support.h"
#include "graphikdatei/header_pass.h"
#include "graphikdatei/observation_pass.h"
#include "graphikdatei/point_pass.h"

namespace {

using namespace veldra;

void check_lines(Session& session, std::string_view bytes) {
    const std::int32_t count = session.part.lin.count();
    fuzz::require(count <= fuzz::line_count(bytes), "a row has a line");
    fuzz::require(session.part.lin.fernziel_anzahl <= count, "remote targets belong to rows");
    for (std::int32_t i = 1; i <= count; ++i) {
        const LineRow& row = session.part.lin[i];
        fuzz::require(!row.lin_schluessel.ends_equal(), "a line has two ends");
        fuzz::require(row.lin_klasse_von >= 0 && row.lin_klasse_von <= 3 &&
                          row.lin_klasse_nach >= 0 && row.lin_klasse_nach <= 3,
                      "classes are 0 to 3");
        fuzz::require(row.lin_schluessel.text().size() >= 44, "a key has its four fields");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    Session session;
    fuzz::set_file(session, bytes);
    if (!fuzz::runs([&] {
            kopf_lesen(session);
            punkt_lesen(session);
        })) {
        return 0;
    }
    for (std::int16_t kind = 0; kind <= 3; ++kind) {
        session.part.obj.obj_beob = kind;
        if (!fuzz::runs([&] { beob_lesen(session); })) {
            continue;
        }
        check_lines(session, bytes);
        const std::string once = fuzz::tables_text(session);
        beob_lesen(session);
        fuzz::require(fuzz::tables_text(session) == once, "the pass can be repeated");
        fuzz::write_file("ve.dat", fuzz::with_indented_lines(bytes));
        beob_lesen(session);
        fuzz::require(fuzz::tables_text(session) == once, "blanks before a record do not count");
        fuzz::write_file("ve.dat", bytes);
    }
    return 0;
}
