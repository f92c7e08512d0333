#include <QXmlStreamReader>
#include <filesystem>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "program_run.h"
#include "text/codepage.h"

namespace veldra {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;
using ::testing::Not;
using testing_support::file_bytes;
using testing_support::ProgramRun;
using testing_support::TempFolder;

/// Colours the terminal, rings, moves the cursor, deletes; with what Windows-1252 leaves undefined,
/// which becomes U+0090 and U+009D, the beginnings of two kinds of commands to a terminal.
const std::string hostile = "\x1b[31mRot\x07\x08\x7f\x90\x9d ok";

class ForeignTexts : public ::testing::Test {
 protected:
    /// A file whose names cannot be trusted, with an empty part.
    std::string file() {
        return folder.file("ve.dat", "VERFAHRENLEGENDE T" + hostile + "\nNETZTEIL N" + hostile +
                                         "\nOBJEKTE 1 1 0 0 0 0 0 1 0 1 0 1 1\n"
                                         "PUNKTSIGNATUR 1000 2000 0 0 1 \"P" +
                                         hostile +
                                         "\"\nPUNKTSIGNATUR 1100 2000 0 0 1 \"<b>&\"\n"
                                         "NETZTEIL L" +
                                         hostile + "\n");
    }
    ProgramRun run(const std::vector<std::string>& arguments) {
        return testing_support::run_veldra(folder, arguments);
    }
    /// Control characters but line ends, in UTF-8.
    static int controls(const std::string& text) {
        int count = 0;
        for (std::size_t i = 0; i < text.size(); ++i) {
            const auto byte = static_cast<unsigned char>(text[i]);
            const auto before = static_cast<unsigned char>(i > 0 ? text[i - 1] : ' ');
            const bool upper = before == 0xC2 && byte >= 0x80 && byte <= 0x9F;
            const bool lower = byte < 0x20 && byte != '\n' && byte != '\r';
            count += upper || lower || byte == 0x7F ? 1 : 0;
        }
        return count;
    }

    TempFolder folder;
};

TEST_F(ForeignTexts, MessagesHoldNoControlCharacters) {
    const ProgramRun plot = run({"plot", file(), "--alle", "-o", folder.path("p.pdf")});
    EXPECT_EQ(plot.exit_code, 0);
    EXPECT_THAT(plot.err, HasSubstr("Netzteil \"L?[31mRot????? ok\" enthält keine"));
    EXPECT_EQ(controls(plot.err), 0);
    const ProgramRun picture =
        run({"bild", file(), "--netzteil", to_utf8("L" + hostile), "-o", folder.path("p.png")});
    EXPECT_EQ(picture.exit_code, 0);
    EXPECT_THAT(picture.err, HasSubstr("L?[31mRot????? ok"));
    EXPECT_EQ(controls(picture.err), 0);
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"tabellen", folder.path("\x1b[31m.dat")},
                                               {"tabellen", file(), "--netzteil", "\x1b[2J"},
                                               {"\x1b[2J"},
                                               {"tabellen", file(), "\x1b[2J"},
                                               {"bild", file(), "-o", "\x1b[2J.gif"}}) {
        const ProgramRun result = run(arguments);
        EXPECT_NE(result.exit_code, 0);
        EXPECT_EQ(controls(result.err), 0) << result.err;
        EXPECT_THAT(result.err, HasSubstr("?["));
    }
}

TEST_F(ForeignTexts, JsonSpellsControlCharactersAsEscapes) {
    const ProgramRun tables = run({"tabellen", file()});
    EXPECT_EQ(controls(tables.out), 0);
    const json t = json::parse(tables.out);
    EXPECT_EQ(t["netz"][0]["netz_name"], to_utf8("N" + hostile));
    EXPECT_EQ(t["pu"][0]["pu_bez"], to_utf8("P" + hostile));
    const ProgramRun operations = run({"operationen", file()});
    EXPECT_EQ(controls(operations.out), 0);
    EXPECT_THAT(operations.out, HasSubstr("\\u001b[31mRot\\u0007\\b\\u007f\\u0090\\u009d ok"));
}

TEST_F(ForeignTexts, SvgIsXmlWithoutControlCharacters) {
    const std::string svg = folder.path("p.svg");
    ASSERT_EQ(run({"bild", file(), "-o", svg}).exit_code, 0);
    const std::string bytes = file_bytes(svg);
    EXPECT_EQ(controls(bytes), 0);
    EXPECT_THAT(bytes, HasSubstr("&lt;b&gt;&amp;"));
    QXmlStreamReader reader(QByteArray::fromStdString(bytes));
    QString texts;
    while (!reader.atEnd()) {
        reader.readNext();
        texts += reader.isCharacters() ? reader.text().toString() : QString();
    }
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    EXPECT_THAT(texts.toStdString(), HasSubstr("[31mRot"));
}

TEST_F(ForeignTexts, UnknownCommandIsAnsweredByTheNearest) {
    const std::vector<std::pair<std::string, std::string>> typed{
        {"tabelen", "tabellen"},     {"tabellne", "tabellen"},
        {"Tabellen", "tabellen"},    {"plto", "plot"},
        {"plott", "plot"},           {"bidl", "bild"},
        {"norm", "normalform"},      {"koordinate", "koordinaten"},
        {"grenze", "grenzen"},       {"bezirke", "bezirk"},
        {"operation", "operationen"}};
    for (const auto& [word, command] : typed) {
        const ProgramRun result = run({word, "x.dat"});
        EXPECT_EQ(result.exit_code, 2);
        EXPECT_EQ(result.err, "veldra-cli: unbekannter Befehl " + word + "; gemeint ist wohl " +
                                  command + "; Hilfe mit --help\n");
    }
    for (const std::string word : {"unsinn", "x", "drucken"}) {
        EXPECT_EQ(run({word}).err,
                  "veldra-cli: unbekannter Befehl " + word + "; Hilfe mit --help\n");
    }
    EXPECT_EQ(run({"--unsinn"}).err, "veldra-cli: unbekannte Angabe --unsinn; Hilfe mit --help\n");
    EXPECT_THAT(run({"tabellen", "x.dat", "plott"}).err, HasSubstr("unbekannte Angabe plott;"));
}

/// Every way that a path can come into a message twice: by the device, by a link, by a folder.
TEST_F(ForeignTexts, MessagesNameAPathOnce) {
    const auto times = [](const std::string& text, const std::string& part) {
        int count = 0;
        for (std::size_t at = text.find(part); at != std::string::npos;
             at = text.find(part, at + 1)) {
            ++count;
        }
        return count;
    };
    const std::string good =
        folder.file("gut.dat", "PUNKTSIGNATUR 1000 2000 0 0 1\nPUNKTSIGNATUR 1100 2100 0 0 1\n");
    std::filesystem::create_directory(folder.path("ordner.pdf"));
    std::filesystem::create_directory(folder.path("ordner.png"));
    std::filesystem::create_symlink(folder.path("ordner.png"), folder.path("link.png"));
    (void)folder.file("datei", "x");
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {"tabellen", folder.path("fehlt")},
             {"plot", folder.path("fehlt"), "-o", folder.path("p.pdf")},
             {"plot", good, "-o", folder.path("fehlt/p.pdf")},
             {"plot", good, "-o", folder.path("datei/p.pdf")},
             {"plot", good, good, "-o", folder.path("datei")},
             {"plot", good, "--protokoll", folder.path("fehlt/p.json"), "-o", folder.path("q.pdf")},
             {"bild", good, "-o", folder.path("ordner.png")},
             {"bild", good, "-o", folder.path("link.png")},
             {"bild", good, "-o", folder.path("fehlt/p.png")},
             {"normalform", good, "-o", folder.path("fehlt/n.dat")},
             {"grenzen", folder.path("fehlt")},
             {"grenzen", good, "-o", folder.path("fehlt/g")}}) {
        const ProgramRun result = run(arguments);
        EXPECT_NE(result.exit_code, 0);
        EXPECT_EQ(times(result.err, folder.path()), 1) << result.err;
    }
}

}  // namespace
}  // namespace veldra
