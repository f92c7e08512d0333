// Plots through the device for documents, read back and rendered.

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <random>
#include <sstream>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>

#include "commands/plot_job.h"
#include "fake_measurer.h"
#include "network_builder.h"
#include "pdf/pdf_printer.h"
#include "plot/application_printer.h"
#include "plot/printer_adapters.h"
#include "recording_interface.h"
#include "temp_file.h"

namespace veldra {
namespace {

constexpr double millimetres_per_twip = 25.4 / 1440;
constexpr std::int16_t user_defined = 256;

/// A session with a network in memory and the device for documents, 1:1000 with the zero point
/// (1000, 2000).
class Plotter {
 public:
    explicit Plotter(const std::string& path, double resolution = 300)
        : printer([path] { return std::optional(path); }, resolution) {
        test::show_nothing(session);
        take_printer(session, &printer);
        PlotSettings& plot = session.plot;
        plot.plot_massstab = 0.001;
        plot.plot_ausrichtung = 1;
        plot.plot_heftrand = 2;
        plot.plot_legendenlage = 0;
        plot.plot_null_rechts = 1000;
        plot.plot_null_hoch = 2000;
        plot.plot_blatt_auto = table_false;
    }

    /// Paper with this net area, in whole twips; 25.5 mm and 22.5 mm go off for margins.
    void set_net_area(double width, double height) {
        printer.set_Orientation(1);
        printer.set_PaperSize(user_defined);
        const auto twips = [](double millimetres) {
            return static_cast<float>(std::round(millimetres / millimetres_per_twip));
        };
        printer.set_Width(twips(width + 25.5));
        printer.set_Height(twips(height + 22.5));
    }

    bool plot(std::int16_t columns, std::int16_t rows) {
        session.plot.plot_blatt_rechts = columns;
        session.plot.plot_blatt_hoch = rows;
        return plotten_aktuell(session, {printer.measurer(), ui, [] {}, &printer});
    }

    Session session;
    test::RecordingInterface ui;
    PdfPrinter printer;
};

/// A place on the paper, millimetres from its lower left corner.
struct PaperPlace {
    double x = 0;
    double y = 0;
};

/// Where each page of a document shows circles.
std::vector<std::vector<PaperPlace>> circles_of(const std::string& path) {
    QPDF document;
    document.processFile(path.c_str());
    std::vector<std::vector<PaperPlace>> pages;
    for (QPDFPageObjectHelper& page : QPDFPageDocumentHelper(document).getAllPages()) {
        std::string content;
        for (QPDFObjectHandle piece : page.getPageContents()) {
            const auto data = piece.getStreamData();
            content.append(reinterpret_cast<const char*>(data->getBuffer()), data->getSize());
        }
        std::vector<PaperPlace>& places = pages.emplace_back();
        std::istringstream lines(content);
        for (std::string line; std::getline(lines, line);) {
            double x = 0;
            double y = 0;
            if (std::sscanf(line.c_str(), "q 1 0 0 1 %lf %lf cm/C", &x, &y) == 2) {
                places.push_back({x / 1000, y / 1000});
            }
        }
    }
    return pages;
}

struct Paper {
    double net_width;
    double net_height;
    std::int16_t columns;
    std::int16_t rows;
    double resolution;
};

class TrueScaleTest : public testing::TestWithParam<Paper> {
 protected:
    testing_support::TempFolder folder;
};

TEST_P(TrueScaleTest, PointsStandWhereTheScalePutsThem) {
    const Paper& paper = GetParam();
    const std::string path = folder.path("plot.pdf");
    Plotter plotter(path, paper.resolution);
    Session& session = plotter.session;
    session.obj.obj_pusi = 1;
    std::mt19937 random(3);
    // 1000 to 1 in both axes, eight digits and centimetres.
    session.plot.plot_null_rechts = 32361000;
    session.plot.plot_null_hoch = 5609000;
    std::uniform_real_distribution<double> rechts(0, paper.columns * paper.net_width);
    std::uniform_real_distribution<double> hoch(0, paper.rows * paper.net_height);
    for (int i = 0; i < 200; ++i) {
        test::add_point(session, 32361000 + rechts(random), 5609000 + hoch(random)).pu_signatur = 1;
    }
    plotter.set_net_area(paper.net_width, paper.net_height);
    ASSERT_TRUE(plotter.plot(paper.columns, paper.rows));
    const auto pages = circles_of(path);
    ASSERT_EQ(pages.size(),
              static_cast<std::size_t>(paper.columns) * static_cast<std::size_t>(paper.rows));
    const double sheet_width = session.sheet.papier_breite * 1000;
    const double sheet_height = session.sheet.papier_hoehe * 1000;
    EXPECT_NEAR(sheet_width, paper.net_width, millimetres_per_twip);
    EXPECT_NEAR(sheet_height, paper.net_height, millimetres_per_twip);
    int drawn = 0;
    for (int column = 0; column < paper.columns; ++column) {
        for (int row = 0; row < paper.rows; ++row) {
            const auto& circles = pages[static_cast<std::size_t>(column * paper.rows + row)];
            std::size_t next = 0;
            for (std::int32_t i = 1; i <= session.pu.count(); ++i) {
                // A metre is a millimetre. Signatures of class 0 have a radius of 2 mm.
                const double x = session.pu[i].pu_rechts - 32361000 - column * sheet_width;
                const double y = session.pu[i].pu_hoch - 5609000 - row * sheet_height;
                if (x < -2 || x > sheet_width + 2 || y < -2 || y > sheet_height + 2) {
                    continue;
                }
                ASSERT_LT(next, circles.size());
                // 5 mm that cannot be printed on, 15 mm to bind and 12 mm of foot.
                EXPECT_NEAR(circles[next].x, 20 + x, 0.01);
                EXPECT_NEAR(circles[next].y, 17 + y, 0.01);
                ++next;
                ++drawn;
            }
            EXPECT_EQ(next, circles.size());
        }
    }
    EXPECT_GE(drawn, 200);
}

INSTANTIATE_TEST_SUITE_P(Papers, TrueScaleTest,
                         testing::Values(Paper{184.5, 274.5, 3, 2, 300},  // A4
                                         Paper{184.5, 274.5, 3, 2, 1200},
                                         Paper{815.5, 1166.5, 1, 1, 300},  // A0
                                         Paper{815.5, 1166.5, 2, 1, 1200},
                                         Paper{884.5, 4977.5, 1, 1, 300},  // a roll of 5 m
                                         Paper{884.5, 4977.5, 2, 1, 1200}));

/// A rendered page, 0 black to 255 white.
struct Picture {
    int width = 0;
    int height = 0;
    std::string pixels;

    [[nodiscard]] int at(int x, int y) const {
        return x < 0 || y < 0 || x >= width || y >= height
                   ? 255
                   : static_cast<unsigned char>(
                         pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                                static_cast<std::size_t>(x)]);
    }
    /// Copies a rectangle of `from` whose upper left corner is at (from_x, from_y).
    void paste(const Picture& from, int from_x, int from_y, int x, int y, int across, int down) {
        const auto place = [](const Picture& picture, int left, int top) {
            return static_cast<std::size_t>(top) * static_cast<std::size_t>(picture.width) +
                   static_cast<std::size_t>(left);
        };
        for (int line = 0; line < down; ++line) {
            pixels.replace(place(*this, x, y + line), static_cast<std::size_t>(across), from.pixels,
                           place(from, from_x, from_y + line), static_cast<std::size_t>(across));
        }
    }
};

Picture white(int width, int height) {
    return {
        width, height,
        std::string(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), '\xff')};
}

Picture rendered(const std::string& path, int page) {
    const std::string root = path + "-" + std::to_string(page);
    const std::string command =
        fmt::format("pdftoppm -gray -r 300 -f {0} -l {0} -singlefile {1} {2}", page, path, root);
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
    std::ifstream in(root + ".pgm", std::ios::binary);
    std::string magic;
    int depth = 0;
    Picture picture;
    in >> magic >> picture.width >> picture.height >> depth;
    in.get();
    picture.pixels.assign(std::istreambuf_iterator<char>(in), {});
    EXPECT_EQ(magic, "P5");
    EXPECT_EQ(picture.pixels.size(),
              static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height));
    return picture;
}

/// Sheets of 1050 x 1500 pixels of net area at 300 dots per inch, which begins 20 mm from the left
/// and 5.5 mm from the top.
constexpr int net_width = 1050;
constexpr int net_height = 1500;
constexpr int net_left = 236;
constexpr int net_top = 65;
constexpr double millimetres_per_pixel = 25.4 / 300;

class JoinedSheetsTest : public testing::Test {
 protected:
    static constexpr std::int16_t columns = 3;
    static constexpr std::int16_t rows = 2;

    /// All kinds of objects over the whole ground of the sheets, many of them across edges.
    static void fill(Session& session) {
        std::mt19937 random(11);
        std::uniform_real_distribution<double> rechts(1000, 1000 + columns * 88.9);
        std::uniform_real_distribution<double> hoch(2000, 2000 + rows * 127.0);
        for (int i = 0; i < 60; ++i) {
            LineRow& row = test::add_line(
                session, {rechts(random), hoch(random), rechts(random), hoch(random)});
            row.lin_typ_hin = i % 2 == 0 ? 11 : 0;
            row.lin_typ_seite = static_cast<std::int16_t>(i % 4 == 3 ? 10 : i % 4);
            row.lin_typ_rueck = i % 3 == 0 ? 11 : 0;
            if (row.lin_typ_seite == 10) {
                row.lin_fernziel.set("Kirchturm " + std::to_string(i));
            }
            PointRow& point = test::add_point(session, rechts(random), hoch(random));
            point.pu_bez = "Punkt " + std::to_string(i);
            point.pu_signatur = i % 2 == 0 ? 1 : -1;
            point.pu_art_lage = static_cast<std::int16_t>(i % 3);
            point.pu_wert_lage = -3;
            point.pu_wert_rechts = 0.5 + i % 5;
            point.pu_wert_hoch = 0.3 + i % 3;
            point.pu_wert_dh = i * 7;
        }
        test::end_points(session);
        session.obj.obj_beob = 1;
        session.obj.obj_pusi = 1;
        session.obj.obj_pube = 1;
        session.obj.obj_wert_lage = 3;
        session.vektor_massstab[3] = 0.5;
        session.settings.vektNdrw[3] = 2;
    }

    Picture plotted(const std::string& name, std::int16_t across, std::int16_t up, int page) {
        const std::string path = folder.path(name);
        if (page == 1) {
            Plotter plotter(path);
            fill(plotter.session);
            const int columns_a_sheet = columns / across;
            const int rows_a_sheet = rows / up;
            plotter.set_net_area(columns_a_sheet * net_width * millimetres_per_pixel,
                                 rows_a_sheet * net_height * millimetres_per_pixel);
            EXPECT_TRUE(plotter.plot(across, up));
        }
        return rendered(path, page);
    }

    /// The net areas of all sheets side by side.
    Picture joined() {
        Picture whole = white(columns * net_width, rows * net_height);
        int page = 0;
        for (int column = 0; column < columns; ++column) {
            for (int row = rows - 1; row >= 0; --row) {
                whole.paste(plotted("sheets.pdf", columns, rows, ++page), net_left, net_top,
                            column * net_width, row * net_height, net_width, net_height);
            }
        }
        return whole;
    }

    Picture one_sheet() {
        Picture net = white(columns * net_width, rows * net_height);
        net.paste(plotted("one.pdf", 1, 1, 1), net_left, net_top, 0, 0, net.width, net.height);
        return net;
    }

    /// Corner marks stand on the edges, 5 mm to either side of the corners.
    static bool near_corner_mark(int x, int y) {
        const auto from_edge = [](int place, int sheet) {
            const int rest = place % sheet;
            return std::min(rest, sheet - rest);
        };
        constexpr int mark = 62;
        constexpr int pen = 3;
        const int across = from_edge(x, net_width);
        const int up = from_edge(y, net_height);
        return (across <= pen && up <= mark) || (up <= pen && across <= mark);
    }

    /// Something darker than `limit` at a place or next to it.
    static bool has_darker_near(const Picture& picture, int x, int y, int limit) {
        for (int dy = -1; dy <= 1; ++dy) {
            for (int dx = -1; dx <= 1; ++dx) {
                if (picture.at(x + dx, y + dy) < limit) {
                    return true;
                }
            }
        }
        return false;
    }

    /// Dark pixels of one picture without anything dark within a pixel of them in the other.
    static int missing(const Picture& from, const Picture& in) {
        constexpr int dark = 128;
        constexpr int not_white = 224;
        int count = 0;
        const auto* pixels = reinterpret_cast<const unsigned char*>(from.pixels.data());
        for (std::size_t i = 0; i < from.pixels.size(); ++i) {
            if (pixels[i] >= dark) {
                continue;
            }
            const auto x = static_cast<int>(i % static_cast<std::size_t>(from.width));
            const auto y = static_cast<int>(i / static_cast<std::size_t>(from.width));
            count += near_corner_mark(x, y) || has_darker_near(in, x, y, not_white) ? 0 : 1;
        }
        return count;
    }

    testing_support::TempFolder folder;
};

TEST_F(JoinedSheetsTest, EqualTheOneSheetToAPixel) {
    const Picture sheets = joined();
    const Picture whole = one_sheet();
    int dark = 0;
    for (const char pixel : whole.pixels) {
        dark += static_cast<unsigned char>(pixel) < 128 ? 1 : 0;
    }
    EXPECT_GT(dark, 50000);
    EXPECT_EQ(missing(whole, sheets), 0);
    EXPECT_EQ(missing(sheets, whole), 0);
}

}  // namespace
}  // namespace veldra
