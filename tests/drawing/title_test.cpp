#include "drawing/title.h"

#include <gtest/gtest.h>

#include "network_builder.h"
#include "text/codepage.h"

namespace veldra {
namespace {

class BuildTitleTest : public testing::Test {
 protected:
    BuildTitleTest() { test::show_nothing(session); }

    [[nodiscard]] std::string title(int mit_massstab = 0) const {
        return to_utf8(BuildTitle(session, mit_massstab));
    }

    Session session;
};

TEST_F(BuildTitleTest, IsEmptyWhenNothingIsShown) {
    EXPECT_EQ(title(), "");
}

TEST_F(BuildTitleTest, NamesTheObservations) {
    const char* names[] = {"Lagebeobachtungen", "Höhenbeobachtungen", "GPS-Raumvektoren"};
    for (std::int16_t beob = 1; beob <= 3; ++beob) {
        session.obj.obj_beob = beob;
        EXPECT_EQ(title(), names[beob - 1]);
    }
}

TEST_F(BuildTitleTest, TestOfObservationsFollowsTheirName) {
    session.obj.obj_test_beob = table_true;
    const char* titles[3][3] = {
        {"Lagebeobachtungen, EV", "Lagebeobachtungen, NV", "Lagebeobachtungen, EP"},
        {"Höhenbeobachtungen, EV", "Höhenbeobachtungen, NV", "Höhenbeobachtungen, EH"},
        {"GPS-Raumvektoren, EV", "GPS-Raumvektoren, NV", "GPS-Raumvektoren, EH"}};
    for (std::int16_t beob = 1; beob <= 3; ++beob) {
        for (std::int16_t kind = 1; kind <= 3; ++kind) {
            session.obj.obj_beob = beob;
            session.obj.obj_test = kind;
            EXPECT_EQ(title(), titles[beob - 1][kind - 1]);
        }
    }
}

TEST_F(BuildTitleTest, NoTestWithoutANameBeforeIt) {
    session.obj.obj_test_beob = table_true;
    session.obj.obj_test_restkl = table_true;
    EXPECT_EQ(title(), "");
    test::show_values(session, 7);
    EXPECT_EQ(title(), "Lagefehlerellipsen");
}

TEST_F(BuildTitleTest, NamesTheValues) {
    const char* names[] = {"",
                           "Lageänderungen",
                           "Höhenänderungen",
                           "Lageänderungen, Höhenänderungen",
                           "Lagerestklaffungen",
                           "Höhenrestklaffungen",
                           "Lagerestklaffungen, Höhenrestklaffungen",
                           "Lagefehlerellipsen",
                           "Höhenfehler"};
    for (std::int16_t puwe = 0; puwe <= 8; ++puwe) {
        test::show_values(session, puwe);
        EXPECT_EQ(title(), names[puwe]);
    }
}

TEST_F(BuildTitleTest, TestOfResidualsFollowsEachOfThemEvenWhenNotColoured) {
    test::show_values(session, 6);
    session.obj.obj_test_restkl = table_true;
    session.obj.obj_test = 3;
    EXPECT_EQ(title(), "Lagerestklaffungen, EP, Höhenrestklaffungen, EH");
}

TEST_F(BuildTitleTest, ScalesFollowTheirValues) {
    session.obj.obj_beob = 1;
    test::show_values(session, 3);
    session.vektor_massstab[1] = 1 / 2.5;
    session.vektor_massstab[4] = 1.0 / 20;
    EXPECT_EQ(title(1), "Lagebeobachtungen, Lageänderungen 1: 2.5, Höhenänderungen 1: 20");
    EXPECT_EQ(title(0), "Lagebeobachtungen, Lageänderungen, Höhenänderungen");
}

TEST_F(BuildTitleTest, ScaleComesAfterTheTest) {
    test::show_values(session, 4);
    session.obj.obj_test_restkl = table_true;
    EXPECT_EQ(title(1), "Lagerestklaffungen, EV 1: 2");
}

TEST_F(BuildTitleTest, IsWindows1252) {
    test::show_values(session, 2);
    EXPECT_EQ(BuildTitle(session, 0), "H\xF6hen\xE4nderungen");
}

}  // namespace
}  // namespace veldra
