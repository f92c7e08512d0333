#include "dialog_fixture.h"
#include "plot/application_printer.h"
#include "scripted_printer.h"
#include "windows/forms/frmDrucker.h"
#include "windows/qt/hint_line.h"

using namespace veldra;
using namespace veldra_test;
using test::ScriptedDevice;
using test::ScriptedPrinter;

namespace {

constexpr std::int16_t own_code = 300;

}  // namespace

/// The printer dialog on two scripted printers: a plotter in colour with a format of its own, and a
/// laser printer without colour that stays upright.
class FrmDruckerTest : public DialogFixture<FrmDrucker> {
    Q_OBJECT

 private:
    FrmDrucker& open(Printer* printer) { return show_dialog(nullptr, session_, printer); }
    FrmDrucker& open() { return open(printer_.get()); }

    /// Opens a list and chooses its item with the keyboard.
    void choose(const char* name, int index) const {
        QComboBox& list = combo(name);
        list.setFocus();
        QTest::keyClick(&list, Qt::Key_Down, Qt::AltModifier);
        QAbstractItemView* const view = list.view();
        QVERIFY(QTest::qWaitForWindowExposed(view->window()));
        QTest::keyClick(view, Qt::Key_Home);
        for (int i = 0; i < index; ++i) {
            QTest::keyClick(view, Qt::Key_Down);
        }
        QCOMPARE(view->currentIndex().row(), index);
        QTest::keyClick(view, Qt::Key_Return);
    }
    /// Opens a list and chooses its item with the mouse.
    void click_item(const char* name, int index) const {
        QComboBox& list = combo(name);
        click(list);
        QAbstractItemView* const view = list.view();
        QVERIFY(QTest::qWaitForWindowExposed(view->window()));
        const QModelIndex item = list.model()->index(index, 0);
        // The list takes no click for the end of the one that opened it.
        QTest::qWait(QApplication::doubleClickInterval() + 50);
        view->scrollTo(item, QAbstractItemView::PositionAtCenter);
        const QRect place = view->visualRect(item);
        QVERIFY(view->viewport()->rect().contains(place.center()));
        QTest::mouseMove(view->viewport(), place.center());
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, place.center());
        QVERIFY(!view->isVisible());
    }
    /// 600 mm by 1200 mm, which the printer forgets at the end of a document.
    void type_user_paper() {
        choose("cbo_papierformat", 50);
        type_and_enter(box("txt_quer"), "600");
        type_and_enter(box("txt_hoch"), "1200");
    }
    void verify_user_paper() const {
        QCOMPARE(printer_->PaperSize(), std::int16_t{256});
        QVERIFY(std::abs(printer_->Width() - 34016.0F) <= 1.0F);
        QVERIFY(std::abs(printer_->Height() - 68031.0F) <= 1.0F);
    }
    /// What the dialog tells, whether there is room for all of it or not.
    [[nodiscard]] QString hint() const { return control<HintLine>(*dialog_, "lbl_hinweis").hint(); }
    [[nodiscard]] PrinterState& state() { return session_.printer; }

    Session session_;
    std::unique_ptr<ScriptedPrinter> printer_;

 private Q_SLOTS:
    void init() {
        ScriptedDevice plotter;
        plotter.papers[own_code] = {500, 700};
        ScriptedDevice laser;
        laser.name = "Laser";
        laser.has_colour = false;
        laser.orientations = {1};
        laser.own_paper = 8;
        laser.own_bin = 1;
        printer_ = std::make_unique<ScriptedPrinter>(std::vector<ScriptedDevice>{plotter, laser});
        session_ = Session();
        take_printer(session_, printer_.get());
        printer_->set_Orientation(1);
    }

    void cleanup() {
        dialog_.reset();
        printer_.reset();
    }

    void controls_bear_their_names_and_captions() {
        open();
        QCOMPARE(dialog_->objectName(), text("frmDrucker"));
        QCOMPARE(dialog_->windowTitle(), text("Anwendungsdrucker auswählen"));
        QVERIFY(dialog_->isModal());
        QCOMPARE(caption("chk_farbdrucker"), text("Farbdrucker"));
        QCOMPARE(caption("chk_druckindatei"), text("Ausgabe in Datei"));
        QCOMPARE(caption("opt_ausrichtung_1"), text("Hochformat"));
        QCOMPARE(caption("opt_ausrichtung_2"), text("Querformat"));
        QCOMPARE(caption("cmd_standard"), text("Standard"));
        QCOMPARE(caption("cmd_abbrechen"), text("Abbrechen"));
        QCOMPARE(caption("lbl_quer"), text("quer:"));
        QCOMPARE(caption("lbl_hoch"), text("hoch:"));
        QCOMPARE(caption("fra_netto"), text("Bedruckbare Fläche"));
        for (const char* name : {"img_hoch_an", "img_hoch_aus", "img_quer_an", "img_quer_aus",
                                 "cmd_exemplare_plus", "cmd_exemplare_minus", "cmd_ok"}) {
            QVERIFY2(widget(name).isVisibleTo(dialog_.get()) || text(name).startsWith(text("img_")),
                     name);
        }
        QCOMPARE(combo("cbo_papierformat").count(), 51);
        QCOMPARE(combo("cbo_papierformat").itemText(6), text("Executive, 7 1/2 x 10 ½ Zoll"));
        QCOMPARE(combo("cbo_papierformat").itemText(50), text("Benutzerdefiniert"));
        QCOMPARE(combo("cbo_papierschacht").count(), 15);
        QCOMPARE(combo("cbo_papierschacht").itemText(9), text("großer Papierbehälter"));
    }

    void all_controls_can_be_named_and_reached() {
        open();
        verify_controls_can_be_reached(
            "cbo_drucker",
            names({"cbo_drucker", "cmd_standard", "chk_farbdrucker", "chk_druckindatei",
                   "cbo_papierformat", "cbo_papierschacht", "opt_ausrichtung_1", "txt_exemplare",
                   "cmd_exemplare_minus", "cmd_exemplare_plus", "cmd_ok", "cmd_abbrechen"}));
    }

    void return_on_abbrechen_gives_up() {
        open();
        button("cmd_abbrechen").setFocus();
        QTest::keyClick(&button("cmd_abbrechen"), Qt::Key_Return);
        QVERIFY(!dialog_->isVisible());
        QCOMPARE(dialog_->result(), int{QDialog::Rejected});
    }

    void opening_shows_printer_and_paper() {
        open();
        QCOMPARE(combo("cbo_drucker").count(), 2);
        QCOMPARE(combo("cbo_drucker").currentText(), text("Plotter"));
        QCOMPARE(combo("cbo_papierformat").currentText(), text("DINA4, 210 x 297 mm"));
        QCOMPARE(combo("cbo_papierschacht").currentText(), text("aktuelle Voreingestellung"));
        QVERIFY(option("opt_ausrichtung_1").isChecked());
        QVERIFY(check("chk_farbdrucker").isChecked());
        QVERIFY(!check("chk_druckindatei").isChecked());
        QCOMPARE(label("lbl_quer_netto"), text("quer:   200.0 mm"));
        QCOMPARE(label("lbl_hoch_netto"), text("hoch:   287.0 mm"));
        QCOMPARE(box("txt_quer").text(), text("210"));
        QCOMPARE(box("txt_hoch").text(), text("297"));
        QVERIFY(!box("txt_quer").isEnabled());
        QVERIFY(!box("txt_hoch").isEnabled());
        QCOMPARE(box("txt_exemplare").text(), text("1"));
        QVERIFY(widget("img_hoch_an").isVisible());
        QVERIFY(!widget("img_hoch_aus").isVisible());
        QVERIFY(!widget("img_quer_an").isVisible());
        QVERIFY(widget("img_quer_aus").isVisible());
    }

    void opening_changes_nothing_on_the_printer() {
        printer_->clear_calls();
        open();
        QVERIFY(printer_->calls.empty());
    }

    void without_a_printer_there_is_nothing_to_choose() {
        ScriptedPrinter none{std::vector<ScriptedDevice>()};
        for (Printer* printer : {static_cast<Printer*>(nullptr), static_cast<Printer*>(&none)}) {
            open(printer);
            QCOMPARE(combo("cbo_drucker").count(), 1);
            QCOMPARE(combo("cbo_drucker").currentText(), text("(kein Drucker verfügbar)"));
            for (const char* name :
                 {"cbo_drucker", "chk_farbdrucker", "chk_druckindatei", "cbo_papierschacht",
                  "cbo_papierformat", "cmd_ok", "cmd_standard", "opt_ausrichtung_1", "txt_quer"}) {
                QVERIFY2(!widget(name).isEnabled(), name);
            }
            QVERIFY(!widget("img_hoch_an").isVisible());
            QVERIFY(!widget("img_quer_an").isVisible());
            QVERIFY(widget("img_hoch_aus").isVisible());
            QVERIFY(widget("img_quer_aus").isVisible());
            QCOMPARE(caption("lbl_quer"), text("quer:"));
            QCOMPARE(caption("lbl_hoch"), text("hoch:"));
            QTest::keyClick(dialog_.get(), Qt::Key_Return);
            QVERIFY(dialog_->isVisible());
            click(button("cmd_abbrechen"));
            QVERIFY(!dialog_->isVisible());
        }
    }

    void chosen_printer_is_shown_with_its_paper() {
        open();
        click_mark(check("chk_druckindatei"));
        QCOMPARE(state().druck_in_datei, std::int16_t{-1});
        click_item("cbo_drucker", 1);
        QCOMPARE(printer_->DeviceName(), std::string("Laser"));
        QCOMPARE(combo("cbo_papierformat").currentText(), text("DIN A3, 297 x 420 mm"));
        QCOMPARE(combo("cbo_papierschacht").currentText(), text("oberer Papierschacht"));
        QVERIFY(!check("chk_farbdrucker").isChecked());
        QVERIFY(!check("chk_druckindatei").isChecked());
        QCOMPARE(state().druck_in_datei, std::int16_t{0});
    }

    void printer_that_refuses_the_orientation_stays_upright() {
        open();
        click_mark(option("opt_ausrichtung_2"));
        QCOMPARE(printer_->Orientation(), std::int16_t{2});
        QCOMPARE(label("lbl_quer_netto"), text("quer:   287.0 mm"));
        QVERIFY(widget("img_quer_an").isVisible());
        QVERIFY(!widget("img_hoch_an").isVisible());
        choose("cbo_drucker", 1);
        QVERIFY(option("opt_ausrichtung_1").isChecked());
        for (const auto refusal :
             {ScriptedDevice::Refusal::silent, ScriptedDevice::Refusal::loud}) {
            printer_->device().refusal = refusal;
            click_mark(option("opt_ausrichtung_2"));
            QVERIFY(option("opt_ausrichtung_1").isChecked());
            QVERIFY(!option("opt_ausrichtung_2").isChecked());
            QVERIFY(widget("img_hoch_an").isVisible());
        }
    }

    void orientation_follows_the_arrow_keys() {
        open();
        option("opt_ausrichtung_1").setFocus();
        QTest::keyClick(&option("opt_ausrichtung_1"), Qt::Key_Down);
        QCOMPARE(printer_->Orientation(), std::int16_t{2});
        QVERIFY(option("opt_ausrichtung_2").isChecked());
    }

    void refused_paper_shows_what_the_printer_kept() {
        open();
        choose("cbo_papierformat", 7);
        QCOMPARE(printer_->PaperSize(), std::int16_t{8});
        for (const auto refusal :
             {ScriptedDevice::Refusal::silent, ScriptedDevice::Refusal::loud}) {
            printer_->device().refusal = refusal;
            click_item("cbo_papierformat", 45);
            QCOMPARE(combo("cbo_papierformat").currentIndex(), 7);
            QCOMPARE(printer_->PaperSize(), std::int16_t{8});
        }
    }

    void keys_pass_what_the_printer_refuses_and_tell_it_data() {
        QTest::addColumn<bool>("loud");
        QTest::newRow("silent") << false;
        QTest::newRow("loud") << true;
    }

    /// It takes A3 and A4, rows 7 and 8, a code of its own and the user's size, row 50.
    void keys_pass_what_the_printer_refuses_and_tell_it() {
        QFETCH(bool, loud);
        printer_->device().refusal =
            loud ? ScriptedDevice::Refusal::loud : ScriptedDevice::Refusal::silent;
        open();
        QComboBox& papers = combo("cbo_papierformat");
        QCOMPARE(papers.currentIndex(), 8);
        QCOMPARE(label("lbl_hinweis"), QString());
        papers.setFocus();
        const auto press = [&papers](Qt::Key key) { QTest::keyClick(&papers, key); };
        press(Qt::Key_Up);
        QCOMPARE(papers.currentIndex(), 7);
        QCOMPARE(hint(), QString());
        press(Qt::Key_Up);  // there is nothing above
        QCOMPARE(papers.currentIndex(), 7);
        QCOMPARE(printer_->PaperSize(), std::int16_t{8});
        QCOMPARE(hint(), text("Nimmt das Gerät nicht: Executive, 7 1/2 x 10 ½ Zoll und 6 weitere"));
        press(Qt::Key_Down);
        QCOMPARE(papers.currentIndex(), 8);
        QCOMPARE(hint(), QString());
        press(Qt::Key_Down);
        QCOMPARE(papers.currentIndex(), 50);
        QCOMPARE(printer_->PaperSize(), std::int16_t{256});
        QCOMPARE(hint(), text("Nimmt das Gerät nicht: DIN A4 Small, 210 x 297 mm und 40 weitere"));
        press(Qt::Key_Home);
        QCOMPARE(papers.currentIndex(), 7);
        press(Qt::Key_End);
        QCOMPARE(papers.currentIndex(), 50);
        press(Qt::Key_PageUp);
        QCOMPARE(papers.currentIndex(), 8);
    }

    void one_refused_paper_is_told_by_its_name() {
        open();
        click_item("cbo_papierformat", 45);
        QCOMPARE(combo("cbo_papierformat").currentIndex(), 8);
        QCOMPARE(hint(), text("Nimmt das Gerät nicht: DIN A0 (auf HP DesignJet)"));
        click_item("cbo_papierformat", 7);
        QCOMPARE(hint(), QString());
    }

    void another_printer_has_refused_nothing_yet() {
        open();
        click_item("cbo_papierformat", 45);
        QVERIFY(!hint().isEmpty());
        choose("cbo_drucker", 1);
        QCOMPARE(hint(), QString());
        choose("cbo_drucker", 0);
        click_item("cbo_papierformat", 45);
        QVERIFY(!hint().isEmpty());
        button("cmd_standard").click();
        QCOMPARE(hint(), QString());
    }

    void limited_copies_and_refused_sizes_are_told() {
        open();
        for (const char* wrong : {"0", "500", "abc", "-3"}) {
            type_and_enter(box("txt_exemplare"), "12");
            QCOMPARE(hint(), QString());
            type_and_enter(box("txt_exemplare"), wrong);
            QCOMPARE(hint(), text("Exemplare: 1 bis 100"));
        }
        type_and_enter(box("txt_exemplare"), "100");
        QCOMPARE(hint(), QString());
        choose("cbo_papierformat", 50);
        for (const char* wrong : {"0", "abc", "-20", "99999999999999"}) {
            type_and_enter(box("txt_quer"), wrong);
            QCOMPARE(hint(), text("Diese Papiergröße nimmt das Gerät nicht"));
            type_and_enter(box("txt_quer"), "600,4");
            QCOMPARE(hint(), QString());
        }
    }

    void own_code_of_a_driver_can_be_chosen_again() {
        printer_->set_PaperSize(own_code);
        open();
        QComboBox& papers = combo("cbo_papierformat");
        QCOMPARE(papers.count(), 52);
        QCOMPARE(papers.currentText(), text("(unbekanntes Format: 300)"));
        QCOMPARE(papers.currentIndex(), 51);
        click_item("cbo_papierformat", 8);
        QCOMPARE(printer_->PaperSize(), std::int16_t{9});
        QCOMPARE(papers.count(), 52);
        click_item("cbo_papierformat", 51);
        QCOMPARE(printer_->PaperSize(), own_code);
        QCOMPARE(papers.currentText(), text("(unbekanntes Format: 300)"));
        QCOMPARE(papers.count(), 52);
        QCOMPARE(box("txt_hoch").text(), text("700"));
        choose("cbo_drucker", 1);
        QCOMPARE(papers.count(), 51);
    }

    void bin_is_written_to_the_printer() {
        open();
        choose("cbo_papierschacht", 3);
        QCOMPARE(printer_->PaperBin(), std::int16_t{4});
    }

    void bin_that_the_list_lacks_is_shown_as_none() {
        printer_->set_PaperBin(260);
        open();
        QCOMPARE(combo("cbo_papierschacht").currentIndex(), -1);
    }

    void user_paper_takes_typed_sizes() {
        open();
        click_item("cbo_papierformat", 50);
        QCOMPARE(printer_->PaperSize(), std::int16_t{256});
        QVERIFY(box("txt_quer").isEnabled());
        type(box("txt_quer"), "600,4");
        QCOMPARE(label("lbl_quer_netto"), text("quer:   590.4 mm"));
        QTest::keyClick(&box("txt_quer"), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), &box("txt_hoch"));
        QCOMPARE(box("txt_quer").text(), text("600"));
        type_and_enter(box("txt_hoch"), "1200");
        QVERIFY(dialog_->isVisible());
        QCOMPARE(label("lbl_hoch_netto"), text("hoch:  1190.0 mm"));
        // 600 mm and 1200 mm in twips.
        QVERIFY(std::abs(printer_->Width() - 34016.0F) <= 1.0F);
        QVERIFY(std::abs(printer_->Height() - 68031.0F) <= 1.0F);
    }

    void wrong_user_sizes_leave_the_paper() {
        open();
        choose("cbo_papierformat", 50);
        for (const char* wrong : {"", "0", "-20", "abc", "99999999999999"}) {
            type_and_enter(box("txt_quer"), wrong);
            QVERIFY2(box("txt_quer").text().toInt() > 0, wrong);
            QVERIFY2(printer_->Width() > 0, wrong);
        }
    }

    void user_paper_outlasts_ok() {
        open();
        type_user_paper();
        verify_user_paper();
        click(button("cmd_ok"));
        verify_user_paper();
        open();
        QCOMPARE(combo("cbo_papierformat").currentText(), text("Benutzerdefiniert"));
        QCOMPARE(box("txt_quer").text(), text("600"));
        QCOMPARE(box("txt_hoch").text(), text("1200"));
        QVERIFY(box("txt_quer").isEnabled());
    }

    void user_paper_returns_by_abbrechen() {
        open();
        type_user_paper();
        click(button("cmd_ok"));
        open();
        choose("cbo_papierformat", 8);
        QCOMPARE(printer_->PaperSize(), std::int16_t{9});
        QVERIFY(!box("txt_quer").isEnabled());
        click(button("cmd_abbrechen"));
        verify_user_paper();
    }

    void own_code_of_a_driver_outlasts_ok_and_returns_by_abbrechen() {
        printer_->set_PaperSize(own_code);
        for (const char* end : {"cmd_abbrechen", "cmd_ok"}) {
            open();
            choose("cbo_papierformat", 8);
            choose("cbo_papierformat", 51);
            if (text(end) == text("cmd_abbrechen")) {
                choose("cbo_papierformat", 7);
            }
            click(button(end));
            QCOMPARE(printer_->PaperSize(), own_code);
        }
    }

    void typed_copies_are_limited() {
        open();
        const auto copies_after = [this](const char* typed) {
            type_and_enter(box("txt_exemplare"), typed);
            return state().exemplare;
        };
        QCOMPARE(copies_after("12"), std::int16_t{12});
        QCOMPARE(copies_after("0"), std::int16_t{1});
        QCOMPARE(box("txt_exemplare").text(), text("1"));
        QCOMPARE(copies_after("500"), std::int16_t{100});
        QCOMPARE(box("txt_exemplare").text(), text("100"));
        QCOMPARE(copies_after("abc"), std::int16_t{1});
        QCOMPARE(copies_after("70000"), std::int16_t{100});
        QCOMPARE(copies_after("-3"), std::int16_t{1});
        QCOMPARE(copies_after(""), std::int16_t{1});
        QCOMPARE(box("txt_exemplare").text(), text("1"));
        for (const char* half : {"3,5", "3.5"}) {
            QCOMPARE(copies_after(half), std::int16_t{4});
            QCOMPARE(box("txt_exemplare").text(), text("4"));
        }
        type(box("txt_exemplare"), "7");
        QTest::keyClick(&box("txt_exemplare"), Qt::Key_Tab);
        QCOMPARE(state().exemplare, std::int16_t{7});
        QVERIFY(dialog_->isVisible());
    }

    void copies_step_by_buttons_and_arrow_keys() {
        open();
        click(button("cmd_exemplare_minus"));
        QCOMPARE(state().exemplare, std::int16_t{1});
        click(button("cmd_exemplare_plus"));
        click(button("cmd_exemplare_plus"));
        QCOMPARE(box("txt_exemplare").text(), text("3"));
        click(button("cmd_exemplare_minus"));
        QCOMPARE(state().exemplare, std::int16_t{2});
        QLineEdit& copies = box("txt_exemplare");
        type(copies, "99");
        QTest::keyClick(&copies, Qt::Key_Up);
        QTest::keyClick(&copies, Qt::Key_Up);
        QCOMPARE(copies.text(), text("100"));
        QTest::keyClick(&copies, Qt::Key_Down);
        QCOMPARE(state().exemplare, std::int16_t{99});
        type(copies, "1");
        QTest::keyClick(&copies, Qt::Key_Down);
        QCOMPARE(copies.text(), text("1"));
    }

    void standard_returns_to_the_default_printer() {
        printer_->assign(1);
        CheckPrinterColour(session_, *printer_);
        open();
        QCOMPARE(combo("cbo_drucker").currentText(), text("Laser"));
        click_mark(check("chk_druckindatei"));
        click(button("cmd_standard"));
        QCOMPARE(combo("cbo_drucker").currentText(), text("Plotter"));
        QVERIFY(printer_->tracks_default);
        QVERIFY(check("chk_farbdrucker").isChecked());
        QVERIFY(!check("chk_druckindatei").isChecked());
        QCOMPARE(combo("cbo_papierformat").currentIndex(), 8);
    }

    void ok_keeps_printer_paper_and_copies() {
        open();
        choose("cbo_papierformat", 7);
        click_mark(option("opt_ausrichtung_2"));
        click_mark(check("chk_farbdrucker"));
        type(box("txt_exemplare"), "4");
        click(button("cmd_ok"));
        QVERIFY(!dialog_->isVisible());
        QCOMPARE(dialog_->result(), int{QDialog::Accepted});
        QCOMPARE(printer_->PaperSize(), std::int16_t{8});
        QCOMPARE(printer_->Orientation(), std::int16_t{2});
        QCOMPARE(state().exemplare, std::int16_t{4});
        QCOMPARE(state().exemplare_merk, std::int16_t{4});
        QCOMPARE(state().drucker_farbe_merk, std::int16_t{1});
    }

    void return_presses_standard_while_it_has_the_focus() {
        printer_->assign(1);
        open();
        button("cmd_standard").setFocus();
        QTest::keyClick(&button("cmd_standard"), Qt::Key_Return);
        QVERIFY(dialog_->isVisible());
        QCOMPARE(combo("cbo_drucker").currentText(), text("Plotter"));
    }

    void return_presses_ok() {
        open();
        QTest::keyClick(&combo("cbo_drucker"), Qt::Key_Return);
        QCOMPARE(dialog_->result(), int{QDialog::Accepted});
        QVERIFY(!dialog_->isVisible());
    }

    void abbrechen_returns_to_printer_paper_and_copies() {
        printer_->set_PaperSize(8);
        printer_->set_Orientation(2);
        for (const int way : {0, 1, 2, 3}) {
            open();
            choose("cbo_drucker", 1);
            choose("cbo_papierformat", 8);
            type_and_enter(box("txt_exemplare"), "40");
            click_mark(check("chk_druckindatei"));
            if (way == 0) {
                click(button("cmd_abbrechen"));
            } else if (way == 1) {
                QTest::keyClick(dialog_.get(), Qt::Key_Escape);
            } else if (way == 2) {
                dialog_->close();
            } else {
                button("cmd_abbrechen").setFocus();
                QTest::keyClick(&button("cmd_abbrechen"), Qt::Key_Return);
            }
            QVERIFY(!dialog_->isVisible());
            QCOMPARE(printer_->DeviceName(), std::string("Plotter"));
            QCOMPARE(printer_->PaperSize(), std::int16_t{8});
            QCOMPARE(printer_->Orientation(), std::int16_t{2});
            QCOMPARE(state().exemplare, std::int16_t{1});
            QCOMPARE(state().drucker_farbe, std::int16_t{2});
            QCOMPARE(state().druck_in_datei, std::int16_t{0});
        }
    }

    void copies_being_typed_are_dropped_by_abbrechen() {
        open();
        type(box("txt_exemplare"), "40");
        click(button("cmd_abbrechen"));
        QCOMPARE(state().exemplare, std::int16_t{1});
    }

    void end_of_the_program_leaves_the_printer_alone() {
        open();
        dialog_->is_shutting_down = [] { return true; };
        choose("cbo_drucker", 1);
        printer_->clear_calls();
        dialog_->close();
        QVERIFY(!dialog_->isVisible());
        QVERIFY(printer_->calls.empty());
    }

    void long_name_of_a_printer_does_not_widen_the_dialog() {
        open();
        const int width = dialog_->width();
        printer_->devices[0].name = std::string(120, 'W');
        open();
        QCOMPARE(dialog_->width(), width);
        QCOMPARE(combo("cbo_drucker").currentText().size(), qsizetype{120});
    }

    void captions_have_room_with_large_letters() {
        verify_room_for_large_letters([this] { open(); });
    }
};

QTEST_MAIN(FrmDruckerTest)
#include "frmDrucker_wintest.moc"
