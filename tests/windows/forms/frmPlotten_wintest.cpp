#include <QScreen>

#include "dialog_fixture.h"
#include "network_builder.h"
#include "plot/printer_adapters.h"
#include "recording_interface.h"
#include "scripted_printer.h"
#include "windows/forms/frmPlotten.h"
#include "windows/qt/hint_line.h"

using namespace veldra;
using namespace veldra_test;

/// The plot settings of a part of 300 m by 200 m in 1:1000. A sheet upright has 184.5 mm by
/// 274.5 mm net with its binding margin on the left: two sheets across, one up.
class FrmPlottenTest : public DialogFixture<FrmPlotten> {
    Q_OBJECT

 private:
    [[nodiscard]] Desk desk() {
        return {screen_, ui_, [] {}, &printer_};
    }
    FrmPlotten& open() {
        show_dialog(nullptr, *session_, desk());
        dialog_->redraw_preview = [this] { ++redrawn_; };
        dialog_->mark_part = [this](std::int32_t part, bool marked) {
            marks_.emplace_back(part, marked);
        };
        return *dialog_;
    }

    [[nodiscard]] QComboBox& scale() const { return combo("cbo_grundriss_mass"); }
    [[nodiscard]] PlotSettings& plot() const { return session_->plot; }
    [[nodiscard]] QStringList counts() const {
        return {box("txt_format_rechts").text(), box("txt_format_hoch").text(),
                label("lbl_format_autorechts"), label("lbl_format_autohoch")};
    }
    void verify_refused(std::size_t boxes) const {
        QCOMPARE(boxes_->seen.size(), boxes);
        const SeenMessage& message = boxes_->seen.back();
        QCOMPARE(message.icon, QMessageBox::Critical);
        QCOMPARE(message.title, text("Maßstabsvorgabe"));
        QCOMPARE(message.text, text("Bitte überprüfen Sie die angegebene "
                                    "Grundriss-Maßstabszahl"));
    }

    test::FakeMeasurer screen_;
    test::RecordingInterface ui_;
    test::ScriptedPrinter printer_;
    std::unique_ptr<Session> session_;
    std::unique_ptr<MessageBoxes> boxes_;
    int redrawn_ = 0;
    std::vector<std::pair<std::int32_t, bool>> marks_;

 private Q_SLOTS:
    void init() {
        session_ = std::make_unique<Session>();
        test::show_nothing(*session_);
        test::add_point(*session_, 0, 0);
        test::add_point(*session_, 300, 200);
        session_->netz[session_->netz.append()].netz_name = "Lagenetz";
        session_->netz_aktuell = 1;
        session_->datei_geladen = 1;
        plot() = {0.001, 1, 2, 4, table_true, 1, 1, 0, 0};
        session_->view = {0, 0, 300, 200, 0.02};
        printer_ = test::ScriptedPrinter();
        ComputeSheetDivision(*session_, desk());
        boxes_ = std::make_unique<MessageBoxes>();
        ui_.pointers.clear();
        redrawn_ = 0;
        marks_.clear();
    }

    void cleanup() {
        dialog_.reset();
        boxes_.reset();
        session_.reset();
    }

    void controls_bear_their_names_and_captions() {
        open();
        QCOMPARE(dialog_->objectName(), text("frmPlotten"));
        QCOMPARE(dialog_->windowTitle(), text("Einstellungen Plotten"));
        QVERIFY(dialog_->isModal());
        QCOMPARE(caption("opt_netzteil_0"), text("Netzteil plotten"));
        QCOMPARE(caption("opt_netzteil_1"), text("Netzteil nicht plotten"));
        QCOMPARE(caption("fra_massstab"), text("Grundriss"));
        QCOMPARE(caption("lbl_grundriss_mass"), text("Maßstab 1:"));
        QCOMPARE(caption("fra_ausricht"), text("Druckerausrichtung"));
        QCOMPARE(caption("opt_format_0"), text("Hochformat"));
        QCOMPARE(caption("opt_format_1"), text("Querformat"));
        QCOMPARE(caption("opt_rand_3"), text("kein Heftrand"));
        QCOMPARE(caption("opt_rand_1"), text("oben"));
        QCOMPARE(caption("opt_rand_2"), text("links"));
        QCOMPARE(caption("chk_format_blatt"), text("Blatteinteilung automatisch"));
        QCOMPARE(caption("lbl_format_rechts"), text("Anzahl Blätter rechts"));
        QCOMPARE(caption("lbl_format_hoch"), text("Anzahl Blätter hoch"));
        QCOMPARE(caption("chk_plotternull"), text("Plotternullpunkt anpassen"));
        QCOMPARE(caption("chk_ohne_leere"), text("Leere Blätter weglassen"));
        QCOMPARE(caption("cmd_abbrechen"), text("Abbrechen"));
        QCOMPARE(scale().count(), 25);
        QCOMPARE(scale().itemText(0), text("5 000 000"));
        QCOMPARE(scale().itemText(24), text("100"));
    }

    void all_controls_can_be_named_and_reached() {
        open();
        click_mark(check("chk_format_blatt"));
        verify_controls_can_be_reached(
            "opt_netzteil_0",
            names({"opt_netzteil_0", "cbo_grundriss_mass", "opt_format_0", "opt_rand_2",
                   "chk_format_blatt", "txt_format_rechts", "txt_format_hoch", "chk_plotternull",
                   "chk_ohne_leere", "cmd_ok", "cmd_abbrechen"}));
    }

    void return_on_abbrechen_gives_up() {
        open();
        button("cmd_abbrechen").setFocus();
        QTest::keyClick(&button("cmd_abbrechen"), Qt::Key_Return);
        QVERIFY(!dialog_->isVisible());
        QCOMPARE(dialog_->result(), int{QDialog::Rejected});
    }

    void opening_shows_the_settings() {
        open();
        QCOMPARE(scale().currentText(), text("1 000"));
        QVERIFY(option("opt_format_0").isChecked());
        QVERIFY(option("opt_rand_2").isChecked());
        QVERIFY(check("chk_format_blatt").isChecked());
        QVERIFY(!box("txt_format_rechts").isEnabled());
        QVERIFY(!box("txt_format_hoch").isEnabled());
        QCOMPARE(counts(), names({"2", "1", "(2)", "(1)"}));
        QVERIFY(!check("chk_plotternull").isChecked());
        QVERIFY(option("opt_netzteil_0").isChecked());
        QVERIFY(widget("img_hochformat").isVisible());
        QVERIFY(!widget("img_querformat").isVisible());
    }

    void opening_shows_other_settings() {
        plot().plot_ausrichtung = 2;
        plot().plot_heftrand = 3;
        plot().plot_blatt_auto = table_false;
        plot().plot_blatt_rechts = 5;
        session_->netz[1].netz_plotmarke = table_false;
        open();
        QVERIFY(option("opt_format_1").isChecked());
        QVERIFY(option("opt_rand_3").isChecked());
        QVERIFY(!check("chk_format_blatt").isChecked());
        QVERIFY(option("opt_netzteil_1").isChecked());
        QVERIFY(!widget("fra_massstab").isEnabled());
        QVERIFY(!widget("fra_format").isEnabled());
        QVERIFY(widget("img_querformat").isVisible());
        // 286 mm by 187.5 mm net for 301 mm by 201 mm.
        QCOMPARE(counts(), names({"5", "1", "(2)", "(2)"}));
    }

    void chosen_scale_counts_the_sheets() {
        open();
        scale().setFocus();
        QTest::keyClick(&scale(), Qt::Key_Down);  // 1:750
        QCOMPARE(plot().plot_massstab, 1.0 / 750);
        QTest::keyClick(&scale(), Qt::Key_Down);
        QCOMPARE(scale().currentText(), text("500"));
        QCOMPARE(plot().plot_massstab, 0.002);
        // 601 mm in sheets of 184.5 mm, 401 mm in sheets of 274.5 mm.
        QCOMPARE(counts(), names({"4", "2", "(4)", "(2)"}));
        QVERIFY(boxes_->seen.empty());
    }

    void typed_scale_is_taken_on_enter_and_on_leaving() {
        open();
        type_and_enter(scale(), "2500,5");
        QVERIFY(dialog_->isVisible());
        QCOMPARE(plot().plot_massstab, 1 / 2500.5);
        QCOMPARE(scale().currentText(), text("2 501"));
        QCOMPARE(counts(), names({"1", "1", "(1)", "(1)"}));
        type_and_enter(scale(), "70 000");  // beyond 16 bits
        QCOMPARE(plot().plot_massstab, 1.0 / 70000);
        type_and_enter(scale(), "1250.5");
        QCOMPARE(plot().plot_massstab, 1 / 1250.5);
        QCOMPARE(scale().currentText(), text("1 251"));
        type(scale(), "10000");
        QTest::keyClick(&scale(), Qt::Key_Tab);
        QCOMPARE(plot().plot_massstab, 0.0001);
        QCOMPARE(scale().currentText(), text("10 000"));
        QVERIFY(boxes_->seen.empty());
    }

    void wrong_scale_brings_the_box_and_changes_nothing() {
        open();
        std::size_t boxes = 0;
        for (const char* wrong : {"0", "", "-500", "abc"}) {
            type_and_enter(scale(), wrong);
            verify_refused(++boxes);
            QCOMPARE(plot().plot_massstab, 0.001);
            QCOMPARE(counts(), names({"2", "1", "(2)", "(1)"}));
            QCOMPARE(scale().currentText(), text(wrong));
        }
    }

    void wrong_scale_that_is_left_brings_the_box() {
        open();
        type(scale(), "0");
        QTest::keyClick(&scale(), Qt::Key_Tab);
        verify_refused(1);
        QCOMPARE(plot().plot_massstab, 0.001);
    }

    void wrong_scale_keeps_ok_from_closing() {
        open();
        type(scale(), "0");
        click(button("cmd_ok"));
        verify_refused(1);
        QVERIFY(dialog_->isVisible());
        QCOMPARE(plot().plot_massstab, 0.001);
        QCOMPARE(redrawn_, 0);
    }

    void wrong_scale_does_not_keep_abbrechen_from_closing() {
        open();
        type(scale(), "0");
        click(button("cmd_abbrechen"));
        QVERIFY(boxes_->seen.empty());
        QVERIFY(!dialog_->isVisible());
    }

    void scale_beyond_what_can_be_counted_is_refused() {
        test::add_point(*session_, 10000, 0);
        open();
        type_and_enter(scale(), "1");
        verify_refused(1);
        QCOMPARE(plot().plot_massstab, 0.001);
    }

    void untouched_scale_is_not_rounded() {
        plot().plot_massstab = 1 / 2500.4;
        open();
        scale().setFocus();
        QTest::keyClick(&scale(), Qt::Key_Tab);
        QCOMPARE(plot().plot_massstab, 1 / 2500.4);
        QCOMPARE(scale().currentText(), text("2 500"));
    }

    void manual_counts_stay_when_the_scale_changes() {
        open();
        click_mark(check("chk_format_blatt"));
        QVERIFY(box("txt_format_rechts").isEnabled());
        QVERIFY(box("txt_format_hoch").isEnabled());
        type(box("txt_format_rechts"), "7");
        type_and_enter(scale(), "500");
        QCOMPARE(counts(), names({"7", "1", "(4)", "(2)"}));
        click(button("cmd_ok"));
        QCOMPARE(plot().plot_blatt_auto, std::int16_t{0});
        QCOMPARE(plot().plot_blatt_rechts, std::int16_t{7});
        QCOMPARE(plot().plot_blatt_hoch, std::int16_t{1});
    }

    void automatic_counts_return_with_their_box() {
        open();
        click_mark(check("chk_format_blatt"));
        type(box("txt_format_rechts"), "7");
        click_mark(check("chk_format_blatt"));
        QCOMPARE(counts(), names({"2", "1", "(2)", "(1)"}));
        QVERIFY(!box("txt_format_rechts").isEnabled());
    }

    void wrong_counts_are_one() {
        for (const char* wrong : {"", "0", "-3", "abc"}) {
            open();
            if (check("chk_format_blatt").isChecked()) {
                click_mark(check("chk_format_blatt"));
            }
            type(box("txt_format_rechts"), "3");
            QCOMPARE(control<HintLine>(*dialog_, "lbl_hinweis").hint(), QString());
            type(box("txt_format_rechts"), wrong);
            QCOMPARE(control<HintLine>(*dialog_, "lbl_hinweis").hint(),
                     text("Anzahl der Blätter: 1 bis 32767"));
            click(button("cmd_ok"));
            QVERIFY(!dialog_->isVisible());
            QCOMPARE(plot().plot_blatt_rechts, std::int16_t{1});
        }
        open();
        type(box("txt_format_hoch"), "99999");
        click(button("cmd_ok"));
        QCOMPARE(plot().plot_blatt_hoch, std::int16_t{32767});
    }

    void halves_of_sheets_are_rounded_to_even_ones() {
        const std::pair<const char*, std::int16_t> halves[] = {{"2,5", 2}, {"3.5", 4}};
        for (const auto& [typed, sheets] : halves) {
            open();
            if (check("chk_format_blatt").isChecked()) {
                click_mark(check("chk_format_blatt"));
            }
            type(box("txt_format_rechts"), typed);
            click(button("cmd_ok"));
            QCOMPARE(plot().plot_blatt_rechts, sheets);
        }
    }

    void format_turns_paper_and_picture() {
        open();
        click_mark(option("opt_format_1"));
        QCOMPARE(plot().plot_ausrichtung, std::int16_t{2});
        QCOMPARE(printer_.Orientation(), std::int16_t{2});
        QVERIFY(widget("img_querformat").isVisible());
        QVERIFY(!widget("img_hochformat").isVisible());
        QCOMPARE(counts(), names({"2", "2", "(2)", "(2)"}));
        option("opt_format_1").setFocus();
        QTest::keyClick(&option("opt_format_1"), Qt::Key_Up);
        QCOMPARE(plot().plot_ausrichtung, std::int16_t{1});
    }

    void margin_is_taken_at_once() {
        open();
        const std::pair<const char*, std::int16_t> margins[] = {
            {"opt_rand_3", 3}, {"opt_rand_1", 1}, {"opt_rand_2", 2}};
        for (const auto& [name, margin] : margins) {
            click_mark(option(name));
            QCOMPARE(plot().plot_heftrand, margin);
        }
        QCOMPARE(session_->sheet.rand_links, 0.015);
    }

    void zero_point_counts_from_the_lower_left() {
        plot().plot_null_rechts = -100;
        plot().plot_null_hoch = -100;
        open();
        QCOMPARE(counts(), names({"3", "2", "(3)", "(2)"}));
        click_mark(check("chk_plotternull"));
        QCOMPARE(counts(), names({"2", "1", "(2)", "(1)"}));
        // Return toggles it and leaves the dialog open.
        check("chk_plotternull").setFocus();
        QTest::keyClick(&check("chk_plotternull"), Qt::Key_Return);
        QVERIFY(dialog_->isVisible());
        QVERIFY(!check("chk_plotternull").isChecked());
        QCOMPARE(counts(), names({"3", "2", "(3)", "(2)"}));
        QTest::keyClick(&check("chk_plotternull"), Qt::Key_Enter);
        QCOMPARE(counts(), names({"2", "1", "(2)", "(1)"}));
        click(button("cmd_ok"));
        QCOMPARE(plot().plot_null_rechts, session_->extents.gesamt_rw_min);
        QCOMPARE(plot().plot_null_hoch, session_->extents.gesamt_hw_min);
    }

    void part_not_to_be_plotted_needs_no_settings() {
        open();
        click_mark(option("opt_netzteil_1"));
        QVERIFY(!widget("fra_massstab").isEnabled());
        QVERIFY(!widget("fra_format").isEnabled());
        QCOMPARE(session_->netz[1].netz_plotmarke, std::int16_t{-1});
        click(button("cmd_ok"));
        QCOMPARE(session_->netz[1].netz_plotmarke, std::int16_t{0});
        QVERIFY((marks_ == std::vector<std::pair<std::int32_t, bool>>{{1, false}}));
        open();
        click_mark(option("opt_netzteil_0"));
        QVERIFY(widget("fra_massstab").isEnabled());
        click(button("cmd_ok"));
        QCOMPARE(session_->netz[1].netz_plotmarke, std::int16_t{-1});
        QVERIFY((marks_ == std::vector<std::pair<std::int32_t, bool>>{{1, false}, {1, true}}));
    }

    void without_an_open_part_nothing_is_marked() {
        session_->datei_geladen = 0;
        open();
        QVERIFY(!option("opt_netzteil_0").isEnabled());
        QVERIFY(!option("opt_netzteil_1").isEnabled());
        click(button("cmd_ok"));
        QVERIFY(marks_.empty());
    }

    void ok_takes_a_typed_scale_and_draws_once() {
        open();
        type(scale(), "500");
        click(button("cmd_ok"));
        QVERIFY(!dialog_->isVisible());
        QCOMPARE(dialog_->result(), int{QDialog::Accepted});
        QCOMPARE(plot().plot_massstab, 0.002);
        QCOMPARE(plot().plot_blatt_rechts, std::int16_t{4});
        QCOMPARE(redrawn_, 1);
        QCOMPARE(ui_.pointers, (std::vector<int>{11, 0}));
    }

    void every_way_of_closing_puts_all_back() {
        for (const int way : {0, 1, 2, 3, 4}) {
            open();
            type_and_enter(scale(), "250");
            click_mark(option("opt_format_1"));
            click_mark(option("opt_rand_3"));
            click_mark(option("opt_netzteil_1"));
            if (way == 0) {
                click(button("cmd_abbrechen"));
            } else if (way == 1) {
                QTest::keyClick(dialog_.get(), Qt::Key_Escape);
            } else if (way == 2) {
                dialog_->close();
            } else if (way == 3) {
                button("cmd_abbrechen").setFocus();
                QTest::keyClick(&button("cmd_abbrechen"), Qt::Key_Return);
            } else {
                dialog_.reset();
            }
            QVERIFY(!dialog_ || !dialog_->isVisible());
            QCOMPARE(plot().plot_massstab, 0.001);
            QCOMPARE(plot().plot_ausrichtung, std::int16_t{1});
            QCOMPARE(plot().plot_heftrand, std::int16_t{2});
            QCOMPARE(plot().plot_blatt_rechts, std::int16_t{2});
            QCOMPARE(session_->netz[1].netz_plotmarke, std::int16_t{-1});
            QCOMPARE(redrawn_, 0);
        }
    }

    void dialog_stands_beside_its_window() {
        QWidget window;
        const QRect room = window.screen()->availableGeometry();
        window.resize(room.width() / 4, 100);
        window.move(room.left() + 10, room.top() + 30);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QWidget beside;
        beside.setFixedSize(room.width() / 4, 200);
        place_beside(beside, window);
        QCOMPARE(beside.pos(), QPoint(window.frameGeometry().right() + 1, room.top() + 30));
        window.move(room.right() - window.width() - 10, room.top() + 30);
        place_beside(beside, window);
        QCOMPARE(beside.frameGeometry().right() + 1, window.frameGeometry().left());
        window.setGeometry(room);
        place_beside(beside, window);
        QCOMPARE(beside.frameGeometry().right(), room.right());
        QCOMPARE(beside.frameGeometry().top(), room.top());
    }

    void captions_have_room_with_large_letters() {
        verify_room_for_large_letters([this] { open(); });
    }
};

QTEST_MAIN(FrmPlottenTest)
#include "frmPlotten_wintest.moc"
