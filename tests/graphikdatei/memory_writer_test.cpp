// A graphic file from memory holds what its readers would have kept of the one before.
#include "graphikdatei/memory_writer.h"

#include <gmock/gmock.h>

#include "session_fixture.h"

namespace veldra {
namespace {

using ::testing::HasSubstr;

class MemoryFile : public testing_support::SessionOnFile {
 protected:
    /// Reads a part, writes it from memory and gives the lines behind its points.
    std::string behind_points(const std::string& records, std::int16_t obj_beob,
                              std::int16_t obj_puwe) {
        read_points(
            "NETZTEIL A\nPUNKTSIGNATUR 1000.004 2000 0 0 1 \"1\"\n"
            "PUNKTSIGNATUR 1100 2000 1 1 0 \"2\"\n" +
            records);
        session.obj.obj_beob = obj_beob;
        session.obj.obj_puwe = obj_puwe;
        derive_value_modes(session.obj);
        beob_lesen(session);
        wert_lesen(session);
        const std::string target = folder.path("memory.dat");
        std::filesystem::remove(target);
        write_from_memory(session, target);
        const std::string text = to_utf8(testing_support::file_bytes(target));
        const std::size_t points = text.rfind("Punktsignatur");
        return text.substr(text.find('\n', points) + 1);
    }
};

TEST_F(MemoryFile, HorizontalObservationsBothWays) {
    EXPECT_EQ(behind_points("DISTANZ 1000.004 2000 1100 2000 5 1.5 2\n"
                            "RICHTUNG 1100 2000 1000.004 2000 7\n"
                            "GPS-RICHTUNG 1000.004 2000 1100 2000\n"
                            "GPS-STRECKE 1000.004 2000 1300 2000 5 1.5\n"
                            "ORIENTIERUNGSRICHTUNG 1100 2000 1500 2000 \"Turm 7\"\n",
                            1, 0),
              "Distanz 1000.004 2000.000 1100.000 2000.000 5.0 1.5 2.0\r\n"
              "GPS-Richtung 1000.004 2000.000 1100.000 2000.000\r\n"
              "Richtung 1100.000 2000.000 1000.004 2000.000 7.0\r\n"
              "GPS-Strecke 1000.004 2000.000 1300.000 2000.000 5.0 1.5\r\n"
              "Orientierungsrichtung 1100.000 2000.000 1500.000 2000.000 \"Turm 7\"\r\n");
}

TEST_F(MemoryFile, HeightObservationsAndVectors) {
    EXPECT_EQ(behind_points("HÖHENUNTERSCHIED 1000.004 2000 1100 2000 5 1 2\n"
                            "ZENITWINKEL 1100 2000 1000.004 2000 0.2\n",
                            2, 0),
              "Höhenunterschied 1000.004 2000.000 1100.000 2000.000 5.0 1.0 2.0\r\n"
              "Zenitwinkel 1100.000 2000.000 1000.004 2000.000 0.2\r\n");
    EXPECT_EQ(behind_points("GPS-RAUMVEKTOR 1000.004 2000 1100 2000 5 1 2 6 3 4 7 5 6\n", 3, 0),
              "GPS-Raumvektor 1000.004 2000.000 1100.000 2000.000 5.0 1.0 2.0 6.0 3.0 4.0 7.0 5.0 "
              "6.0\r\n");
}

TEST_F(MemoryFile, ChangesWithTheirEpochsAsDifferences) {
    EXPECT_EQ(behind_points("LAGEÄNDERUNG 1100 2000 3 4 1 1990\n"
                            "NÄCHSTEEPOCHE 1 -2 \"1991\" 5 6\n"
                            "HÖHENÄNDERUNG 1100 2000 3 0 h\n"
                            "NÄCHSTEEPOCHE 2\n",
                            0, 3),
              "Lageänderung 1100.000 2000.000 3.0 4.0 1 \"1990\"\r\n"
              "NächsteEpoche 1.0 -2.0 \"1991\" 5.0 6.0\r\n"
              "Höhenänderung 1100.000 2000.000 3.0 0 \"h\"\r\n"
              "NächsteEpoche 2.0\r\n");
}

TEST_F(MemoryFile, ResidualsEllipsesAndHeightErrors) {
    EXPECT_EQ(behind_points("LAGERESTKLAFFUNGEN 1100 2000 1.25 -2 1 5 1 6 2\n"
                            "LAGERESTKLAFFUNGEN 1300 2000 1 2 0\n",
                            0, 4),
              "Lagerestklaffungen 1100.000 2000.000 1.25 -2.0 1 5.0 1.0 6.0 2.0\r\n"
              "Lagerestklaffungen 1300.000 2000.000 1.0 2.0 0\r\n");
    EXPECT_EQ(behind_points("HÖHENRESTKLAFFUNGEN 1100 2000 1.25 1 5 1\n", 0, 5),
              "Höhenrestklaffungen 1100.000 2000.000 1.25 1 5.0 1.0\r\n");
    EXPECT_EQ(behind_points("LAGEFEHLERELLIPSE 1100 2000 3 2 50\n", 0, 7),
              "Lagefehlerellipse 1100.000 2000.000 3.0 2.0 50.0\r\n");
    EXPECT_EQ(behind_points("HÖHENFEHLER 1100 2000 0.5\n", 0, 8),
              "Höhenfehler 1100.000 2000.000 0.5\r\n");
}

}  // namespace
}  // namespace veldra
