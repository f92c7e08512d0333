#include "drawing/boundaries.h"

#include <chrono>
#include <filesystem>
#include <sstream>

#include "describe.h"
#include "drawing/pipeline.h"
#include "layer_fixture.h"
#include "model/long_work.h"
#include "network_builder.h"
#include "temp_file.h"
#include "text/user_interface.h"

namespace veldra {
namespace {

using test::described;
using test::Lines;
using test::only;
using testing_support::TempFolder;

/// Counts messages.
class MessageCounter final : public UserInterface {
 public:
    bool message_box(MessageStyle /*style*/, const std::string& /*title*/,
                     const std::string& text) override {
        messages.push_back(text);
        return true;
    }
    void set_mouse_pointer(int /*pointer*/) override {}

    std::vector<std::string> messages;
};

/// A document in DHDN strip 2 with its lower left corner at 2570000, 5620000; boundaries in the
/// same system, so that they stand where the file says.
class BoundariesTest : public test::LayerFixture {
 protected:
    BoundariesTest() {
        session.settings.verw_datum = {};
        session.settings.grenzdrw = {0, 17, 16, 15, 14, 13, 12, 11};
        session.settings.grenzrgb = {0, 101, 102, 103, 104, 105, 106, 107};
        session.view = {2570000, 5620000, 2571000, 5620800, 1};
        session.extents = {2570000, 5620000, 2571000, 5620800, 0, 0};
        session.obj.obj_bezu = 1;
        session.obj.obj_bezu_elli = 1;
        session.obj.obj_bezu_abbi = 1;
        session.obj.obj_verw = 7;
    }

    void use_file(std::string_view bytes, const std::string& name = "grenzen.dat") {
        session.settings.verw_datei = folder.file(name, bytes);
        make_old(session.settings.verw_datei);
    }
    /// An old time stamp: the polylines of such a file are kept.
    static void make_old(const std::string& path, int minutes = 60) {
        std::filesystem::last_write_time(
            path, std::filesystem::file_time_type::clock::now() - std::chrono::minutes(minutes));
    }
    Lines draw() {
        target = {};
        DrawBoundaries(session, frame(), target);
        return rounded();
    }
    Lines draw(std::string_view bytes) {
        use_file(bytes);
        return draw();
    }
    /// Operations with coordinates rounded to metres.
    Lines rounded() {
        Lines lines;
        for (const Operation& op : target.operations()) {
            if (const auto* line = std::get_if<operation::Line>(&op)) {
                lines.push_back(fmt::format("Line {} {} {} {}", std::lround(line->x1),
                                            std::lround(line->y1), std::lround(line->x2),
                                            std::lround(line->y2)));
            } else {
                lines.push_back(std::visit(test::Describe{}, op));
            }
        }
        return lines;
    }
    static Lines pen(int level) {
        return {fmt::format("DrawWidth {}", 18 - level), fmt::format("ForeColor {}", 100 + level)};
    }

    TempFolder folder;
};

constexpr std::string_view three_levels =
    "@ 1 Land x LND\r\n"
    "2 2570010 5620010\r\n"
    "1 2570020 5620010\r\n"
    "# 2 Bezirk x RBZ\r\n"
    "2 2570030 5620010\r\n"
    "1 2570040 5620010\r\n"
    "@ 3 Kreis x KRS\r\n"
    "0 2570050 5620010\r\n"
    "1 2570060 5620010\r\n"
    "@ 4 Gemeinde x GEM\r\n"
    "0 2570070 5620010\r\n"
    "1 2570080 5620010\r\n";

using test::operator+;  // NOLINT(misc-unused-using-decls): it is used

TEST_F(BoundariesTest, PenOfTheLevelThenItsLines) {
    EXPECT_EQ(draw(three_levels),
              (pen(1) + Lines{"Line 10 10 20 10"} + pen(2) + Lines{"Line 30 10 40 10"} + pen(3) +
               Lines{"Line 50 10 60 10"} + pen(4) + Lines{"Line 70 10 80 10"}));
}

TEST_F(BoundariesTest, FirstLevelStopsAtTheFirstRbzHeaderAndReadsNothingBehind) {
    session.obj.obj_verw = 1;
    const std::string file = std::string(three_levels) + "@ 5 Land x LND\r\n2 2570010 5620010\r\n";
    EXPECT_EQ(draw(file), (pen(1) + Lines{"Line 10 10 20 10"}));
    EXPECT_EQ(boundary_cache(session).lines.vertices.size(), 2U);
    EXPECT_FALSE(boundary_cache(session).lines.whole_file);
}

TEST_F(BoundariesTest, EachLevelEndsAtTheFirstHeaderOfTheNext) {
    std::string file;
    int x = 2570000;
    for (const char* code : {"LND", "RBZ", "KRS", "KFS", "GEM", "SO1", "SO2", "SO3"}) {
        file += fmt::format("@ a b c {}\n2 {} 5620000\n1 {} 5620000\n", code, x + 1, x + 2);
        x += 10;
    }
    use_file(file);
    const std::array<std::size_t, 8> lines{0, 1, 2, 4, 5, 6, 7, 8};
    for (std::int16_t level = 1; level <= 7; ++level) {
        boundary_cache(session) = {};
        session.obj.obj_verw = level;
        EXPECT_EQ(only(draw(), "Line").size(), lines[static_cast<std::size_t>(level)]) << level;
    }
    EXPECT_EQ(only(rounded(), "DrawWidth"),
              (Lines{"DrawWidth 17", "DrawWidth 16", "DrawWidth 15", "DrawWidth 15", "DrawWidth 14",
                     "DrawWidth 13", "DrawWidth 12", "DrawWidth 11"}));
}

TEST_F(BoundariesTest, NextVertexBeforeAnyFirstOneDrawsFromTheCorner) {
    EXPECT_EQ(draw("1 2570100 5620200\n1 2570300 5620400\n"),
              (Lines{"Line 0 0 100 200", "Line 100 200 300 400"}));
    // The corner is that of the picture, wherever it looks.
    session.view.ansicht_rw_min += 50;
    EXPECT_EQ(draw(), (Lines{"Line 0 0 50 200", "Line 50 200 250 400"}));
}

TEST_F(BoundariesTest, SecondPolylineOfAnObjectIsNotJoinedToTheFirst) {
    EXPECT_EQ(draw("@ a b c LND\n2 2570010 5620010\n1 2570020 5620010\n2 2570030 5620030\n"
                   "1 2570040 5620030\n0 2570050 5620050\n1 2570060 5620050\n"),
              (pen(1) + Lines{"Line 10 10 20 10", "Line 30 30 40 30", "Line 50 50 60 50"}));
}

TEST_F(BoundariesTest, PolylineGoesOnBehindAHeaderInTheNewPen) {
    EXPECT_EQ(draw("@ a b c LND\n2 2570010 5620010\n1 2570020 5620010\n@ a b c GEM\n"
                   "1 2570030 5620030\n"),
              (pen(1) + Lines{"Line 10 10 20 10"} + pen(4) + Lines{"Line 20 10 30 30"}));
}

TEST_F(BoundariesTest, LowerCaseCodeMatches) {
    session.obj.obj_verw = 2;
    EXPECT_EQ(draw("@ a b c lnd\n2 2570010 5620010\n1 2570020 5620010\n@ a b c kRs\n"
                   "2 2570030 5620030\n1 2570040 5620030\n"),
              (pen(1) + Lines{"Line 10 10 20 10"}));
}

TEST_F(BoundariesTest, UnknownCodeLeavesThePen) {
    EXPECT_EQ(draw("@ a b c GEM\n@ a b c XXX\n@ a b\n@\n#\n2 2570010 5620010\n1 2570020 5620010\n"),
              (pen(4) + Lines{"Line 10 10 20 10"}));
}

TEST_F(BoundariesTest, FileWithoutHeaderDrawsInThePenThatIs) {
    EXPECT_EQ(draw("2 2570010 5620010\n1 2570020 5620010"), Lines{"Line 10 10 20 10"});
}

TEST_F(BoundariesTest, TokensMayHaveSeveralBlanksAndCommasForPoints) {
    EXPECT_EQ(draw("2    2570010,4   5620010,4 more\n1   2570020.4 5620010.4\n"),
              Lines{"Line 10 10 20 10"});
}

TEST_F(BoundariesTest, OtherLinesAreIgnored) {
    EXPECT_EQ(draw("; remark\n\n2 2570010 5620010\n 1 2570015 5620015\n3 2570016 5620016\nx\n"
                   "1 2570020 5620010\n"),
              Lines{"Line 10 10 20 10"});
}

TEST_F(BoundariesTest, MalformedNumbersReadAsFarAsTheyGo) {
    // Words are 0 and the digits in front of letters count: the vertex is 2570030, 5620.
    const BoundaryRecord record = read_boundary_record("1 2570030abc 5620x10");
    EXPECT_EQ(record.rechts, 2570030);
    EXPECT_EQ(record.hoch, 5620);
    const BoundaryRecord words = read_boundary_record("2 abc");
    EXPECT_EQ(words.kind, BoundaryRecord::Kind::first_vertex);
    EXPECT_EQ(words.rechts, 0);
    EXPECT_EQ(words.hoch, 0);
}

TEST_F(BoundariesTest, VerticesOutsideTheDomainAreDrawnNowhereAndCounted) {
    EXPECT_EQ(draw("2 2570010 5620010\n1 2570020 5620010\n1 2570030 99999999\n1 2570040 5620010\n"
                   "1 2570050 5620010\n2 999999999 5620010\n1 2570060 5620010\n"
                   "1 2570070 5620010\n"),
              (Lines{"Line 10 10 20 10", "Line 40 10 50 10", "Line 60 10 70 10"}));
    EXPECT_EQ(boundary_cache(session).lines.outside, 2);
}

TEST_F(BoundariesTest, FirstVertexOutsideTheDomainDoesNotFallBackToTheCorner) {
    EXPECT_EQ(draw("1 2570010 99999999\n1 2570020 5620010\n1 2570030 5620010\n"),
              Lines{"Line 20 10 30 10"});
}

TEST_F(BoundariesTest, LocalAndUnsetSystemsDrawNothing) {
    use_file(three_levels);
    session.obj.obj_bezu = 0;
    EXPECT_EQ(draw(), Lines{});
    session.obj.obj_bezu = -99;
    EXPECT_EQ(draw(), Lines{});
}

TEST_F(BoundariesTest, MissingFileDrawsNothingSilently) {
    session.settings.verw_datei = folder.path("fehlt.dat");
    MessageCounter ui;
    EXPECT_EQ(draw(), Lines{});
    DrawAll(session, target, measurer, ui);
    for (const std::string& message : ui.messages) {
        EXPECT_EQ(message.find("fehlt.dat"), std::string::npos);
    }
    session.settings.verw_datei = "";
    EXPECT_EQ(draw(), Lines{});
}

TEST_F(BoundariesTest, UnreadableFileIsNamedOnceAndThePictureGoesOn) {
    // A folder can be found, but not read.
    session.settings.verw_datei = folder.path();
    try {
        draw();
        FAIL() << "read a folder";
    } catch (const UnreadableBoundaries& error) {
        EXPECT_NE(std::string(error.what()).find(folder.path()), std::string::npos);
        EXPECT_NE(std::string(error.what()).find("Verzeichnis"), std::string::npos);
    }
    test::add_point(session, 2570100, 5620100).pu_signatur = 1;
    session.obj.obj_pusi = 1;
    MessageCounter ui;
    DrawAll(session, target, measurer, ui);
    DrawAll(session, target, measurer, ui);
    ASSERT_EQ(ui.messages.size(), 1U);
    EXPECT_NE(ui.messages[0].find(folder.path()), std::string::npos);
    EXPECT_EQ(only(described(target), "Circle").size(), 2U);
    // Once it has been readable, a new failure is told again.
    session.settings.verw_datei = folder.file("gut.dat", three_levels);
    DrawAll(session, target, measurer, ui);
    session.settings.verw_datei = folder.path();
    DrawAll(session, target, measurer, ui);
    EXPECT_EQ(ui.messages.size(), 2U);
}

/// Answers as often as told that the work is to go on.
class EndingWork final : public LongWork {
 public:
    bool goes_on() override { return ++questions < last; }
    int questions = 0;
    int last = 2;
};

TEST_F(BoundariesTest, ReadingThatIsGivenUpLeavesNothingBehind) {
    EndingWork work;
    work.expect_readings(6);
    session.work = &work;
    EXPECT_THROW(draw(three_levels), WorkCancelled);
    // Behind its only window: the boundary file is a reading of its own.
    EXPECT_EQ(work.questions, 2);
    EXPECT_EQ(work.step(), LongWork::Step::reading);
    EXPECT_EQ(work.share(), 1.0);
    EXPECT_TRUE(target.operations().empty());
    session.work = nullptr;
    const Lines whole = draw();
    EXPECT_EQ(whole, draw(three_levels));
    EXPECT_FALSE(whole.empty());
}

TEST_F(BoundariesTest, RelativePathIsLookedUpBesideTheGraphicFile) {
    use_file(three_levels, "neben.dat");
    session.settings.verw_datei = "neben.dat";
    EXPECT_EQ(draw(), Lines{});
    session.graphikdatei = folder.path("ve.dat");
    EXPECT_EQ(boundary_path(session), folder.path("neben.dat"));
    EXPECT_EQ(only(draw(), "Line").size(), 4U);
}

TEST_F(BoundariesTest, PathOfTheProfileIsWindows1252) {
    use_file(three_levels, "gr\xC3\xBCn.dat");
    session.settings.verw_datei = folder.path() + "/gr\xFCn.dat";
    EXPECT_EQ(only(draw(), "Line").size(), 4U);
}

TEST_F(BoundariesTest, RedrawKeepsThePolylinesWithTheSamePicture) {
    const Lines first = draw(three_levels);
    const PlanePoint* kept = boundary_cache(session).lines.vertices.data();
    EXPECT_EQ(draw(), first);
    EXPECT_EQ(boundary_cache(session).lines.vertices.data(), kept) << "read again";
    boundary_cache(session) = {};
    EXPECT_EQ(draw(), first);
}

TEST_F(BoundariesTest, ChangedFileIsReadAnew) {
    draw(three_levels);
    use_file("2 2570015 5620010\n1 2570025 5620010\n");
    EXPECT_EQ(draw(), Lines{"Line 15 10 25 10"});
    // The same size and another time stamp.
    use_file("2 2570017 5620010\n1 2570027 5620010\n");
    make_old(session.settings.verw_datei, 30);
    EXPECT_EQ(draw(), Lines{"Line 17 10 27 10"});
}

TEST_F(BoundariesTest, FileChangedJustNowIsReadAnewEvenWithTheSameStamp) {
    session.settings.verw_datei = folder.file("neu.dat", "2 2570015 5620010\n1 2570025 5620010\n");
    const auto stamp = std::filesystem::last_write_time(session.settings.verw_datei);
    EXPECT_EQ(draw(), Lines{"Line 15 10 25 10"});
    (void)folder.file("neu.dat", "2 2570017 5620010\n1 2570027 5620010\n");
    std::filesystem::last_write_time(session.settings.verw_datei, stamp);
    EXPECT_EQ(draw(), Lines{"Line 17 10 27 10"});
}

TEST_F(BoundariesTest, VanishedFileIsNoLongerDrawn) {
    draw(three_levels);
    std::filesystem::remove(session.settings.verw_datei);
    EXPECT_EQ(draw(), Lines{});
}

TEST_F(BoundariesTest, EachInputOfTheTransformationCounts) {
    use_file(three_levels);
    const auto changes = [this](auto&& change) {
        const Lines before = draw();
        change();
        const Lines kept = draw();
        boundary_cache(session) = {};
        EXPECT_EQ(draw(), kept);
        return kept != before;
    };
    EXPECT_TRUE(changes([this] { session.settings.verw_datum[0].dlam0 = 1; }));
    EXPECT_TRUE(changes([this] { session.settings.verw_elli = 2; }));
    EXPECT_TRUE(changes([this] { session.obj.obj_bezu_elli = 3; }));
    EXPECT_TRUE(changes([this] { session.extents.gesamt_rw_max += 2000000; }));
    EXPECT_FALSE(changes([this] { session.settings.verw_datum[1].dlam0 = 2; }));
    EXPECT_TRUE(changes([this] { session.obj.obj_bezu = 2; }));
    EXPECT_TRUE(changes([this] { session.settings.verw_abbi = 2; }));
}

TEST_F(BoundariesTest, KeptPolylinesServeOtherLevels) {
    use_file(three_levels);
    const auto lines = [this](std::int16_t level) {
        session.obj.obj_verw = level;
        return only(draw(), "Line").size();
    };
    EXPECT_EQ(lines(2), 2U);
    EXPECT_EQ(lines(4), 4U);
    const PlanePoint* kept = boundary_cache(session).lines.vertices.data();
    EXPECT_EQ(lines(1), 1U);
    EXPECT_EQ(lines(3), 3U);
    EXPECT_EQ(lines(7), 4U);
    EXPECT_EQ(boundary_cache(session).lines.vertices.data(), kept);
}

TEST_F(BoundariesTest, KeptPolylinesOfAFileOutOfOrderAreNotUsedBeyondTheirEnd) {
    // GEM before RBZ: the third level ends before the second one's end.
    use_file(
        "@ a b c LND\n2 2570010 5620010\n1 2570020 5620010\n@ a b c GEM\n2 2570030 5620010\n"
        "1 2570040 5620010\n@ a b c RBZ\n2 2570050 5620010\n1 2570060 5620010\n");
    session.obj.obj_verw = 3;
    EXPECT_EQ(only(draw(), "Line").size(), 1U);
    session.obj.obj_verw = 1;
    EXPECT_EQ(only(draw(), "Line").size(), 2U);
}

TEST_F(BoundariesTest, CoordinatesAreNarrowedBehindTheSubtraction) {
    draw("2 2570123.25 5620456.75\n1 2570124.25 5620457.5\n");
    const auto& line = std::get<operation::Line>(target.operations().at(0));
    EXPECT_NEAR(static_cast<double>(line.x1), 123.25, 1e-5);
    EXPECT_NEAR(static_cast<double>(line.y2), 457.5, 1e-4);
}

TEST_F(BoundariesTest, UtmFileUnderADhdnDocumentGoesThroughTheWholeChain) {
    // 7.0 degrees on GRS 80 in zone 32, turned into the strip 2 on Bessel without a shift.
    Koordtrans library;
    std::int32_t status = 0;
    library.DEFSYSTEM(0, 4, 2, status);
    library.DEFSYSTEM(1, 1, 1, status);
    std::int32_t zone = 32;
    std::int32_t strip = 2;
    double rechts = 0;
    double hoch = 0;
    double expected_rechts = 0;
    double expected_hoch = 0;
    library.GEGGKO(0, 50.7, 7.0, zone, rechts, hoch, 3, status);
    library.GEGGKO(1, 50.7 + 0.001, 7.0, strip, expected_rechts, expected_hoch, 3, status);
    session.settings.verw_elli = 4;
    session.settings.verw_abbi = 2;
    session.settings.verw_datum[0].dphi0 = 3.6;
    draw(fmt::format("2 {:.4f} {:.4f}\n1 {:.4f} {:.4f}\n", rechts, hoch, rechts, hoch));
    ASSERT_EQ(boundary_cache(session).lines.vertices.size(), 2U);
    EXPECT_NEAR(boundary_cache(session).lines.vertices[0].rechts, expected_rechts, 1e-3);
    EXPECT_NEAR(boundary_cache(session).lines.vertices[0].hoch, expected_hoch, 1e-3);
}

/// A zigzag of many vertices across the view and beyond.
std::string zigzag() {
    std::string file = "@ a b c LND\n";
    for (int i = 0; i < 500; ++i) {
        file += fmt::format("{} {} {}\n", i % 97 == 0 ? 2 : 1, 2568000 + i * 10 + (i % 7) * 31,
                            5619000 + (i * 37) % 3000);
        if (i % 50 == 49) {
            file += i % 100 == 99 ? "@ a b c KRS\n" : "@ a b c RBZ\n";
        }
    }
    return file;
}

TEST_F(BoundariesTest, LinesOutsideTheVisibleBoxAreLeftOutAndNoOthers) {
    const Lines all = draw(zigzag());
    const TargetBox box{0, 0, 900, 500};
    target = {};
    target.set_visible_box(box);
    DrawBoundaries(session, frame(), target);
    Lines wanted;
    Lines pens;
    for (const std::string& op : all) {
        if (op.rfind("Line", 0) != 0) {
            if (op.rfind("DrawWidth", 0) == 0) {
                pens.clear();
            }
            pens.push_back(op);
            continue;
        }
        std::istringstream words(op);
        std::string name;
        double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
        words >> name >> x1 >> y1 >> x2 >> y2;
        if (std::max(x1, x2) >= box.xmin && std::min(x1, x2) <= box.xmax &&
            std::max(y1, y2) >= box.ymin && std::min(y1, y2) <= box.ymax) {
            wanted.push_back(fmt::format("{} in {}", op, pens.at(0)));
        }
    }
    Lines found;
    std::string pen;
    for (const std::string& op : rounded()) {
        if (op.rfind("DrawWidth", 0) == 0) {
            pen = op;
        } else if (op.rfind("Line", 0) == 0) {
            found.push_back(fmt::format("{} in {}", op, pen));
        }
    }
    EXPECT_GT(found.size(), 10U);
    EXPECT_LT(found.size(), only(all, "Line").size() / 2);
    EXPECT_EQ(found, wanted);
}

TEST_F(BoundariesTest, LinesEndAtAGapUnlessTheyCrossIt) {
    use_file(
        "@ a b c LND\n"
        "2 2570010 5620050\n1 2570150 5620050\n1 2570160 5620060\n1 2570300 5620060\n"
        "2 2570050 5620080\n1 2570250 5620080\n");
    LayerFrame gapped = frame();
    gapped.gap = TargetBox{2570100, 5620000, 2570200, 5620100};
    DrawBoundaries(session, gapped, target);
    EXPECT_EQ(rounded(),
              (pen(1) + Lines{"Line 10 50 100 50", "Line 200 60 300 60", "Line 50 80 250 80"}));
}

TEST_F(BoundariesTest, LinesOfAPageAreClippedToItsWindowAndGrey) {
    use_file("@ a b c LND\n2 2569900 5620010\n1 2570020 5620010\n");
    session.settings.grenzrgb[1] = rgb(30, 60, 90);
    LayerFrame page = frame();
    page.window = TargetBox{2570000, 5620000, 2570100, 5620100};
    page.width_factor = 3;
    page.grey = true;
    DrawBoundaries(session, page, target);
    EXPECT_EQ(rounded(), (Lines{"DrawWidth 51", fmt::format("ForeColor {}", rgb(60, 60, 60)),
                                "Line 0 10 20 10"}));
}

}  // namespace
}  // namespace veldra
