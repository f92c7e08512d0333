#include "dialogs/display_fonts.h"

#include <gtest/gtest.h>

#include "scripted_printer.h"

namespace veldra {
namespace {

TEST(DisplayFonts, OnlyAPrinterThatWorksIsUsed) {
    Session session;
    test::ScriptedPrinter printer;
    session.printer.drucker_ok = table_true;
    EXPECT_EQ(usable_printer(session, &printer), &printer);
    EXPECT_EQ(usable_printer(session, nullptr), nullptr);
    session.printer.drucker_ok = table_false;
    EXPECT_EQ(usable_printer(session, &printer), nullptr);
}

TEST(DisplayFonts, SizesOnTheScreenAreWholePointsFrom1To2160) {
    Settings settings;
    struct Case {
        double chosen;
        int kept;
    };
    for (const Case& size : {Case{0.2, 1}, Case{1, 1}, Case{1.4, 1}, Case{1.6, 2}, Case{2, 2},
                             Case{11.6, 12}, Case{2160, 2160}, Case{2161, 2160}}) {
        FontChoice choice;
        choice.font.points = size.chosen;
        set_screen_font(settings, false, choice);
        EXPECT_EQ(settings.pubgrascr, size.kept) << size.chosen;
        set_screen_font(settings, true, choice);
        EXPECT_EQ(settings.nubgrascr, size.kept) << size.chosen;
    }
}

TEST(DisplayFonts, DistrictsAndPointsHaveAFaceEach) {
    Settings settings;
    FontChoice choice;
    choice.font.face = "Garamond";
    choice.font.bold = table_true;
    choice.colour = 0x010203;
    set_screen_font(settings, true, choice);
    EXPECT_EQ(settings.nubfon, "Garamond");
    EXPECT_EQ(settings.nubbol, table_true);
    EXPECT_EQ(settings.nubita, table_false);
    EXPECT_EQ(settings.nubcolor, 0x010203);
    EXPECT_NE(settings.pubfon, "Garamond");
    EXPECT_EQ(settings.pubbol, table_false);
}

}  // namespace
}  // namespace veldra
