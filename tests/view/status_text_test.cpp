#include "view/status_text.h"

#include <limits>

#include <gtest/gtest.h>

namespace veldra {
namespace {

TEST(StatusText, PlacesHaveCentimetres) {
    EXPECT_EQ(place_text({3500000.126, -12.3}), "Rechtswert 3500000.13   Hochwert -12.30");
}

TEST(StatusText, ScaleIsThatOfAScreenOf96DotsPerInch) {
    // A twip is 1/1440 of 0.0254 m: a metre of ground a twip is 1:56692.9.
    Viewport view;
    view.ansicht_masseinheit = 1;
    EXPECT_EQ(scale_text(view), "1 : 56 693");
    view.ansicht_masseinheit = 0.01;
    EXPECT_EQ(scale_text(view), "1 : 567");
}

TEST(StatusText, PlacesBeyondAllGroundAreNotTold) {
    EXPECT_EQ(place_text({9999999999.0, 0}), "Rechtswert 9999999999.00   Hochwert 0.00");
    EXPECT_EQ(place_text({1e10, 0}), "");
    EXPECT_EQ(place_text({0, -1e10}), "");
    EXPECT_EQ(place_text({std::numeric_limits<double>::infinity(), 0}), "");
    EXPECT_EQ(place_text({0, std::numeric_limits<double>::quiet_NaN()}), "");
}

TEST(StatusText, ScalesThatNobodyReadsAreNotSpelledOut) {
    Viewport view;
    view.ansicht_masseinheit = 1.0 / 56692.913385826771;
    EXPECT_EQ(scale_text(view), "1 : 1");
    view.ansicht_masseinheit = 17639;  // 1:1 000 006 299.2
    EXPECT_EQ(scale_text(view), "unter 1 : 1 000 000 000");
    view.ansicht_masseinheit = std::numeric_limits<double>::infinity();
    EXPECT_EQ(scale_text(view), "unter 1 : 1 000 000 000");
    view.ansicht_masseinheit = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(scale_text(view), "");
}

}  // namespace
}  // namespace veldra
