// Marks of lines that lie just outside the sheet and reach into it.
#include <algorithm>

#include "drawing/observation_layers.h"
#include "layer_fixture.h"

namespace veldra {
namespace {

using test::add_line;
using test::described;
using test::Lines;
using test::only;

/// A sheet over all of the view, which ends at 1150 in the east and at 2090 in the north. Marks are
/// 2 m long, a metre on each side of their line, and end at its edges.
class EdgesOfSheet : public test::LayerFixture {
 protected:
    /// The lines drawn for one observation, in metres from the view's corner.
    Lines drawn(const LineCoordinates& ends, std::int16_t lin_typ_seite) {
        add_line(session, ends).lin_typ_seite = lin_typ_seite;
        LayerFrame sheet = frame();
        sheet.window = TargetBox{1000, 2000, 1150, 2090};
        DrawObservations(session, sheet, target, ObservationForm::horizontal);
        return only(described(target), "Line");
    }
    static bool has(const Lines& lines, const std::string& wanted) {
        return std::find(lines.begin(), lines.end(), wanted) != lines.end();
    }
};

TEST_F(EdgesOfSheet, AStrokeReachesIntoTheSheetFromTheNorth) {
    EXPECT_TRUE(has(drawn({1010, 2090.8, 1050, 2090.8}, 1), "Line 30 90 30 89.8"));
}

TEST_F(EdgesOfSheet, AStrokeReachesIntoTheSheetFromTheWest) {
    // Northward: the normal points west.
    EXPECT_TRUE(has(drawn({999.2, 2010, 999.2, 2050}, 1), "Line 0 30 0.2 30"));
}

TEST_F(EdgesOfSheet, ACrossReachesIntoTheSheetFromTheEast) {
    // n points west, t north: half of the first stroke is (-1, 0.5).
    const Lines lines = drawn({1150.8, 2010, 1150.8, 2050}, 2);
    EXPECT_TRUE(has(lines, "Line 149.8 30.5 150 30.4"));
    EXPECT_TRUE(has(lines, "Line 149.8 29.5 150 29.6"));
}

TEST_F(EdgesOfSheet, AMarkThatDoesNotReachTheSheetIsLeftOut) {
    EXPECT_TRUE(drawn({1010, 1900, 1050, 1900}, 2).empty());
}

}  // namespace
}  // namespace veldra
