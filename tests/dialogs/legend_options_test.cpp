#include "dialogs/legend_options.h"

#include <gmock/gmock.h>

#include "plot/application_printer.h"
#include "scripted_printer.h"
#include "settings/defaults.h"
#include "text/codepage.h"

namespace veldra {
namespace {

using test::ScriptedPrinter;

class LegendOptions : public testing::Test {
 protected:
    LegendOptions() {
        standard_legende(session);
        session.plot.plot_massstab = 0.001;
    }
    void use_printer() {
        CheckPrinter(session, &printer);
        ASSERT_EQ(session.printer.drucker_ok, -1);
    }
    [[nodiscard]] std::string standard(std::size_t line) const {
        return to_utf8(standard_legend_text(session, line));
    }

    Session session;
    ScriptedPrinter printer;
};

TEST_F(LegendOptions, EmptyLinesHaveTheStandardText) {
    session.titel[0].setTitelText("");
    session.titel[1].setTitelText("Nord");
    EXPECT_EQ(legend_entry(session, 1), (LegendEntry{"", false}));
    EXPECT_EQ(legend_entry(session, 2), (LegendEntry{"Nord", false}));
    EXPECT_TRUE(legend_entry(session, 3).standard);
    EXPECT_EQ(legend_entry(session, 4), (LegendEntry{"Grundriss 1: 1000", true}));
}

TEST_F(LegendOptions, LineEndsAndOtherControlCharactersBecomeBlanks) {
    legend_accept(session,
                  {LegendEntry{"\neins\nNETZTEIL B\n", false}, LegendEntry{"zwei\r\n\tC", false},
                   LegendEntry{"", true}, LegendEntry{"", true}},
                  1);
    EXPECT_EQ(session.titel[0].getTitelText(), "eins NETZTEIL B");
    EXPECT_EQ(session.titel[1].getTitelText(), "zwei   C");
}

TEST_F(LegendOptions, StandardTextsNameObjectsAndScale) {
    session.obj.obj_beob = 1;
    session.obj.obj_wert_lage = 1;
    session.vektor_massstab[1] = 0.5;
    EXPECT_EQ(standard(2), "(entfällt)");
    EXPECT_EQ(standard(3), "Lagebeobachtungen, Lageänderungen 1: 2");
    EXPECT_EQ(standard(4), "Grundriss 1: 1000");
    session.plot.plot_massstab = 1 / 1000.5;
    EXPECT_EQ(standard(4), "Grundriss 1: 1000.5");
}

TEST_F(LegendOptions, StoresLinesAndPosition) {
    legend_accept(session,
                  {LegendEntry{"  Lagenetz  ", false}, LegendEntry{" zwei ", false},
                   LegendEntry{"angezeigt", true}, LegendEntry{"", false}},
                  2);
    EXPECT_EQ(session.titel[0].getTitelText(), "Lagenetz");
    EXPECT_EQ(session.titel[1].getTitelText(), " zwei ");
    EXPECT_EQ(session.titel[2].getTitelText(), "");
    EXPECT_EQ(session.titel[3].getTitelText(), "");
    EXPECT_EQ(session.plot.plot_legendenlage, 2);
    legend_accept(session, {}, 0);
    EXPECT_EQ(session.plot.plot_legendenlage, 2);
}

// The scripted printer's lines are as high as the font: 14 points are 4.939 mm.
TEST_F(LegendOptions, PrinterGivesTheRealHeight) {
    use_printer();
    session.titel[1].setTitelSize(3.0F);  // 3.05 x 1.68 = 5.124 mm: 14 points, digits of 2.94 mm
    EXPECT_EQ(legend_size_text(session, &printer, 2), "2.9");
    EXPECT_EQ(legend_font(session, &printer, 2).points, 14);
}

TEST_F(LegendOptions, TypedHeightBecomesThatOfTheNearestFont) {
    use_printer();
    set_legend_size(session, &printer, 1, "5");  // 8.484 mm: 24 points, 8.467 mm
    EXPECT_NEAR(session.titel[0].getTitelSize(), 24 * 25.4 / 72 / 1.68, 1e-5);
    EXPECT_EQ(legend_size_text(session, &printer, 1), "5.0");
    set_legend_size(session, &printer, 1, "2,5");  // 4.284 mm: 12 points, 4.233 mm
    EXPECT_NEAR(session.titel[0].getTitelSize(), 12 * 25.4 / 72 / 1.68, 1e-5);
}

TEST_F(LegendOptions, NoNumberIsTheSmallestFontOfThePrinter) {
    use_printer();
    for (const char* typed : {"", "abc", "0", "-3"}) {
        set_legend_size(session, &printer, 1, typed);
        EXPECT_NEAR(session.titel[0].getTitelSize(), 7 * 25.4 / 72 / 1.68, 1e-5) << typed;
    }
    set_legend_size(session, &printer, 1, "1e30");
    EXPECT_NEAR(session.titel[0].getTitelSize(), 2161 * 25.4 / 72 / 1.68, 1e-3);
}

TEST_F(LegendOptions, WithoutAPrinterTheHeightIsKeptTimesTheRatio) {
    set_legend_size(session, nullptr, 1, "2,5");
    EXPECT_FLOAT_EQ(session.titel[0].getTitelSize(), 4.2F);
    EXPECT_EQ(legend_size_text(session, nullptr, 1), "2.5");
    for (const char* typed : {"", "abc", "0", "-3"}) {
        set_legend_size(session, nullptr, 1, typed);
        EXPECT_FLOAT_EQ(session.titel[0].getTitelSize(), 4.2F) << typed;
    }
    set_legend_size(session, nullptr, 1, "1e300");
    EXPECT_NEAR(session.titel[0].getTitelSize(), 2161 * 25.4 / 72, 1e-3);
}

TEST_F(LegendOptions, PrinterThatDoesNotWorkIsNotAsked) {
    ASSERT_EQ(session.printer.drucker_ok, 0);
    set_legend_size(session, &printer, 1, "5");
    EXPECT_FLOAT_EQ(session.titel[0].getTitelSize(), 8.4F);
    EXPECT_EQ(printer.heights_measured, 0);
}

TEST_F(LegendOptions, ChosenFontSetsFaceStyleAndHeight) {
    use_printer();
    set_legend_font(session, &printer, 3, {"Courier", 20, -1, 0, -1});
    const Titelzeile& zeile = session.titel[2];
    EXPECT_EQ(zeile.getTitelFont(), "Courier");
    EXPECT_EQ(zeile.getTitelBold(), -1);
    EXPECT_EQ(zeile.getTitelItal(), 0);
    EXPECT_EQ(zeile.getTitelUndr(), -1);
    EXPECT_NEAR(zeile.getTitelSize(), 20 * 25.4 / 72 / 1.68, 1e-5);
    set_legend_font(session, nullptr, 3, {"Arial", 60, 0, -1, 0});
    EXPECT_EQ(zeile.getTitelItal(), -1);
    EXPECT_NEAR(zeile.getTitelSize(), 20 * 25.4 / 72 / 1.68, 1e-5);
}

}  // namespace
}  // namespace veldra
