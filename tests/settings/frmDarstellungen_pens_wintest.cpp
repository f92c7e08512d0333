#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <algorithm>
#include <memory>

#include "dialog_driver.h"
#include "platform/qt/qt_text_measurer.h"
#include "platform/qt/sample_picture.h"
#include "scripted_printer.h"
#include "settings/defaults.h"
#include "settings/frmDarstellungen.h"
#include "unnamed_controls.h"
#include "view/frmStrichst.h"

using namespace veldra;
using namespace veldra_test;

namespace {

QString text(const char* utf8) {
    return QString::fromUtf8(utf8);
}

}  // namespace

/// Choosing an item, its colour, width and font; the samples that show it.
class FrmDarstellungenPensTest : public QObject {
    Q_OBJECT

 private:
    void open(Printer* printer = nullptr) {
        dialog_ = std::make_unique<FrmDarstellungen>(nullptr, *session_, measurer_, printer);
        dialog_->choosers().colour = [this](QWidget*, const QString& name, std::int32_t colour) {
            asked_ << name;
            offered_colour_ = colour;
            return colour_answer_;
        };
        dialog_->choosers().font = [this](QWidget*, const QString& name, const FontChoice& choice) {
            asked_ << name;
            offered_font_ = choice;
            return font_answer_;
        };
        dialog_->show();
        if (!QTest::qWaitForWindowActive(dialog_.get())) {
            qFatal("the dialog does not become the active window");
        }
    }
    void open_at(DisplayTab tab) {
        open();
        control<QTabWidget>(*dialog_, "tab_darstellungen").setCurrentIndex(static_cast<int>(tab));
        QApplication::processEvents();
    }
    [[nodiscard]] QString label(const char* name) const {
        return control<QLabel>(*dialog_, name).text();
    }
    [[nodiscard]] SamplePicture& picture(const char* name) const {
        return control<SamplePicture>(*dialog_, name);
    }
    void press(const char* name) const { click(control<QPushButton>(*dialog_, name)); }
    /// Presses a button "Strich" and answers the picker with a width; gives its caption.
    QString pick_width(const char* button, int width) const {
        QString caption;
        when_shown<FrmStrichst>([&caption, width](FrmStrichst& picker) {
            caption = picker.windowTitle();
            click(control<SamplePicture>(picker,
                                         qPrintable(QStringLiteral("pic_strichst_%1").arg(width))));
            click(control<QPushButton>(picker, "cmd_ok"));
        });
        press(button);
        return caption;
    }
    /// Number of pixels of a colour in a sample.
    [[nodiscard]] int pixels(const char* name, QRgb colour) const {
        const QImage image = picture(name).grab().toImage().convertToFormat(QImage::Format_RGB32);
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                count += image.pixel(x, y) == colour ? 1 : 0;
            }
        }
        return count;
    }
    [[nodiscard]] Settings& settings() const { return session_->settings; }

    QtTextMeasurer measurer_;
    std::unique_ptr<Session> session_;
    std::unique_ptr<FrmDarstellungen> dialog_;
    QStringList asked_;
    std::int32_t offered_colour_ = -1;
    FontChoice offered_font_;
    std::optional<std::int32_t> colour_answer_;
    std::optional<FontChoice> font_answer_;

 private Q_SLOTS:
    void init() {
        session_ = std::make_unique<Session>();
        standard_alle(*session_);
        session_->plot.plot_massstab = 0.001;
        asked_.clear();
        colour_answer_.reset();
        font_answer_.reset();
    }

    void cleanup() {
        dialog_.reset();
        session_.reset();
    }

    void a_click_or_the_arrow_keys_choose_a_point_class() {
        open();
        auto& radius = control<QLineEdit>(*dialog_, "txt_punktradius_screen");
        click(control<QLabel>(*dialog_, "lbl_pa_screen_2"));
        QCOMPARE(label("lbl_punktradius_screen"), text("Radius Punktsignatur AP(2):"));
        QCOMPARE(radius.text(), text("30"));
        type_and_enter(radius, "31");
        QTest::keyClick(&picture("pic_pubez_screen"), Qt::Key_Right);
        QCOMPARE(label("lbl_punktradius_screen"), text("Radius Punktsignatur sonst.:"));
        QCOMPARE(radius.text(), text("15"));
        QTest::keyClick(&picture("pic_pubez_screen"), Qt::Key_Right);
        QCOMPARE(label("lbl_punktradius_screen"), text("Radius Punktsignatur sonst.:"));
        type_and_enter(radius, "16");
        for (int i = 0; i < 2; ++i) {
            QTest::keyClick(&picture("pic_pubez_screen"), Qt::Key_Left);
        }
        QCOMPARE(label("lbl_punktradius_screen"), text("Radius Punktsignatur AP(1):"));
        QVERIFY((settings().punsigscr == std::array<float, 4>{60, 60, 31, 16}));
        QCOMPARE(label("lbl_punktradius_plott"), text("Radius Punktsignatur TP:"));
    }

    void a_number_that_is_being_typed_goes_to_the_class_before() {
        open();
        type(control<QLineEdit>(*dialog_, "txt_punktradius_screen"), "99");
        click(control<QLabel>(*dialog_, "lbl_pa_screen_1"));
        QVERIFY((settings().punsigscr == std::array<float, 4>{99, 60, 30, 15}));
    }

    void point_labels_have_font_colour_and_place_of_the_settings() {
        open();
        settings().pubcolor = rgb(1, 2, 3);
        settings().nubcolor = rgb(4, 5, 6);
        settings().pubgrascr = 20;
        dialog_->page(DisplayTab::points_screen).refresh();
        const auto& point = control<QLabel>(*dialog_, "lbl_pubez_screen");
        const auto& district = control<QLabel>(*dialog_, "lbl_nubez_screen");
        QCOMPARE(point.palette().color(QPalette::WindowText), QColor(1, 2, 3));
        QCOMPARE(district.palette().color(QPalette::WindowText), QColor(4, 5, 6));
        QCOMPARE(point.font().pointSizeF(), 20.0);
        QCOMPARE(district.font().pointSizeF(), 10.0);
        const int before = point.x();
        settings().stanplt += 100;
        dialog_->page(DisplayTab::points_screen).refresh();
        // The offset counts in heights of the label: 100 percent are one.
        const FontSpec font{"Arial", 20, 0, 0, 0};
        const double twips = measure_text(measurer_.face_metrics(font), 20, "1").height;
        QVERIFY(std::abs(point.x() - before - twips / 15) <= 1);
    }

    void each_vector_takes_its_colour_and_width() {
        open_at(DisplayTab::vectors_position);
        QCOMPARE(label("lbl_Für_vekt_lage"), text("für Lageänderungen Anschlusspunkte"));
        click(picture("picVektorLage_4"));
        QCOMPARE(label("lbl_Für_vekt_lage"), text("für Lagerestklaffungen Neupunkte"));
        QVERIFY(picture("picVektorLage_4").is_chosen());
        QVERIFY(!picture("picVektorLage_1").is_chosen());
        colour_answer_ = rgb(9, 8, 7);
        press("cmd_vekt_farbe_lage");
        QCOMPARE(asked_, QStringList{text("dlg_farbe_vekt_lage")});
        QCOMPARE(offered_colour_, rgb(255, 0, 0));
        QCOMPARE(settings().vektNrgb[2], rgb(9, 8, 7));
        QCOMPARE(pick_width("cmd_vekt_strich_lage", 6), text("Strichstärke"));
        QCOMPARE(settings().vektNdrw[2], std::int16_t{6});
        QVERIFY(pixels("picVektorLage_4", qRgb(9, 8, 7)) > 100);
        QCOMPARE(settings().vektAdrw[2], std::int16_t{3});
        QTest::keyClick(&picture("picVektorLage_4"), Qt::Key_Right);
        QCOMPARE(label("lbl_Für_vekt_lage"), text("für Lagefehlerellipsen"));
    }

    void a_vector_of_width_zero_is_not_shown() {
        session_->max_ap[4].wert = 2.5;
        open_at(DisplayTab::vectors_height);
        QCOMPARE(control<QLineEdit>(*dialog_, "txtMaxwertHöhe_1").text(), text("max. AP: 2.5"));
        const QRgb colour = qRgb(0, 128, 255);
        QVERIFY(pixels("picVektorHöhe_1", colour) > 0);
        QCOMPARE(pick_width("cmd_vekt_strich_höhe", 0), text("Strichstärke"));
        QCOMPARE(settings().vektAdrw[4], std::int16_t{0});
        QCOMPARE(control<QLineEdit>(*dialog_, "txtMaxwertHöhe_1").text(),
                 text("max. AP: 2.5 (nicht dargestellt)"));
        QCOMPARE(pixels("picVektorHöhe_1", colour), 0);
        QCOMPARE(label("lbl_Für_vekt_höhe"), text("für Höhenänderungen Anschlusspunkte"));
    }

    void giving_up_a_choice_changes_nothing() {
        open_at(DisplayTab::vectors_position);
        press("cmd_vekt_farbe_lage");
        when_shown<FrmStrichst>([](FrmStrichst& picker) {
            click(control<SamplePicture>(picker, "pic_strichst_6"));
            click(control<QPushButton>(picker, "cmd_abbrechen"));
        });
        press("cmd_vekt_strich_lage");
        QVERIFY(settings() == Settings());
    }

    void each_test_class_takes_its_colour_and_width() {
        open_at(DisplayTab::tests);
        const char* const captions[] = {"für NV, EP, EH mit EV < 0.5",
                                        "für EV > 10.0",
                                        "für EV < 10.0",
                                        "für NV < 1.0",
                                        "für NV < 2.0",
                                        "für NV < 3.3",
                                        "für NV > 3.3",
                                        "für EP < 2.0",
                                        "für EP < 3.0",
                                        "für EP > 3.0"};
        const char* const pickers[] = {"Strichstärke Grenzwert", "Strichstärke EV",
                                       "Strichstärke EV",        "Strichstärke NV",
                                       "Strichstärke NV",        "Strichstärke NV",
                                       "Strichstärke NV",        "Strichstärke EP /EH",
                                       "Strichstärke EP /EH",    "Strichstärke EP /EH"};
        for (int i = 0; i < 10; ++i) {
            const QByteArray name = "pic_testwert_" + QByteArray::number(i);
            click(picture(name.constData()));
            QCOMPARE(label("lbl_Für_test"), text(captions[i]));
            colour_answer_ = rgb(10 + i, 20, 30);
            press("cmd_test_farbe");
            QCOMPARE(asked_.constLast(), text("dlg_farbe_test"));
            QCOMPARE(pick_width("cmd_test_strich", 4), text(pickers[i]));
            QVERIFY(pixels(name.constData(), qRgb(10 + i, 20, 30)) > 100);
        }
        const Settings& now = settings();
        QCOMPARE(now.stndrgb, rgb(10, 20, 30));
        QCOMPARE(now.stevrgb[1], rgb(11, 20, 30));
        QCOMPARE(now.stevrgb[2], rgb(12, 20, 30));
        QCOMPARE(now.stnvrgb[1], rgb(13, 20, 30));
        QCOMPARE(now.stnvrgb[4], rgb(16, 20, 30));
        QCOMPARE(now.steprgb[1], rgb(17, 20, 30));
        QCOMPARE(now.steprgb[3], rgb(19, 20, 30));
        QCOMPARE(now.stnddrw, std::int16_t{4});
        QVERIFY(std::all_of(now.stnvdrw.begin() + 1, now.stnvdrw.end(),
                            [](std::int16_t width) { return width == 4; }));
        QTest::keyClick(&picture("pic_testwert_9"), Qt::Key_Up);
        QCOMPARE(label("lbl_Für_test"), text("für EP < 3.0"));
    }

    void widths_of_tests_cannot_be_switched_off() {
        open_at(DisplayTab::tests);
        pick_width("cmd_test_strich", 0);
        QCOMPARE(settings().stnddrw, std::int16_t{1});
    }

    void limits_stand_in_the_labels_of_their_classes() {
        open_at(DisplayTab::tests);
        type_and_enter(control<QLineEdit>(*dialog_, "txt_nv_wert_3"), "5");
        QCOMPARE(label("lbl_testwert_6"), text("NV > 5.0"));
        click(picture("pic_testwert_5"));
        QCOMPARE(label("lbl_Für_test"), text("für NV < 5.0"));
    }

    void each_boundary_takes_its_colour_and_width() {
        open_at(DisplayTab::boundaries);
        for (int i = 1; i <= 7; ++i) {
            const QByteArray number = QByteArray::number(i);
            colour_answer_ = rgb(i, 0, 0);
            press(("cmd_verwgrenz_farbe_" + number).constData());
            QCOMPARE(
                pick_width(("cmd_verwgrenz_strich_" + number).constData(), 7 - i > 0 ? 7 - i : 1),
                text("Strichstärke Grenzen"));
            QVERIFY(pixels(("pic_verwgrenz_" + number).constData(), qRgb(i, 0, 0)) > 30);
        }
        QVERIFY((settings().grenzdrw == std::array<std::int16_t, 8>{0, 6, 5, 4, 3, 2, 1, 1}));
        QCOMPARE(settings().grenzrgb[7], rgb(7, 0, 0));
    }

    void fonts_of_the_screen_take_face_style_size_and_colour() {
        open();
        font_answer_ = FontChoice{{"Courier", 13.6, -1, 0, -1}, rgb(3, 2, 1)};
        press("cmd_pubez_schrift_screen");
        QCOMPARE(asked_, QStringList{text("dlg_pubez_screen")});
        QVERIFY((offered_font_ == FontChoice{{"Arial", 10, 0, 0, 0}, rgb(0, 0, 0)}));
        const Settings& now = settings();
        QCOMPARE(now.pubfon, std::string("Courier"));
        QCOMPARE(now.pubgrascr, std::int16_t{14});
        QCOMPARE(now.pubbol, std::int16_t{-1});
        QCOMPARE(now.pubita, std::int16_t{0});
        QCOMPARE(now.pubund, std::int16_t{-1});
        QCOMPARE(now.pubcolor, rgb(3, 2, 1));
        QCOMPARE(now.nubfon, std::string("Arial"));
        press("cmd_nubez_schrift_screen");
        QCOMPARE(asked_.constLast(), text("dlg_nubez_screen"));
        QCOMPARE(now.nubgrascr, std::int16_t{14});
        QCOMPARE(now.nubcolor, rgb(3, 2, 1));
    }

    void without_a_printer_heights_in_the_plot_are_typed() {
        open_at(DisplayTab::points_plot);
        QVERIFY(control<QLabel>(*dialog_, "lbl_druckerda").isVisible());
        QCOMPARE(session_->printer.drucker_ok, table_false);
        font_answer_ = FontChoice{{"Courier", 30, 0, -1, 0}, 5};
        press("cmd_pubez_schrift_plott");
        QCOMPARE(asked_, QStringList{text("dlg_pubez_plott")});
        QCOMPARE(settings().pubfon, std::string("Courier"));
        QCOMPARE(settings().pubita, std::int16_t{-1});
        QCOMPARE(settings().pubsizplo, 2.5F);
        QCOMPARE(settings().pubgrascr, std::int16_t{10});
    }

    void with_a_printer_a_font_gives_the_height_in_the_plot() {
        test::ScriptedPrinter printer;
        open(&printer);
        control<QTabWidget>(*dialog_, "tab_darstellungen").setCurrentIndex(1);
        QCOMPARE(session_->printer.drucker_ok, table_true);
        QVERIFY(!control<QLabel>(*dialog_, "lbl_druckerda").isVisible());
        font_answer_ = FontChoice{{"Courier", 24, 0, 0, 0}, 5};
        press("cmd_nubez_schrift_plott");
        QCOMPARE(asked_, QStringList{text("dlg_nubez_plott")});
        // The printer's lines are as high as the font: up to (2.5 + 0.05) * 1.68 mm = 12.14 points.
        QCOMPARE(offered_font_.font.points, 12.0);
        // 24 points are 8.4667 mm, digits 1.68 times lower.
        QVERIFY(std::abs(static_cast<double>(settings().nubsizplo) - 8.4667 / 1.68) < 0.001);
        QCOMPARE(settings().nubgrascr, std::int16_t{10});
        QCOMPARE(settings().pubsizplo, 2.5F);
    }

    void a_printer_that_refuses_an_orientation_is_not_used() {
        test::ScriptedDevice device;
        device.orientations = {1};
        test::ScriptedPrinter printer({device});
        open(&printer);
        QCOMPARE(session_->printer.drucker_ok, table_false);
        control<QTabWidget>(*dialog_, "tab_darstellungen").setCurrentIndex(1);
        QVERIFY(control<QLabel>(*dialog_, "lbl_druckerda").isVisible());
    }

    void opening_takes_less_than_a_tenth_of_a_second_and_samples_less_than_a_frame() {
        open();  // fonts are at hand from here on
        dialog_.reset();
        qint64 opening = 1000;
        for (int i = 0; i < 3; ++i) {
            QElapsedTimer clock;
            clock.start();
            FrmDarstellungen dialog(nullptr, *session_, measurer_, nullptr);
            dialog.show();
            QApplication::processEvents();
            opening = std::min(opening, clock.elapsed());
        }
        QVERIFY2(opening < 100, qPrintable(QString::number(opening)));
        open();
        for (SamplePicture* sample : dialog_->findChildren<SamplePicture*>()) {
            qint64 drawing = 1000000;
            for (int i = 0; i < 5; ++i) {
                QElapsedTimer clock;
                clock.start();
                sample->grab();
                drawing = std::min(drawing, clock.nsecsElapsed() / 1000);
            }
            QVERIFY2(drawing < 16000, qPrintable(sample->objectName()));
        }
    }
};

QTEST_MAIN(FrmDarstellungenPensTest)
#include "frmDarstellungen_pens_wintest.moc"
