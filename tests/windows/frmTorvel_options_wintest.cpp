#include "torvel_fixture.h"
#include "windows/forms/display_dialog_fixture.h"

using namespace veldra;
using namespace veldra::test;
using namespace veldra_test;

namespace {

/// Two control points and an observation whose test value EV is 20.
constexpr const char* network =
    "PUNKTSIGNATUR  3500000.000  5600000.000  0  0 1 \"1\"\r\n"
    "PUNKTSIGNATUR  3500100.000  5600000.000  0  0 1 \"2\"\r\n"
    "RICHTUNG  3500000.000  5600000.000  3500100.000  5600000.000    20.0\r\n";

}  // namespace

/// The display options as the main window's menu opens them.
class FrmTorvelOptionsTest : public TorvelFixture {
    Q_OBJECT

 private:
    void open_dialog() const { action("m_optionen_darstellungen")->trigger(); }
    [[nodiscard]] FrmDarstellungen* dialog() const {
        return window_->findChild<FrmDarstellungen*>(text("frmDarstellungen"));
    }
    void press(const char* name) const { click(control<QPushButton>(*dialog(), name)); }
    [[nodiscard]] bool picture_has(QRgb colour) const {
        const QImage& image = window_->picture().shown();
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixel(x, y) == colour) {
                    return true;
                }
            }
        }
        return false;
    }
    /// From here on reading would fail: there is nothing left to read.
    void remove_the_file() const { QVERIFY(QFile::remove(path("ve_quadrat.dat"))); }

 private Q_SLOTS:
    void init() {
        make_folders();
        start_with_network(network);
        QCOMPARE(session_.datei_geladen, std::int16_t{1});
    }
    void cleanup() { close_down(); }

    void the_menu_opens_the_dialog_over_the_window() {
        window_->resize(600, 500);
        const QRect screen = window_->screen()->availableGeometry();
        window_->move(screen.center() - window_->frameGeometry().center() + window_->pos());
        open_dialog();
        QVERIFY(dialog() != nullptr);
        QVERIFY(dialog()->isVisible());
        QVERIFY(dialog()->isModal());
        const QPoint middle = window_->frameGeometry().center();
        const QRect frame = dialog()->frameGeometry();
        QVERIFY(std::abs(frame.center().x() - middle.x()) <= 2);
        QVERIFY(frame.top() >= 0);
    }

    void the_dialog_stays_on_the_screen_that_its_window_leaves() {
        for (const QPoint& place : {QPoint(300, 200), QPoint(700, 700), QPoint(-500, 100)}) {
            window_->move(place);
            open_dialog();
            QVERIFY(dialog()->screen()->availableGeometry().contains(dialog()->frameGeometry()));
            press("cmd_abbrechen");
            QTRY_VERIFY(dialog() == nullptr);
        }
    }

    void the_dialog_is_never_above_the_screen() {
        window_->move(0, -400);
        open_dialog();
        QVERIFY(dialog()->pos().y() >= 0);
    }

    void the_dialog_fits_a_small_screen_and_scrolls() {
        QFont usual = QApplication::font();
        QFont large = usual;
        large.setPointSizeF(usual.pointSizeF() * 1.5);
        QApplication::setFont(large);
        window_->move(0, 0);
        open_dialog();
        QApplication::setFont(usual);
        QVERIFY(QTest::qWaitForWindowActive(dialog()));
        const QRect screen = dialog()->screen()->availableGeometry();
        QCOMPARE(screen.size(), QSize(800, 800));
        QVERIFY(screen.contains(dialog()->geometry()));
        const auto in_sight = [this](const char* name) {
            const auto& widget = control<QWidget>(*dialog(), name);
            return widget.visibleRegion().boundingRect() == widget.rect();
        };
        QVERIFY(in_sight("cmd_ok") && in_sight("cmd_abbrechen"));
        // What does not fit comes into sight with the focus.
        show_tab(*dialog(), DisplayTab::points_plot);
        QVERIFY(!in_sight("cmd_nubez_schrift_plott"));
        auto& box = control<QLineEdit>(*dialog(), "txt_nubez_schrift_plott");
        box.setFocus();
        QTest::keyClick(&box, Qt::Key_Tab);
        QVERIFY(in_sight("cmd_nubez_schrift_plott"));
    }

    void new_test_limits_draw_the_picture_anew_without_reading_the_file() {
        session_.obj.obj_test_beob = table_true;
        session_.obj.obj_test = 1;
        const QRgb above = qRgb(0, 200, 77);
        const QRgb below = qRgb(200, 0, 77);
        session_.settings.stevrgb[1] = rgb(0, 200, 77);
        session_.settings.stevrgb[2] = rgb(200, 0, 77);
        window_->redraw();
        QVERIFY(picture_has(above));
        QVERIFY(!picture_has(below));
        const std::uint64_t tables = session_.tables_revision;
        remove_the_file();
        open_dialog();
        show_tab(*dialog(), DisplayTab::tests);
        type_and_enter(control<QLineEdit>(*dialog(), "txt_ev_wert"), "30");
        press("cmd_ok");
        QVERIFY(picture_has(below));
        QVERIFY(!picture_has(above));
        QCOMPARE(session_.tables_revision, tables);
        QCOMPARE(session_.window.mouse_pointer, 0);
    }

    /// The line from point 1 to point 2 has an EV of 5 and an NV of 9, which is of class 4.
    void start_with_an_nv() {
        close_down();
        make_folders();
        start_with_network(
            "PUNKTSIGNATUR  3500000.000  5600000.000  0  0 1 \"1\"\r\n"
            "PUNKTSIGNATUR  3500100.000  5600000.000  0  0 1 \"2\"\r\n"
            "RICHTUNG  3500000.000  5600000.000  3500100.000  5600000.000    5.0 9.0\r\n");
        session_.obj.obj_test_beob = table_true;
        session_.obj.obj_test = 2;
        session_.settings.stnvrgb[4] = rgb(0, 200, 77);
        session_.settings.stndrgb = rgb(200, 0, 77);
        window_->redraw();
    }
    void set_limit(const char* typed) {
        open_dialog();
        show_tab(*dialog(), DisplayTab::tests);
        type_and_enter(control<QLineEdit>(*dialog(), "txt_grenzwert"), typed);
        press("cmd_ok");
        QTRY_VERIFY(dialog() == nullptr);
    }

    void a_new_limit_of_ev_hides_and_shows_the_other_test_values_at_once_data() {
        QTest::addColumn<bool>("plot_mode");
        QTest::newRow("picture") << false;
        QTest::newRow("plot mode") << true;
    }

    void a_new_limit_of_ev_hides_and_shows_the_other_test_values_at_once() {
        QFETCH(bool, plot_mode);
        start_with_an_nv();
        if (plot_mode) {
            action("m_plotten_ein")->trigger();
        }
        const QRgb with_nv = qRgb(0, 200, 77);
        const QRgb without_nv = qRgb(200, 0, 77);
        QVERIFY(picture_has(with_nv));
        QVERIFY(!picture_has(without_nv));
        set_limit("5.1");
        QVERIFY(picture_has(without_nv));
        QVERIFY(!picture_has(with_nv));
        QCOMPARE(session_.lin[1].lin_nv_hin, -99.0);
        set_limit("5.0");  // the limit itself is not below it
        QVERIFY(picture_has(with_nv));
        QVERIFY(!picture_has(without_nv));
        QCOMPARE(session_.lin[1].lin_nv_hin, 9.0);
        QCOMPARE(session_.window.mouse_pointer, 0);
    }

    void standard_and_abbrechen_leave_the_tables_in_line_with_the_limit() {
        start_with_an_nv();
        set_limit("7");
        QCOMPARE(session_.lin[1].lin_nv_hin, -99.0);
        open_dialog();
        control<QPushButton>(*dialog(), "cmd_standard_test").click();
        press("cmd_abbrechen");
        QTRY_VERIFY(dialog() == nullptr);
        QCOMPARE(session_.settings.stndwert, 7.0);
        QCOMPARE(session_.lin[1].lin_nv_hin, -99.0);
        open_dialog();
        control<QPushButton>(*dialog(), "cmd_standard_test").click();
        press("cmd_ok");
        QCOMPARE(session_.settings.stndwert, 0.5);
        QCOMPARE(session_.lin[1].lin_nv_hin, 9.0);
    }

    void new_colours_draw_the_picture_anew_without_reading_the_file() {
        session_.obj.obj_test_beob = table_true;
        session_.obj.obj_test = 1;
        window_->redraw();
        const std::uint64_t tables = session_.tables_revision;
        remove_the_file();
        open_dialog();
        ChooserAnswers answers;
        answers.colour = rgb(1, 99, 199);
        answers.put_into(*dialog());
        show_tab(*dialog(), DisplayTab::tests);
        click(control<QWidget>(*dialog(), "pic_testwert_1"));
        press("cmd_test_farbe");
        QVERIFY(!picture_has(qRgb(1, 99, 199)));
        press("cmd_ok");
        QVERIFY(picture_has(qRgb(1, 99, 199)));
        QCOMPARE(session_.tables_revision, tables);
    }

    void a_new_limit_draws_the_preview_anew_without_reading_the_file() {
        session_.obj.obj_test_beob = table_true;
        session_.obj.obj_test = 1;
        session_.settings.stevrgb[2] = rgb(200, 0, 77);
        action("m_plotten_ein")->trigger();
        QCOMPARE(session_.plotmodus, std::int16_t{1});
        QVERIFY(!picture_has(qRgb(200, 0, 77)));
        remove_the_file();
        open_dialog();
        show_tab(*dialog(), DisplayTab::tests);
        type_and_enter(control<QLineEdit>(*dialog(), "txt_ev_wert"), "30");
        press("cmd_ok");
        QVERIFY(picture_has(qRgb(200, 0, 77)));
        QCOMPARE(session_.plotmodus, std::int16_t{1});
    }

    void abbrechen_draws_the_picture_as_it_was() {
        open_dialog();
        control<QPushButton>(*dialog(), "cmd_standard_test").click();
        type_and_enter(control<QLineEdit>(*dialog(), "txt_punktradius_screen"), "300");
        window_->redraw();
        const QImage changed = window_->picture().shown();
        press("cmd_abbrechen");
        QVERIFY(window_->picture().shown() != changed);
        QCOMPARE(session_.settings.punsigscr[0], 60.0F);
        QTRY_VERIFY(dialog() == nullptr);
        open_dialog();
        QVERIFY(dialog()->isVisible());
    }

    void ok_moves_the_extents_with_the_sizes_in_the_plot() {
        open_dialog();
        const double before = session_.extents.gesamt_hw_max;
        show_tab(*dialog(), DisplayTab::points_plot);
        type_and_enter(control<QLineEdit>(*dialog(), "txt_punktradius_plott"), "50");
        press("cmd_ok");
        QVERIFY(session_.extents.gesamt_hw_max > before);
    }

    void more_sheets_than_can_be_counted_are_refused_on_ok_data() {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("typed");
        QTest::addColumn<bool>("refused");
        // 100.01 km of ground on lying A4 sheets of 285.4 mm: 31857 at 1:11, 35042 at 1:10.
        QTest::newRow("1:10") << QByteArray("cbo_grundriss_mass") << QByteArray("10") << true;
        QTest::newRow("1:11") << QByteArray("cbo_grundriss_mass") << QByteArray("11") << false;
        // A signature with a radius of 6 km of paper: 34966 sheets of 171.6 mm up; of 5 km: 29138.
        QTest::newRow("6 km") << QByteArray("txt_punktradius_plott") << QByteArray("6e6") << true;
        QTest::newRow("5 km") << QByteArray("txt_punktradius_plott") << QByteArray("5e6") << false;
    }

    void more_sheets_than_can_be_counted_are_refused_on_ok() {
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, typed);
        QFETCH(bool, refused);
        close_down();
        make_folders();
        start_with_network(
            "MA\xDFSTABGRUNDRISS 1000000 3499990 5599990 70\r\n"
            "PUNKTSIGNATUR  3500000.000  5600000.000  0  0 1\r\n"
            "PUNKTSIGNATUR  3600000.000  5600100.000  0  0 1\r\n");
        MessageBoxes messages;
        open_dialog();
        show_tab(*dialog(), DisplayTab::points_plot);
        if (name.startsWith("cbo")) {
            type_and_enter(control<QComboBox>(*dialog(), name.constData()), typed.constData());
        } else {
            type_and_enter(control<QLineEdit>(*dialog(), name.constData()), typed.constData());
        }
        press("cmd_ok");
        QCOMPARE(session_.window.mouse_pointer, 0);
        QCOMPARE(dialog() != nullptr && dialog()->isVisible(), refused);
        QCOMPARE(messages.seen.size(), refused ? std::size_t{1} : std::size_t{0});
        if (refused) {
            QCOMPARE(messages.seen[0].icon, QMessageBox::Critical);
            QCOMPARE(messages.seen[0].title, text("Maßstabsvorgabe"));
            QCOMPARE(messages.seen[0].text,
                     text("Bitte übeprüfen Sie die angegebene Grundriss-Maßstabszahl"));
            press("cmd_abbrechen");
            QCOMPARE(session_.plot.plot_massstab, 1e-6);
            QCOMPARE(session_.settings.punsigplo[0], 2.0F);
        }
        // The file can be read again in either case.
        action("m_datei_beliebig")->trigger();
        QCOMPARE(session_.datei_geladen, std::int16_t{1});
    }

    void no_number_ends_the_program_data() {
        QTest::addColumn<QByteArray>("typed");
        for (const char* typed : {"0", "-1", "abc", "", "70000", "2147483648", "1e20", "-1e20",
                                  "1e300", "-1e300", "1e999", "1e-300"}) {
            QTest::newRow(*typed == '\0' ? "empty" : typed) << QByteArray(typed);
        }
    }

    /// In every box, on the screen and in the preview, and at the next start.
    void no_number_ends_the_program() {
        QFETCH(QByteArray, typed);
        MessageBoxes messages;
        open_dialog();
        const std::vector<std::pair<DisplayTab, std::vector<const char*>>> boxes{
            {DisplayTab::points_screen,
             {"txt_punktradius_screen", "txt_offset_rechts_screen", "txt_offset_hoch_screen"}},
            {DisplayTab::points_plot,
             {"txt_punktradius_plott", "txt_pubez_schrift_plott", "txt_nubez_schrift_plott"}},
            {DisplayTab::observations_screen,
             {"txt_terstrecken_sig_screen", "txt_gpsstrecken_sig_screen",
              "txt_orientierung_sig_screen"}},
            {DisplayTab::observations_plot,
             {"txt_terstrecken_sig_plott", "txt_gpsstrecken_sig_plott",
              "txt_orientierung_sig_plott"}},
            {DisplayTab::tests,
             {"txt_grenzwert", "txt_ev_wert", "txt_nv_wert_1", "txt_nv_wert_2", "txt_nv_wert_3",
              "txt_ep_wert_1", "txt_ep_wert_2"}}};
        for (const auto& [tab, names] : boxes) {
            show_tab(*dialog(), tab);
            for (const char* name : names) {
                type_and_enter(control<QLineEdit>(*dialog(), name), typed.constData());
            }
        }
        // A wrong scale would keep the dialog open; it is answered and Standard follows.
        const std::vector<std::pair<DisplayTab, std::vector<const char*>>> scales{
            {DisplayTab::vectors_position, {"cbo_vekt_mass_lage_1", "cbo_vekt_mass_lage_3"}},
            {DisplayTab::vectors_height, {"cbo_vekt_mass_höhe_1", "cbo_vekt_mass_höhe_3"}}};
        for (const auto& [tab, names] : scales) {
            show_tab(*dialog(), tab);
            const std::size_t before = messages.seen.size();
            for (const char* name : names) {
                type_and_enter(control<QComboBox>(*dialog(), name), typed.constData());
            }
            if (messages.seen.size() > before) {
                press(standard_buttons[static_cast<std::size_t>(tab)]);
            }
        }
        const std::size_t before = messages.seen.size();
        type_and_enter(control<QComboBox>(*dialog(), "cbo_überhöhung"), typed.constData());
        type_and_enter(control<QComboBox>(*dialog(), "cbo_grundriss_mass"), typed.constData());
        if (messages.seen.size() > before) {
            type_and_enter(control<QComboBox>(*dialog(), "cbo_überhöhung"), "1");
            type_and_enter(control<QComboBox>(*dialog(), "cbo_grundriss_mass"), "1000");
        }
        press("cmd_ok");
        if (dialog() != nullptr && dialog()->isVisible()) {
            // More sheets than can be counted.
            QCOMPARE(messages.seen.back().text,
                     text("Bitte übeprüfen Sie die angegebene Grundriss-Maßstabszahl"));
            press("cmd_abbrechen");
        }
        QTRY_VERIFY(dialog() == nullptr);
        for (const char* command : {"m_ansicht_original", "m_plotten_ein", "m_ansicht_original"}) {
            if (action(command)->isEnabled()) {
                action(command)->trigger();
            }
        }
        action("m_datei_beenden")->trigger();
        QVERIFY(!window_->isVisible());
        const Settings left = session_.settings;
        window_.reset();
        session_ = Session();
        start();
        // What was left stands in the profile with the decimals of its masks.
        QVERIFY(std::abs(session_.settings.stnvwert[3] - left.stnvwert[3]) < 0.051);
        QCOMPARE(session_.settings.faktorStrich, left.faktorStrich);
        QVERIFY(window_->isVisible());
    }
};

QTEST_MAIN(FrmTorvelOptionsTest)
#include "frmTorvel_options_wintest.moc"
