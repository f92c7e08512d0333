#include <algorithm>

#include "display_dialog_fixture.h"
#include "scripted_printer.h"

using namespace veldra;
using namespace veldra_test;

/// Choosing an item, its colour, width and font; the samples that show it.
class FrmDarstellungenPensTest : public DisplayDialogFixture {
    Q_OBJECT

 private:
    void press(const char* name) const { click(button(name)); }
    QString pick_width(const char* name, int width) const {
        return veldra_test::pick_width(*dialog_, name, width);
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

 private Q_SLOTS:
    void init() { make_session(); }
    void cleanup() { close_down(); }

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
        answers_.colour = rgb(9, 8, 7);
        press("cmd_vekt_farbe_lage");
        QCOMPARE(answers_.asked, QStringList{text("dlg_farbe_vekt_lage")});
        QCOMPARE(answers_.offered_colour, rgb(255, 0, 0));
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

    void a_negative_maximum_shows_its_sign_and_hangs_down() {
        session_->max_ap[4].wert = -25;
        open_at(DisplayTab::vectors_height);
        QCOMPARE(box("txtMaxwertHöhe_1").text(), text("max. AP: -25.0"));
        const QImage sample = picture("picVektorHöhe_1").grab().toImage();
        const auto bars = [&sample](int from, int to) {
            int count = 0;
            for (int y = from; y < to; ++y) {
                for (int x = 0; x < sample.width(); ++x) {
                    count += sample.pixel(x, y) == qRgb(0, 128, 255) ? 1 : 0;
                }
            }
            return count;
        };
        // From a fifth below the upper edge on, 25 cm at 1:2 reach beyond the lower one.
        QCOMPARE(bars(0, sample.height() / 5 - 5), 0);
        QVERIFY(bars(sample.height() * 9 / 10, sample.height()) > 0);
    }

    void the_largest_values_of_the_file_stand_in_their_boxes() {
        for (std::size_t slot = 1; slot <= 6; ++slot) {
            session_->max_ap[slot].wert = static_cast<double>(slot) + 0.24;
            session_->max_np[slot].wert = static_cast<double>(slot) * 10 + 0.26;
        }
        settings().vektAdrw[2] = 0;
        settings().vektNdrw[6] = 0;
        open();
        const char* const position[] = {"max. AP: 1.2", "max. NP: 10.3",
                                        "max. AP: 2.2 (nicht dargestellt)", "max. NP: 20.3",
                                        "max. a: 30.3"};
        const char* const height[] = {"max. AP: 4.2", "max. NP: 40.3",
                                      "max. AP: 5.2", "max. NP: 50.3",
                                      "max. AP: 6.2", "max. NP: 60.3 (nicht dargestellt)"};
        for (int i = 1; i <= 5; ++i) {
            QLineEdit& shown = box(numbered("txtMaxwertLage_", i).constData());
            QCOMPARE(shown.text(), text(position[i - 1]));
            QVERIFY(shown.isReadOnly());
        }
        for (int i = 1; i <= 6; ++i) {
            QCOMPARE(box(numbered("txtMaxwertHöhe_", i).constData()).text(), text(height[i - 1]));
        }
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
            answers_.colour = rgb(10 + i, 20, 30);
            press("cmd_test_farbe");
            QCOMPARE(answers_.asked.constLast(), text("dlg_farbe_test"));
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

    void a_click_on_the_label_of_a_test_class_chooses_it() {
        open_at(DisplayTab::tests);
        click(control<QLabel>(*dialog_, "lbl_testwert_4"));
        QCOMPARE(label("lbl_Für_test"), text("für NV < 2.0"));
        QVERIFY(picture("pic_testwert_4").is_chosen());
        QVERIFY(picture("pic_testwert_4").hasFocus());
        QVERIFY(!picture("pic_testwert_0").is_chosen());
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
            answers_.colour = rgb(i, 0, 0);
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
        answers_.font = FontChoice{{"Courier", 13.6, -1, 0, -1}, rgb(3, 2, 1)};
        press("cmd_pubez_schrift_screen");
        QCOMPARE(answers_.asked, QStringList{text("dlg_pubez_screen")});
        QVERIFY((answers_.offered_font == FontChoice{{"Arial", 10, 0, 0, 0}, rgb(0, 0, 0)}));
        const Settings& now = settings();
        QCOMPARE(now.pubfon, std::string("Courier"));
        QCOMPARE(now.pubgrascr, std::int16_t{14});
        QCOMPARE(now.pubbol, std::int16_t{-1});
        QCOMPARE(now.pubita, std::int16_t{0});
        QCOMPARE(now.pubund, std::int16_t{-1});
        QCOMPARE(now.pubcolor, rgb(3, 2, 1));
        QCOMPARE(now.nubfon, std::string("Arial"));
        press("cmd_nubez_schrift_screen");
        QCOMPARE(answers_.asked.constLast(), text("dlg_nubez_screen"));
        QCOMPARE(now.nubgrascr, std::int16_t{14});
        QCOMPARE(now.nubcolor, rgb(3, 2, 1));
    }

    void without_a_printer_heights_in_the_plot_are_typed() {
        open_at(DisplayTab::points_plot);
        QVERIFY(control<QLabel>(*dialog_, "lbl_druckerda").isVisible());
        QCOMPARE(session_->printer.drucker_ok, table_false);
        answers_.font = FontChoice{{"Courier", 30, 0, -1, 0}, 5};
        press("cmd_pubez_schrift_plott");
        QCOMPARE(answers_.asked, QStringList{text("dlg_pubez_plott")});
        QCOMPARE(settings().pubfon, std::string("Courier"));
        QCOMPARE(settings().pubita, std::int16_t{-1});
        QCOMPARE(settings().pubsizplo, 2.5F);
        QCOMPARE(settings().pubgrascr, std::int16_t{10});
    }

    void with_a_printer_a_font_gives_the_height_in_the_plot() {
        test::ScriptedPrinter printer;
        open(&printer);
        show_tab(DisplayTab::points_plot);
        QCOMPARE(session_->printer.drucker_ok, table_true);
        QVERIFY(!control<QLabel>(*dialog_, "lbl_druckerda").isVisible());
        answers_.font = FontChoice{{"Courier", 24, 0, 0, 0}, 5};
        press("cmd_nubez_schrift_plott");
        QCOMPARE(answers_.asked, QStringList{text("dlg_nubez_plott")});
        // The printer's lines are as high as the font: up to (2.5 + 0.05) * 1.68 mm = 12.14 points.
        QCOMPARE(answers_.offered_font.font.points, 12.0);
        // 24 points are 8.4667 mm, digits 1.68 times lower.
        QVERIFY(std::abs(static_cast<double>(settings().nubsizplo) - 8.4667 / 1.68) < 0.001);
        QCOMPARE(settings().nubgrascr, std::int16_t{10});
        QCOMPARE(settings().pubsizplo, 2.5F);
    }

    void typed_heights_become_those_of_the_printers_fonts_data() {
        QTest::addColumn<QByteArray>("typed");
        QTest::addColumn<double>("points");
        QTest::addColumn<QByteArray>("shown");
        // Its lines are as high as the font. Up to (3 + 0.05) * 1.68 mm = 14.52 points are 14, and
        // those are 14 * 25.4 / 72 / 1.68 = 2.940 mm.
        QTest::newRow("3") << QByteArray("3") << 14.0 << QByteArray("2.94");
        QTest::newRow("comma") << QByteArray("3,0") << 14.0 << QByteArray("2.94");
        // 7 points, the smallest, are 1.470 mm; 2161, the largest, 453.781 mm.
        QTest::newRow("empty") << QByteArray("") << 7.0 << QByteArray("1.47");
        QTest::newRow("letters") << QByteArray("abc") << 7.0 << QByteArray("1.47");
        QTest::newRow("negative") << QByteArray("-3") << 7.0 << QByteArray("1.47");
        QTest::newRow("too large") << QByteArray("1e300") << 2161.0 << QByteArray("453.781");
    }

    void typed_heights_become_those_of_the_printers_fonts() {
        QFETCH(QByteArray, typed);
        QFETCH(double, points);
        QFETCH(QByteArray, shown);
        test::ScriptedPrinter printer;
        open_at(DisplayTab::points_plot, &printer);
        const double height = points * 25.4 / 72 / 1.68;
        type_and_enter(box("txt_pubez_schrift_plott"), typed.constData());
        QVERIFY(std::abs(static_cast<double>(settings().pubsizplo) - height) < 0.0001);
        QCOMPARE(box("txt_pubez_schrift_plott").text(), QString::fromUtf8(shown));
        QCOMPARE(settings().nubsizplo, 2.5F);
        type_and_enter(box("txt_nubez_schrift_plott"), typed.constData());
        QVERIFY(std::abs(static_cast<double>(settings().nubsizplo) - height) < 0.0001);
    }

    void a_printer_that_refuses_an_orientation_is_not_used() {
        test::ScriptedDevice device;
        device.orientations = {1};
        test::ScriptedPrinter printer({device});
        open(&printer);
        QCOMPARE(session_->printer.drucker_ok, table_false);
        show_tab(DisplayTab::points_plot);
        QVERIFY(control<QLabel>(*dialog_, "lbl_druckerda").isVisible());
        type_and_enter(box("txt_pubez_schrift_plott"), "3");
        QCOMPARE(settings().pubsizplo, 3.0F);
    }
};

QTEST_MAIN(FrmDarstellungenPensTest)
#include "frmDarstellungen_pens_wintest.moc"
