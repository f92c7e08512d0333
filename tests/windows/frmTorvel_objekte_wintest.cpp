// The selection of objects, driven by mouse and keyboard.
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>

#include "cut_off_controls.h"
#include "dialog_driver.h"
#include "dialog_keys.h"
#include "torvel_fixture.h"
#include "unnamed_controls.h"
#include "windows/forms/frmObjekte.h"
#include "windows/qt/hint_line.h"

using namespace veldra;
using namespace veldra::test;
using veldra_test::click_mark;
using veldra_test::control;

class FrmObjekteTest : public TorvelFixture {
    Q_OBJECT

 private:
    /// Opens the network and the dialog on it.
    void open_dialog() {
        start_with_network();
        action("m_torvel_objekte")->trigger();
        QVERIFY(dialog() != nullptr);
        QVERIFY(QTest::qWaitForWindowExposed(dialog()));
    }

    [[nodiscard]] FrmObjekte* dialog() const {
        return window_->findChild<FrmObjekte*>(text("frmObjekte"));
    }
    template <typename Control = QWidget>
    [[nodiscard]] Control& of_dialog(const char* name) const {
        return control<Control>(*dialog(), name);
    }
    [[nodiscard]] QRadioButton& option(const char* name) const {
        return of_dialog<QRadioButton>(name);
    }
    void click(QAbstractButton& button) const { click_mark(button); }
    void press_ok() { click(of_dialog<QAbstractButton>("cmd_ok")); }

    /// Options of a group that are usable, as "101".
    [[nodiscard]] QString usable(const char* group, int first, int last) const {
        QString pattern;
        for (int code = first; code <= last; ++code) {
            const QByteArray name = QByteArray(group) + '_' + QByteArray::number(code);
            pattern += text(option(name.constData()).isEnabled() ? "1" : "0");
        }
        return pattern;
    }

 private Q_SLOTS:
    void init() { make_folders(); }
    void cleanup() { close_down(); }

    void the_dialog_bears_its_captions() {
        open_dialog();
        QCOMPARE(dialog()->windowTitle(), text("Auswahl Objekte"));
        QVERIFY(dialog()->isModal());
        const std::pair<const char*, const char*> frames[] = {
            {"fra_bezug", "Bezugssystem"},      {"fra_verwaltung", "Verwaltungsgrenzen"},
            {"fra_test", "Statistischer Test"}, {"fra_nummebez", "Nummerierungsbezirke"},
            {"fra_pube", "Punktbezeichungen"},  {"fra_puwe", "Punktwerte"},
            {"fra_beob", "Beobachtungen"},      {"fra_pusi", "Punktsignaturen"}};
        for (const auto& [name, caption] : frames) {
            QCOMPARE(of_dialog<QGroupBox>(name).title().remove(QLatin1Char('&')), text(caption));
        }
        const std::pair<const char*, const char*> options[] = {
            {"opt_bezu_0", "lokales System"},
            {"opt_bezu_1", "DHDN"},
            {"opt_bezu_2", "ETRS 89"},
            {"opt_bezu_3", "anderes Bezugssystem:"},
            {"opt_verw_0", "keine Darstellung"},
            {"opt_verw_1", "Länder"},
            {"opt_verw_2", "Länder + Regierungsbezirke"},
            {"opt_verw_3", "wie vor + Kreise + kreisfr. Städte"},
            {"opt_verw_4", "wie vor + Gemeinden"},
            {"opt_verw_5", "wie vor + sonstige (1)"},
            {"opt_verw_6", "wie vor + sonstige (2)"},
            {"opt_verw_7", "wie vor + sonstige (3)"},
            {"opt_test_1", "EV"},
            {"opt_test_2", "NV"},
            {"opt_test_3", "EP"},
            {"opt_nube_0", "keine Darstellung"},
            {"opt_nube_1", "TK 25"},
            {"opt_nube_2", "Kilometerquadrate (KLV)"},
            {"opt_nube_3", "Kilometerquadrate (ALK)"},
            {"opt_nube_4", "TK 50"},
            {"opt_nube_5", "TK 100"},
            {"opt_nbez_0", "keine"},
            {"opt_nbez_1", "alle"},
            {"opt_nbez_2", "nur am Rand"},
            {"opt_pube_0", "keine Darstellung"},
            {"opt_pube_1", "Punktbezeichnungen"},
            {"opt_puwe_0", "keine Darstellung"},
            {"opt_puwe_1", "Lageänderungen"},
            {"opt_puwe_2", "Höhenänderungen"},
            {"opt_puwe_3", "Lage- und Höhenänderungen"},
            {"opt_puwe_4", "Lagerestklaffungen"},
            {"opt_puwe_5", "Höhenrestklaffungen"},
            {"opt_puwe_6", "Lage- und Höhenrestklaffungen"},
            {"opt_puwe_7", "Lagefehlerellipsen"},
            {"opt_puwe_8", "Höhenfehler"},
            {"opt_beob_0", "keine Darstellung"},
            {"opt_beob_1", "Lagebeobachtungen"},
            {"opt_beob_2", "Höhenbeobachtungen"},
            {"opt_beob_3", "GPS-Raumvektoren"},
            {"opt_pusi_0", "keine Darstellung"},
            {"opt_pusi_1", "Punktsignaturen"}};
        for (const auto& [name, caption] : options) {
            QCOMPARE(option(name).text(), text(caption));
        }
        const std::pair<const char*, const char*> ticks[] = {
            {"chk_epbe", "mit Epochenbezeichnungen"},
            {"chk_test_restkl", "mit statistischem Test"},
            {"chk_test_beob", "mit statistischem Test"}};
        for (const auto& [name, caption] : ticks) {
            QCOMPARE(of_dialog<QCheckBox>(name).text().remove(QLatin1Char('&')), text(caption));
        }
        QCOMPARE(of_dialog<QLabel>("lbl_nbez").text().remove(QLatin1Char('&')),
                 text("Bezeichnungen:"));
        QCOMPARE(of_dialog<QLabel>("lbl_nube_merizon").text().remove(QLatin1Char('&')),
                 text("Meridianstreifen:"));
        QStringList ellipsoids;
        auto& elli = of_dialog<QComboBox>("cbo_bezu_elli");
        for (int i = 0; i < elli.count(); ++i) {
            ellipsoids << elli.itemText(i);
        }
        QCOMPARE(ellipsoids,
                 QStringList({text("Bessel"), text("Hayford (internatinal)"), text("WGS 72"),
                              text("GRS 80 (WGS 84)"), text("Krassowsky")}));
        auto& abbi = of_dialog<QComboBox>("cbo_bezu_abbi");
        QCOMPARE(abbi.count(), 2);
        QCOMPARE(abbi.itemText(0), text("Gauß-Krüger (3°-Streifen)"));
        QCOMPARE(abbi.itemText(1), text("UTM"));
    }

    void every_control_can_be_told_by_a_screen_reader() {
        open_dialog();
        QCOMPARE(veldra_test::unnamed_controls(*dialog()), QStringList());
    }

    void no_two_captions_share_a_shortcut() {
        open_dialog();
        QCOMPARE(veldra_test::shared_mnemonics(*dialog()), QStringList());
        for (const auto* frame : dialog()->findChildren<QGroupBox*>()) {
            QVERIFY2(frame->title().contains(QLatin1Char('&')), qPrintable(frame->title()));
        }
    }

    void opening_shows_the_selection_and_clears_undo() {
        start_with_network();
        action("lupe_minus")->trigger();
        QVERIFY(action("m_ansicht_undo")->isEnabled());
        session_.obj.obj_puwe = 7;
        session_.obj.obj_pube = 0;
        action("m_torvel_objekte")->trigger();
        QVERIFY(!action("m_ansicht_undo")->isEnabled());
        QCOMPARE(action("m_ansicht_undo")->text().remove(QLatin1Char('&')), text("Rückgängig:"));
        QVERIFY(option("opt_puwe_7").isChecked());
        QVERIFY(option("opt_pube_0").isChecked());
        QVERIFY(option("opt_pusi_1").isChecked());
        QVERIFY(option("opt_beob_1").isChecked());
        QVERIFY(option("opt_bezu_1").isChecked());
        QVERIFY(option("opt_nube_1").isChecked());
        QVERIFY(option("opt_nbez_1").isChecked());
        QVERIFY(option("opt_verw_3").isChecked());
        QCOMPARE(of_dialog<QLineEdit>("txt_nubemerit").text(), text("3"));
    }

    void a_click_stores_at_once_and_ok_reads_and_draws() {
        open_dialog();
        QCOMPARE(session_.lin.count(), 2);
        click(option("opt_beob_0"));
        QCOMPARE(session_.obj.obj_beob, std::int16_t{0});
        QCOMPARE(session_.lin.count(), 2);
        click(option("opt_puwe_4"));
        const Viewport before = session_.view;
        press_ok();
        QTRY_VERIFY(dialog() == nullptr);
        QCOMPARE(session_.lin.count(), 0);
        QCOMPARE(session_.pu.count(), 4);
        QCOMPARE(session_.obj.obj_wert_lage, std::int16_t{2});
        QVERIFY(window_->windowTitle().endsWith(text(": Lagerestklaffungen")));
        QCOMPARE(session_.view.ansicht_masseinheit, before.ansicht_masseinheit);
        QVERIFY(window_->isEnabled());
    }

    void escape_and_the_frame_take_the_selection_as_well() {
        open_dialog();
        click(option("opt_beob_0"));
        QTest::keyClick(dialog(), Qt::Key_Escape);
        QTRY_VERIFY(dialog() == nullptr);
        QCOMPARE(session_.lin.count(), 0);
        action("m_torvel_objekte")->trigger();
        click(option("opt_beob_1"));
        dialog()->close();
        QTRY_VERIFY(dialog() == nullptr);
        QCOMPARE(session_.lin.count(), 2);
    }

    void ok_moves_the_zero_point_of_an_empty_part_and_closing_does_not() {
        write("ve_leer.dat", "HÖHENUNTERSCHIED 1 2 3 4\r\n");
        veldra_test::MessageBoxes boxes;
        start_and_open("ve_leer.dat");
        session_.plot.plot_null_rechts = 17;
        action("m_torvel_objekte")->trigger();
        dialog()->close();
        QCOMPARE(session_.plot.plot_null_rechts, 17.0);
        QTRY_VERIFY(dialog() == nullptr);
        action("m_torvel_objekte")->trigger();
        QVERIFY(!of_dialog("fra_bezug").isEnabled());
        for (const char* name : {"opt_bezu_0", "opt_bezu_1", "opt_bezu_2", "opt_bezu_3"}) {
            QVERIFY2(!option(name).isChecked(), name);
        }
        press_ok();
        QCOMPARE(session_.plot.plot_null_rechts, -2.5);
        QCOMPARE(boxes.seen.size(), std::size_t{3});
    }

    void tests_follow_what_is_shown() {
        open_dialog();
        QVERIFY(!of_dialog("chk_epbe").isEnabled());
        QVERIFY(!of_dialog("chk_test_restkl").isEnabled());
        QVERIFY(of_dialog("chk_test_beob").isEnabled());
        QVERIFY(!of_dialog("fra_test").isEnabled());
        click(of_dialog<QAbstractButton>("chk_test_beob"));
        QCOMPARE(session_.obj.obj_test_beob, std::int16_t{-1});
        QVERIFY(of_dialog("fra_test").isEnabled());
        QCOMPARE(usable("opt_test", 1, 3), text("111"));
        click(option("opt_test_3"));
        QCOMPARE(session_.obj.obj_test, std::int16_t{3});
        click(option("opt_beob_2"));
        QCOMPARE(option("opt_test_3").text(), text("EH"));
        click(option("opt_puwe_5"));
        QVERIFY(of_dialog("chk_test_restkl").isEnabled());
        QCOMPARE(usable("opt_test", 1, 3), text("111"));
        click(of_dialog<QAbstractButton>("chk_test_restkl"));
        QCOMPARE(usable("opt_test", 1, 3), text("110"));
        QVERIFY(option("opt_test_1").isChecked());
        QCOMPARE(session_.obj.obj_test, std::int16_t{1});
        click(option("opt_test_3"));  // out of use
        QCOMPARE(session_.obj.obj_test, std::int16_t{1});
        click(option("opt_puwe_6"));
        QVERIFY(!of_dialog("chk_test_restkl").isEnabled());
        QVERIFY(of_dialog<QCheckBox>("chk_test_restkl").isChecked());
        QCOMPARE(usable("opt_test", 1, 3), text("111"));
        click(option("opt_beob_0"));
        QCOMPARE(option("opt_test_3").text(), text("EP / EH"));
        QCOMPARE(usable("opt_test", 1, 3), text("000"));
        click(option("opt_puwe_2"));
        QVERIFY(of_dialog("chk_epbe").isEnabled());
        click(of_dialog<QAbstractButton>("chk_epbe"));
        QCOMPARE(session_.obj.obj_epbe, std::int16_t{-1});
    }

    void reference_systems_follow_the_eastings() {
        open_dialog();  // eastings of 3 500 000 m
        QCOMPARE(usable("opt_bezu", 0, 3), text("1101"));
        auto& elli = of_dialog<QComboBox>("cbo_bezu_elli");
        QVERIFY(!elli.isEnabled());
        click(option("opt_bezu_3"));
        QVERIFY(elli.isEnabled());
        QVERIFY(of_dialog("cbo_bezu_abbi").isEnabled());
        elli.setFocus();
        QTest::keyClick(&elli, Qt::Key_Down);
        QCOMPARE(session_.obj.obj_bezu_elli, 2);
        click(option("opt_bezu_0"));
        QCOMPARE(session_.obj.obj_bezu, std::int16_t{0});
        QVERIFY(!elli.isEnabled());
        QCOMPARE(elli.currentIndex(), 0);
        QVERIFY(!of_dialog("fra_nummebez").isEnabled());
        QVERIFY(!of_dialog("fra_verwaltung").isEnabled());
        QVERIFY(option("opt_nube_0").isChecked());
        QVERIFY(option("opt_verw_0").isChecked());
        QCOMPARE(of_dialog<QLineEdit>("txt_nubemerit").text(), QString());
        QCOMPARE(session_.obj.obj_nube, std::int16_t{1});
        QCOMPARE(session_.obj.obj_verw, std::int16_t{3});
        click(option("opt_bezu_1"));
        QVERIFY(option("opt_nube_1").isChecked());
        QVERIFY(option("opt_verw_3").isChecked());
        QCOMPARE(of_dialog<QLineEdit>("txt_nubemerit").text(), text("3"));
        QCOMPARE(elli.currentIndex(), 0);
    }

    void meridian_strip_is_stepped_typed_and_wrapped() {
        open_dialog();
        auto& typed = of_dialog<QLineEdit>("txt_nubemerit");
        QVERIFY(!typed.isEnabled());
        click(option("opt_nube_2"));
        QVERIFY(typed.isEnabled());
        QVERIFY(of_dialog("cmd_nubemerit_1").isEnabled());
        click(of_dialog<QAbstractButton>("cmd_nubemerit_2"));
        QCOMPARE(session_.obj.obj_nube_meridian, 4);
        QCOMPARE(typed.text(), text("4"));
        veldra_test::type(typed, "0");
        click(of_dialog<QAbstractButton>("cmd_nubemerit_1"));
        QCOMPARE(session_.obj.obj_nube_meridian, 119);
        typed.setFocus();
        QTest::keyClick(&typed, Qt::Key_Right);
        QCOMPARE(session_.obj.obj_nube_meridian, 0);
        QCOMPARE(typed.text(), text("0"));
        QTest::keyClick(&typed, Qt::Key_Left, Qt::KeypadModifier);
        QCOMPARE(session_.obj.obj_nube_meridian, 119);
        QTest::keyClick(&typed, Qt::Key_Up);
        QVERIFY(option("opt_nube_3").hasFocus());
        typed.setFocus();
        QTRY_COMPARE(typed.selectedText(), text("119"));
        QTest::keyClick(&typed, Qt::Key_Down);
        QVERIFY(option("opt_nbez_1").hasFocus());
        QCOMPARE(session_.obj.obj_nube, std::int16_t{2});
        click(option("opt_nube_4"));
        QVERIFY(!typed.isEnabled());
        click(option("opt_nube_0"));
        QVERIFY(!option("opt_nbez_1").isEnabled());
        QVERIFY(!of_dialog("lbl_nbez").isEnabled());
    }

    void a_strip_that_there_is_not_is_told() {
        open_dialog();
        option("opt_nube_2").click();
        auto& strip = control<QLineEdit>(*dialog(), "txt_nubemerit");
        const auto& hint = control<HintLine>(*dialog(), "lbl_hinweis");
        for (const char* wrong : {"120", "-1", "abc"}) {
            veldra_test::type(strip, "119");
            QCOMPARE(hint.hint(), QString());
            veldra_test::type(strip, wrong);
            QCOMPARE(hint.hint(), text("Meridianstreifen: 0 bis 119"));
        }
    }

    void typed_meridian_counts_when_the_dialog_is_left() {
        open_dialog();
        click(option("opt_nube_3"));
        veldra_test::type_and_enter(of_dialog<QLineEdit>("txt_nubemerit"), "7");
        QTRY_VERIFY(dialog() == nullptr);  // the return key is OK
        QCOMPARE(session_.obj.obj_nube_meridian, 7);
        action("m_torvel_objekte")->trigger();
        veldra_test::type(of_dialog<QLineEdit>("txt_nubemerit"), "8");
        QTest::keyClick(dialog(), Qt::Key_Escape);
        QCOMPARE(session_.obj.obj_nube_meridian, 8);
    }

    void keyboard_goes_through_the_groups_and_the_arrows_choose() {
        open_dialog();
        QVERIFY(option("opt_beob_1").hasFocus());
        QTest::keyClick(dialog()->focusWidget(), Qt::Key_Down);
        QVERIFY(option("opt_beob_2").isChecked());
        QCOMPARE(session_.obj.obj_beob, std::int16_t{2});
        QCOMPARE(veldra_test::tab_chain(*dialog()).join(QLatin1Char(' ')),
                 text("opt_beob_2 chk_test_beob opt_pusi_1 opt_puwe_0 opt_pube_1 opt_nube_1 "
                      "opt_nbez_1 opt_bezu_1 opt_verw_3 cmd_ok"));
    }

    void shortcut_of_the_district_labels_leads_to_the_choice_and_keeps_it() {
        open_dialog();
        dialog()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dialog()));
        for (const std::int16_t chosen : {std::int16_t{1}, std::int16_t{2}, std::int16_t{0}}) {
            const QByteArray name = "opt_nbez_" + QByteArray::number(chosen);
            click(option(name.constData()));
            QCOMPARE(session_.obj.obj_nbez, chosen);
            option("opt_beob_1").setFocus();
            QTest::keyClick(dialog(), Qt::Key_B, Qt::AltModifier);
            QTRY_VERIFY(option(name.constData()).hasFocus());
            QTest::qWait(150);  // a click by shortcut takes its time
            QCOMPARE(session_.obj.obj_nbez, chosen);
        }
    }

    void shortcuts_of_frames_and_boxes_work() {
        open_dialog();
        dialog()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dialog()));
        QTest::keyClick(dialog(), Qt::Key_N, Qt::AltModifier);
        QVERIFY(option("opt_nube_1").hasFocus());
        QTest::keyClick(dialog(), Qt::Key_I, Qt::AltModifier);
        QTRY_COMPARE(session_.obj.obj_test_beob, std::int16_t{-1});
    }

    void selection_comes_back_from_the_file() {
        open_dialog();
        click(option("opt_verw_5"));
        click(option("opt_nbez_2"));
        press_ok();
        QTRY_VERIFY(dialog() == nullptr);
        action("m_datei_beliebig")->trigger();
        QCOMPARE(session_.obj.obj_verw, std::int16_t{5});
        QCOMPARE(session_.obj.obj_nbez, std::int16_t{2});
    }

    void system_that_ends_takes_the_selection_with_it() {
        open_dialog();
        click(option("opt_verw_6"));
        window_->end_by_system();
        QVERIFY(!window_->isVisible());
        QVERIFY(!window_->run().programm_aktiv);
        start_and_open("ve_quadrat.dat");
        QCOMPARE(session_.obj.obj_verw, std::int16_t{6});
    }

    /// Every caption has the room it needs, and the dialog fits on the screen.
    void nothing_is_cut_off() {
        open_dialog();
        const QString pictures = qEnvironmentVariable("VELDRA_PICTURES");
        if (!pictures.isEmpty()) {
            QVERIFY(dialog()->grab().save(pictures + text("/frmObjekte.png")));
        }
        QCOMPARE(veldra_test::cut_off_controls(*dialog()), QStringList());
        const QSize screen = window_->screen()->availableSize();
        QVERIFY(dialog()->frameGeometry().width() <= screen.width());
        QVERIFY(dialog()->frameGeometry().height() <= screen.height());
        auto* area = dialog()->findChild<QScrollArea*>();
        QVERIFY(area->widget()->width() >= area->widget()->minimumSizeHint().width());
        QVERIFY(area->widget()->height() >= area->widget()->minimumSizeHint().height());
        // What a screen of 1366 x 768 has at 150 percent is room enough.
        const double scale = dialog()->logicalDpiY() / 96.0;
        if (screen.width() >= 910 * scale && screen.height() >= 512 * scale) {
            QCOMPARE(area->verticalScrollBar()->maximum(), 0);
            QCOMPARE(area->horizontalScrollBar()->maximum(), 0);
        }
    }

    void the_keyboard_brings_controls_into_sight() {
        open_dialog();
        dialog()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dialog()));
        dialog()->resize(400, 300);
        auto* area = dialog()->findChild<QScrollArea*>();
        const auto in_sight = [&](const char* name) {
            const QWidget& widget = of_dialog(name);
            return area->viewport()->rect().contains(
                QRect(widget.mapTo(area->viewport(), QPoint()), QSize(16, widget.height())));
        };
        QTRY_VERIFY(area->verticalScrollBar()->maximum() > 0);
        QVERIFY(!in_sight("opt_verw_3"));
        QTest::keyClick(dialog(), Qt::Key_V, Qt::AltModifier);
        QTRY_VERIFY(in_sight("opt_verw_3"));
        QVERIFY(!in_sight("opt_verw_7"));
        for (int i = 0; i < 4; ++i) {
            QTest::keyClick(dialog()->focusWidget(), Qt::Key_Down);
        }
        QCOMPARE(session_.obj.obj_verw, std::int16_t{7});
        QVERIFY(in_sight("opt_verw_7"));
        QTest::keyClick(dialog()->focusWidget(), Qt::Key_Backtab);
        QVERIFY(in_sight("opt_bezu_1"));
    }

    void eastings_decide_between_dhdn_and_etrs_data() {
        QTest::addColumn<QByteArray>("easting");
        QTest::addColumn<QString>("systems");
        QTest::newRow("strip 2") << QByteArray("2500000") << text("1101");
        QTest::newRow("just below 16 million") << QByteArray("15999999.999") << text("1101");
        QTest::newRow("16 million") << QByteArray("16000000") << text("1011");
        QTest::newRow("zone 32") << QByteArray("32500000") << text("1011");
    }

    void eastings_decide_between_dhdn_and_etrs() {
        QFETCH(QByteArray, easting);
        QFETCH(QString, systems);
        write("ve_ost.dat", "PUNKTSIGNATUR " + easting + " 5600000 0 0 1 \"1\"\r\n");
        start_and_open("ve_ost.dat");
        action("m_torvel_objekte")->trigger();
        QCOMPARE(usable("opt_bezu", 0, 3), systems);
    }

    void return_is_ok_from_everywhere() {
        start_with_network();
        for (const char* name : {"opt_beob_1", "chk_test_beob", "opt_verw_3"}) {
            action("m_torvel_objekte")->trigger();
            of_dialog(name).setFocus();
            QTest::keyClick(&of_dialog(name), Qt::Key_Return);
            QTRY_VERIFY2(dialog() == nullptr, name);
        }
    }
};

QTEST_MAIN(FrmObjekteTest)
#include "frmTorvel_objekte_wintest.moc"
