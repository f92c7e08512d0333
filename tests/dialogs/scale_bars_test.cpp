#include "dialogs/scale_bars.h"

#include <gmock/gmock.h>

#include "drawing/describe.h"
#include "drawing/pipeline.h"
#include "recording_interface.h"

namespace veldra {
namespace {

using test::described;
using test::Lines;
using ::testing::ElementsAre;

class ScaleBars : public testing::Test {
 protected:
    ScaleBars() {
        session.plot.plot_massstab = 0.001;
        session.vektor_massstab.fill(0.5);
        // A centimetre of value at 1:0.5... is 0.5 / 0.001 / 100 = 5 m of ground: 500 twips.
        session.view.ansicht_masseinheit = 0.01;
    }
    [[nodiscard]] std::string ground(double unit, double width) {
        session.view.ansicht_masseinheit = unit;
        const auto mark = ground_mark(session, width);
        return mark ? mark->text : "none";
    }
    [[nodiscard]] ValueBars bars(std::size_t slot = 1) const {
        return value_bars(session, slot, 1500);
    }

    Session session;
};

TEST_F(ScaleBars, GroundTakesTheLargestPowerOfTenBelowTheWidth) {
    EXPECT_EQ(ground(1, 1500), "1 km");
    EXPECT_EQ(ground(0.5, 1500), "100 m");  // 1000 m would be 2000 twips
    EXPECT_EQ(ground(0.001, 1500), "1 m");
    EXPECT_EQ(ground(0.0001, 1500), "0.1 m");
    EXPECT_EQ(ground(0.00001, 1500), "0.01 m");
    EXPECT_EQ(ground(0.01, 1500), "10 m");
    EXPECT_EQ(ground(1000, 1500), "1000 km");
    EXPECT_EQ(ground(1e10, 1500), "1000000000 km");
}

TEST_F(ScaleBars, GroundAsWideAsThePictureIsNotBelowIt) {
    EXPECT_EQ(ground(1, 1000), "100 m");
    EXPECT_EQ(ground(1, 1000.5), "1 km");
    EXPECT_EQ(ground_mark(session, 1000.5)->at, 1000);
}

TEST_F(ScaleBars, GroundWithoutAFittingLengthHasNoMark) {
    EXPECT_EQ(ground(1e-6, 1500), "none");  // a centimetre is 10000 twips
}

TEST_F(ScaleBars, GroundIsALineAtHalfTheHeightAndATickAtItsEnd) {
    RecordingTarget target;
    draw_ground_bar(target, ScaleMark{900, "1 km"}, 300);
    EXPECT_THAT(described(target), ElementsAre("DrawStyle 0", "DrawWidth 1", "ForeColor 0",
                                               "Line 0 150 900 150", "Line 900 0 900 300"));
    RecordingTarget nothing;
    draw_ground_bar(nothing, std::nullopt, 300);
    EXPECT_TRUE(nothing.operations().empty());
}

TEST_F(ScaleBars, UnitIsTheLargestThatFits) {
    ASSERT_TRUE(bars().unit);
    EXPECT_EQ(bars().unit->text, "1 cm");
    EXPECT_DOUBLE_EQ(bars().unit->at, 500);
    session.vektor_massstab[1] = 0.05;
    EXPECT_EQ(bars().unit->text, "1 dm");
    session.vektor_massstab[1] = 0.005;
    EXPECT_EQ(bars().unit->text, "1 m");
    session.vektor_massstab[1] = 5;
    EXPECT_EQ(bars().unit->text, "1 mm");
    EXPECT_DOUBLE_EQ(bars().unit->at, 500);
    session.vektor_massstab[1] = 50;
    EXPECT_FALSE(bars().unit);
}

TEST_F(ScaleBars, MaximaHaveTextPlaceAndEpoch) {
    session.max_ap[1] = {1.25, 0, 0, "17", "1998"};
    session.max_np[1] = {2.0, 0, 0,
                         "M\xFC"
                         "hle",
                         ""};
    EXPECT_EQ(bars().ap.text, "max. AP: 1.3 cm");
    EXPECT_EQ(bars().ap.place, "bei: 17, Epoche: 1998");
    EXPECT_EQ(bars().np.text, "max. NP: 2.0 cm");
    EXPECT_EQ(bars().np.place, "bei: Mühle");
    EXPECT_DOUBLE_EQ(bars().np.length, 1000);
}

TEST_F(ScaleBars, MaximumWithoutValueOrLabelHasNoPlace) {
    session.max_ap[1] = {0, 0, 0, "17", ""};
    session.max_np[1] = {2.0, 0, 0, "", "1998"};
    EXPECT_EQ(bars().ap.text, "max. AP: 0.0 cm");
    EXPECT_EQ(bars().ap.place, "");
    EXPECT_EQ(bars().np.place, "");
}

TEST_F(ScaleBars, MaximumBeyondThePictureSaysSo) {
    session.max_np[1].wert = 3.0;  // 1500 twips
    EXPECT_EQ(bars().np.text, "max. NP: 3.0 cm");
    session.max_np[1].wert = 3.1;
    EXPECT_EQ(bars().np.text, "max. NP: 3.1 cm >");
}

TEST_F(ScaleBars, MaximumWithoutAPenIsNotShown) {
    session.settings.vektAdrw[1] = 0;
    session.max_ap[1].wert = 9;
    session.max_np[1].wert = 1;
    EXPECT_EQ(bars().ap.text, "max. AP: 9.0 cm (nicht dargestellt)");
    RecordingTarget target;
    draw_value_bars(target, bars(), 1500, 300);
    EXPECT_THAT(test::only(described(target), "Line"),
                ElementsAre("Line 0 150 500 150", "Line 500 0 500 300", "Line 500 0 500 300"));
}

TEST_F(ScaleBars, NegativeHeightChangeIsDrawnByItsSize) {
    session.max_np[4] = {-2.0, 0, 0, "3", "2001"};
    const ValueBars shown = bars(4);
    EXPECT_EQ(shown.np.text, "max. NP: -2.0 cm");
    EXPECT_DOUBLE_EQ(shown.np.length, 1000);
    EXPECT_EQ(shown.np.place, "bei: 3, Epoche: 2001");
}

TEST_F(ScaleBars, LongerMaximumIsDrawnFirst) {
    session.settings.vektAdrw[1] = 3;
    session.settings.vektArgb[1] = 255;
    session.settings.vektNdrw[1] = 2;
    session.settings.vektNrgb[1] = 128;
    session.max_ap[1].wert = 1.5;
    session.max_np[1].wert = 2.5;
    RecordingTarget target;
    draw_value_bars(target, bars(), 1500, 300);
    EXPECT_EQ(described(target),
              (Lines{"DrawStyle 0", "DrawWidth 2", "ForeColor 128", "Line 0 150 1250 150",
                     "DrawStyle 0", "DrawWidth 3", "ForeColor 255", "Line 0 150 750 150",
                     "DrawStyle 0", "DrawWidth 1", "ForeColor 0",   "Line 500 0 500 300",
                     "DrawStyle 0", "DrawWidth 1", "ForeColor 0",   "Line 1250 0 1250 300",
                     "DrawStyle 0", "DrawWidth 1", "ForeColor 0",   "Line 750 0 750 300"}));
    session.max_ap[1].wert = 2.6;
    RecordingTarget other;
    draw_value_bars(other, bars(), 1500, 300);
    EXPECT_EQ(described(other)[1], "DrawWidth 3");
}

TEST_F(ScaleBars, BarBeyondThePictureEndsOutOfSight) {
    session.max_np[1].wert = 1e300;
    RecordingTarget target;
    draw_value_bars(target, bars(), 1500, 300);
    EXPECT_THAT(test::only(described(target), "Line"),
                ElementsAre("Line 0 150 3000 150", "Line 500 0 500 300"));
}

TEST_F(ScaleBars, PartWithoutAPlotScaleHasNoBars) {
    session.plot.plot_massstab = -99;
    session.max_np[1].wert = 2;
    EXPECT_FALSE(bars().unit);
    EXPECT_EQ(bars().np.length, 0);
}

TEST_F(ScaleBars, ShownKindsFollowTheSelection) {
    EXPECT_EQ(shown_position_slot(session), 0U);
    EXPECT_EQ(shown_height_slot(session), 0U);
    session.obj.obj_wert_lage = 3;
    session.obj.obj_wert_hoehe = 2;
    EXPECT_EQ(shown_position_slot(session), 3U);
    EXPECT_EQ(shown_height_slot(session), 5U);
}

TEST_F(ScaleBars, OpeningChecksTheEntryAndDisablesTheButton) {
    open_scale_bars(session);
    EXPECT_TRUE(session.window.frm_massstab_shown);
    EXPECT_TRUE(session.window[MenuItem::m_ansicht_massstab].checked);
    EXPECT_FALSE(session.window[ToolButton::massstaebe].enabled);
    close_scale_bars(session);
    EXPECT_FALSE(session.window.frm_massstab_shown);
    EXPECT_FALSE(session.window[MenuItem::m_ansicht_massstab].checked);
    EXPECT_TRUE(session.window[ToolButton::massstaebe].enabled);
}

TEST_F(ScaleBars, PreviewDisablesEntryAndButton) {
    session.pu.punkt_neu(0, 0);
    test::RecordingInterface ui;
    for (const bool shown : {false, true}) {
        session.window[MenuItem::m_ansicht_massstab].checked = shown;
        end_picture(session, ui, PictureMode::preview);
        EXPECT_FALSE(session.window[MenuItem::m_ansicht_massstab].enabled);
        EXPECT_FALSE(session.window[ToolButton::massstaebe].enabled);
        end_picture(session, ui, PictureMode::screen);
        EXPECT_TRUE(session.window[MenuItem::m_ansicht_massstab].enabled);
        EXPECT_EQ(session.window[ToolButton::massstaebe].enabled, !shown);
    }
    // Closed in the preview, the button stays off.
    open_scale_bars(session);
    end_picture(session, ui, PictureMode::preview);
    close_scale_bars(session);
    EXPECT_FALSE(session.window[ToolButton::massstaebe].enabled);
}

}  // namespace
}  // namespace veldra
