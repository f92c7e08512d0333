// The point pass, for each of the first parts of a file.

#include <algorithm>

#include "fuzz_support.h"
#include "graphikdatei/header_pass.h"
#include "graphikdatei/point_pass.h"

namespace {

using namespace veldra;

void check_points(const Session& session, std::string_view bytes) {
    fuzz::require(session.part.pu.count() + session.part.nuoff.count() <= fuzz::line_count(bytes),
                  "a row has a line");
    for (std::int32_t i = 1; i <= session.part.pu.count(); ++i) {
        const PointRow& point = session.part.pu[i];
        fuzz::require(session.part.pu.punkt_finden(point.pu_rechts, point.pu_hoch) == i,
                      "each point is found, and only once");
        fuzz::require(point.pu_art_lage >= 0 && point.pu_art_lage <= 9 && point.pu_art_hoehe >= 0 &&
                          point.pu_art_hoehe <= 9,
                      "kinds of points have one digit");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    Session session;
    fuzz::set_file(session, bytes);
    if (!fuzz::runs([&] { kopf_lesen(session); })) {
        return 0;
    }
    constexpr std::int32_t most_parts = 3;
    const std::int32_t first = session.part.netz_aktuell;
    for (std::int32_t part = first; part <= std::min(session.netz.count(), most_parts); ++part) {
        fuzz::set_file(session, bytes);
        session.part.netz_aktuell = part;
        if (!fuzz::runs([&] { punkt_lesen(session); })) {
            continue;
        }
        check_points(session, bytes);
        const std::string once = fuzz::tables_text(session);
        fuzz::reset_session(session, session.graphikdatei);
        punkt_lesen(session);
        fuzz::require(fuzz::tables_text(session) == once, "the pass can be repeated");
        fuzz::set_file(session, fuzz::with_indented_lines(bytes));
        punkt_lesen(session);
        fuzz::require(fuzz::tables_text(session) == once, "blanks before a record do not count");
    }
    return 0;
}
