#pragma once

#include <gtest/gtest.h>

#include "describe.h"
#include "drawing/layer_frame.h"
#include "fake_measurer.h"
#include "network_builder.h"

namespace veldra::test {

/// A view of 1 cm of ground a twip with its corner at (1000, 2000): signatures of class 0 and 1
/// have a radius of 0.6 m, class 2 of 0.3, class 3 and the small dot of 0.15; strokes and crosses
/// 2 m; stubs 20 m; labels are 2 m high and 1 m wide a letter. The plot scale is 1:1000, so a
/// centimetre of a value is 5 m of ground.
class LayerFixture : public testing::Test {
 protected:
    LayerFixture() {
        show_nothing(session);
        session.part.obj.obj_pusi = 1;
        session.part.plot.plot_massstab = 0.001;
        session.view = {1000, 2000, 1150, 2090, 0.01};
    }

    [[nodiscard]] LayerFrame frame() { return screen_frame(session, measurer); }

    Session session;
    FakeMeasurer measurer;
    RecordingTarget target;
};

/// The operations of the pen and fill of a small dot.
inline Lines dot_pen() {
    return {"DrawWidth 1", "ForeColor 0", "FillColor 0", "FillStyle 0"};
}

inline Lines operator+(Lines a, const Lines& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

}  // namespace veldra::test
