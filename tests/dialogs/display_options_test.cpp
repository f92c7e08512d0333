#include "dialogs/display_options.h"

#include <limits>

#include <gtest/gtest.h>

#include "fake_measurer.h"
#include "settings/defaults.h"

namespace veldra {
namespace {

TEST(DisplayOptions, OpeningSavesTheScalesThatAGraphicFileHasSet) {
    Session session;
    session.vektor_massstab[2] = session.vektor_massstab_plot[2] = 0.25;
    session.vektor_massstab[5] = session.vektor_massstab_plot[5] = 0.125;
    session.settings.vektAdrw[1] = 6;
    session.plot.plot_massstab = 0.002;
    const double massstab = display_begin(session);
    for (const DisplayTab tab : {DisplayTab::vectors_position, DisplayTab::vectors_height}) {
        display_standard(session, tab);
    }
    session.plot.plot_massstab = 0.001;
    EXPECT_EQ(session.vektor_massstab[2], 0.5);
    EXPECT_EQ(session.settings.vektAdrw[1], 3);
    display_reject(session, massstab);
    EXPECT_EQ(session.vektor_massstab[2], 0.25);
    EXPECT_EQ(session.vektor_massstab_plot[2], 0.25);
    EXPECT_EQ(session.vektor_massstab[5], 0.125);
    EXPECT_EQ(session.settings.vektAdrw[1], 6);
    EXPECT_EQ(session.plot.plot_massstab, 0.002);
}

TEST(DisplayOptions, EachTabHasTheDefaultsOfItsOwnGroup) {
    Session session;
    Settings& settings = session.settings;
    const auto spoil = [&settings] {
        settings.punsigscr[0] = 1;
        settings.pubsizplo = 9;
        settings.Stquerscr = 1;
        settings.faktorStrich = 7;
        settings.vektNdrw[1] = 0;
        settings.vektNdrw[4] = 0;
        settings.stepwert[2] = 77;
        settings.grenzdrw[7] = 1;
    };
    const auto spoilt_groups = [&settings] {
        return (settings.punsigscr[0] == 1) + (settings.pubsizplo == 9) +
               (settings.Stquerscr == 1) + (settings.faktorStrich == 7) +
               (settings.vektNdrw[1] == 0) + (settings.vektNdrw[4] == 0) +
               (settings.stepwert[2] == 77) + (settings.grenzdrw[7] == 1);
    };
    for (std::size_t tab = 0; tab < display_tab_count; ++tab) {
        spoil();
        ASSERT_EQ(spoilt_groups(), 8);
        display_standard(session, static_cast<DisplayTab>(tab));
        EXPECT_EQ(spoilt_groups(), 7) << "tab " << tab;
    }
    spoil();
    display_standard(session, DisplayTab::tests);
    EXPECT_EQ(settings.stepwert[2], 3.0);
    display_standard(session, DisplayTab::boundaries);
    EXPECT_EQ(settings.grenzdrw[7], 2);
}

TEST(DisplayOptions, AcceptingSavesAllGroupsAndTheScale) {
    Session session;
    test::FakeMeasurer measurer;
    session.settings.punsigscr[3] = 17;
    session.settings.punsigplo[3] = 1.5F;
    session.settings.lenoriscr = 1;
    session.settings.faktorStrich = 3;
    session.settings.vektArgb[3] = 5;
    session.settings.vektArgb[6] = 6;
    session.settings.stndwert = 0.7;
    session.settings.grenzrgb[2] = 8;
    session.vektor_massstab[4] = 2;
    session.plot.plot_massstab = 0.004;
    EXPECT_TRUE(display_accept(session, measurer, nullptr));
    EXPECT_EQ(session.plot_merk.plot_massstab, 0.004);
    EXPECT_EQ(session.twins.settings, session.settings);
    EXPECT_EQ(session.twins.vektor_massstab[4], 2);
}

TEST(DisplayOptions, NumbersHaveTheDigitsOfTheirMaskAndNoLoosePoint) {
    EXPECT_EQ(number_text(60, "####0.###"), "60");
    EXPECT_EQ(number_text(12.5, "####0.###"), "12.5");
    EXPECT_EQ(number_text(2, "####0.0##"), "2.0");
    EXPECT_EQ(number_text(-0.125, "####0.0##"), "-0.125");
}

TEST(DisplayOptions, FloatsAreReadWithCommaOrPointAndStayWithinTheirRange) {
    EXPECT_EQ(float_value("2,5"), 2.5F);
    EXPECT_EQ(float_value("2.5"), 2.5F);
    EXPECT_EQ(float_value(""), 0.0F);
    EXPECT_EQ(float_value("abc"), 0.0F);
    EXPECT_EQ(float_value("-3"), -3.0F);
    EXPECT_EQ(float_value("1e300"), std::numeric_limits<float>::max());
    EXPECT_EQ(float_value("-1e300"), -std::numeric_limits<float>::max());
}

TEST(DisplayOptions, GroundScalesMustBeAboveZero) {
    const ScaleEntry grouped = ground_scale_entry("25000");
    EXPECT_TRUE(grouped.valid);
    EXPECT_EQ(grouped.text, "25 000");
    EXPECT_EQ(grouped.value, 25000);
    EXPECT_EQ(ground_scale_entry("1 250").value, 1250);
    EXPECT_TRUE(ground_scale_entry("1000,5").valid);
    EXPECT_EQ(ground_scale_entry("1000,5").value, 1000.5);
    for (const char* const wrong : {"", "0", "-500", "abc", "0,2"}) {
        EXPECT_FALSE(ground_scale_entry(wrong).valid) << wrong;
    }
}

TEST(DisplayOptions, VectorScalesMustBeAboveZeroWithTheirOneDecimal) {
    EXPECT_EQ(vector_scale_entry("2").text, "2");
    EXPECT_EQ(vector_scale_entry("2").value, 2);
    EXPECT_EQ(vector_scale_entry("0,5").text, "0.5");
    EXPECT_EQ(vector_scale_entry("0,5").value, 0.5);
    EXPECT_EQ(vector_scale_entry("2.55").text, "2.6");
    EXPECT_EQ(vector_scale_entry("2.55").value, 2.6);
    EXPECT_TRUE(vector_scale_entry("0.05").valid);
    EXPECT_EQ(vector_scale_entry("100000").text, "100000");
    EXPECT_EQ(vector_scale_entry("1 000").value, 1000);
    EXPECT_EQ(vector_scale_entry(" 2 500,5 ").text, "2500.5");
    EXPECT_EQ(vector_scale_entry("1 000 000").text, "1000000");
    for (const char* const wrong : {"", "0", "-2", "abc", "0.04"}) {
        EXPECT_FALSE(vector_scale_entry(wrong).valid) << wrong;
    }
}

TEST(DisplayOptions, WidthFactorsLeaveThePensWithinSixteenBits) {
    EXPECT_EQ(width_factor_entry("3").value, 3);
    EXPECT_EQ(width_factor_entry("2,6").text, "3");
    EXPECT_TRUE(width_factor_entry("1").valid);
    EXPECT_TRUE(width_factor_entry("5461").valid);  // 5461 * 6 = 32766
    for (const char* const wrong : {"", "0", "0.4", "-1", "abc", "5462", "32767", "32768", "1e9"}) {
        EXPECT_FALSE(width_factor_entry(wrong).valid) << wrong;
    }
}

TEST(DisplayOptions, ScalesShowTheirDenominators) {
    EXPECT_EQ(ground_scale_text(0.001), "1 000");
    EXPECT_EQ(ground_scale_text(1.0 / 750), "750");
    EXPECT_EQ(ground_scale_text(1.0 / 5000000), "5 000 000");
    EXPECT_EQ(ground_scale_text(-99), "");
    EXPECT_EQ(vector_scale_text(0.5), "2");
    EXPECT_EQ(vector_scale_text(0.4), "2.5");
}

TEST(DisplayOptions, AVectorScaleSetsBothScalesOfItsSlot) {
    Session session;
    set_vector_scale(session, 3, 4);
    EXPECT_EQ(session.vektor_massstab[3], 0.25);
    EXPECT_EQ(session.vektor_massstab_plot[3], 0.25);
    EXPECT_EQ(session.vektor_massstab[4], 0.5);
}

TEST(DisplayOptions, WrongScalesAreAnsweredWordForWord) {
    using M = DisplayMessage;
    EXPECT_EQ(scale_message(ScaleBox::ground),
              (M{"Maßstabsvorgabe", "Bitte überprüfen Sie die angegebene Grundriss-Maßstabszahl"}));
    EXPECT_EQ(scale_message(ScaleBox::vector),
              (M{"Maßstabsvorgabe", "Bitte übeprüfen Sie den angegebenen Vektormaßstab"}));
    EXPECT_EQ(
        scale_message(ScaleBox::width_factor),
        (M{"Überhöhungsfaktor", "Bitte übeprüfen Sie die angegebene Strichstärkenüberhöhung"}));
    EXPECT_EQ(scale_message_on_ok(ScaleBox::ground),
              (M{"Maßstabsvorgabe", "Bitte übeprüfen Sie die angegebene Grundriss-Maßstabszahl"}));
    EXPECT_EQ(scale_message_on_ok(ScaleBox::vector),
              (M{"Maßstabsvorgabe", "Bitte übeprüfen Sie die angegebenen Vektormaßstäbe"}));
    EXPECT_EQ(scale_message_on_ok(ScaleBox::width_factor), scale_message(ScaleBox::width_factor));
}

TEST(DisplayOptions, LimitsWithinTheirBoundsAreRoundedToOneDecimal) {
    const LimitEntry entry = check_limit("3,25", {0, 100});
    EXPECT_EQ(entry.text, "3.3");
    EXPECT_EQ(entry.value, 3.3);
    EXPECT_FALSE(entry.message);
    EXPECT_EQ(check_limit("100", {0, 100}).text, "100.0");
    EXPECT_FALSE(check_limit("100", {0, 100}).message);
    EXPECT_FALSE(check_limit("0", {0, 100}).message);
    EXPECT_EQ(check_limit("", {0, 100}).text, "0.0");
    EXPECT_EQ(check_limit("abc", {0, 100}).value, 0);
}

TEST(DisplayOptions, LimitsOutsideTheirBoundsTakeTheBoundAfterAMessage) {
    const LimitEntry high = check_limit("150", {0, 100});
    EXPECT_EQ(high.typed, "150.0");
    EXPECT_EQ(high.text, "100.0");
    EXPECT_EQ(high.value, 100);
    ASSERT_TRUE(high.message);
    EXPECT_EQ(*high.message, (DisplayMessage{" Fehler ", "Wert größer 100.0 nicht sinvoll"}));
    const LimitEntry low = check_limit("0,4", {0.5, 100});
    EXPECT_EQ(low.value, 0.5);
    ASSERT_TRUE(low.message);
    EXPECT_EQ(*low.message, (DisplayMessage{" Fehler ", "Wert kleiner 0.5 nicht sinnvoll"}));
    EXPECT_EQ(check_limit("-1", {0, 99999.9}).value, 0);
    EXPECT_EQ(check_limit("123456", {0, 99999.9}).text, "99999.9");
}

TEST(DisplayOptions, ALimitIsBoundedByTheOneBeforeIt) {
    Settings settings;
    settings.stnvwert = {0, 4, 5, 6};
    settings.stepwert = {0, 7, 8};
    const auto lower = [&settings](TestLimit limit) {
        return test_limit_bounds(settings, limit).lower;
    };
    const auto upper = [&settings](TestLimit limit) {
        return test_limit_bounds(settings, limit).upper;
    };
    EXPECT_EQ(lower(TestLimit::grenzwert), 0.5);
    EXPECT_EQ(upper(TestLimit::grenzwert), 100);
    EXPECT_EQ(lower(TestLimit::ev), 0);
    EXPECT_EQ(upper(TestLimit::ev), 100);
    EXPECT_EQ(lower(TestLimit::nv1), 0);
    EXPECT_EQ(lower(TestLimit::nv2), 4);
    EXPECT_EQ(lower(TestLimit::nv3), 5);
    EXPECT_EQ(lower(TestLimit::ep1), 0);
    EXPECT_EQ(lower(TestLimit::ep2), 7);
    for (const TestLimit limit :
         {TestLimit::nv1, TestLimit::nv2, TestLimit::nv3, TestLimit::ep1, TestLimit::ep2}) {
        EXPECT_EQ(upper(limit), 99999.9);
    }
}

TEST(DisplayOptions, EachTestClassHasItsCaptionAndPen) {
    Settings settings;
    const char* const captions[] = {"für NV, EP, EH mit EV < 0.5",
                                    "für EV > 10.0",
                                    "für EV < 10.0",
                                    "für NV < 1.0",
                                    "für NV < 2.0",
                                    "für NV < 3.3",
                                    "für NV > 3.3",
                                    "für EP < 2.0",
                                    "für EP < 3.0",
                                    "für EP > 3.0"};
    // The widths of the defaults, class by class.
    const std::int16_t widths[] = {1, 2, 5, 2, 3, 4, 5, 2, 3, 5};
    const char* const pickers[] = {
        "Strichstärke Grenzwert", "Strichstärke EV",    "Strichstärke EV", "Strichstärke NV",
        "Strichstärke NV",        "Strichstärke NV",    "Strichstärke NV", "Strichstärke EP /EH",
        "Strichstärke EP /EH",    "Strichstärke EP /EH"};
    for (std::size_t i = 0; i < test_class_count; ++i) {
        EXPECT_EQ(test_class_caption(settings, i), captions[i]);
        EXPECT_EQ(test_width_caption(i), pickers[i]);
        EXPECT_EQ(test_pen_places(settings, i).width(), widths[i]) << i;
    }
    test_pen_places(settings, 6).set_colour(77);
    EXPECT_EQ(settings.stnvrgb[4], 77);
    test_pen_places(settings, 9).set_width(6);
    EXPECT_EQ(settings.stepdrw[3], 6);
}

TEST(DisplayOptions, EachVectorHasItsCaptionAndPen) {
    const char* const position[] = {"für Lageänderungen Anschlusspunkte",
                                    "für Lageänderungen Neupunkte",
                                    "für Lagerestklaffungen Anschlusspunkte",
                                    "für Lagerestklaffungen Neupunkte", "für Lagefehlerellipsen"};
    const char* const height[] = {"für Höhenänderungen Anschlusspunkte",
                                  "für Höhenänderungen Neupunkte",
                                  "für Höhenrestklaffungen Anschlusspunkte",
                                  "für Höhenrestklaffungen Neupunkte", "für mittlere Höhenfehler"};
    for (std::size_t i = 0; i < vector_item_count; ++i) {
        EXPECT_EQ(vector_caption(vector_item(1, i)), position[i]);
        EXPECT_EQ(vector_caption(vector_item(4, i)), height[i]);
    }
    Settings settings;
    vector_pen_places(settings, vector_item(1, 2)).set_width(6);
    EXPECT_EQ(settings.vektAdrw[2], 6);
    EXPECT_EQ(settings.vektNdrw[2], 2);
    vector_pen_places(settings, vector_item(4, 1)).set_colour(9);
    EXPECT_EQ(settings.vektNrgb[4], 9);
    EXPECT_EQ(settings.vektArgb[4], rgb(0, 128, 255));
    // Height errors have one pen for control points and new points.
    vector_pen_places(settings, vector_item(4, 4)).set_width(1);
    EXPECT_EQ(settings.vektAdrw[6], 1);
    EXPECT_EQ(settings.vektNdrw[6], 1);
}

TEST(DisplayOptions, MaximaSayWhenTheyAreNotShown) {
    Session session;
    session.max_ap[1].wert = 12.34;
    session.max_np[3].wert = 0.75;
    EXPECT_EQ(vector_maximum_text(session, 1, true), "max. AP: 12.3");
    EXPECT_EQ(vector_maximum_text(session, 1, false), "max. NP: 0.0");
    EXPECT_EQ(vector_maximum_text(session, 3, false), "max. a: 0.8");
    session.settings.vektAdrw[1] = 0;
    EXPECT_EQ(vector_maximum_text(session, 1, true), "max. AP: 12.3 (nicht dargestellt)");
}

TEST(DisplayOptions, TheLargestValueOfAVectorCountsWhateverItsSign) {
    Session session;
    session.max_ap[4].wert = -3;
    session.max_np[4].wert = 2;
    session.max_ap[6].wert = -5;
    session.max_np[6].wert = 4;
    session.max_np[3].wert = 1.5;
    EXPECT_EQ(vector_maximum(session, vector_item(4, 0)), -3);
    EXPECT_EQ(vector_maximum(session, vector_item(4, 1)), 2);
    EXPECT_EQ(vector_maximum(session, vector_item(4, 4)), -5);
    EXPECT_EQ(vector_maximum(session, vector_item(1, 4)), 1.5);
    EXPECT_EQ(vector_maximum_text(session, 4, true), "max. AP: -3.0");
}

TEST(DisplayOptions, MoreSheetsThanCanBeCountedAreNotKept) {
    Session session;
    test::FakeMeasurer measurer;
    session.datei_geladen = 1;
    session.sheet.papier_breite = session.sheet.papier_hoehe = 0.2;
    session.plot.plot_massstab = 1;
    session.extents.gesamt_rw_max = 77;
    // An empty part has no sheets to count.
    session.plot.plot_null_rechts = -7000;
    EXPECT_TRUE(display_accept(session, measurer, nullptr));
    session.plot_merk.plot_massstab = -99.0;
    session.extents.gesamt_rw_max = 77;
    // With one point it is a square of 5 m round it; the sheets begin 7 km before it.
    session.pu.punkt_neu(0, 0);
    EXPECT_FALSE(display_accept(session, measurer, nullptr));
    EXPECT_EQ(session.plot_merk.plot_massstab, -99.0);
    EXPECT_EQ(session.extents.gesamt_rw_max, 77);
    session.plot.plot_null_rechts = -6000;
    EXPECT_TRUE(display_accept(session, measurer, nullptr));
    EXPECT_EQ(session.plot_merk.plot_massstab, 1);
    EXPECT_EQ(session.extents.gesamt_rw_max, 2.5);
}

TEST(DisplayOptions, PointClassesHaveTheirLabels) {
    EXPECT_EQ(point_radius_label(0), "Radius Punktsignatur TP:");
    EXPECT_EQ(point_radius_label(1), "Radius Punktsignatur AP(1):");
    EXPECT_EQ(point_radius_label(2), "Radius Punktsignatur AP(2):");
    EXPECT_EQ(point_radius_label(3), "Radius Punktsignatur sonst.:");
}

}  // namespace
}  // namespace veldra
