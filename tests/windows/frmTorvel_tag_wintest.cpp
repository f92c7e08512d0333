// A day at the program: open, choose, change parts, move labels, zoom, undo, push, plot mode, move
// sheets, leave, open again.
#include <QComboBox>
#include <QListWidget>
#include <QRegularExpression>
#include <cmath>

#include "dialog_driver.h"
#include "pdf/pdf_printer.h"
#include "torvel_fixture.h"
#include "windows/forms/frmObjekte.h"

using namespace veldra;
using test::text;
using veldra_test::control;

namespace {

/// The dialog of a desktop where nobody is asked.
class NoDialog final : public PrintDialog {
 public:
    std::int32_t ShowPrinter(std::int32_t flags) override { return flags; }
};

/// Two parts, each with two corner points without labels that settle its extents, and points with
/// labels in between. "Nord" is plotted 1:1000, the legend at the lower left; "Süd" 1:500.
constexpr const char* network =
    "VERFAHRENLEGENDE Netz Tageslauf\r\n"
    "NETZTEIL Nord\r\n"
    "MA\xDFSTABGRUNDRISS 1000 3499990.0 5599990.0 41\r\n"
    "PUNKTSIGNATUR 3500000.000 5600000.000 0 0 1\r\n"
    "PUNKTSIGNATUR 3500200.000 5600100.000 0 0 1\r\n"
    "PUNKTSIGNATUR 3500060.000 5600040.000 0 0 0 \"101\"\r\n"
    "PUNKTSIGNATUR 3500100.000 5600060.000 0 0 0 \"102\"\r\n"
    "RICHTUNG 3500060.000 5600040.000 3500100.000 5600060.000 0.3 0.4 0.5\r\n"
    "KOMMENTAR bleibt stehen\r\n"
    "NETZTEIL S\xFC"
    "d\r\n"
    "MA\xDFSTABGRUNDRISS 500 3500990.0 5598990.0 73\r\n"
    "PUNKTSIGNATUR 3501000.000 5599000.000 0 0 1\r\n"
    "PUNKTSIGNATUR 3501080.000 5599050.000 0 0 1\r\n"
    "PUNKTSIGNATUR 3501030.000 5599020.000 0 0 0 \"201\"\r\n"
    "H\xD6HENUNTERSCHIED 3501000.000 5599000.000 3501030.000 5599020.000 0.3\r\n";

/// What the picture shows, worked out from the ground that is fitted into it.
struct ExpectedView {
    double left = 0;
    double top = 0;
    double pixel = 1;  ///< metres
};

/// Fits a rectangle of ground into a picture: the tighter axis fills it, the other is centred.
ExpectedView fitted(double rw1, double hw1, double rw2, double hw2, const QSize& picture) {
    const double pixel = std::max((rw2 - rw1) / picture.width(), (hw2 - hw1) / picture.height());
    return {(rw1 + rw2 - picture.width() * pixel) / 2, (hw1 + hw2 + picture.height() * pixel) / 2,
            pixel};
}

/// A whole part: its corner points, their radius, a centimetre, and 5 % of all that on each side.
ExpectedView whole_part(double rw1, double hw1, double rw2, double hw2, double radius,
                        const QSize& picture) {
    const double edge = radius + 0.01;
    const double dr = (rw2 - rw1 + 2 * edge) / 20;
    const double dh = (hw2 - hw1 + 2 * edge) / 20;
    return fitted(rw1 - edge - dr, hw1 - edge - dh, rw2 + edge + dr, hw2 + edge + dh, picture);
}

/// A line of labels: Arial of 10 points, whose lines are (1854 + 434) / 2048 of that high.
constexpr double line_twips = 10 * 20 * (1854.0 + 434.0) / 2048;
constexpr double line_pixels = line_twips / 15;
/// Offsets are in percent of the line's height.
constexpr double percent_of_pixel = 100 / line_pixels;
/// Labels stand here until they are moved.
constexpr double usual_offset = 60;

/// The words of the file's lines, by part and keyword.
class FileColumns {
 public:
    explicit FileColumns(const QByteArray& bytes) {
        const QStringList lines =
            QString::fromLatin1(bytes).split(text("\r\n"), Qt::SkipEmptyParts);
        const QRegularExpression word(text("\"([^\"]*)\"|(\\S+)"));
        for (const QString& line : lines) {
            QStringList words;
            for (auto at = word.globalMatch(line); at.hasNext();) {
                const auto match = at.next();
                words << (match.captured(2).isEmpty() ? match.captured(1) : match.captured(2));
            }
            lines_ << words;
        }
    }

    /// The only line of a part that begins with these words; empty if there is none or several.
    [[nodiscard]] QStringList line(const QString& part, const QStringList& begin) const {
        QStringList found;
        QString now;
        for (const QStringList& words : lines_) {
            if (words.first().compare(text("NETZTEIL"), Qt::CaseInsensitive) == 0) {
                now = words.value(1);
            }
            if (now == part && words.mid(0, begin.size()) == begin) {
                if (!found.isEmpty()) {
                    return {};
                }
                found = words;
            }
        }
        return found;
    }
    [[nodiscard]] qsizetype count() const { return lines_.size(); }

 private:
    QList<QStringList> lines_;
};

bool near(double value, double wanted, double tolerance) {
    const bool is_near = std::abs(value - wanted) <= tolerance;
    if (!is_near) {
        qWarning("%.6f instead of %.6f", value, wanted);
    }
    return is_near;
}

}  // namespace

class DayTest : public test::TorvelFixture {
    Q_OBJECT

 private:
    void start_day() {
        create().use_printer(printer_, print_dialog_);
        window_->load();
        logo()->accept();
        window_->resize(1000, 700);
        QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
        QTest::qWait(150);  // the new size has been followed
    }
    /// All that the programs of one day share.
    void end_day() {
        window_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window_.get()));
        QTest::keyClick(window_.get(), Qt::Key_Q, Qt::ControlModifier);
        QVERIFY(!window_->isVisible());
        window_.reset();
        session_ = Session();
    }

    [[nodiscard]] QSize size() const { return picture().size(); }
    [[nodiscard]] ExpectedView whole_north() const {
        return whole_part(3500000, 5600000, 3500200, 5600100, 2, size());
    }
    [[nodiscard]] ExpectedView whole_south() const {
        return whole_part(3501000, 5599000, 3501080, 5599050, 1, size());
    }
    [[nodiscard]] static QPointF on_picture(const ExpectedView& view, double rechts, double hoch) {
        return {(rechts - view.left) / view.pixel, (view.top - hoch) / view.pixel};
    }
    /// A place inside the label of a point with these offsets, near its left end.
    [[nodiscard]] static QPoint inside_label(const ExpectedView& view, double rechts, double hoch,
                                             double offset_r, double offset_h) {
        const QPointF point = on_picture(view, rechts, hoch);
        return QPointF(point.x() + offset_r / percent_of_pixel + 4,
                       point.y() - offset_h / percent_of_pixel + line_pixels / 2)
            .toPoint();
    }

    void expect_view(const ExpectedView& wanted) const {
        QVERIFY(near(session_.view.ansicht_rw_min, wanted.left, 1e-3));
        QVERIFY(near(session_.view.ansicht_hw_max, wanted.top, 1e-3));
        QVERIFY(near(session_.view.ansicht_masseinheit * 15, wanted.pixel, 1e-7));
    }
    /// The status line tells the ground under the mouse and the scale at 96 dots an inch.
    void expect_status(const ExpectedView& wanted) {
        const QPoint place(100, 50);
        move(place);
        const QString told = control<QLabel>(*window_, "lbl_ort").text();
        const auto numbers =
            QRegularExpression(text("^Rechtswert (\\S+)   Hochwert (\\S+)$")).match(told);
        QVERIFY2(numbers.hasMatch(), qPrintable(told));
        QVERIFY(near(numbers.captured(1).toDouble(), wanted.left + 100 * wanted.pixel, 0.011));
        QVERIFY(near(numbers.captured(2).toDouble(), wanted.top - 50 * wanted.pixel, 0.011));
        QString scale = control<QLabel>(*window_, "lbl_massstab").text();
        QVERIFY(scale.startsWith(text("1 : ")));
        scale = scale.mid(4).remove(QLatin1Char(' '));
        QVERIFY(near(scale.toDouble(), wanted.pixel / 0.0254 * 96, 0.51));
    }
    /// The label that the mouse finds tells its name on a right click.
    void expect_label(const QPoint& place, const char* name) {
        const auto* info = window_->findChild<QLabel*>(text("lbl_punubinf"));
        press(place, Qt::RightButton);
        release(place, Qt::RightButton);
        QVERIFY2(info->isVisible(), name);
        QCOMPARE(info->text(), text("PBZ: ") + text(name));
        move(QPoint(2, 2));
        QVERIFY(!info->isVisible());
    }
    void expect_no_label(const QPoint& place) {
        press(place, Qt::RightButton);
        release(place, Qt::RightButton);
        QVERIFY(!window_->findChild<QLabel*>(text("lbl_punubinf"))->isVisible());
    }
    void expect_undo(const char* wanted) const {
        QCOMPARE(action("m_ansicht_undo")->text(), text(wanted));
    }
    void press_key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        window_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window_.get()));
        QTest::keyClick(window_.get(), key, modifiers);
    }

    [[nodiscard]] FrmObjekte* selection() const {
        return window_->findChild<FrmObjekte*>(text("frmObjekte"));
    }
    /// Clicks the mark of an option or a check box.
    void choose(const char* name) const {
        auto& button = control(*selection(), name);
        QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(8, button.height() / 2));
    }
    void accept_selection() {
        veldra_test::click(control(*selection(), "cmd_ok"));
        QTRY_VERIFY(selection() == nullptr);
    }
    void show_part(int row) {
        auto& list = control<QListWidget>(*window_, "lst_netzteile");
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                          list.visualItemRect(list.item(row)).center());
        veldra_test::click(control<QPushButton>(*window_, "cmd_anzeigen"));
    }

    PdfPrinter printer_{[] { return std::nullopt; }};
    NoDialog print_dialog_;

    // What the day leaves behind, as it is worked out on the way.
    double north_label_r_ = usual_offset;
    double north_label_h_ = 0;
    double south_label_r_ = usual_offset;
    double south_label_h_ = 0;
    double north_zero_r_ = 3499990;
    double north_zero_h_ = 5599990;

    void choose_objects_in_the_north() {
        action("m_torvel_objekte")->trigger();
        QVERIFY(QTest::qWaitForWindowExposed(selection()));
        choose("opt_nube_0");
        choose("opt_verw_0");
        choose("chk_test_beob");
        choose("opt_test_2");
        accept_selection();
        QVERIFY(window_->windowTitle().contains(text("(Nord)")));
        expect_view(whole_north());
    }

    /// Zooms by a rubber band, moves a label of the enlarged picture, takes that back, moves it
    /// again and pushes the view.
    void zoom_and_move_a_label_in_the_north() {
        const ExpectedView whole = whole_north();
        const QPoint from = on_picture(whole, 3500030, 5600090).toPoint();
        const QPoint to = on_picture(whole, 3500150, 5600020).toPoint();
        drag(from, to);
        ExpectedView view =
            fitted(whole.left + from.x() * whole.pixel, whole.top - to.y() * whole.pixel,
                   whole.left + to.x() * whole.pixel, whole.top - from.y() * whole.pixel, size());
        expect_view(view);
        expect_status(view);
        expect_undo("Rückgängig: Vergrößern");
        const QPoint label = inside_label(view, 3500100, 5600060, usual_offset, 0);
        expect_label(label, "102");
        drag(label, label + QPoint(70, -45));
        expect_undo("Rückgängig: Verschiebung Bezeichnung");
        expect_label(label + QPoint(70, -45), "102");
        press_key(Qt::Key_Z, Qt::ControlModifier);
        expect_undo("Rückgängig:");
        expect_label(label, "102");
        expect_no_label(label + QPoint(70, -45));
        drag(label, label + QPoint(-52, 31));
        north_label_r_ = usual_offset - 52 * percent_of_pixel;
        north_label_h_ = -31 * percent_of_pixel;
        drag(QPoint(400, 300), QPoint(445, 280), Qt::MiddleButton);
        view.left -= 45 * view.pixel;
        view.top -= 20 * view.pixel;
        expect_view(view);
        expect_label(inside_label(view, 3500100, 5600060, north_label_r_, north_label_h_), "102");
        // The offset goes with the letters, so at another scale the label is as far from its point.
        press_key(Qt::Key_Home);
        expect_view(whole);
        expect_label(inside_label(whole, 3500100, 5600060, north_label_r_, north_label_h_), "102");
    }

    void choose_and_move_in_the_south() {
        show_part(1);
        QVERIFY(window_->windowTitle().contains(text("(Süd)")));
        const ExpectedView whole = whole_south();
        expect_view(whole);
        action("m_torvel_objekte")->trigger();
        QVERIFY(QTest::qWaitForWindowExposed(selection()));
        choose("opt_beob_2");
        accept_selection();
        press_key(Qt::Key_Plus);
        press_key(Qt::Key_Z, Qt::ControlModifier);
        expect_view(whole);
        press_key(Qt::Key_Right);
        ExpectedView view = whole;
        view.left += size().width() * whole.pixel / 3;
        expect_view(view);
        press_key(Qt::Key_Left);
        const QPoint label = inside_label(whole, 3501030, 5599020, usual_offset, 0);
        drag(label, label + QPoint(33, 64));
        south_label_r_ = usual_offset + 33 * percent_of_pixel;
        south_label_h_ = -64 * percent_of_pixel;
        expect_label(label + QPoint(33, 64), "201");
    }

    /// The sheets of "Süd" are fitted by the command.
    void fit_the_sheets_of_the_south() {
        press_key(Qt::Key_P, Qt::ControlModifier);
        QCOMPARE(session_.plotmodus, std::int16_t{1});
        action("m_plotten_null")->trigger();
        expect_undo("Rückgängig: Plotternullpunkt anpassen");
        action("m_plotten_aus")->trigger();
    }

    /// Drags the sheets of "Nord" twice; the first move is taken back.
    void drag_the_sheets_of_the_north() {
        show_part(0);
        const ExpectedView whole = whole_north();
        expect_view(whole);
        expect_label(inside_label(whole, 3500100, 5600060, north_label_r_, north_label_h_), "102");
        press_key(Qt::Key_P, Qt::ControlModifier);
        expect_view(whole);
        expect_legend_at(whole);
        drag(QPoint(10, 10), QPoint(90, 110));
        expect_undo("Rückgängig: Verschiebung Blatteinteilung");
        press_key(Qt::Key_Z, Qt::ControlModifier);
        expect_legend_at(whole);
        drag(QPoint(10, 10), QPoint(10 + 24, 10 - 7));
        north_zero_r_ += 24 * whole.pixel;
        north_zero_h_ += 7 * whole.pixel;
        expect_legend_at(whole);
        action("plot_aus")->trigger();
        QCOMPARE(session_.plotmodus, std::int16_t{0});
    }

    /// The legend's lower left corner stands at that of the sheets.
    void expect_legend_at(const ExpectedView& view) const {
        const auto& legend = control<QLabel>(*window_, "lbl_legende");
        QVERIFY(legend.isVisible());
        const QPointF corner = on_picture(view, north_zero_r_, north_zero_h_);
        QVERIFY(near(legend.x(), corner.x(), 1.01));
        QVERIFY(near(legend.y() + legend.height(), corner.y(), 2.01));
    }

    void expect_file() const {
        const FileColumns file(read("ve_tag.dat"));
        const QString north = text("Nord");
        const QString south = text("Süd");
        // Selection, in the order of the record: labels, signatures, values, their test, districts,
        // their numbers, boundaries, observations, their test, kind of test, system (DHDN, Bessel,
        // Gauß-Krüger), meridian strip, epochs.
        QCOMPARE(file.line(north, {text("Objekte")}).mid(1).join(QLatin1Char(' ')),
                 text("1 1 0 0 0 1 0 1 1 2 1 1 1 3 0"));
        QCOMPARE(file.line(south, {text("Objekte")}).mid(1).join(QLatin1Char(' ')),
                 text("1 1 0 0 1 1 3 2 0 1 1 1 1 3 0"));
        const auto label = [&](const QString& part, const char* rechts, const char* hoch) {
            return file.line(part, {text("Punktsignatur"), text(rechts), text(hoch)});
        };
        const QStringList n102 = label(north, "3500100.000", "5600060.000");
        QCOMPARE(n102.mid(3, 4), QStringList({text("0"), text("0"), text("0"), text("102")}));
        QVERIFY(near(n102.value(7).toDouble(), north_label_r_, 0.051));
        QVERIFY(near(n102.value(8).toDouble(), north_label_h_, 0.051));
        const QStringList n101 = label(north, "3500060.000", "5600040.000");
        QCOMPARE(n101.mid(6).join(QLatin1Char(' ')), text("101 0.0 0.0"));
        QCOMPARE(label(north, "3500000.000", "5600000.000").size(), 6);
        const QStringList s201 = label(south, "3501030.000", "5599020.000");
        QCOMPARE(s201.value(6), text("201"));
        QVERIFY(near(s201.value(7).toDouble(), south_label_r_, 0.051));
        QVERIFY(near(s201.value(8).toDouble(), south_label_h_, 0.051));
        const QStringList sheets = file.line(north, {text("MaßstabGrundriss")});
        QCOMPARE(sheets.size(), 5);
        QCOMPARE(sheets.value(1), text("1000"));
        QVERIFY(near(sheets.value(2).toDouble(), north_zero_r_, 0.0011));
        QVERIFY(near(sheets.value(3).toDouble(), north_zero_h_, 0.0011));
        QCOMPARE(sheets.value(4), text("41"));
        // A radius of 2 mm at 1:500 and a centimetre before the corner point.
        QCOMPARE(file.line(south, {text("MaßstabGrundriss")}).mid(1).join(QLatin1Char(' ')),
                 text("500 3500998.990 5598998.990 73"));
        // What the program does not know is where it was.
        QCOMPARE(file.line(north, {text("KOMMENTAR")}).join(QLatin1Char(' ')),
                 text("KOMMENTAR bleibt stehen"));
        QCOMPARE(file.line(north, {text("RICHTUNG")}).size(), 8);
        // Legend, vector scales, two parts, their scale and selection, seven points, two
        // observations, the comment.
        QCOMPARE(file.count(), 2 + 3 * 2 + 7 + 2 + 1);
        QVERIFY(!QFile::exists(path("ve_tag.dat_1")));
        QVERIFY(!QFile::exists(path("ve_tag.dat_2")));
    }

    void expect_all_again_in_the_window() {
        const ExpectedView north = whole_north();
        expect_view(north);
        expect_status(north);
        expect_label(inside_label(north, 3500100, 5600060, north_label_r_, north_label_h_), "102");
        expect_label(inside_label(north, 3500060, 5600040, usual_offset, 0), "101");
        expect_no_label(inside_label(north, 3500100, 5600060, usual_offset, 0));
        action("m_torvel_objekte")->trigger();
        QVERIFY(QTest::qWaitForWindowExposed(selection()));
        for (const char* name : {"opt_nube_0", "opt_verw_0", "opt_beob_1", "opt_test_2",
                                 "opt_puwe_0", "opt_pube_1", "opt_pusi_1", "opt_bezu_1"}) {
            QVERIFY2(control<QRadioButton>(*selection(), name).isChecked(), name);
        }
        QVERIFY(control<QCheckBox>(*selection(), "chk_test_beob").isChecked());
        accept_selection();
        press_key(Qt::Key_P, Qt::ControlModifier);
        expect_legend_at(north);
        show_part(1);
        QCOMPARE(session_.plotmodus, std::int16_t{0});
        const ExpectedView south = whole_south();
        expect_view(south);
        expect_label(inside_label(south, 3501030, 5599020, south_label_r_, south_label_h_), "201");
        QCOMPARE(session_.obj.obj_beob, std::int16_t{2});
        QCOMPARE(session_.lin.count(), 1);
        QVERIFY(near(session_.plot.plot_null_rechts, 3500998.99, 1e-6));
        QVERIFY(near(session_.plot.plot_null_hoch, 5598998.99, 1e-6));
    }

 private Q_SLOTS:
    void initTestCase() { make_folders(); }
    void cleanupTestCase() { close_down(); }

    void a_day_is_found_again_in_the_file_and_in_the_window() {
        write("ve_tag.dat", network);
        start_day();
        window_->choose_file = [this] { return path("ve_tag.dat"); };
        press_key(Qt::Key_O, Qt::ControlModifier);
        QCOMPARE(session_.datei_geladen, std::int16_t{1});
        expect_view(whole_north());
        expect_status(whole_north());
        choose_objects_in_the_north();
        zoom_and_move_a_label_in_the_north();
        choose_and_move_in_the_south();
        fit_the_sheets_of_the_south();
        drag_the_sheets_of_the_north();
        end_day();
        expect_file();
        const QByteArray written = read("ve_tag.dat");

        start_day();
        QCOMPARE(action("m_datei_alt_1")->text(), text("&1: ") + path("ve_tag.dat"));
        action("m_datei_alt_1")->trigger();
        expect_all_again_in_the_window();
        end_day();
        // Looking changes nothing.
        QCOMPARE(read("ve_tag.dat"), written);
    }
};

QTEST_MAIN(DayTest)
#include "frmTorvel_tag_wintest.moc"
