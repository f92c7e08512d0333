// Value rows in numbers, and changes that begin anew.
#include <string>

#include "session_fixture.h"

namespace veldra {
namespace {

using ValueRows = testing_support::SessionOnFile;

/// Kinds of values as the selection numbers them.
struct Shown {
    static constexpr std::int16_t height_changes = 2;
    static constexpr std::int16_t both_changes = 3;
    static constexpr std::int16_t horizontal_residuals = 4;
    static constexpr std::int16_t height_residuals = 5;
};

TEST_F(ValueRows, AreFoundAfterManyOfThemAndAnotherSelection) {
    constexpr int many = 600;  // more than two blocks of the table
    std::string file = "PUNKTSIGNATUR -1 -1 0 0 1 \"P\"\n";
    for (int i = 0; i < many; ++i) {
        file += "LAGERESTKLAFFUNGEN " + std::to_string(i) + " 7 1 1 0\n";
    }
    for (int i = many - 1; i >= 0; --i) {
        file += "HÖHENRESTKLAFFUNGEN " + std::to_string(i) + " 7 99 0\n";
        // The second record of a point meets the row of the first.
        file += "HÖHENRESTKLAFFUNGEN " + std::to_string(i) + " 7 " + std::to_string(2 * i) + " 0\n";
    }
    read_values(file, Shown::horizontal_residuals);
    ASSERT_EQ(session.pu.count(), 1 + many);
    EXPECT_EQ(session.pu.punkt_finden(0, 7), 2);
    session.obj.obj_puwe = Shown::height_residuals;
    derive_value_modes(session.obj);
    for (int times = 0; times < 2; ++times) {
        wert_lesen(session);
        ASSERT_EQ(session.pu.count(), 1 + many);
        for (int i = 0; i < many; ++i) {
            const std::int32_t row = session.pu.punkt_finden(i, 7);
            ASSERT_EQ(row, 1 + many - i);
            ASSERT_EQ(session.pu[row].pu_wert_dh, 2.0 * i);
            ASSERT_EQ(session.pu[row].pu_wert_lage, 0);
        }
    }
    session.obj.obj_puwe = 0;
    derive_value_modes(session.obj);
    wert_lesen(session);
    EXPECT_EQ(session.pu.count(), 1);
    EXPECT_EQ(session.pu.punkt_finden(300, 7), 0);
    EXPECT_EQ(session.pu.punkt_finden(-1, -1), 1);
}

TEST_F(ValueRows, SecondHeightChangeBehindEpochsBeginsAnew) {
    read_values(
        "HÖHENÄNDERUNG 1 2 5 1 a\nNÄCHSTEEPOCHE -2 b\nNÄCHSTEEPOCHE -2 c\n"
        "HÖHENÄNDERUNG 3 4 7 0 d\nNÄCHSTEEPOCHE 1 e\n",
        Shown::height_changes);
    ASSERT_EQ(session.pu.count(), 5);
    EXPECT_EQ(session.pu[3].pu_wert_dh, 1.0);
    EXPECT_EQ(session.pu[3].pu_epoche, 2);
    EXPECT_EQ(session.pu[4].pu_wert_dh, 7.0);
    EXPECT_EQ(session.pu[4].pu_wert_hoehe, -4);
    EXPECT_EQ(session.pu[4].pu_epoche, 0);
    EXPECT_EQ(session.pu[5].pu_wert_dh, 8.0);
    EXPECT_EQ(session.pu[5].pu_wert_hoehe, -4);
    EXPECT_EQ(session.pu[5].pu_epoche, 1);
    EXPECT_EQ(session.pu[5].pu_rechts, 3.0);
    EXPECT_EQ(session.pu[5].pu_hoch, 4.0);
}

TEST_F(ValueRows, ChangeOfTheOtherKindBehindEpochsBeginsAnew) {
    read_values(
        "LAGEÄNDERUNG 1 2 5 6 1 a\nNÄCHSTEEPOCHE 1 1 b\nHÖHENÄNDERUNG 1 2 9 0 c\n"
        "NÄCHSTEEPOCHE 1 d\nLAGEÄNDERUNG 1 2 2 3 0 e\nNÄCHSTEEPOCHE 4 4 f\n",
        Shown::both_changes);
    ASSERT_EQ(session.pu.count(), 6);
    EXPECT_EQ(session.pu[3].pu_epoche, 0);
    EXPECT_EQ(session.pu[4].pu_wert_dh, 10.0);
    EXPECT_EQ(session.pu[4].pu_epoche, 1);
    EXPECT_EQ(session.pu[5].pu_epoche, 0);
    EXPECT_EQ(session.pu[5].pu_wert_lage, -1);
    EXPECT_EQ(session.pu[6].pu_wert_rechts, 6.0);
    EXPECT_EQ(session.pu[6].pu_wert_hoch, 7.0);
    EXPECT_EQ(session.pu[6].pu_epoche, 1);
}

}  // namespace
}  // namespace veldra
