#include "model/view_index.h"

#include <algorithm>
#include <random>
#include <string>

#include "drawing/layer_fixture.h"
#include "drawing/pipeline.h"
#include "recording_interface.h"

namespace veldra {
namespace {

using test::add_line;
using test::add_point;
using test::end_points;

std::vector<std::int32_t> lines_in(const Session& session, const std::optional<TargetBox>& box,
                                   double margin = 0) {
    ViewIndex index;
    index.refresh(session.pu, session.lin, session.tables_revision);
    std::vector<std::int32_t> rows;
    index.visit_lines(session.lin, box, margin, [&](std::int32_t row) { rows.push_back(row); });
    return rows;
}

using Rows = std::vector<std::int32_t>;

class ViewIndexTest : public test::LayerFixture {
 protected:
    const ViewIndex& index() {
        session.view_index.refresh(session.pu, session.lin, session.tables_revision);
        return session.view_index;
    }
    std::vector<std::int32_t> points_in(const std::optional<TargetBox>& box,
                                        const ViewIndex::PointMargin& margin = {}) {
        std::vector<std::int32_t> rows;
        index().visit_points(session.pu, box, margin,
                             [&](std::int32_t row) { rows.push_back(row); });
        return rows;
    }
};

TEST_F(ViewIndexTest, VisitsEveryRowWithoutABox) {
    for (int i = 0; i < 600; ++i) {
        add_point(session, i, 0);
        add_line(session, {double(i), 0, double(i), 10});
    }
    EXPECT_EQ(lines_in(session, std::nullopt).size(), 600U);
    EXPECT_EQ(points_in(std::nullopt).size(), 600U);
    EXPECT_EQ(points_in(std::nullopt).back(), 600);
}

TEST_F(ViewIndexTest, VisitsRowsInOrderThatTouchTheBox) {
    add_line(session, {0, 0, 10, 10});
    add_line(session, {20, 0, 30, 10});
    add_line(session, {-50, 5, 50, 5});
    add_line(session, {5, 11, 5, 40});
    EXPECT_EQ(lines_in(session, TargetBox{0, 0, 10, 10}), (Rows{1, 3}));
    EXPECT_EQ(lines_in(session, TargetBox{0, 0, 10, 10}, 1), (Rows{1, 3, 4}));
    EXPECT_EQ(lines_in(session, TargetBox{25, 0, 26, 1}), (Rows{2}));
}

TEST_F(ViewIndexTest, EmptyTablesHaveNoRows) {
    EXPECT_TRUE(lines_in(session, TargetBox{0, 0, 10, 10}).empty());
    EXPECT_TRUE(points_in(TargetBox{0, 0, 10, 10}).empty());
}

TEST_F(ViewIndexTest, ReachOfAPointGrowsWithItsValue) {
    add_point(session, 0, 0);
    PointRow& row = add_point(session, 100, 0);
    row.pu_wert_lage = 1;
    row.pu_wert_rechts = -30;
    add_point(session, 100, 50);
    const TargetBox box{0, 0, 10, 10};
    EXPECT_EQ(points_in(box, {0, 1}), (Rows{1}));
    EXPECT_EQ(points_in(box, {0, 3}), (Rows{1, 2}));
    EXPECT_EQ(points_in(box, {95, 0}), (Rows{1, 2, 3}));
}

TEST_F(ViewIndexTest, AzimuthOfAnEllipseIsNoLength) {
    PointRow& row = add_point(session, 100, 0);
    add_point(session, 0, 0);
    row.pu_wert_lage = -3;
    row.pu_wert_rechts = 2;
    row.pu_wert_dh = 399;
    EXPECT_EQ(points_in(TargetBox{0, 0, 10, 10}, {0, 1}), (Rows{2}));
}

TEST_F(ViewIndexTest, RowsWithUnusualLabelsAreAlwaysVisited) {
    for (int i = 0; i < 300; ++i) {
        add_point(session, 1000 + i, 1000);
    }
    session.pu[7].pu_bez = std::string(41, 'x');
    session.pu[280].pu_bez_rechts = 401;
    EXPECT_EQ(points_in(TargetBox{0, 0, 10, 10}), (Rows{7, 280}));
    EXPECT_EQ(index().longest_usual_label(), 0U);
}

TEST_F(ViewIndexTest, MovedLabelIsVisitedUntilTheNextRebuild) {
    add_point(session, 1000, 1000);
    add_point(session, 1001, 1000);
    const TargetBox box{0, 0, 10, 10};
    EXPECT_EQ(points_in(box), (Rows{}));
    session.view_index.label_moved(2);
    session.view_index.label_moved(0);
    session.view_index.label_moved(3);
    EXPECT_EQ(points_in(box), (Rows{2}));
    ++session.tables_revision;
    EXPECT_EQ(points_in(box), (Rows{}));
}

TEST_F(ViewIndexTest, MovedLabelOfTheFirstRowIsVisited) {
    add_point(session, 1000, 1000);
    const TargetBox box{0, 0, 10, 10};
    EXPECT_EQ(points_in(box), (Rows{}));
    session.view_index.label_moved(1);
    EXPECT_EQ(points_in(box), (Rows{1}));
}

TEST_F(ViewIndexTest, IsRebuiltWhenTheTablesChange) {
    add_point(session, 0, 0);
    const TargetBox box{0, 0, 10, 10};
    EXPECT_EQ(points_in(box), (Rows{1}));
    session.pu[1].pu_rechts = 100;
    EXPECT_EQ(points_in(box), (Rows{1}));  // not told
    ++session.tables_revision;
    EXPECT_EQ(points_in(box), (Rows{}));
    // A row more is seen even without a new revision.
    session.pu.punkt_neu(5, 5);
    EXPECT_EQ(points_in(box), (Rows{2}));
}

TEST_F(ViewIndexTest, FarCoordinatesLoseNoRow) {
    add_point(session, 32500000, 5700000);
    add_point(session, 32900000.123, 6100000.456);
    add_line(session, {32500000, 5700000, 32900000.12, 6100000.45});
    const TargetBox box{32900000.1229, 6100000.4559, 32900000.1231, 6100000.4561};
    EXPECT_EQ(points_in(box), (Rows{2}));
    EXPECT_EQ(lines_in(session, TargetBox{32900000.1199, 6100000.4499, 32900000.13, 6100000.46}),
              (Rows{1}));
}

TEST_F(ViewIndexTest, CoordinateBeyondAllNarrowNumbersIsHarmless) {
    add_point(session, 0, 0);
    add_point(session, -1e300, 1e300);
    add_point(session, 100, 100);
    const Rows rows = points_in(TargetBox{-1, -1, 1, 1});
    EXPECT_TRUE(std::find(rows.begin(), rows.end(), 1) != rows.end());
}

// The picture with the index must be that without it. Operations are turned into things drawn,
// each with the pen that was set when it was drawn; those that touch the view must agree.

struct Pen {
    int style = -1;
    int width = -1;
    int colour = -1;
    int fill_colour = -1;
};

class Painter {
 public:
    explicit Painter(const TargetBox& box) : box_(box) {}

    void operator()(const operation::DrawStyle& op) { pen_.style = op.style; }
    void operator()(const operation::DrawWidth& op) { pen_.width = op.width; }
    void operator()(const operation::ForeColor& op) { pen_.colour = op.colour; }
    void operator()(const operation::FillStyle& /*op*/) {}
    void operator()(const operation::FillColor& op) { pen_.fill_colour = op.colour; }
    void operator()(const operation::Line& op) {
        x_ = op.x2;
        y_ = op.y2;
        const auto [left, right] = std::minmax(op.x1, op.x2);
        const auto [bottom, top] = std::minmax(op.y1, op.y2);
        if (touches(left, bottom, right, top)) {
            keep(test::Describe{}(op));
        }
    }
    void operator()(const operation::Circle& op) {
        if (touches(op.x - op.radius, op.y - op.radius, op.x + op.radius, op.y + op.radius)) {
            keep(fmt::format("{} filled {}", test::Describe{}(op), pen_.fill_colour));
        }
    }
    void operator()(const operation::TextRotated& op) {
        // Letters are half as wide as high; one twip is a centimetre.
        const double reach = (static_cast<double>(op.text.size()) / 2 + 1) * op.font.points * 0.2;
        if (touches(x_ - reach, y_ - reach, x_ + reach, y_ + reach)) {
            drawn_.push_back(fmt::format("{} at {} {}", test::Describe{}(op), x_, y_));
        }
    }
    void operator()(const operation::LabelPlaced& op) {
        if (touches(op.left, op.top - op.height, op.left + op.width, op.top)) {
            drawn_.push_back(test::Describe{}(op));
        }
    }

    [[nodiscard]] const test::Lines& drawn() const { return drawn_; }

 private:
    [[nodiscard]] bool touches(double left, double bottom, double right, double top) const {
        return right >= box_.xmin && left <= box_.xmax && top >= box_.ymin && bottom <= box_.ymax;
    }
    void keep(const std::string& what) {
        drawn_.push_back(fmt::format("{} [{} {} {}]", what, pen_.style, pen_.width, pen_.colour));
    }

    TargetBox box_;
    Pen pen_;
    double x_ = 0;
    double y_ = 0;
    test::Lines drawn_;
};

class CulledPicture : public test::LayerFixture,
                      public testing::WithParamInterface<std::tuple<int, int>> {
 protected:
    std::vector<Operation> operations(const std::optional<TargetBox>& visible) {
        RecordingTarget recording;
        recording.set_visible_box(visible);
        test::RecordingInterface desktop;
        DrawAll(session, recording, measurer, desktop);
        return recording.operations();
    }

    static test::Lines shown_in(const TargetBox& box, const std::vector<Operation>& all) {
        Painter painter(box);
        for (const Operation& op : all) {
            std::visit(painter, op);
        }
        return painter.drawn();
    }

    void fill_tables(unsigned seed);
    void add_values(PointRow& row);
    void add_epochs(double rechts, double hoch);

    std::int16_t pick(std::initializer_list<int> choices) {
        std::uniform_int_distribution<std::size_t> at(0, choices.size() - 1);
        return static_cast<std::int16_t>(*(choices.begin() + at(random_)));
    }
    double between(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random_);
    }

    std::mt19937 random_;
};

void CulledPicture::add_values(PointRow& row) {
    const int lage = session.obj.obj_wert_lage;
    const int hoehe = session.obj.obj_wert_hoehe;
    if (lage == 2) {
        row.pu_wert_lage = pick({0, 2, -2});
    } else if (lage == 3) {
        row.pu_wert_lage = pick({0, -3});
    }
    if (hoehe >= 2) {
        row.pu_wert_hoehe = hoehe == 2 ? pick({0, 5, -5}) : pick({0, -6});
    }
    row.pu_wert_rechts = between(-5, 5);
    row.pu_wert_hoch = between(-5, 5);
    row.pu_wert_dh = between(-5, 5);
    row.pu_ev_lage = between(0, 20);
    row.pu_nv_lage = between(-1, 5);
}

void CulledPicture::add_epochs(double rechts, double hoch) {
    const std::int16_t flag = pick({1, -1});
    for (std::int16_t epoch = 0; epoch < 4; ++epoch) {
        if (epoch == 2 && pick({0, 1, 2}) == 0) {
            continue;  // the chain goes on from the epoch before
        }
        PointRow& row = add_point(session, rechts, hoch);
        const bool change_of_position = session.obj.obj_wert_lage == 1 && pick({0, 1}) == 0;
        if (!change_of_position && session.obj.obj_wert_hoehe == 1) {
            row.pu_wert_hoehe = static_cast<std::int16_t>(4 * flag);
        } else {
            row.pu_wert_lage = flag;
        }
        row.pu_epoche = epoch;
        row.pu_wert_rechts = between(-8, 8);
        row.pu_wert_hoch = between(-8, 8);
        row.pu_wert_dh = between(-8, 8);
        row.pu_bez = "Epoche " + std::to_string(epoch);
    }
}

void CulledPicture::fill_tables(unsigned seed) {
    random_.seed(seed);
    for (int i = 0; i < 700; ++i) {
        PointRow& row = add_point(session, between(1000, 3000), between(2000, 4000));
        row.pu_signatur = pick({0, 1, -1});
        row.pu_art_lage = pick({0, 1, 2});
        row.pu_art_hoehe = pick({0, 1, 2, 3});
        row.pu_bez = pick({0, 1, 2}) == 0 ? "" : "32510" + std::to_string(10000 + i);
        if (i % 50 == 0) {
            row.pu_bez += std::string(60, 'w');
        }
        if (i % 7 == 0) {
            row.pu_bez_rechts = between(-600, 600);
            row.pu_bez_hoch = between(-600, 600);
        }
        add_values(row);
    }
    end_points(session);
    for (int i = 0; i < 200 && (session.obj.obj_wert_lage == 1 || session.obj.obj_wert_hoehe == 1);
         ++i) {
        const PointRow& at = session.pu[1 + i];
        add_epochs(at.pu_rechts, at.pu_hoch);
    }
    for (int i = 0; i < 1500; ++i) {
        const PointRow& from = session.pu[1 + (i * 7) % 700];
        LineRow& row =
            add_line(session, {from.pu_rechts, from.pu_hoch, from.pu_rechts + between(-150, 150),
                               from.pu_hoch + between(-150, 150)});
        row.lin_typ_hin = pick({0, 11, 12});
        row.lin_typ_rueck = pick({0, 11});
        row.lin_typ_seite = session.obj.obj_beob == 1 ? pick({0, 1, 2, 10}) : pick({0, 1, 2});
        row.lin_klasse_von = pick({0, 1, 2, 3});
        row.lin_ev_hin = between(0, 150);
        row.lin_ev_rueck = between(0, 150);
        if (row.lin_typ_seite == 10) {
            row.lin_fernziel.set("Turm " + std::to_string(i));
        }
    }
}

void expect_same(const test::Lines& culled, const test::Lines& whole) {
    EXPECT_EQ(culled.size(), whole.size());
    const auto [at, expected] =
        std::mismatch(culled.begin(), culled.end(), whole.begin(), whole.end());
    if (at != culled.end() && expected != whole.end()) {
        EXPECT_EQ(*at, *expected) << "first difference, at " << at - culled.begin();
    }
}

TEST_P(CulledPicture, IsThatOfTheWholePicture) {
    const auto [puwe, variant] = GetParam();
    session.obj.obj_pube = 1;
    session.obj.obj_pusi = static_cast<std::int16_t>(variant % 2);
    session.obj.obj_beob = static_cast<std::int16_t>(1 + variant % 3);
    session.obj.obj_test_beob = variant >= 3 ? table_true : table_false;
    session.obj.obj_test_restkl = session.obj.obj_test_beob;
    session.obj.obj_epbe = table_true;
    test::show_values(session, static_cast<std::int16_t>(puwe));
    if (variant == 4) {
        session.settings.vektAdrw[1] = 0;
        session.settings.vektNdrw[4] = 0;
    }
    fill_tables(static_cast<unsigned>(puwe * 10 + variant));
    const std::vector<Operation> whole = operations(std::nullopt);
    for (int i = 0; i < 4; ++i) {
        const double x = between(-20, 1900);
        const double y = between(-20, 1900);
        const TargetBox box{x, y, x + between(5, 300), y + between(5, 300)};
        const std::vector<Operation> culled = operations(box);
        expect_same(shown_in(box, culled), shown_in(box, whole));
        EXPECT_LT(culled.size(), whole.size() / 2);
    }
}

INSTANTIATE_TEST_SUITE_P(RandomNetworks, CulledPicture,
                         testing::Combine(testing::Range(0, 9), testing::Range(0, 6)));

TEST_F(ViewIndexTest, NegativeTypesKeepEveryRow) {
    session.obj.obj_beob = 2;
    session.obj.obj_test_beob = table_true;
    LineRow& first = add_line(session, {1000, 2000, 1010, 2000});
    first.lin_typ_rueck = 11;
    first.lin_ev_rueck = 50;
    add_line(session, {5000, 2000, 5010, 2000}).lin_typ_hin = -1;
    RecordingTarget recording;
    recording.set_visible_box(TargetBox{3990, -10, 4020, 10});
    test::RecordingInterface desktop;
    DrawAll(session, recording, measurer, desktop);
    EXPECT_EQ(test::only(test::described(recording), "Line").size(), 6U);
}

TEST_F(ViewIndexTest, LabelsOutOfViewStayHidden) {
    session.obj.obj_pube = 1;
    add_point(session, 1010, 2010).pu_bez = "A";
    add_point(session, 1900, 2010).pu_bez = "B";
    end_points(session);
    test::RecordingInterface desktop;
    DrawAll(session, target, measurer, desktop);
    EXPECT_TRUE(session.lbl_pubez[2].visible);
    target.set_visible_box(TargetBox{0, 0, 150, 90});
    DrawAll(session, target, measurer, desktop);
    EXPECT_TRUE(session.lbl_pubez[1].visible);
    EXPECT_FALSE(session.lbl_pubez[2].visible);
    EXPECT_EQ(session.lbl_pubez_placed, (Rows{1}));
}

}  // namespace
}  // namespace veldra
