#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "program_run.h"
#include "text/codepage.h"

namespace veldra {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;
using testing_support::file_bytes;
using testing_support::ProgramRun;
using testing_support::TempFolder;

class VeldraCli : public ::testing::Test {
 protected:
    std::string file(std::string_view utf8, const std::string& name = "ve.dat") {
        return folder.file(name, from_utf8(utf8));
    }
    ProgramRun run(const std::vector<std::string>& arguments) {
        return testing_support::run_veldra(folder, arguments);
    }
    json tables(const std::vector<std::string>& arguments) {
        std::vector<std::string> all{"tabellen"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        const ProgramRun result = run(all);
        EXPECT_EQ(result.exit_code, 0) << result.err;
        EXPECT_EQ(result.err, "");
        return json::parse(result.out);
    }
    std::vector<json> operations(const std::vector<std::string>& arguments) {
        std::vector<std::string> all{"operationen"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        const ProgramRun result = run(all);
        EXPECT_EQ(result.exit_code, 0) << result.err;
        std::vector<json> lines;
        std::istringstream in(result.out);
        for (std::string line; std::getline(in, line);) {
            lines.push_back(json::parse(line));
        }
        return lines;
    }

    TempFolder folder;
};

constexpr const char* small_network =
    "VERFAHRENLEGENDE Übung\n"
    "NETZTEIL Süd\n"
    "OBJEKTE 1 1 0 0 0 0 0 1 0 1 0 1 1\n"
    "PUNKTSIGNATUR 1000 2000 0 0 1 \"A\"\n"
    "PUNKTSIGNATUR 1100 2000 0 0 0 \"B\"\n"
    "RICHTUNG 1000 2000 1100 2000 50 1 2\n"
    "HÖHENUNTERSCHIED 1000 2000 1100 2000 60 1 2\n"
    "LAGEFEHLERELLIPSE 1100 2000 1 0.5 100\n"
    "NETZTEIL Nord\n"
    "MAßSTABGRUNDRISS 500\n"
    "PUNKTSIGNATUR 5 6 1 3 1\n";

TEST_F(VeldraCli, TablesHoldWhatTheFileSays) {
    const std::string path = file(small_network);
    const json t = tables({path});
    EXPECT_EQ(t["graphikdatei"], path);
    EXPECT_EQ(t["netz_anzahl"], 2);
    EXPECT_EQ(t["netz_aktuell"], 1);
    EXPECT_EQ(t["netz"][0]["netz_name"], "Süd");
    EXPECT_EQ(t["netz"][1]["netz_massstab"], 1.0 / 500);
    EXPECT_EQ(t["plot"]["plot_massstab"], -99.0);
    EXPECT_EQ(t["vektor_massstab"], json({0.5, 0.5, 0.5, 0.5, 0.5, 0.5}));
    EXPECT_EQ(t["titel"], json({"Übung", "", "", ""}));
    EXPECT_EQ(t["max_np"].size(), 6U);
    EXPECT_EQ(t["max_np"][2]["wert"], 1.0);
    EXPECT_EQ(t["max_np"][2]["bez"], "B");
    EXPECT_EQ(t["pu_anzahl"], 2);
    EXPECT_EQ(t["pu_anzahl_signatur"], 2);
    EXPECT_EQ(t["pu"][1]["pu_rechts"], 1100.0);
    EXPECT_EQ(t["pu"][1]["pu_signatur"], -1);
    EXPECT_EQ(t["lin_anzahl"], 1);
    EXPECT_EQ(t["lin"][0]["lin_schluessel"], " 0001000.00 0002000.00 0001100.00 0002000.00");
    EXPECT_EQ(t["lin"][0]["lin_typ_hin"], 11);
    EXPECT_EQ(t["lin"][0]["lin_ev_hin"], 50.0);
    EXPECT_EQ(t["fernziel_anzahl"], 0);
    EXPECT_EQ(t["nuoff_anzahl"], 0);
    EXPECT_EQ(t["obj"]["obj_nube_meridian"], -99);
}

TEST_F(VeldraCli, EllipsoidAndMappingAreNullWhileNeverSet) {
    const json t = tables({file("PUNKTSIGNATUR 1 2 0 0 1\n")});
    EXPECT_TRUE(t["obj"]["obj_bezu_elli"].is_null());
    EXPECT_TRUE(t["obj"]["obj_bezu_abbi"].is_null());
    EXPECT_EQ(t["obj"]["obj_bezu"], -99);
    EXPECT_EQ(t["netz_anzahl"], 0);
}

TEST_F(VeldraCli, ObjOptionsChangeWhatIsRead) {
    const std::string path = file(small_network);
    const json heights = tables({path, "--obj", "obj_beob=2", "--obj", "obj_puwe=7"});
    EXPECT_EQ(heights["obj"]["obj_wert_lage"], 3);
    EXPECT_EQ(heights["lin"][0]["lin_typ_seite"], 1);
    EXPECT_EQ(heights["pu"][1]["pu_wert_lage"], -3);
    const json test = tables({path, "--obj", "obj_test_beob=1"});
    EXPECT_EQ(test["obj"]["obj_test_beob"], -1);
}

TEST_F(VeldraCli, NetzteilTakesThePartAtOnce) {
    const json t = tables({file(small_network), "--netzteil", "Nord"});
    EXPECT_EQ(t["netz_aktuell"], 2);
    EXPECT_EQ(t["plot"]["plot_massstab"], 1.0 / 500);
    EXPECT_EQ(t["pu_anzahl"], 1);
}

TEST_F(VeldraCli, InputIsNeverModified) {
    const std::string path = file(small_network);
    const std::string before = file_bytes(path);
    EXPECT_EQ(run({"bild", path, "-o", folder.path("p.png")}).exit_code, 0);
    EXPECT_EQ(run({"normalform", path, "-o", folder.path("n.dat")}).exit_code, 0);
    EXPECT_EQ(run({"normalform", path, "-o", path}).exit_code, 2);
    EXPECT_EQ(run({"bild", path, "-o", path}).exit_code, 2);
    EXPECT_EQ(file_bytes(path), before);
    EXPECT_FALSE(std::filesystem::exists(path + "_1"));
}

TEST_F(VeldraCli, OperationsOfAnObservationFollowTheOrder) {
    const auto ops = operations({file(small_network), "--ausschnitt", "950,1950,1150,2050",
                                 "--breite", "2000", "--hoehe", "1000"});
    // Districts set their pen although there are none; then the two halves of the direction.
    // 200 m over 30000 twips: a signature of 60 twips has a radius of 0.4 m.
    const std::vector<json> expected{
        json::parse(R"(["DrawStyle",0])"),          json::parse(R"(["DrawWidth",1])"),
        json::parse(R"(["ForeColor",128])"),        json::parse(R"(["DrawStyle",0])"),
        json::parse(R"(["DrawWidth",1])"),          json::parse(R"(["ForeColor",0])"),
        json::parse(R"(["Line",50.4,50,100,50])"),  json::parse(R"(["DrawStyle",2])"),
        json::parse(R"(["DrawWidth",1])"),          json::parse(R"(["ForeColor",0])"),
        json::parse(R"(["Line",100,50,149.6,50])"), json::parse(R"(["DrawStyle",0])"),
        json::parse(R"(["DrawStyle",0])"),          json::parse(R"(["DrawWidth",1])"),
        json::parse(R"(["ForeColor",0])"),          json::parse(R"(["FillStyle",0])"),
        json::parse(R"(["FillColor",16744192])"),   json::parse(R"(["Circle",50,50,0.4])"),
        json::parse(R"(["FillStyle",0])"),          json::parse(R"(["FillColor",4129023])"),
        json::parse(R"(["Circle",150,50,0.4])")};
    std::vector<json> drawn;
    for (const json& op : ops) {
        if (op[0] == "Label") {
            break;
        }
        drawn.push_back(op);
    }
    // The layer of the labels begins with the pen of the small dots.
    ASSERT_GE(drawn.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(drawn[i], expected[i]) << i;
    }
    const json& label = ops.back();
    EXPECT_EQ(label[0], "Label");
    EXPECT_EQ(label[1], "lbl_pubez");
    EXPECT_EQ(label[2], 2);
    EXPECT_EQ(label[3], "B");
    EXPECT_EQ(label[5], 50.0);  // the standard offset north is 0
    EXPECT_GT(label[4], 150.0);
}

TEST_F(VeldraCli, PictureIsTheSameForTheSameInput) {
    const std::string path = file(small_network);
    ASSERT_EQ(run({"bild", path, "-o", folder.path("a.png")}).exit_code, 0);
    ASSERT_EQ(run({"bild", path, "-o", folder.path("b.png")}).exit_code, 0);
    EXPECT_THAT(file_bytes(folder.path("a.png")), StartsWith("\x89PNG"));
    EXPECT_EQ(file_bytes(folder.path("a.png")), file_bytes(folder.path("b.png")));
    ASSERT_EQ(run({"bild", path, "-o", folder.path("a.svg"), "--netzteil", "Nord"}).exit_code, 0);
    EXPECT_THAT(file_bytes(folder.path("a.svg")), HasSubstr("<svg"));
}

TEST_F(VeldraCli, NormalFormShowsThePartsNamed) {
    const std::string path = file(small_network);
    const std::string out = folder.path("n.dat");
    ASSERT_EQ(run({"normalform", path, "-o", out, "--netzteil", "Nord"}).exit_code, 0);
    const std::string text = to_utf8(file_bytes(out));
    EXPECT_THAT(text, StartsWith("VerfahrenLegende Übung\r\nMaßstabVektoren      2."));
    // Part 1 had no scale: it now has the one found for it, and its own selection.
    EXPECT_THAT(text, HasSubstr("\r\nNETZTEIL Süd\r\nMaßstabGrundriss "));
    EXPECT_THAT(text, HasSubstr("\r\nObjekte 1 1 0 0 0 0 0 1 0 1 0 1 1 -99 0\r\n"));
    // The part Nord was shown too: a Gauß-Krüger value in strip 0, so DHDN.
    EXPECT_THAT(text, HasSubstr("Objekte 1 1 0 0 1 1 3 1 0 1 1 1 1 "));
    EXPECT_THAT(text, HasSubstr("Punktsignatur         5.000        6.000 1 3 1 \r\n"));
    const std::string again = folder.path("n2.dat");
    ASSERT_EQ(run({"normalform", out, "-o", again, "--netzteil", "Nord"}).exit_code, 0);
    EXPECT_EQ(file_bytes(again), file_bytes(out));
}

TEST_F(VeldraCli, NormalFormOfAFileWithoutTitleNamesTheFile) {
    const std::string path = file("PUNKTSIGNATUR 1 2 0 0 1\n");
    const std::string out = folder.path("n.dat");
    ASSERT_EQ(run({"normalform", path, "-o", out}).exit_code, 0);
    EXPECT_THAT(file_bytes(out), StartsWith("VerfahrenLegende " + path + "\r\n"));
}

TEST_F(VeldraCli, MissingFileIsNamedInOneLine) {
    const ProgramRun result = run({"tabellen", folder.path("fehlt.dat")});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(result.err, HasSubstr("fehlt.dat"));
    EXPECT_THAT(result.err, HasSubstr("nicht vorhanden"));
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1);
}

TEST_F(VeldraCli, OverflowIsNamedInOneLine) {
    const ProgramRun result = run({"tabellen", file("\nPUNKTSIGNATUR 1 2 0 70000 1\n")});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(result.err, HasSubstr("Laufzeitfehler '6': Überlauf"));
    EXPECT_THAT(result.err, HasSubstr("ve.dat"));
    EXPECT_THAT(result.err, HasSubstr("Zeile: 2"));
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1);
}

TEST_F(VeldraCli, UnknownPartIsAFailure) {
    const ProgramRun result = run({"tabellen", file(small_network), "--netzteil", "West"});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(result.err, HasSubstr("West"));
}

TEST_F(VeldraCli, FailedWriteIsReported) {
    const std::string path = file(small_network);
    const ProgramRun missing = run({"bild", path, "-o", folder.path("nirgends/p.png")});
    EXPECT_EQ(missing.exit_code, 1);
    EXPECT_THAT(missing.err, HasSubstr("nirgends/p.png"));
    std::filesystem::create_directory(folder.path("ordner.dat"));
    EXPECT_EQ(run({"normalform", path, "-o", folder.path("ordner.dat")}).exit_code, 1);
}

TEST_F(VeldraCli, WrongUsageIsTwo) {
    const std::string path = file(small_network);
    const std::string png = folder.path("p.png");
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{},
                                               {"unsinn"},
                                               {"tabellen"},
                                               {"bild", path},
                                               {"bild", path, "-o", folder.path("p.gif")},
                                               {"bild", path, "-o", png, "--breite", "0"},
                                               {"bild", path, "-o", png, "--breite", "x"},
                                               {"bild", path, "-o", png, "--ausschnitt", "1,2,3"},
                                               {"bild", path, "-o", png, "--ausschnitt", "3,2,1,4"},
                                               {"tabellen", path, "--obj", "obj_beob=4"},
                                               {"tabellen", path, "--obj", "obj_unsinn=1"},
                                               {"tabellen", path, "--obj", "obj_beob"},
                                               {"tabellen", path, "--obj", "obj_beob=1x"}}) {
        const ProgramRun result = run(arguments);
        EXPECT_EQ(result.exit_code, 2) << ::testing::PrintToString(arguments);
        EXPECT_EQ(result.out, "");
        EXPECT_NE(result.err, "");
    }
    EXPECT_FALSE(std::filesystem::exists(png));
}

TEST_F(VeldraCli, UsageFaultsAreTold) {
    EXPECT_THAT(run({}).err, HasSubstr("es fehlt ein Befehl"));
    EXPECT_THAT(run({"bild", "x.dat"}).err, HasSubstr("es fehlt -o"));
    EXPECT_THAT(run({"tabellen", "x.dat", "y.dat"}).err, HasSubstr("unbekannte Angabe y.dat"));
    EXPECT_THAT(run({"bild", "x.dat", "-o", "p.png", "--breite", "1"}).err,
                HasSubstr("unzulässiger Wert für --breite"));
}

TEST_F(VeldraCli, PartWithAnEmptyNameCanBeChosen) {
    const json t =
        tables({file("NETZTEIL B\nPUNKTSIGNATUR 1 2 0 0 1\nNETZTEIL \nx\n"), "--netzteil", ""});
    EXPECT_EQ(t["netz_aktuell"], 2);
}

TEST_F(VeldraCli, HelpAndVersionAreGermanAndDone) {
    const ProgramRun help = run({"--help"});
    EXPECT_EQ(help.exit_code, 0);
    for (const char* command : {"tabellen", "bild", "operationen", "normalform", "Aufruf"}) {
        EXPECT_THAT(help.out, HasSubstr(command));
    }
    for (const char* english : {"Usage", "Options", "Subcommands", "Positionals"}) {
        EXPECT_THAT(help.out + run({"bild", "--help"}).out, Not(HasSubstr(english)));
    }
    EXPECT_THAT(run({"bild", "--help"}).out, HasSubstr("--ausschnitt"));
    const ProgramRun version = run({"--version"});
    EXPECT_EQ(version.exit_code, 0);
    EXPECT_THAT(version.out, StartsWith("VELDRA "));
}

TEST_F(VeldraCli, EmptyPartIsANoteAndNoFailure) {
    const ProgramRun result = run({"bild", file("NETZTEIL Leer\nx\n"), "-o", folder.path("p.png")});
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_THAT(result.err, HasSubstr("Netzteil Leer enthält keine darzustellenden Objekte"));
    EXPECT_TRUE(std::filesystem::exists(folder.path("p.png")));
}

/// From 1:600 on the sheets between zero point and extents cannot be counted in 16 bits.
TEST_F(VeldraCli, EmptyPartWithAFarZeroPointIsANoteAndNoFailure) {
    const std::string path = file("NETZTEIL Leer\nMAßSTABGRUNDRISS 500 3500000 5600000 9\nx\n");
    const std::string note = "Netzteil Leer enthält keine darzustellenden Objekte";
    const ProgramRun picture = run({"bild", path, "-o", folder.path("p.png")});
    EXPECT_EQ(picture.exit_code, 0);
    EXPECT_THAT(picture.err, HasSubstr(note));
    const ProgramRun drawn = run({"operationen", path});
    EXPECT_EQ(drawn.exit_code, 0);
    EXPECT_THAT(drawn.err, HasSubstr(note));
    const ProgramRun normal = run({"normalform", path, "-o", folder.path("n.dat")});
    EXPECT_EQ(normal.exit_code, 0) << normal.err;
    // Portrait, margin on the left, legend place 4: 1 + 4 * 2 + 16 * 4.
    EXPECT_THAT(
        to_utf8(file_bytes(folder.path("n.dat"))),
        HasSubstr("NETZTEIL Leer\r\nMaßstabGrundriss 500    3500000.000    5600000.000    73\r\n"));
}

TEST_F(VeldraCli, ProfileChangesTheLook) {
    const std::string path = file(small_network);
    const std::string profile = folder.file("p.ini", "[BEZPUN]\r\nnubcolor=255\r\n");
    const auto ops = operations({path, "--profil", profile});
    EXPECT_EQ(ops[2], json::parse(R"(["ForeColor",255])"));
    EXPECT_EQ(run({"operationen", path, "--profil", folder.path("fehlt.ini")}).exit_code, 1);
}

/// Every sample keeps its normal form when it is written again, whatever part was shown.
TEST_F(VeldraCli, NormalFormOfEverySampleIsStable) {
    int samples = 0;
    for (const auto& entry : std::filesystem::directory_iterator(SAMPLES_DIR)) {
        const std::string name = entry.path().filename().string();
        if (!name.starts_with("ve_") || entry.path().extension() != ".dat") {
            continue;
        }
        ++samples;
        const std::string once = folder.path("once.dat");
        const std::string twice = folder.path("twice.dat");
        const json t = tables({entry.path().string()});
        std::vector<std::string> parts;
        for (const json& row : t["netz"]) {
            parts.insert(parts.end(), {"--netzteil", row["netz_name"].get<std::string>()});
        }
        std::vector<std::string> first{"normalform", entry.path().string(), "-o", once};
        std::vector<std::string> second{"normalform", once, "-o", twice};
        first.insert(first.end(), parts.begin(), parts.end());
        second.insert(second.end(), parts.begin(), parts.end());
        ASSERT_EQ(run(first).exit_code, 0) << name;
        ASSERT_EQ(run(second).exit_code, 0) << name;
        if (parts.empty()) {
            // Without a title of its own the file is named by its path.
            std::string head = file_bytes(once);
            head.erase(0, head.find("\r\n"));
            std::string other = file_bytes(twice);
            other.erase(0, other.find("\r\n"));
            EXPECT_EQ(head, other) << name;
        } else {
            EXPECT_EQ(file_bytes(once), file_bytes(twice)) << name;
        }
    }
    EXPECT_GE(samples, 4);
}

}  // namespace
}  // namespace veldra
