// The dialog of network parts, driven by mouse and keyboard.
#include <QListWidget>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QWindow>

#include "cut_off_controls.h"
#include "dialog_driver.h"
#include "dialog_keys.h"
#include "torvel_fixture.h"
#include "unnamed_controls.h"
#include "windows/forms/frmNetzteile.h"
#include "windows/forms/frmObjekte.h"

using namespace veldra;
using namespace veldra::test;
using veldra_test::click;
using veldra_test::control;

namespace {

constexpr const char* three_parts =
    "NETZTEIL Eins\r\nMA\xDFSTABGRUNDRISS 1000\r\nTITEL2 erstes\r\n"
    "PUNKTSIGNATUR 3500000 5600000 0 0 1 \"1\"\r\nPUNKTSIGNATUR 3500100 5600100 0 0 0 \"2\"\r\n"
    "NETZTEIL H\xF6he\r\nMA\xDFSTABGRUNDRISS 500\r\n"
    "PUNKTSIGNATUR 3500000 5600000 0 0 1 \"3\"\r\n"
    "NETZTEIL Leer\r\n";

}  // namespace

class FrmNetzteileTest : public TorvelFixture {
    Q_OBJECT

 private:
    void open_parts() {
        write("ve_teile.dat", three_parts);
        start_and_open("ve_teile.dat");
        QVERIFY(dialog() != nullptr);
        QVERIFY(QTest::qWaitForWindowExposed(dialog()));
    }

    [[nodiscard]] FrmNetzteile* dialog() const {
        for (auto* found : window_->findChildren<FrmNetzteile*>()) {
            if (found->isVisible()) {
                return found;
            }
        }
        return nullptr;
    }
    [[nodiscard]] QListWidget& list() const {
        return control<QListWidget>(*dialog(), "lst_netzteile");
    }
    [[nodiscard]] QPushButton& button(const char* name) const {
        return control<QPushButton>(*dialog(), name);
    }
    void click_row(int row) const {
        const QRect box = list().visualItemRect(list().item(row));
        QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, box.center());
    }
    /// Where the check of a row stands.
    void click_check(int row) const {
        const QRect box = list().visualItemRect(list().item(row));
        QTest::mouseClick(list().viewport(), Qt::LeftButton, {},
                          QPoint(box.left() + 8, box.center().y()));
    }
    [[nodiscard]] QString marks() const {
        QString pattern;
        for (int row = 0; row < list().count(); ++row) {
            pattern += text(list().item(row)->checkState() == Qt::Checked ? "1" : "0");
        }
        return pattern;
    }

 private Q_SLOTS:
    void init() { make_folders(); }
    void cleanup() { close_down(); }

    void opening_a_file_with_parts_lists_them() {
        open_parts();
        QCOMPARE(dialog()->windowTitle(), text("Netzteile"));
        QVERIFY(!dialog()->isModal());
        QCOMPARE(control<QLabel>(*dialog(), "lbl_netzteile").text().remove(QLatin1Char('&')),
                 text("Plotten ja / nein"));
        QCOMPARE(button("cmd_plotten").text().remove(QLatin1Char('&')), text("plotten"));
        QCOMPARE(button("cmd_nicht_plotten").text().remove(QLatin1Char('&')),
                 text("nicht plotten"));
        QCOMPARE(button("cmd_anzeigen").text().remove(QLatin1Char('&')), text("Netzteil anzeigen"));
        QCOMPARE(list().count(), 3);
        QCOMPARE(list().item(1)->text(), text("Höhe"));
        QCOMPARE(list().currentRow(), 0);
        QCOMPARE(marks(), text("111"));
        QVERIFY(!button("cmd_plotten").isEnabled());
        QVERIFY(button("cmd_nicht_plotten").isEnabled());
        QVERIFY(action("m_ansicht_netzteile")->isChecked());
        QVERIFY(!action("netzteile")->isEnabled());
    }

    void every_control_can_be_told_by_a_screen_reader() {
        open_parts();
        QCOMPARE(veldra_test::unnamed_controls(*dialog()), QStringList());
    }

    /// The menus of the main window hear their letters in this dialog too.
    void no_letter_leads_to_two_places() {
        open_parts();
        QCOMPARE(veldra_test::shared_mnemonics(*dialog()), QStringList());
        QString of_menus;
        for (const QAction* entry : window_->menuBar()->actions()) {
            of_menus += entry->text().section(QLatin1Char('&'), 1, 1).left(1).toLower();
        }
        QVERIFY(of_menus.size() >= 6);
        for (const auto* widget : dialog()->findChildren<QPushButton*>()) {
            const QString letter = widget->text().section(QLatin1Char('&'), 1, 1).left(1);
            QCOMPARE(letter.size(), 1);
            QVERIFY2(!of_menus.contains(letter.toLower()), qPrintable(widget->text()));
        }
    }

    void letters_press_the_buttons() {
        open_parts();
        dialog()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dialog()));
        QTest::keyClick(&list(), Qt::Key_N, Qt::AltModifier);
        QTRY_COMPARE(marks(), text("011"));
        QTest::keyClick(&list(), Qt::Key_L, Qt::AltModifier);
        QTRY_COMPARE(marks(), text("111"));
        button("cmd_anzeigen").setFocus();
        QTest::keyClick(dialog()->focusWidget(), Qt::Key_J, Qt::AltModifier);
        QTRY_VERIFY(list().hasFocus());
        QTest::keyClick(&list(), Qt::Key_Down);
        QTest::keyClick(&list(), Qt::Key_Z, Qt::AltModifier);
        QTRY_COMPARE(session_.netz_aktuell, 2);
    }

    void return_presses_the_button_that_has_the_focus() {
        open_parts();
        click_row(1);
        button("cmd_nicht_plotten").setFocus();
        QTest::keyClick(&button("cmd_nicht_plotten"), Qt::Key_Return);
        QCOMPARE(marks(), text("101"));
        QCOMPARE(session_.netz_aktuell, 1);
        QVERIFY(button("cmd_plotten").hasFocus());
        QTest::keyClick(&button("cmd_plotten"), Qt::Key_Return);
        QCOMPARE(marks(), text("111"));
        list().setFocus();
        QTest::keyClick(&list(), Qt::Key_Return);
        QCOMPARE(session_.netz_aktuell, 2);
    }

    void keyboard_goes_through_list_and_buttons() {
        open_parts();
        dialog()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dialog()));
        QVERIFY(list().hasFocus());
        QCOMPARE(
            veldra_test::tab_chain(*dialog()),
            QStringList({text("lst_netzteile"), text("cmd_nicht_plotten"), text("cmd_anzeigen")}));
    }

    /// The selection that is being made is that of the part in view.
    void a_modal_dialog_keeps_the_hand_off_the_parts() {
        open_parts();
        click_row(1);
        action("m_torvel_objekte")->trigger();
        auto* modal = window_->findChild<FrmObjekte*>();
        QVERIFY(QTest::qWaitForWindowExposed(modal));
        QPushButton& show_part = button("cmd_anzeigen");
        const QPoint place = show_part.mapTo(dialog(), show_part.rect().center());
        QTest::mouseClick(dialog()->windowHandle(), Qt::LeftButton, {}, place);
        QCOMPARE(session_.netz_aktuell, 1);
        modal->close();
        QTest::mouseClick(dialog()->windowHandle(), Qt::LeftButton, {}, place);
        QCOMPARE(session_.netz_aktuell, 2);
    }

    void a_file_without_parts_never_shows_it() {
        start_with_network();
        QVERIFY(dialog() == nullptr);
        QVERIFY(!action("m_ansicht_netzteile")->isEnabled());
        QCOMPARE(session_.netz_aktuell, 0);
    }

    void a_click_never_changes_a_mark() {
        open_parts();
        click_check(1);
        QCOMPARE(marks(), text("111"));
        QTest::keyClick(&list(), Qt::Key_Space);
        QCOMPARE(marks(), text("111"));
        QCOMPARE(session_.netz[2].netz_plotmarke, std::int16_t{-1});
        QCOMPARE(list().currentRow(), 1);
    }

    void buttons_mark_the_selected_part() {
        open_parts();
        click_row(1);
        click(button("cmd_nicht_plotten"));
        QCOMPARE(marks(), text("101"));
        QCOMPARE(session_.netz[2].netz_plotmarke, std::int16_t{0});
        QVERIFY(button("cmd_plotten").isEnabled());
        QVERIFY(!button("cmd_nicht_plotten").isEnabled());
        click_row(0);
        QVERIFY(!button("cmd_plotten").isEnabled());
        QVERIFY(button("cmd_nicht_plotten").isEnabled());
        click_row(1);
        click(button("cmd_plotten"));
        QCOMPARE(marks(), text("111"));
        QCOMPARE(session_.netz_aktuell, 1);
    }

    void marking_by_keyboard_keeps_the_focus_on_the_buttons() {
        open_parts();
        button("cmd_nicht_plotten").setFocus();
        QTest::keyClick(&button("cmd_nicht_plotten"), Qt::Key_Space);
        QCOMPARE(marks(), text("011"));
        QVERIFY(button("cmd_plotten").hasFocus());
        QTest::keyClick(&button("cmd_plotten"), Qt::Key_Space);
        QCOMPARE(marks(), text("111"));
        QVERIFY(button("cmd_nicht_plotten").hasFocus());
    }

    void showing_another_part_keeps_what_was_moved() {
        open_parts();
        session_.pu[2].pu_bez_rechts = 70;
        session_.obj.obj_pube = 0;
        session_.plot.plot_null_rechts = 12;
        action("lupe_minus")->trigger();
        click_row(1);
        click(button("cmd_anzeigen"));
        QCOMPARE(session_.netz_aktuell, 2);
        QCOMPARE(session_.plot.plot_massstab, 1.0 / 500);
        QCOMPARE(session_.netz[1].netz_null_rechts, 12.0);
        QCOMPARE(session_.obj.obj_pube, std::int16_t{1});
        QCOMPARE(session_.titel[1].getTitelText(), std::string());
        QCOMPARE(session_.pu.count(), 1);
        QVERIFY(!action("m_ansicht_undo")->isEnabled());
        QVERIFY(window_->windowTitle().contains(text("(Höhe)")));
        QVERIFY(QFile::exists(path("ve_teile.dat_1")));
        click_row(0);
        click(button("cmd_anzeigen"));
        QCOMPARE(session_.pu[2].pu_bez_rechts, 70.0);
        QCOMPARE(session_.obj.obj_pube, std::int16_t{0});
        QCOMPARE(session_.plot.plot_null_rechts, 12.0);
        QCOMPARE(session_.titel[1].getTitelText(), std::string("erstes"));
    }

    void showing_the_current_part_does_nothing() {
        open_parts();
        action("lupe_minus")->trigger();
        click(button("cmd_anzeigen"));
        QVERIFY(action("m_ansicht_undo")->isEnabled());
        QVERIFY(!QFile::exists(path("ve_teile.dat_1")));
    }

    void return_and_double_click_show_the_selected_part() {
        open_parts();
        list().setFocus();
        QTest::keyClick(&list(), Qt::Key_Down);
        QTest::keyClick(&list(), Qt::Key_Return);
        QCOMPARE(session_.netz_aktuell, 2);
        click_row(0);
        const QRect box = list().visualItemRect(list().item(0));
        QTest::mouseDClick(list().viewport(), Qt::LeftButton, {}, box.center());
        QCOMPARE(session_.netz_aktuell, 1);
    }

    void arrows_of_the_list_do_not_move_the_picture() {
        open_parts();
        dialog()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dialog()));
        const Viewport before = session_.view;
        list().setFocus();
        QTest::keyClick(&list(), Qt::Key_Down);
        QCOMPARE(list().currentRow(), 1);
        QTest::keyClick(&list(), Qt::Key_Home);
        QCOMPARE(list().currentRow(), 0);
        QCOMPARE(session_.view.ansicht_hw_min, before.ansicht_hw_min);
    }

    void a_part_with_nothing_to_draw_loses_its_mark() {
        open_parts();
        veldra_test::MessageBoxes boxes;
        click_row(2);
        click(button("cmd_anzeigen"));
        QCOMPARE(boxes.seen.size(), std::size_t{1});
        QCOMPARE(boxes.seen[0].text, text("Netzteil Leer enthält keine darzustellenden Objekte"));
        QCOMPARE(marks(), text("110"));
        QVERIFY(button("cmd_plotten").isEnabled());
    }

    void menu_closes_and_opens_it_where_it_was() {
        open_parts();
        const QRect screen = window_->screen()->geometry();
        QCOMPARE(dialog()->pos().x(), std::max(0, screen.width() * 19 / 20 - dialog()->width()));
        QCOMPARE(dialog()->pos().y(), screen.height() / 20);
        dialog()->move(40, 60);
        click_row(1);
        action("m_ansicht_netzteile")->trigger();
        QVERIFY(dialog() == nullptr);
        QVERIFY(!action("m_ansicht_netzteile")->isChecked());
        QVERIFY(action("netzteile")->isEnabled());
        action("netzteile")->trigger();
        QVERIFY(dialog() != nullptr);
        QCOMPARE(dialog()->pos(), QPoint(40, 60));
        QCOMPARE(list().currentRow(), 0);
        QVERIFY(action("m_ansicht_netzteile")->isChecked());
        QVERIFY(!action("netzteile")->isEnabled());
        QTest::keyClick(dialog(), Qt::Key_Escape);
        QVERIFY(dialog() == nullptr);
        action("m_ansicht_netzteile")->trigger();
        dialog()->close();
        QVERIFY(dialog() == nullptr);
        QVERIFY(!action("m_ansicht_netzteile")->isChecked());
    }

    void buttons_stand_for_the_first_part_when_it_opens() {
        open_parts();
        click_row(1);
        click(button("cmd_anzeigen"));
        click(button("cmd_nicht_plotten"));
        action("m_ansicht_netzteile")->trigger();
        action("m_ansicht_netzteile")->trigger();
        QCOMPARE(list().currentRow(), 1);
        QVERIFY(!button("cmd_plotten").isEnabled());
        QVERIFY(button("cmd_nicht_plotten").isEnabled());
        click_row(1);
        QVERIFY(button("cmd_plotten").isEnabled());
    }

    void another_file_is_listed_from_its_first_part() {
        open_parts();
        click_row(1);
        click(button("cmd_anzeigen"));
        write("ve_andere.dat",
              "NETZTEIL X\r\nPUNKTSIGNATUR 3500000 5600000 0 0 1\r\nNETZTEIL Y\r\nNETZTEIL Z\r\n");
        window_->choose_file = [this] { return path("ve_andere.dat"); };
        action("m_datei_beliebig")->trigger();
        QCOMPARE(list().count(), 3);
        QCOMPARE(list().item(0)->text(), text("X"));
        QCOMPARE(list().currentRow(), 0);
        write("ve_ohne.dat", square_network);
        window_->choose_file = [this] { return path("ve_ohne.dat"); };
        action("m_datei_beliebig")->trigger();
        QVERIFY(dialog() == nullptr);
    }

    void keys_with_ctrl_reach_the_main_window() {
        open_parts();
        dialog()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dialog()));
        QTest::keyClick(&list(), Qt::Key_Q, Qt::ControlModifier);
        QVERIFY(!window_->isVisible());
        QVERIFY(!window_->run().programm_aktiv);
        QVERIFY(dialog() == nullptr);
        QVERIFY(!QFile::exists(path("ve_teile.dat_1")));
    }

    void nothing_is_cut_off() {
        open_parts();
        const QString pictures = qEnvironmentVariable("VELDRA_PICTURES");
        if (!pictures.isEmpty()) {
            QVERIFY(dialog()->grab().save(pictures + text("/frmNetzteile.png")));
        }
        QCOMPARE(veldra_test::cut_off_controls(*dialog()), QStringList());
        QVERIFY(window_->screen()->availableGeometry().contains(dialog()->geometry()));
        QVERIFY(list().viewport()->height() >= 3 * list().sizeHintForRow(0));
    }
};

QTEST_MAIN(FrmNetzteileTest)
#include "frmTorvel_netzteile_wintest.moc"
