#include <array>

#include "display_dialog_fixture.h"
#include "text/text_forms.h"
#include "windows/qt/hint_line.h"

using namespace veldra;
using namespace veldra_test;

/// Boxes, scales, OK and Abbrechen. Each test has a session and a dialog of its own.
class FrmDarstellungenTest : public DisplayDialogFixture {
    Q_OBJECT

 private Q_SLOTS:
    void init() { make_session(); }
    void cleanup() { close_down(); }

    void opening_shows_the_values_in_force() {
        settings().punsigscr[0] = 12.5F;
        settings().stanptp = -30;
        settings().Stquerplo = 7;
        settings().faktorStrich = 4;
        session_->vektor_massstab[5] = 0.1;
        session_->plot.plot_massstab = 1.0 / 25000;
        open();
        QCOMPARE(box("txt_punktradius_screen").text(), text("12.5"));
        QCOMPARE(box("txt_punktradius_plott").text(), text("2.0"));
        QCOMPARE(box("txt_offset_hoch_screen").text(), text("-30.0"));
        QCOMPARE(box("txt_terstrecken_sig_screen").text(), text("200"));
        QCOMPARE(box("txt_terstrecken_sig_plott").text(), text("7.0"));
        QCOMPARE(box("txt_orientierung_sig_plott").text(), text("35.0"));
        QCOMPARE(box("txt_grenzwert").text(), text("0.5"));
        QCOMPARE(box("txt_nv_wert_3").text(), text("3.3"));
        QCOMPARE(combo("cbo_grundriss_mass").currentText(), text("25 000"));
        QCOMPARE(combo("cbo_überhöhung").currentText(), text("4"));
        QCOMPARE(combo("cbo_vekt_mass_höhe_2").currentText(), text("10"));
        QCOMPARE(combo("cbo_grundriss_mass").count(), static_cast<int>(ApplyScaleList().size()));
        QCOMPARE(combo("cbo_grundriss_mass").itemText(0), text("5 000 000"));
    }

    void number_boxes_take_any_number_data() {
        QTest::addColumn<QByteArray>("typed");
        QTest::addColumn<double>("value");
        QTest::newRow("point") << QByteArray("12.5") << 12.5;
        QTest::newRow("comma") << QByteArray("12,5") << 12.5;
        QTest::newRow("empty") << QByteArray("") << 0.0;
        QTest::newRow("zero") << QByteArray("0") << 0.0;
        QTest::newRow("negative") << QByteArray("-8") << -8.0;
        QTest::newRow("letters") << QByteArray("abc") << 0.0;
        QTest::newRow("digits and letters") << QByteArray("7abc") << 7.0;
        QTest::newRow("above 16 bits") << QByteArray("70000") << 70000.0;
    }

    void number_boxes_take_any_number() {
        QFETCH(QByteArray, typed);
        QFETCH(double, value);
        open();
        const char* const names[] = {"txt_punktradius_screen",      "txt_offset_rechts_screen",
                                     "txt_offset_hoch_screen",      "txt_punktradius_plott",
                                     "txt_pubez_schrift_plott",     "txt_nubez_schrift_plott",
                                     "txt_terstrecken_sig_screen",  "txt_gpsstrecken_sig_screen",
                                     "txt_orientierung_sig_screen", "txt_terstrecken_sig_plott",
                                     "txt_gpsstrecken_sig_plott",   "txt_orientierung_sig_plott"};
        const int tabs[] = {0, 0, 0, 1, 1, 1, 2, 2, 2, 3, 3, 3};
        for (std::size_t i = 0; i < std::size(names); ++i) {
            show_tab(static_cast<DisplayTab>(tabs[i]));
            type_and_enter(box(names[i]), typed.constData());
        }
        const Settings& now = settings();
        QCOMPARE(static_cast<double>(now.punsigscr[0]), value);
        QCOMPARE(now.stanplt, value);
        QCOMPARE(now.stanptp, value);
        QCOMPARE(static_cast<double>(now.punsigplo[0]), value);
        QCOMPARE(static_cast<double>(now.pubsizplo), value);
        QCOMPARE(static_cast<double>(now.nubsizplo), value);
        QCOMPARE(now.Stquerscr, value);
        QCOMPARE(now.Stkreuscr, value);
        QCOMPARE(now.lenoriscr, value);
        QCOMPARE(now.Stquerplo, value);
        QCOMPARE(now.Stkreuplo, value);
        QCOMPARE(now.lenoriplo, value);
        QVERIFY(dialog_->isVisible());  // Enter is not for the default button
        QVERIFY(boxes_->seen.empty());
    }

    void leaving_a_box_reads_it_and_gaining_the_focus_selects_its_text() {
        open();
        type(box("txt_punktradius_screen"), "33");
        QCOMPARE(settings().punsigscr[0], 60.0F);
        box("txt_offset_rechts_screen").setFocus();
        QApplication::processEvents();
        QCOMPARE(settings().punsigscr[0], 33.0F);
        QCOMPARE(box("txt_offset_rechts_screen").selectedText(), text("60.0"));
    }

    void offsets_are_the_same_on_both_point_tabs() {
        open();
        type_and_enter(box("txt_offset_rechts_screen"), "75");
        show_tab(DisplayTab::points_plot);
        QCOMPARE(box("txt_offset_rechts_plott").text(), text("75.0"));
    }

    void limits_beyond_their_bounds_take_the_bound_after_a_message_data() {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("typed");
        QTest::addColumn<QByteArray>("message");
        QTest::addColumn<QByteArray>("shown");
        const auto row = [](const char* title, const char* name, const char* typed,
                            const char* message, const char* shown) {
            QTest::newRow(title) << QByteArray(name) << QByteArray(typed) << QByteArray(message)
                                 << QByteArray(shown);
        };
        row("EV 150", "txt_ev_wert", "150", "Wert größer 100.0 nicht sinvoll", "100.0");
        row("EV -1", "txt_ev_wert", "-1", "Wert kleiner 0.0 nicht sinnvoll", "0.0");
        row("EV comma", "txt_ev_wert", "12,5", "", "12.5");
        row("EV at the bound", "txt_ev_wert", "100", "", "100.0");
        row("EV letters", "txt_ev_wert", "abc", "", "0.0");
        row("limit empty", "txt_grenzwert", "", "Wert kleiner 0.5 nicht sinnvoll", "0.5");
        row("limit 0", "txt_grenzwert", "0", "Wert kleiner 0.5 nicht sinnvoll", "0.5");
        row("limit above", "txt_grenzwert", "100.1", "Wert größer 100.0 nicht sinvoll", "100.0");
        row("NV 1 above 16 bits", "txt_nv_wert_1", "32768", "", "32768.0");
        row("NV 1 too large", "txt_nv_wert_1", "100000", "Wert größer 99999.9 nicht sinvoll",
            "99999.9");
        row("NV 2 below NV 1", "txt_nv_wert_2", "0,5", "Wert kleiner 1.0 nicht sinnvoll", "1.0");
        row("NV 3 below NV 2", "txt_nv_wert_3", "1.9", "Wert kleiner 2.0 nicht sinnvoll", "2.0");
        row("EP 1 negative", "txt_ep_wert_1", "-0.1", "Wert kleiner 0.0 nicht sinnvoll", "0.0");
        row("EP 2 below EP 1", "txt_ep_wert_2", "1", "Wert kleiner 2.0 nicht sinnvoll", "2.0");
    }

    void limits_beyond_their_bounds_take_the_bound_after_a_message() {
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, typed);
        QFETCH(QByteArray, message);
        QFETCH(QByteArray, shown);
        open();
        show_tab(DisplayTab::tests);
        QLineEdit& edit = box(name.constData());
        const QColor usual = edit.palette().color(QPalette::Base);
        QColor behind_box;
        boxes_->at_box = [&] { behind_box = edit.palette().color(QPalette::Base); };
        type_and_enter(edit, typed.constData());
        QCOMPARE(edit.text(), QString::fromUtf8(shown));
        QCOMPARE(edit.palette().color(QPalette::Base), usual);
        if (message.isEmpty()) {
            QVERIFY(boxes_->seen.empty());
        } else {
            QCOMPARE(boxes_->seen.size(), std::size_t{1});
            QCOMPARE(boxes_->seen[0].icon, QMessageBox::Critical);
            QCOMPARE(boxes_->seen[0].title, text(" Fehler "));
            QCOMPARE(boxes_->seen[0].text, QString::fromUtf8(message));
            QCOMPARE(behind_box, QColor(255, 0, 0));
        }
        const std::array<double, 7> limits{settings().stndwert,    settings().stevwert[1],
                                           settings().stnvwert[1], settings().stnvwert[2],
                                           settings().stnvwert[3], settings().stepwert[1],
                                           settings().stepwert[2]};
        const char* const names[] = {"txt_grenzwert", "txt_ev_wert",   "txt_nv_wert_1",
                                     "txt_nv_wert_2", "txt_nv_wert_3", "txt_ep_wert_1",
                                     "txt_ep_wert_2"};
        for (std::size_t i = 0; i < limits.size(); ++i) {
            if (name == names[i]) {
                QCOMPARE(limits[i], shown.toDouble());
            }
        }
    }

    void raising_a_limit_leaves_those_behind_it() {
        open();
        show_tab(DisplayTab::tests);
        type_and_enter(box("txt_nv_wert_1"), "9");
        QCOMPARE(settings().stnvwert[1], 9.0);
        QCOMPARE(settings().stnvwert[2], 2.0);
        QCOMPARE(box("txt_nv_wert_2").text(), text("2.0"));
        QTest::keyClick(&box("txt_nv_wert_2"), Qt::Key_Return);
        QCOMPARE(settings().stnvwert[2], 9.0);
        QCOMPARE(boxes_->seen.size(), std::size_t{1});
    }

    void leaving_a_limit_gives_one_message() {
        open();
        show_tab(DisplayTab::tests);
        type(box("txt_ev_wert"), "150");
        box("txt_nv_wert_1").setFocus();
        QCOMPARE(boxes_->seen.size(), std::size_t{1});
        QCOMPARE(settings().stevwert[1], 100.0);
    }

    void another_tab_reads_the_box_that_is_left_data() {
        QTest::addColumn<bool>("by_mouse");
        QTest::newRow("mouse") << true;
        QTest::newRow("Ctrl+Tab") << false;
    }

    void another_tab_reads_the_box_that_is_left() {
        QFETCH(bool, by_mouse);
        open();
        auto& tabs = control<QTabWidget>(*dialog_, "tab_darstellungen");
        const auto next_tab = [&tabs, by_mouse] {
            if (by_mouse) {
                const QRect place = tabs.tabBar()->tabRect(tabs.currentIndex() + 1);
                QTest::mouseClick(tabs.tabBar(), Qt::LeftButton, {}, place.center());
            } else {
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
            }
        };
        type(box("txt_offset_rechts_screen"), "33,5");
        next_tab();
        QCOMPARE(tabs.currentIndex(), 1);
        QCOMPARE(settings().stanplt, 33.5);
        QCOMPARE(box("txt_offset_rechts_plott").text(), text("33.5"));
        show_tab(DisplayTab::tests);
        type(box("txt_ev_wert"), "150");
        next_tab();
        QCOMPARE(tabs.currentIndex(), 7);
        QCOMPARE(boxes_->seen.size(), std::size_t{1});
        QCOMPARE(boxes_->seen[0].text, text("Wert größer 100.0 nicht sinvoll"));
        QCOMPARE(settings().stevwert[1], 100.0);
        show_tab(DisplayTab::tests);
        QCOMPARE(box("txt_ev_wert").text(), text("100.0"));
    }

    void an_entry_that_is_not_taken_as_it_is_is_told() {
        open();
        auto& hint = control<HintLine>(*dialog_, "lbl_hinweis");
        type_and_enter(box("txt_punktradius_screen"), "abc");
        QCOMPARE(hint.hint(), text("Statt \"abc\" gilt 0"));
        type_and_enter(box("txt_punktradius_screen"), "70,5");
        QCOMPARE(hint.hint(), QString());
    }

    void ctrl_tab_goes_round_from_the_first_moment() {
        open();
        auto& tabs = control<QTabWidget>(*dialog_, "tab_darstellungen");
        const auto press = [this](Qt::Key key, Qt::KeyboardModifiers modifiers) {
            QTest::keyClick(dialog_->focusWidget(), key, modifiers);
        };
        QVERIFY(!tabs.isAncestorOf(dialog_->focusWidget()));
        press(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(tabs.currentIndex(), 7);
        for (const int next : {0, 1, 2, 3, 4, 5, 6, 7, 0}) {
            press(Qt::Key_Tab, Qt::ControlModifier);
            QCOMPARE(tabs.currentIndex(), next);
            QVERIFY(tabs.currentWidget()->isAncestorOf(dialog_->focusWidget()));
        }
        // From the row of buttons too.
        button("cmd_ok").setFocus();
        press(Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(tabs.currentIndex(), 1);
    }

    void a_click_on_a_tab_leads_the_focus_into_it() {
        open();
        auto& tabs = control<QTabWidget>(*dialog_, "tab_darstellungen");
        const QString scale = combo("cbo_grundriss_mass").currentText();
        for (int tab = 0; tab < tabs.count(); ++tab) {
            combo("cbo_grundriss_mass").setFocus();
            QTest::mouseClick(tabs.tabBar(), Qt::LeftButton, {},
                              tabs.tabBar()->tabRect(tab).center());
            QTRY_VERIFY(tabs.currentWidget()->isAncestorOf(dialog_->focusWidget()));
            QTest::keyClick(dialog_->focusWidget(), Qt::Key_5);
            QCOMPARE(combo("cbo_grundriss_mass").currentText(), scale);
        }
    }

    void a_vector_scale_is_taken_with_its_blanks() {
        open_at(DisplayTab::vectors_position);
        type_and_enter(combo("cbo_vekt_mass_lage_1"), "1 000");
        QCOMPARE(combo("cbo_vekt_mass_lage_1").currentText(), text("1000"));
        QCOMPARE(session_->vektor_massstab[1], 0.001);
        QVERIFY(boxes_->seen.empty());
    }

    void a_wrong_scale_that_is_left_by_another_tab_is_answered_once() {
        open_at(DisplayTab::vectors_position);
        type(combo("cbo_vekt_mass_lage_1"), "0");
        auto& tabs = control<QTabWidget>(*dialog_, "tab_darstellungen");
        QTest::mouseClick(tabs.tabBar(), Qt::LeftButton, {}, tabs.tabBar()->tabRect(6).center());
        QCOMPARE(boxes_->seen.size(), std::size_t{1});
        QCOMPARE(boxes_->seen[0].text, text("Bitte übeprüfen Sie den angegebenen Vektormaßstab"));
        show_tab(DisplayTab::vectors_position);
        QCOMPARE(combo("cbo_vekt_mass_lage_1").currentText(), text("2"));
    }

    void ground_scales_are_grouped() {
        open();
        type_and_enter(combo("cbo_grundriss_mass"), "12500");
        QCOMPARE(combo("cbo_grundriss_mass").currentText(), text("12 500"));
        QCOMPARE(session_->plot.plot_massstab, 1 / 12500.0);
        QVERIFY(dialog_->isVisible());
        type(combo("cbo_grundriss_mass"), "2 000");
        combo("cbo_überhöhung").setFocus();
        QCOMPARE(session_->plot.plot_massstab, 1 / 2000.0);
    }

    void a_scale_of_the_list_is_taken() {
        open();
        combo("cbo_grundriss_mass").setFocus();
        QTest::keyClick(&combo("cbo_grundriss_mass"), Qt::Key_Up);
        // The list runs from large to small: above 1 000 stands 1 200.
        QCOMPARE(combo("cbo_grundriss_mass").currentText(), text("1 200"));
        QCOMPARE(session_->plot.plot_massstab, 1 / 1200.0);
    }

    void wrong_scales_are_answered_and_change_nothing_data() {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("typed");
        QTest::addColumn<QByteArray>("title");
        QTest::addColumn<QByteArray>("message");
        QTest::addColumn<QByteArray>("message_on_ok");
        const auto rows = [](const char* name, const char* title, const char* message,
                             const char* message_on_ok, std::initializer_list<const char*> typed) {
            for (const char* one : typed) {
                QTest::addRow("%s '%s'", name, one)
                    << QByteArray(name) << QByteArray(one) << QByteArray(title)
                    << QByteArray(message) << QByteArray(message_on_ok);
            }
        };
        rows("cbo_grundriss_mass", "Maßstabsvorgabe",
             "Bitte überprüfen Sie die angegebene Grundriss-Maßstabszahl",
             "Bitte übeprüfen Sie die angegebene Grundriss-Maßstabszahl", {"0", "-5", "abc", ""});
        for (const char* name : {"cbo_vekt_mass_lage_1", "cbo_vekt_mass_höhe_3"}) {
            rows(name, "Maßstabsvorgabe", "Bitte übeprüfen Sie den angegebenen Vektormaßstab",
                 "Bitte übeprüfen Sie die angegebenen Vektormaßstäbe",
                 {"0", "-2", "abc", "", "0.01"});
        }
        rows("cbo_überhöhung", "Überhöhungsfaktor",
             "Bitte übeprüfen Sie die angegebene Strichstärkenüberhöhung",
             "Bitte übeprüfen Sie die angegebene Strichstärkenüberhöhung",
             {"0", "-1", "abc", "", "32768", "70000"});
    }

    void wrong_scales_are_answered_and_change_nothing() {
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, typed);
        QFETCH(QByteArray, title);
        QFETCH(QByteArray, message);
        QFETCH(QByteArray, message_on_ok);
        open();
        show_tab(name.contains("höhe") ? DisplayTab::vectors_height : DisplayTab::vectors_position);
        type_and_enter(combo(name.constData()), typed.constData());
        QCOMPARE(boxes_->seen.size(), std::size_t{1});
        QCOMPARE(boxes_->seen[0].icon, QMessageBox::Critical);
        QCOMPARE(boxes_->seen[0].title, QString::fromUtf8(title));
        QCOMPARE(boxes_->seen[0].text, QString::fromUtf8(message));
        QCOMPARE(session_->plot.plot_massstab, 0.001);
        QCOMPARE(session_->vektor_massstab[1], 0.5);
        QCOMPARE(session_->vektor_massstab[6], 0.5);
        QCOMPARE(settings().faktorStrich, std::int16_t{1});
        click(button("cmd_ok"));
        QVERIFY(dialog_->isVisible());
        QCOMPARE(boxes_->seen.size(), std::size_t{2});
        QCOMPARE(boxes_->seen[1].title, QString::fromUtf8(title));
        QCOMPARE(boxes_->seen[1].text, QString::fromUtf8(message_on_ok));
        click(button("cmd_abbrechen"));
        QVERIFY(!dialog_->isVisible());
        QCOMPARE(boxes_->seen.size(), std::size_t{2});
    }

    void return_presses_the_button_that_has_the_focus() {
        open();
        settings().punsigscr[0] = 77;
        auto& standard = control<QPushButton>(*dialog_, "cmd_standard_bezpun_screen");
        standard.setFocus();
        QTest::keyClick(&standard, Qt::Key_Return);
        QVERIFY(dialog_->isVisible());
        QCOMPARE(settings().punsigscr[0], 60.0F);
        button("cmd_abbrechen").setFocus();
        QTest::keyClick(&button("cmd_abbrechen"), Qt::Key_Return);
        QVERIFY(!dialog_->isVisible());
        QCOMPARE(dialog_->result(), int{QDialog::Rejected});
    }

    void vector_scales_go_to_their_slots() {
        open();
        show_tab(DisplayTab::vectors_position);
        type_and_enter(combo("cbo_vekt_mass_lage_3"), "2,5");
        QCOMPARE(combo("cbo_vekt_mass_lage_3").currentText(), text("2.5"));
        QCOMPARE(session_->vektor_massstab[3], 0.4);
        show_tab(DisplayTab::vectors_height);
        type_and_enter(combo("cbo_vekt_mass_höhe_1"), "20");
        QCOMPARE(session_->vektor_massstab[4], 0.05);
        QCOMPARE(session_->vektor_massstab[1], 0.5);
    }

    void ok_keeps_what_is_set() {
        open();
        QList<int> pointers;
        dialog_->set_mouse_pointer = [&pointers](int pointer) { pointers << pointer; };
        type_and_enter(box("txt_punktradius_screen"), "44");
        type_and_enter(combo("cbo_überhöhung"), "3");
        type_and_enter(combo("cbo_grundriss_mass"), "500");
        show_tab(DisplayTab::vectors_height);
        type(combo("cbo_vekt_mass_höhe_1"), "10");
        click(button("cmd_ok"));  // the box is still being edited
        QVERIFY(!dialog_->isVisible());
        QCOMPARE(dialog_->result(), static_cast<int>(QDialog::Accepted));
        QCOMPARE(pointers, QList<int>({11, 0}));
        QCOMPARE(settings().punsigscr[0], 44.0F);
        QVERIFY(session_->twins.settings == settings());
        QCOMPARE(session_->twins.vektor_massstab[4], 0.1);
        QCOMPARE(session_->plot_merk.plot_massstab, 0.002);
        QCOMPARE(settings().faktorStrich, std::int16_t{3});
    }

    void ok_reads_the_box_that_is_being_edited() {
        open();
        show_tab(DisplayTab::tests);
        type(box("txt_ev_wert"), "150");
        click(button("cmd_ok"));
        QCOMPARE(boxes_->seen.size(), std::size_t{1});
        QCOMPARE(session_->twins.settings.stevwert[1], 100.0);
        QVERIFY(!dialog_->isVisible());
    }

    void abbrechen_after_standard_buttons_returns_to_the_values_at_opening_data() {
        QTest::addColumn<int>("way");
        QTest::newRow("button") << 0;
        QTest::newRow("escape") << 1;
        QTest::newRow("window frame") << 2;
        QTest::newRow("end of the window") << 3;
    }

    void abbrechen_after_standard_buttons_returns_to_the_values_at_opening() {
        QFETCH(int, way);
        settings().punsigscr = {1, 2, 3, 4};
        settings().punsigplo = {5, 6, 7, 8};
        settings().Stquerscr = 9;
        settings().Stquerplo = 10;
        settings().faktorStrich = 2;
        settings().vektAdrw[1] = 5;
        settings().vektNrgb[5] = 6;
        settings().stnvwert[1] = 1.5;
        settings().grenzdrw[3] = 1;
        for (const auto helper :
             {standard_punkt_screen, standard_punkt_plot, standard_beob_screen, standard_beob_plot,
              standard_vektor_lage, standard_vektor_hoehe, standard_test, standard_grenzen}) {
            helper(*session_, 2);
        }
        // As a graphic file does it: the twins do not know.
        session_->vektor_massstab[2] = session_->vektor_massstab_plot[2] = 0.01;
        session_->vektor_massstab[6] = session_->vektor_massstab_plot[6] = 0.02;
        const Settings before = settings();
        open();
        for (std::size_t i = 0; i < std::size(standard_buttons); ++i) {
            show_tab(static_cast<DisplayTab>(i));
            click(button(standard_buttons[i]));
        }
        QVERIFY(settings() == Settings());
        QCOMPARE(session_->vektor_massstab[2], 0.5);
        QCOMPARE(combo("cbo_vekt_mass_lage_2").currentText(), text("2"));
        QCOMPARE(combo("cbo_überhöhung").currentText(), text("1"));
        QCOMPARE(box("txt_punktradius_plott").text(), text("2.0"));
        type_and_enter(combo("cbo_grundriss_mass"), "100");
        type(combo("cbo_grundriss_mass"), "200");  // and left unread
        switch (way) {
            case 0:
                click(button("cmd_abbrechen"));
                break;
            case 1:
                QTest::keyClick(dialog_.get(), Qt::Key_Escape);
                break;
            case 2:
                dialog_->close();
                break;
            default:
                dialog_.reset();
                break;
        }
        QVERIFY(settings() == before);
        QCOMPARE(session_->vektor_massstab[2], 0.01);
        QCOMPARE(session_->vektor_massstab_plot[2], 0.01);
        QCOMPARE(session_->vektor_massstab[6], 0.02);
        QCOMPARE(session_->plot.plot_massstab, 0.001);
        QVERIFY(boxes_->seen.empty());
    }

    void a_part_without_a_scale_does_not_keep_the_dialog_open() {
        session_->plot.plot_massstab = -99.0;
        open();
        QCOMPARE(combo("cbo_grundriss_mass").currentText(), QString());
        click(button("cmd_ok"));
        QVERIFY(!dialog_->isVisible());
        QCOMPARE(session_->plot.plot_massstab, -99.0);
    }
};

QTEST_MAIN(FrmDarstellungenTest)
#include "frmDarstellungen_wintest.moc"
