#include <vector>

#include <fmt/format.h>

#include "datum_fit.h"

/// Prints the row for reference data in DHDN under a document in ETRS 89, and how exact it is.
int main() {
    using namespace veldra;
    const std::vector<DatumPoint> there = germany(dhdn_to_etrs89);
    std::vector<DatumPoint> back;
    back.reserve(there.size());
    for (const DatumPoint& point : there) {
        back.push_back({point.to, point.from});
    }
    const DatumRow row = rounded(fit(there));
    fmt::print("{:.4f} {:.4f} {:.4f} {:.4f} {:.4f}\n", row.dphi0, row.dlam0, row.sphi, row.slam,
               row.rot);
    const auto print = [](const char* name, const Deviation& deviation) {
        fmt::print("{}: largest {:.2f} m, mean {:.2f} m\n", name, deviation.largest,
                   deviation.mean);
    };
    print("as it stands", deviation(row, there));
    print("negated, the other way", deviation(negated(row), back));
    print("without a row", deviation({}, there));
    return 0;
}
