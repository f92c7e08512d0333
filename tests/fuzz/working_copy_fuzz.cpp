// The writer of working copies.

#include <cmath>

#include "fuzz_support.h"
#include "graphikdatei/header_pass.h"
#include "graphikdatei/point_pass.h"
#include "graphikdatei/writer.h"

namespace {

using namespace veldra;

/// True if the points' coordinates fit the columns they are written into, a blank before each.
/// Others run into each other, and such a record has too few words to be replaced the next time.
bool columns_fit(const PointTable& points) {
    constexpr double too_wide = 9999999.9;
    for (std::int32_t i = 1; i <= points.count(); ++i) {
        if (std::abs(points[i].pu_rechts) > too_wide || std::abs(points[i].pu_hoch) > too_wide) {
            return false;
        }
    }
    return true;
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
    session.datei_geladen = 1;
    arbeitskopie_schreiben(session);
    const std::string first = session.graphikdatei + "_1";
    fuzz::require(fuzz::file_bytes(session.graphikdatei) == bytes, "the graphic file stays");
    fuzz::require(fuzz::lasting_lines(first) == fuzz::lasting_lines(session.graphikdatei),
                  "unknown records and parts keep their places");

    arbeitskopie_schreiben(session);
    fuzz::require(!columns_fit(session.part.pu) ||
                      fuzz::file_bytes(session.graphikdatei + "_2") == fuzz::file_bytes(first),
                  "the same state gives the same copy");
    return 0;
}
