#include "view/status_text.h"

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

}  // namespace
}  // namespace veldra
