#include <QClipboard>

#include "dialog_fixture.h"
#include "scripted_printer.h"
#include "settings/defaults.h"
#include "windows/forms/frmLegende.h"
#include "windows/qt/font_dialog.h"
#include "windows/qt/hint_line.h"

using namespace veldra;
using namespace veldra_test;

class FrmLegendeTest : public DialogFixture<FrmLegende> {
    Q_OBJECT

 private:
    FrmLegende& open(Printer* printer = nullptr) {
        return show_dialog(nullptr, *session_, printer);
    }
    [[nodiscard]] const Titelzeile& title(std::size_t line) const {
        return session_->titel[line - 1];
    }
    void press_ok() const { click(button("cmd_ok")); }

    std::unique_ptr<Session> session_;

 private Q_SLOTS:
    void init() {
        session_ = std::make_unique<Session>();
        standard_alle(*session_);
        session_->plot.plot_massstab = 0.001;
        session_->obj.obj_beob = 1;
        session_->titel[0].setTitelText("Netz 1");
        session_->titel[1].setTitelText("Zweite");
    }

    void cleanup() {
        dialog_.reset();
        session_.reset();
    }

    void controls_and_captions() {
        open();
        QCOMPARE(dialog_->objectName(), QStringLiteral("frmLegende"));
        QCOMPARE(dialog_->windowTitle(), QStringLiteral("Legende"));
        QVERIFY(dialog_->isModal());
        QCOMPARE(caption("lbl_text_1"), QString::fromUtf8("Zeile 1 (für ganze Graphikdatei):"));
        for (int line = 2; line <= 4; ++line) {
            QCOMPARE(caption(qPrintable(QStringLiteral("lbl_text_%1").arg(line))),
                     QString::fromUtf8("Zeile %1 (nur fürs aktuelle Netzteil):").arg(line));
            QCOMPARE(check(qPrintable(QStringLiteral("chk_standard_%1").arg(line))).text(),
                     QStringLiteral("Standardtext"));
        }
        QVERIFY(dialog_->findChild<QCheckBox*>(QStringLiteral("chk_standard_1")) == nullptr);
        const char* const places[] = {"links oben", "links unten", "rechts oben", "rechts unten"};
        for (int i = 1; i <= 4; ++i) {
            const auto of_line = [&](const char* name) {
                return caption(qPrintable(text(name) + QString::number(i)));
            };
            QCOMPARE(of_line("opt_posi_"), text(places[i - 1]));
            QCOMPARE(of_line("lbl_einheit_"), text("mm (genähert)"));
            QCOMPARE(of_line("cmd_schrift_"), text("Schrift"));
        }
        QCOMPARE(caption("fra_posi"), text("Position"));
    }

    void shows_own_and_standard_texts() {
        open();
        QCOMPARE(box("txt_legende_1").text(), QStringLiteral("Netz 1"));
        QCOMPARE(box("txt_legende_2").text(), QStringLiteral("Zweite"));
        QVERIFY(!check("chk_standard_2").isChecked());
        QVERIFY(check("chk_standard_3").isChecked());
        QCOMPARE(box("txt_legende_3").text(), QStringLiteral("Lagebeobachtungen"));
        QVERIFY(check("chk_standard_4").isChecked());
        QCOMPARE(box("txt_legende_4").text(), QStringLiteral("Grundriss 1: 1000"));
        QVERIFY(control<QRadioButton>(*dialog_, "opt_posi_4").isChecked());
    }

    void pasted_line_ends_become_blanks() {
        open();
        QApplication::clipboard()->setText(QStringLiteral("eins\nNETZTEIL B\tC\u2028D"));
        box("txt_legende_1").selectAll();
        box("txt_legende_1").paste();
        QCOMPARE(box("txt_legende_1").text(), QStringLiteral("eins NETZTEIL B C D"));
        // An undefined byte of the code page is no line end and stays.
        box("txt_legende_2")
            .setText(QString::fromUtf8("a\xC2\x81"
                                       "b"));
        press_ok();
        QCOMPARE(title(1).getTitelText(), std::string("eins NETZTEIL B C D"));
        QCOMPARE(title(2).getTitelText(), std::string("a\x81"
                                                      "b"));
    }

    void number_boxes_keep_one_line_too() {
        open();
        box("txt_schrift_1").setText(QStringLiteral("4\n5"));
        QCOMPARE(box("txt_schrift_1").text(), QStringLiteral("4 5"));
    }

    void the_standard_text_is_stored_empty() {
        open();
        click_mark(check("chk_standard_2"));
        QCOMPARE(box("txt_legende_2").text(), QString::fromUtf8("(entfällt)"));
        QVERIFY(!box("txt_legende_2").isEnabled());
        press_ok();
        QVERIFY(!dialog_->isVisible());
        for (std::size_t line = 2; line <= 4; ++line) {
            QCOMPARE(title(line).getTitelText(), std::string());
        }
        QCOMPARE(title(1).getTitelText(), std::string("Netz 1"));
    }

    void switching_the_standard_text_off_brings_back_ones_own() {
        open();
        click_mark(check("chk_standard_2"));
        click_mark(check("chk_standard_2"));
        QCOMPARE(box("txt_legende_2").text(), QStringLiteral("Zweite"));
        QCOMPARE(QApplication::focusWidget(), &box("txt_legende_2"));
        click_mark(check("chk_standard_4"));  // never had one: the standard text is where it begins
        QCOMPARE(box("txt_legende_4").text(), QStringLiteral("Grundriss 1: 1000"));
        QVERIFY(box("txt_legende_4").isEnabled());
        QTest::keyClicks(&box("txt_legende_4"), QStringLiteral("Plan"));
        press_ok();
        QCOMPARE(title(2).getTitelText(), std::string("Zweite"));
        QCOMPARE(title(4).getTitelText(), std::string("Plan"));
    }

    void line_2_without_a_text_of_its_own_begins_empty() {
        session_->titel[1].setTitelText("");
        open();
        click_mark(check("chk_standard_2"));
        QCOMPARE(box("txt_legende_2").text(), QString());
    }

    void closing_in_any_way_takes_everything_over() {
        for (const int way : {0, 1, 2}) {
            session_->titel[0].setTitelText("alt");
            session_->plot.plot_legendenlage = 4;
            open();
            type(box("txt_legende_1"), "");
            box("txt_legende_1").insert(QString::fromUtf8("  Grünes Netz "));
            click_mark(option("opt_posi_3"));
            if (way == 0) {
                QTest::keyClick(&box("txt_legende_1"), Qt::Key_Return);
            } else if (way == 1) {
                QTest::keyClick(dialog_.get(), Qt::Key_Escape);
            } else {
                dialog_->close();
            }
            QVERIFY(!dialog_->isVisible());
            QCOMPARE(title(1).getTitelText(), std::string("Gr\xFCnes Netz"));
            QCOMPARE(session_->plot.plot_legendenlage, std::int16_t{3});
        }
    }

    void a_strange_position_stays_until_one_is_chosen() {
        session_->plot.plot_legendenlage = 9;
        open();
        press_ok();
        QCOMPARE(session_->plot.plot_legendenlage, std::int16_t{9});
    }

    void a_typed_size_takes_that_of_the_nearest_font() {
        veldra::test::ScriptedPrinter printer;
        open(&printer);
        // 3.05 x 1.68 = 5.124 mm: 14 points, which are 4.939 mm.
        QCOMPARE(box("txt_schrift_2").text(), QStringLiteral("2.9"));
        type_and_enter(box("txt_schrift_2"), "4,0");
        // 4.05 x 1.68 = 6.804 mm: 19 points, 6.703 mm, digits of 3.99 mm.
        QCOMPARE(box("txt_schrift_2").text(), QStringLiteral("4.0"));
        QVERIFY(std::abs(title(2).getTitelSize() - 3.9897F) < 0.0002F);
        QVERIFY(dialog_->isVisible());  // Enter in a size does not press OK
        const auto& hint = control<HintLine>(*dialog_, "lbl_hinweis");
        QCOMPARE(hint.hint(), QString());
        type_and_enter(box("txt_schrift_2"), "abc");
        QCOMPARE(box("txt_schrift_2").text(), QStringLiteral("1.5"));  // 7 points
        QCOMPARE(hint.hint(), text("Zeile 2: Statt \"abc\" gilt 1.5 mm"));
    }

    void without_a_printer_the_size_is_an_estimate() {
        open();
        type_and_enter(box("txt_schrift_1"), "2.5");
        QCOMPARE(box("txt_schrift_1").text(), QStringLiteral("2.5"));
        QCOMPARE(title(1).getTitelSize(), 4.2F);
        QTest::keyClick(&box("txt_schrift_1"), Qt::Key_Return);
        QCOMPARE(title(1).getTitelSize(), 4.2F);
        const auto& hint = control<HintLine>(*dialog_, "lbl_hinweis");
        QCOMPARE(hint.hint(), QString());
        type_and_enter(box("txt_schrift_1"), "-1");
        QCOMPARE(box("txt_schrift_1").text(), QStringLiteral("2.5"));
        QCOMPARE(hint.hint(), text("Zeile 1: Statt \"-1\" gilt 2.5 mm"));
    }

    void an_untouched_size_is_not_changed_by_ok() {
        veldra::test::ScriptedPrinter printer;
        open(&printer);
        press_ok();
        QCOMPARE(title(2).getTitelSize(), 3.0F);
    }

    void a_size_that_was_not_entered_counts_on_ok() {
        open();
        type(box("txt_schrift_1"), "5");
        press_ok();
        QCOMPARE(title(1).getTitelSize(), 8.4F);
    }

    void gaining_the_focus_selects_the_text() {
        open();
        for (const char* name : {"txt_legende_1", "txt_legende_2", "txt_schrift_1"}) {
            click(box(name));
            QTRY_COMPARE(box(name).selectedText(), box(name).text());
        }
    }

    void the_font_dialog_sets_the_line() {
        veldra::test::ScriptedPrinter printer;
        open(&printer);
        FontSpec given;
        bool with_size = false;
        QString name;
        dialog_->choose_font = [&](QWidget*, const QString& dialog_name, const FontSpec& font,
                                   bool sizes) {
            name = dialog_name;
            given = font;
            with_size = sizes;
            return std::optional<FontSpec>({"Courier", 24, -1, -1, 0});
        };
        auto& schrift = control<QPushButton>(*dialog_, "cmd_schrift_3");
        schrift.setFocus();
        QTest::keyClick(&schrift, Qt::Key_Return);
        QVERIFY(dialog_->isVisible());
        QCOMPARE(name, QStringLiteral("dlg_schrift"));
        QVERIFY(with_size);
        QCOMPARE(given.face, std::string("Arial"));
        QCOMPARE(given.points, 14.0);
        QCOMPARE(title(3).getTitelFont(), std::string("Courier"));
        QCOMPARE(title(3).getTitelBold(), std::int16_t{-1});
        QCOMPARE(title(3).getTitelItal(), std::int16_t{-1});
        QCOMPARE(title(3).getTitelUndr(), std::int16_t{0});
        QCOMPARE(box("txt_schrift_3").text(), QStringLiteral("5.0"));  // 8.467 mm / 1.68
    }

    void without_a_printer_no_size_is_chosen() {
        open();
        bool with_size = true;
        dialog_->choose_font = [&](QWidget*, const QString&, const FontSpec&, bool sizes) {
            with_size = sizes;
            return std::optional<FontSpec>({"Courier", 60, 0, 0, 0});
        };
        click(control<QPushButton>(*dialog_, "cmd_schrift_1"));
        QVERIFY(!with_size);
        QCOMPARE(title(1).getTitelFont(), std::string("Courier"));
        QCOMPARE(title(1).getTitelSize(), 3.5F);
    }

    void giving_the_font_dialog_up_changes_nothing() {
        open();
        dialog_->choose_font = [](QWidget*, const QString&, const FontSpec&, bool) {
            return std::optional<FontSpec>();
        };
        click(control<QPushButton>(*dialog_, "cmd_schrift_1"));
        QCOMPARE(title(1).getTitelFont(), std::string("Arial"));
    }

    void the_font_dialog_has_a_size_only_with_a_printer() {
        for (const bool with_printer : {true, false}) {
            veldra::test::ScriptedPrinter printer;
            open(with_printer ? &printer : nullptr);
            bool with_size = !with_printer;
            when_shown<FontDialog>([&with_size](FontDialog& dialog) {
                QCOMPARE(dialog.objectName(), QStringLiteral("dlg_schrift"));
                with_size = dialog.findChild<QComboBox*>() != nullptr;
                dialog.reject();
            });
            click(control<QPushButton>(*dialog_, "cmd_schrift_1"));
            QCOMPARE(with_size, with_printer);
            dialog_.reset();
        }
    }

    void all_controls_can_be_named_and_reached() {
        open();
        verify_controls_can_be_reached(
            "txt_legende_1",
            names({"txt_legende_1", "cmd_schrift_1", "txt_schrift_1", "txt_legende_2",
                   "chk_standard_2", "cmd_schrift_2", "txt_schrift_2", "chk_standard_3",
                   "cmd_schrift_3", "txt_schrift_3", "chk_standard_4", "cmd_schrift_4",
                   "txt_schrift_4", "opt_posi_4", "cmd_ok"}));
    }

    void the_tab_key_comes_to_the_chosen_position() {
        open();
        click_mark(option("opt_posi_2"));
        box("txt_schrift_4").setFocus();
        QTest::keyClick(&box("txt_schrift_4"), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), &option("opt_posi_2"));
        QTest::keyClick(&option("opt_posi_2"), Qt::Key_Right);
        QVERIFY(option("opt_posi_4").isChecked());
    }

    void captions_have_room_with_large_letters() {
        verify_room_for_large_letters([this] { open(); });
    }
};

QTEST_MAIN(FrmLegendeTest)
#include "frmLegende_wintest.moc"
