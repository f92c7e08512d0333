#include <algorithm>
#include <cmath>

#include <fmt/format.h>
#include <gmock/gmock.h>

#include "drawing/district_labels.h"
#include "drawing/districts.h"
#include "fake_measurer.h"
#include "network_builder.h"
#include "plot/paper_frame.h"
#include "plot/plot_layers.h"
#include "recorded_page.h"

namespace veldra {
namespace {

using test::RecordedPage;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAre;

/// A sheet of 3 by 2 km at 1:10000 with its corner at 2570500, 5618500, so that kilometre lines lie
/// 500, 1500, 2500 m right of and 500, 1500 m above it. Labels are 20 m high and 10 m wide a
/// letter. The legend lies far away.
class PlotDistrictsTest : public testing::Test {
 protected:
    PlotDistrictsTest() {
        test::show_nothing(session);
        session.settings.numbez_datum = {};
        session.plot.plot_massstab = 0.0001;
        session.plot.plot_legendenlage = 1;
        session.plot.plot_null_rechts = 2570500;
        session.plot.plot_null_hoch = 5618500;
        session.plot.plot_blatt_rechts = 1;
        session.plot.plot_blatt_hoch = 1;
        session.sheet.papier_breite = 0.3;
        session.sheet.papier_hoehe = 0.2;
        session.blatt = {2570500, 5618500, 2573500, 5620500};
        session.extents = {2570500, 5618500, 2573500, 5620500, 0, 0};
        session.obj.obj_bezu = 1;
        session.obj.obj_bezu_elli = 1;
        session.obj.obj_bezu_abbi = 1;
        session.obj.obj_nube_meridian = 2;
        session.obj.obj_nube = districts::klv;
    }

    /// Covers a part of the sheet, metres from its corner.
    void cover(const TargetBox& box) {
        session.legende = {2570500 + box.xmin, 5618500 + box.ymin, 2570500 + box.xmax,
                           5618500 + box.ymax};
    }
    [[nodiscard]] LayerFrame frame() {
        LayerFrame result = paper_frame(session, {10, 10}, measurer);
        result.label_unit = label_unit;
        return result;
    }
    RecordedPage plot() {
        RecordedPage page({}, 0.1);
        PlotDistricts(session, frame(), page);
        return page;
    }
    std::vector<std::string> lines() {
        std::vector<std::string> found;
        for (const operation::Line& line : plot().all<operation::Line>()) {
            found.push_back(fmt::format("{} {} {} {}", std::lround(line.x1), std::lround(line.y1),
                                        std::lround(line.x2), std::lround(line.y2)));
        }
        return found;
    }
    std::vector<std::string> texts() {
        std::vector<std::string> found;
        for (const test::page::Print& text : plot().all<test::page::Print>()) {
            found.push_back(
                fmt::format("{}@{} {}", text.text, std::lround(text.x), std::lround(text.y)));
        }
        return found;
    }
    std::vector<std::string> labels() {
        std::vector<std::string> found;
        for (const operation::LabelPlaced& label : plot().all<operation::LabelPlaced>()) {
            found.push_back(fmt::format("{}@{} {}", label.caption, std::lround(label.left),
                                        std::lround(label.top)));
        }
        return found;
    }

    Session session;
    test::FakeMeasurer measurer;
    double label_unit = 0.1;
};

TEST_F(PlotDistrictsTest, LinesEndAtTheEdgesOfTheSheet) {
    const std::vector<std::string> found = lines();
    EXPECT_EQ(found.size(), 17U);  // 3 * 3 to the north, 2 * 4 to the east
    EXPECT_THAT(found, Contains("500 0 500 500"));
    EXPECT_THAT(found, Contains("500 1500 500 2000"));
    EXPECT_THAT(found, Contains("0 500 500 500"));
    EXPECT_THAT(found, Contains("2500 500 3000 500"));
}

TEST_F(PlotDistrictsTest, PenIsThinTimesTheFactor) {
    session.settings.faktorStrich = 3;
    session.settings.nubcolor = rgb(1, 2, 3);
    const RecordedPage page = plot();
    EXPECT_EQ(page.all<operation::DrawStyle>(), (std::vector<operation::DrawStyle>{{0}}));
    EXPECT_EQ(page.all<operation::DrawWidth>(), (std::vector<operation::DrawWidth>{{3}}));
    EXPECT_EQ(page.all<operation::ForeColor>(),
              (std::vector<operation::ForeColor>{{rgb(1, 2, 3)}}));
}

TEST_F(PlotDistrictsTest, GreyUnlessThePrinterHasColour) {
    session.settings.nubcolor = rgb(30, 60, 90);
    session.obj.obj_nbez = 1;
    session.printer.drucker_farbe = 1;
    const RecordedPage page = plot();
    EXPECT_EQ(page.all<operation::ForeColor>().at(0).colour, rgb(60, 60, 60));
    EXPECT_EQ(page.all<operation::LabelPlaced>().at(0).colour, rgb(60, 60, 60));
    session.obj.obj_nbez = 2;
    EXPECT_EQ(plot().all<test::page::Print>().at(0).colour, rgb(60, 60, 60));
}

TEST_F(PlotDistrictsTest, NoKindAndLocalSystemDrawNothing) {
    session.obj.obj_nbez = 2;
    session.obj.obj_nube = 0;
    EXPECT_THAT(lines(), IsEmpty());
    EXPECT_THAT(texts(), IsEmpty());
    session.obj.obj_nube = districts::klv;
    session.obj.obj_bezu = 0;
    EXPECT_THAT(lines(), IsEmpty());
    EXPECT_THAT(texts(), IsEmpty());
}

// Lines and the legend, by how their ends lie to it.

TEST_F(PlotDistrictsTest, LineBesideTheLegendStaysWhole) {
    cover({0, 0, 400, 400});
    EXPECT_EQ(lines().size(), 17U);
}

TEST_F(PlotDistrictsTest, LineBeneathTheLegendIsDropped) {
    cover({400, 0, 600, 600});  // the end at (500, 500) too, where two lines begin
    const std::vector<std::string> found = lines();
    EXPECT_EQ(found.size(), 16U);
    EXPECT_THAT(found, Not(Contains("500 0 500 500")));
    EXPECT_THAT(found, Contains("500 600 500 1500"));  // begins beneath it
    EXPECT_THAT(found, Contains("600 500 1500 500"));  // begins beneath it
    EXPECT_THAT(found, Contains("0 500 400 500"));     // ends beneath it
}

TEST_F(PlotDistrictsTest, LineThroughTheLegendShowsOnBothSides) {
    cover({1000, 400, 1400, 600});
    const std::vector<std::string> found = lines();
    EXPECT_EQ(found.size(), 18U);
    EXPECT_THAT(found, Contains("500 500 1000 500"));
    EXPECT_THAT(found, Contains("1400 500 1500 500"));
    EXPECT_THAT(found, Not(Contains("500 500 1500 500")));
}

TEST_F(PlotDistrictsTest, WithoutALegendNothingIsCovered) {
    cover({1000, 400, 1400, 600});
    session.plot.plot_legendenlage = 5;
    EXPECT_EQ(lines().size(), 17U);
}

// Numbers at the nodes.

TEST_F(PlotDistrictsTest, NodesOnTheLowerAndLeftEdgeHaveTheirNumbers) {
    session.plot.plot_null_rechts = 2571000;
    session.plot.plot_null_hoch = 5619000;
    session.blatt = {2571000, 5619000, 2574000, 5621000};
    session.extents = {2571000, 5619000, 2574000, 5621000, 0, 0};
    session.obj.obj_nbez = 1;
    const std::vector<std::string> found = labels();
    EXPECT_THAT(found, Contains("25715619 @0 20"));
    EXPECT_THAT(found, Contains("25725619 @1000 20"));
    EXPECT_THAT(found, Contains("25715620 @0 1020"));
}

TEST_F(PlotDistrictsTest, NumbersStandAtTheNodes) {
    session.obj.obj_nbez = 1;
    EXPECT_THAT(labels(),
                ElementsAre("25715619 @500 520", "25715620 @500 1520", "25725619 @1500 520",
                            "25725620 @1500 1520", "25735619 @2500 520", "25735620 @2500 1520"));
    EXPECT_THAT(texts(), IsEmpty());
}

TEST_F(PlotDistrictsTest, NumbersOfTheAlkHaveTheHundredsFirst) {
    session.obj.obj_nbez = 1;
    session.obj.obj_nube = districts::alk;
    EXPECT_EQ(labels().at(0), " 25567119@500 520");
}

TEST_F(PlotDistrictsTest, MovedNumberStandsAtItsPlace) {
    session.obj.obj_nbez = 1;
    session.nuoff[session.nuoff.append()] = {"25715619", 2571000, 5619200};
    EXPECT_EQ(labels().at(0), "25715619 @500 720");
}

TEST_F(PlotDistrictsTest, NumberMovedOffTheSheetIsNotPrinted) {
    session.obj.obj_nbez = 1;
    session.nuoff[session.nuoff.append()] = {"25715619", 2569000, 5619200};
    EXPECT_EQ(labels().at(0), "25715620 @500 1520");
}

TEST_F(PlotDistrictsTest, NumberThatTheLegendTouchesIsLeftOut) {
    session.obj.obj_nbez = 1;
    cover({550, 510, 700, 600});
    EXPECT_EQ(labels().at(0), "25715620 @500 1520");
    EXPECT_EQ(labels().size(), 5U);
}

TEST_F(PlotDistrictsTest, NumberRunsOnToTheNextSheet) {
    session.obj.obj_nbez = 1;
    session.plot.plot_null_rechts = 2568550;  // two sheets of 3 km: the edge is at 2571550
    session.plot.plot_blatt_rechts = 2;
    session.nuoff[session.nuoff.append()] = {"25715619", 2571500, 5619000};  // 90 m wide
    session.blatt = {2568550, 5618500, 2571550, 5620500};
    EXPECT_THAT(labels(), Contains("25715619 @2950 520"));
    session.blatt = {2571550, 5618500, 2574550, 5620500};
    EXPECT_THAT(labels(), Contains("25715619 @-50 520"));
}

TEST_F(PlotDistrictsTest, NumberOfANodeBeyondAllSheetsIsNotPrinted) {
    session.obj.obj_nbez = 1;
    session.plot.plot_null_rechts = 2571050;  // the node 2571/5619 is left of it, its label is not
    session.blatt = {2571050, 5618500, 2574050, 5620500};
    EXPECT_EQ(labels().at(0), "25725619 @950 520");
}

TEST_F(PlotDistrictsTest, NoNumbersUnlessWanted) {
    session.obj.obj_nbez = 0;
    EXPECT_THAT(labels(), IsEmpty());
    EXPECT_THAT(texts(), IsEmpty());
}

// Numbers on the edges.

TEST_F(PlotDistrictsTest, NumbersOfBothSidesStandWhereALineMeetsTheEdge) {
    session.obj.obj_nbez = 2;
    // " 25705618 | 25715618 " has its bar, 10 m wide, on the line at 500: it begins 105 m before.
    EXPECT_THAT(texts(), UnorderedElementsAre(
                             " 25705618 | 25715618 @395 20", " 25715618 | 25725618 @1395 20",
                             " 25725618 | 25735618 @2395 20", " 25705620 | 25715620 @395 2000",
                             " 25715620 | 25725620 @1395 2000", " 25725620 | 25735620 @2395 2000",
                             " 25705619 @0 520", " 25705618 @0 500", " 25705620 @0 1520",
                             " 25705619 @0 1500", " 25735619 @2900 520", " 25735618 @2900 500",
                             " 25735620 @2900 1520", " 25735619 @2900 1500"));
    EXPECT_THAT(labels(), IsEmpty());
}

TEST_F(PlotDistrictsTest, EdgeNumbersOfTheAlk) {
    session.obj.obj_nbez = 2;
    session.obj.obj_nube = districts::alk;
    EXPECT_THAT(texts(), Contains(" 25567018 | 25567118 @395 20"));
}

TEST_F(PlotDistrictsTest, EdgeNumbersOfMapSheets) {
    // The sheet 5208 has its lower left corner at 50°42' north, 7°00' east, near 2570650, 5618850.
    session.obj.obj_nbez = 2;
    session.obj.obj_nube = districts::tk25;
    std::vector<std::string> captions;
    for (const test::page::Print& text : plot().all<test::page::Print>()) {
        captions.push_back(text.text);
    }
    EXPECT_THAT(captions, UnorderedElementsAre(" 5207 | 5208 ", " 5307 | 5308 ", " 5207 ", " 5307 ",
                                               " 5208 ", " 5308 "));
}

TEST_F(PlotDistrictsTest, EdgeOnAGridLineHasTheNumbersOfTheSheetsOwnDistricts) {
    // The lower edge is the line 5618, the left one the line 2571; both lines run along them.
    session.obj.obj_nbez = 2;
    session.blatt = {2571000, 5618000, 2573500, 5620500};
    EXPECT_THAT(texts(), UnorderedElementsAre(
                             " 25715618 | 25725618 @895 20", " 25725618 | 25735618 @1895 20",
                             " 25715620 | 25725620 @895 2500", " 25725620 | 25735620 @1895 2500",
                             " 25715619 @0 1020", " 25715618 @0 1000", " 25715620 @0 2020",
                             " 25715619 @0 2000", " 25735619 @2400 1020", " 25735618 @2400 1000",
                             " 25735620 @2400 2020", " 25735619 @2400 2000"));
}

TEST_F(PlotDistrictsTest, OneNumberWhereThereIsNoRoomForTwo) {
    session.obj.obj_nbez = 2;
    session.blatt.blatt_rw_min = 2570950;  // the first line is 50 m from the left edge
    EXPECT_THAT(texts(), Contains(" 25715618 @50 20"));
    session.blatt = {2570500, 5618500, 2571050, 5620500};  // the line is 50 m from the right edge
    EXPECT_THAT(texts(), Contains(" 25705618 @400 20"));
}

TEST_F(PlotDistrictsTest, EdgeNumberThatMeetsTheLegendGivesWay) {
    session.obj.obj_nbez = 2;
    cover({0, 0, 495, 300});  // reaches into the number on the left of the line at 500
    EXPECT_THAT(texts(), Contains(" 25715618 @500 20"));
    EXPECT_THAT(texts(), Not(Contains(" 25705618 | 25715618 @395 20")));
    cover({0, 0, 550, 300});
    EXPECT_THAT(texts(), Not(Contains(" 25715618 @500 20")));
    EXPECT_THAT(texts(), Contains(" 25715618 | 25725618 @1395 20"));
}

TEST_F(PlotDistrictsTest, EdgeNumbersNeverTouchEachOtherTheLegendOrTheEdge) {
    session.obj.obj_nbez = 2;
    const TargetBox sheet = sheet_window(session);
    const auto overlap = [](const TargetBox& a, const TargetBox& b) {
        return a.xmin < b.xmax && b.xmin < a.xmax && a.ymin < b.ymax && b.ymin < a.ymax;
    };
    for (const double unit : {0.05, 0.1, 0.3, 0.45, 0.6, 1.0}) {
        for (const TargetBox& legend :
             {TargetBox{0, 0, 700, 400}, TargetBox{0, 1600, 700, 2000},
              TargetBox{2300, 0, 3000, 400}, TargetBox{2300, 1600, 3000, 2000}}) {
            cover(legend);
            label_unit = unit;
            const std::vector<EdgeLabel> found =
                edge_labels(build_district_grid(district_inputs(session, sheet)), sheet,
                            legend_ground(session), frame());
            EXPECT_FALSE(found.empty());
            for (std::size_t i = 0; i < found.size(); ++i) {
                const TargetBox& box = found[i].box;
                EXPECT_TRUE(box.xmin >= sheet.xmin && box.xmax <= sheet.xmax &&
                            box.ymin >= sheet.ymin && box.ymax <= sheet.ymax);
                EXPECT_FALSE(overlap(box, *legend_ground(session)));
                for (std::size_t k = 0; k < i; ++k) {
                    EXPECT_FALSE(overlap(box, found[k].box))
                        << found[i].caption << " over " << found[k].caption;
                }
            }
        }
    }
}

TEST_F(PlotDistrictsTest, WideNumbersStandAloneAndThenNotAtAll) {
    // 200 m high, 1000 m wide: beside the lines at 500 and 1500 there is room for one on the right,
    // beside that at 2500 for none.
    session.obj.obj_nbez = 2;
    label_unit = 1;
    const std::vector<std::string> found = texts();
    EXPECT_THAT(found, Contains(" 25715618 @500 200"));
    EXPECT_THAT(found, Contains(" 25725618 @1500 200"));
    for (const std::string& text : found) {
        EXPECT_EQ(text.find("25735618 @2500"), std::string::npos);
    }
}

TEST_F(PlotDistrictsTest, ThePicturesGridIsLeftAlone) {
    const TargetBox picture{2570000, 5618000, 2576000, 5622000};
    const double* const nodes = district_grid(session, picture).grid_rechts.data();
    plot();
    EXPECT_EQ(district_grid(session, picture).grid_rechts.data(), nodes);
}

}  // namespace
}  // namespace veldra
