#include <QFileDialog>
#include <QProgressBar>

#include "dialog_fixture.h"
#include "temp_file.h"
#include "windows/forms/frmVerwopt.h"

using namespace veldra;
using namespace veldra_test;
using veldra::testing_support::file_bytes;
using veldra::testing_support::TempFolder;

class FrmVerwoptTest : public DialogFixture<FrmVerwopt> {
    Q_OBJECT

 private:
    FrmVerwopt& open() { return show_dialog(nullptr, *session_); }

    void expect_row_message(const MessageBoxes& boxes) const {
        QCOMPARE(boxes.seen.size(), std::size_t{1});
        QCOMPARE(boxes.seen[0].icon, QMessageBox::Warning);
        QCOMPARE(boxes.seen[0].title, QStringLiteral("Transformationsparameter vorgeben"));
        QCOMPARE(boxes.seen[0].text,
                 QString::fromUtf8("Bitte überprüfen Sie die eingebenen Parameter."));
    }
    void expect_file_message(const MessageBoxes& boxes) const {
        QCOMPARE(boxes.seen.size(), std::size_t{1});
        QCOMPARE(boxes.seen[0].text, text("Datei konnte nicht gefunden werden.\n"
                                          "Überprüfen Sie, ob der Dateiname richtig ist."));
    }
    /// A boundary file whose reduction reports at least twice on its way.
    [[nodiscard]] std::string large_file() const {
        std::string text;
        for (int i = 0; i < 200000; ++i) {
            text += "1 " + std::to_string(i) + "\r\n";
        }
        return folder_->file("gross.dat", text);
    }

    std::unique_ptr<TempFolder> folder_;
    std::unique_ptr<Session> session_;

 private Q_SLOTS:
    void init() {
        folder_ = std::make_unique<TempFolder>();
        session_ = std::make_unique<Session>();
    }

    void cleanup() {
        dialog_.reset();
        session_.reset();
        folder_.reset();
    }

    void shows_the_settings() {
        session_->settings.verw_datei = "gr\xFCn.dat";
        session_->settings.verw_elli = 2;
        session_->settings.verw_abbi = 2;
        session_->settings.verw_datum[2] = {1, 2, 3, 4, 5.12345};
        open();
        QCOMPARE(dialog_->objectName(), QStringLiteral("frmVerwopt"));
        QCOMPARE(dialog_->windowTitle(),
                 QString::fromUtf8("Verwaltungsgrenzendatei, Datumsübergänge"));
        QVERIFY(dialog_->isModal());
        QCOMPARE(box("txt_grendatei").text(), QString::fromUtf8("grün.dat"));
        auto& elli = combo("cbo_gren_elli");
        QCOMPARE(elli.count(), 5);
        QCOMPARE(elli.currentText(), QStringLiteral("Hayford (internatinal)"));
        auto& abbi = combo("cbo_gren_abbi");
        QCOMPARE(abbi.itemText(0), QString::fromUtf8("Gauß-Krüger (3°-Streifen)"));
        QCOMPARE(abbi.currentText(), QStringLiteral("UTM"));
        QCOMPARE(box("txt_gren_tr_3").text(), QStringLiteral("1.0 2.0 3.0 4.0 5.1235"));
        QCOMPARE(box("txt_numb_tr_1").text(), QStringLiteral("0.0 0.0 0.0 0.0 0.0"));
        QCOMPARE(caption("cmd_gren_opti"), QStringLiteral("Optimieren"));
        QCOMPARE(caption("cmd_standard"), QStringLiteral("Standard"));
    }

    void ok_stores_everything() {
        open();
        box("txt_grendatei").setText(QStringLiteral("/tmp/andere.dat"));
        combo("cbo_gren_elli").setCurrentIndex(4);
        combo("cbo_gren_abbi").setCurrentIndex(1);
        box("txt_gren_tr_1").setText(QStringLiteral("1 2 3 4 5"));
        box("txt_numb_tr_3").setText(QStringLiteral("5,5 4 3 2 1"));
        click(button("cmd_ok"));
        QVERIFY(!dialog_->isVisible());
        const Settings& settings = session_->settings;
        QCOMPARE(settings.verw_datei, std::string("/tmp/andere.dat"));
        QCOMPARE(settings.verw_elli, 5);
        QCOMPARE(settings.verw_abbi, 2);
        QVERIFY(settings.verw_datum[0] == (DatumRow{1, 2, 3, 4, 5}));
        QVERIFY(settings.numbez_datum[2] == (DatumRow{5.5, 4, 3, 2, 1}));
        QVERIFY(settings.verw_datum[1] == dhdn_to_etrs89_row);
    }

    void ok_without_a_change_changes_nothing() {
        session_->settings.verw_elli = 8;  // of a strange profile
        const Settings before = session_->settings;
        open();
        click(button("cmd_ok"));
        QVERIFY(session_->settings == before);
    }

    void giving_up_stores_nothing() {
        for (const int way : {0, 1, 2, 3}) {
            const Settings before = session_->settings;
            open();
            MessageBoxes boxes;
            box("txt_gren_tr_2").setText(QStringLiteral("1 1 1 1 1"));
            type(box("txt_gren_tr_1"), "kein Ende");
            if (way == 0) {
                QTest::keyClick(dialog_.get(), Qt::Key_Escape);
            } else if (way == 1) {
                click(button("cmd_abbrechen"));
            } else if (way == 2) {
                button("cmd_abbrechen").setFocus();
                QTest::keyClick(&button("cmd_abbrechen"), Qt::Key_Return);
            } else {
                dialog_->close();
            }
            QVERIFY(!dialog_->isVisible());
            QVERIFY(session_->settings == before);
            QVERIFY(boxes.seen.empty());
        }
    }

    void a_row_is_shown_with_its_mask_on_enter() {
        open();
        MessageBoxes boxes;
        const std::pair<const char*, const char*> rows[] = {
            {"  1  2,5 -3 0.12345 7", "1.0 2.5 -3.0 0.1235 7.0"},
            {"0 0 0 0 0", "0.0 0.0 0.0 0.0 0.0"},
            {"-1,5 +2.5 .5 4, -0", "-1.5 2.5 0.5 4.0 0.0"},
            {"70000 -70000 1 2 3", "70000.0 -70000.0 1.0 2.0 3.0"}};  // beyond 16 bits
        for (const auto& [typed, shown] : rows) {
            type_and_enter(box("txt_gren_tr_1"), typed);
            QCOMPARE(box("txt_gren_tr_1").text(), text(shown));
            QVERIFY(dialog_->isVisible());
            QVERIFY(boxes.seen.empty());
        }
    }

    void a_row_is_shown_with_its_mask_when_it_is_left() {
        open();
        type(box("txt_numb_tr_2"), "1 2 3 4 5");
        QTest::keyClick(&box("txt_numb_tr_2"), Qt::Key_Tab);
        QCOMPARE(box("txt_numb_tr_2").text(), QStringLiteral("1.0 2.0 3.0 4.0 5.0"));
    }

    void a_bad_row_is_refused_on_enter() {
        const std::string too_long = "0 0 0 0 " + std::string(300, '9');
        for (const char* wrong : {"", " ", "1 2 3 4", "1 2 3 4 5 6", "1 2 3 4 fünf", "1;2;3;4;5",
                                  "1 2 3 4 5,5,5", "1 2 3 4 -", "1 2 3 4 1e5", too_long.c_str()}) {
            open();
            MessageBoxes boxes;
            type_and_enter(box("txt_numb_tr_1"), wrong);
            expect_row_message(boxes);
            QTRY_COMPARE(dialog_->focusWidget(), &box("txt_numb_tr_1"));
            QCOMPARE(box("txt_numb_tr_1").text(), text(wrong));
        }
    }

    void a_bad_row_keeps_the_focus_when_it_is_left() {
        open();
        MessageBoxes boxes;
        type(box("txt_gren_tr_2"), "1 2 drei 4 5");
        click(box("txt_numb_tr_2"));
        QTRY_COMPARE(dialog_->focusWidget(), &box("txt_gren_tr_2"));
        expect_row_message(boxes);
    }

    void ok_refuses_each_bad_row() {
        for (const char* name : {"txt_gren_tr_1", "txt_gren_tr_2", "txt_gren_tr_3", "txt_numb_tr_1",
                                 "txt_numb_tr_2", "txt_numb_tr_3"}) {
            const Settings before = session_->settings;
            open();
            MessageBoxes boxes;
            type(box(name), "");
            click(button("cmd_ok"));
            expect_row_message(boxes);
            QVERIFY(dialog_->isVisible());
            QTRY_COMPARE(dialog_->focusWidget(), &box(name));
            QVERIFY(session_->settings == before);
        }
    }

    void a_missing_file_is_told() {
        const std::string folder_name = folder_->path();
        const std::string too_long = "/tmp/" + std::string(300, 'x') + ".dat";
        static_cast<void>(folder_->file("\u0141.dat", "2 A\r\n"));
        const std::string strange = folder_->path("\u0141.dat");  // not in Windows-1252
        for (const char* name : {"gibt/es/nicht.dat", "", "0", folder_name.c_str(),
                                 too_long.c_str(), strange.c_str()}) {
            open();
            MessageBoxes boxes;
            button("cmd_gren_opti").setText(QStringLiteral("fertig"));
            type(box("txt_grendatei"), name);
            QTest::keyClick(&box("txt_grendatei"), Qt::Key_Return);
            expect_file_message(boxes);
            QCOMPARE(caption("cmd_gren_opti"), QStringLiteral("fertig"));
            QVERIFY(dialog_->isVisible());
        }
    }

    void a_missing_file_is_told_when_its_box_is_left() {
        open();
        MessageBoxes boxes;
        type(box("txt_grendatei"), "gibt/es/nicht.dat");
        click(box("txt_gren_tr_1"));
        expect_file_message(boxes);
    }

    void blanks_round_a_file_name_do_not_count() {
        const std::string path = folder_->file("g.dat", "2 A\r\n");
        open();
        MessageBoxes boxes;
        type_and_enter(box("txt_grendatei"), ("  " + path + " ").c_str());
        QVERIFY(boxes.seen.empty());
        click(button("cmd_ok"));
        QCOMPARE(session_->settings.verw_datei, path);
    }

    void on_the_way_to_another_file_a_missing_one_is_not_told() {
        open();
        MessageBoxes boxes;
        dialog_->choose_file = [] { return QStringLiteral("/daten/grenzen.dat"); };
        type(box("txt_grendatei"), "gibt/es/nicht.dat");
        click(button("cmd_grendatei"));
        QVERIFY(boxes.seen.empty());
        QCOMPARE(box("txt_grendatei").text(), QStringLiteral("/daten/grenzen.dat"));
    }

    void a_missing_file_can_be_stored() {
        open();
        MessageBoxes boxes;
        type(box("txt_grendatei"), "kommt/noch.dat");
        click(button("cmd_ok"));
        QVERIFY(!dialog_->isVisible());
        QCOMPARE(session_->settings.verw_datei, std::string("kommt/noch.dat"));
        QVERIFY(boxes.seen.empty());
    }

    void the_file_dialog_gives_the_path() {
        open();
        dialog_->choose_file = [] { return QStringLiteral("/daten/grenzen.dat"); };
        button("cmd_gren_opti").setText(QStringLiteral("fertig"));
        click(button("cmd_grendatei"));
        QCOMPARE(box("txt_grendatei").text(), QStringLiteral("/daten/grenzen.dat"));
        QCOMPARE(caption("cmd_gren_opti"), QStringLiteral("Optimieren"));
        dialog_->choose_file = [] { return QString(); };
        click(button("cmd_grendatei"));
        QCOMPARE(box("txt_grendatei").text(), QStringLiteral("/daten/grenzen.dat"));
    }

    void the_file_dialog_has_title_and_filter() {
        open();
        when_shown<QFileDialog>([](QFileDialog& files) {
            QCOMPARE(files.objectName(), QStringLiteral("dlg_grendatei"));
            QCOMPARE(files.windowTitle(), QString::fromUtf8("Verwaltungsgrenzendatei wählen"));
            QCOMPARE(files.nameFilters(), QStringList({QStringLiteral("Alle *.dat (*.dat)"),
                                                       QStringLiteral("Alle Dateien (*.*) (*)")}));
            files.reject();
        });
        click(button("cmd_grendatei"));
    }

    void optimising_writes_the_copy_and_takes_its_path() {
        const std::string path = folder_->file("g.dat", "2 A\r\n1 B\r\n1 A\r\n");
        session_->settings.verw_datei = path;
        open();
        click(button("cmd_gren_opti"));
        QCOMPARE(caption("cmd_gren_opti"), QStringLiteral("fertig"));
        QVERIFY(!button("cmd_gren_opti").isEnabled());
        QCOMPARE(box("txt_grendatei").text(), QString::fromStdString(path + "_neu"));
        QCOMPARE(file_bytes(path + "_neu"), std::string("2 A\r\n1 B\r\n"));
        QCOMPARE(session_->settings.verw_datei, path);
        QTest::keyClick(&box("txt_grendatei"), Qt::Key_Return);  // the file is there
        QCOMPARE(caption("cmd_gren_opti"), QStringLiteral("Optimieren"));
        QVERIFY(button("cmd_gren_opti").isEnabled());
        click(button("cmd_ok"));
        QCOMPARE(session_->settings.verw_datei, path + "_neu");
    }

    void optimising_shows_progress_and_waits_for_nothing_else() {
        session_->settings.verw_datei = large_file();
        open();
        auto& progress = control<QProgressBar>(*dialog_, "pgb_gren_opti");
        QVERIFY(!progress.isVisible());
        QList<int> values;
        QString text;
        bool others_wait = false;
        connect(&progress, &QProgressBar::valueChanged, this, [&](int value) {
            if (value > 0) {
                values << value;
                text = caption("cmd_gren_opti");
                others_wait =
                    progress.isVisible() && !button("cmd_gren_opti").isEnabled() &&
                    !button("cmd_ok").isEnabled() && !button("cmd_standard").isEnabled() &&
                    !box("txt_gren_tr_1").isEnabled() && button("cmd_abbrechen").isEnabled();
            }
        });
        click(button("cmd_gren_opti"));
        QVERIFY(values.size() >= 2);
        QVERIFY(std::is_sorted(values.begin(), values.end()));
        QCOMPARE(text, QStringLiteral("das dauert ..."));
        QVERIFY(others_wait);
        QCOMPARE(caption("cmd_gren_opti"), QStringLiteral("fertig"));
        QVERIFY(!progress.isVisible());
        QVERIFY(button("cmd_ok").isEnabled() && box("txt_gren_tr_1").isEnabled());
    }

    void optimising_can_be_given_up() {
        for (const int way : {0, 1, 2}) {
            const std::string path = large_file();
            session_->settings.verw_datei = path;
            open();
            auto& progress = control<QProgressBar>(*dialog_, "pgb_gren_opti");
            connect(&progress, &QProgressBar::valueChanged, this, [&](int value) {
                if (value > 0) {
                    if (way == 0) {
                        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
                    } else if (way == 1) {
                        click(button("cmd_abbrechen"));
                    } else {
                        dialog_->close();
                    }
                }
            });
            click(button("cmd_gren_opti"));
            QVERIFY(dialog_->isVisible());
            QCOMPARE(caption("cmd_gren_opti"), QStringLiteral("Optimieren"));
            QVERIFY(button("cmd_gren_opti").isEnabled());
            QCOMPARE(box("txt_grendatei").text(), QString::fromStdString(path));
            QVERIFY(!QFile::exists(QString::fromStdString(path + "_neu")));
            QTest::keyClick(dialog_.get(), Qt::Key_Escape);
            QVERIFY(!dialog_->isVisible());
        }
    }

    void optimising_again_needs_another_file() {
        const std::string path = folder_->file("g.dat", "2 A\r\n1 B\r\n1 A\r\n");
        session_->settings.verw_datei = path;
        open();
        click(button("cmd_gren_opti"));
        QVERIFY(!button("cmd_gren_opti").isEnabled());
        dialog_->choose_file = [path] { return QString::fromStdString(path); };
        click(button("cmd_grendatei"));
        QCOMPARE(caption("cmd_gren_opti"), QStringLiteral("Optimieren"));
        QVERIFY(button("cmd_gren_opti").isEnabled());
    }

    void optimising_a_missing_file_is_told() {
        session_->settings.verw_datei = "fehlt.dat";
        open();
        MessageBoxes boxes;
        click(button("cmd_gren_opti"));
        QCOMPARE(boxes.seen.size(), std::size_t{1});
        QVERIFY(
            boxes.seen[0].text.startsWith(QStringLiteral("Datei konnte nicht gefunden werden.")));
        QCOMPARE(caption("cmd_gren_opti"), QStringLiteral("Optimieren"));
    }

    void a_copy_that_cannot_be_written_is_told() {
        const std::string path = folder_->file("g.dat", "2 A\r\n1 B\r\n");
        std::filesystem::create_directories(path + "_neu");
        session_->settings.verw_datei = path;
        open();
        MessageBoxes boxes;
        click(button("cmd_gren_opti"));
        QCOMPARE(boxes.seen.size(), std::size_t{1});
        QCOMPARE(boxes.seen[0].icon, QMessageBox::Critical);
        QVERIFY(boxes.seen[0].text.contains(QStringLiteral("g.dat_neu")));
        QCOMPARE(caption("cmd_gren_opti"), QStringLiteral("Optimieren"));
        QCOMPARE(box("txt_grendatei").text(), QString::fromStdString(path));
    }

    void standard_fills_the_controls_without_storing() {
        session_->settings.verw_datei = "a.dat";
        session_->settings.verw_elli = 4;
        session_->settings.verw_abbi = 2;
        session_->settings.numbez_datum[0] = {1, 1, 1, 1, 1};
        const Settings before = session_->settings;
        open();
        MessageBoxes boxes;
        type(box("txt_gren_tr_1"), "falsch");
        click(button("cmd_standard"));
        QVERIFY(boxes.seen.empty());
        QCOMPARE(box("txt_grendatei").text(), QStringLiteral("verwgrenz.dat"));
        QCOMPARE(combo("cbo_gren_elli").currentIndex(), 0);
        QCOMPARE(combo("cbo_gren_abbi").currentIndex(), 0);
        QCOMPARE(box("txt_gren_tr_1").text(), QStringLiteral("0.0 0.0 0.0 0.0 0.0"));
        QCOMPARE(box("txt_numb_tr_1").text(), QStringLiteral("0.0 0.0 0.0 0.0 0.0"));
        QVERIFY(session_->settings == before);
        click(button("cmd_ok"));
        QVERIFY(session_->settings == Settings());
    }

    void all_controls_can_be_named_and_reached() {
        open();
        verify_controls_can_be_reached(
            "txt_grendatei",
            names({"txt_grendatei", "cmd_grendatei", "cbo_gren_elli", "cbo_gren_abbi",
                   "cmd_gren_opti", "txt_gren_tr_1", "txt_gren_tr_2", "txt_gren_tr_3",
                   "txt_numb_tr_1", "txt_numb_tr_2", "txt_numb_tr_3", "cmd_standard", "cmd_ok",
                   "cmd_abbrechen"}));
    }

    void captions_have_room_with_large_letters() {
        verify_room_for_large_letters([this] { open(); });
    }
};

QTEST_MAIN(FrmVerwoptTest)
#include "frmVerwopt_wintest.moc"
