#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QToolBar>

#include "dialog_driver.h"
#include "torvel_fixture.h"
#include "windows/frmTorvel.h"
#include "windows/qt/picture_image.h"

using namespace veldra;
using test::short_wait;
using test::square_network;
using test::text;

/// Each test has a program of its own, with folders of its own.
class FrmTorvelTest : public test::TorvelFixture {
    Q_OBJECT

 private Q_SLOTS:
    void init() { make_folders(); }
    void cleanup() { close_down(); }

    void controls_bear_their_names() {
        create();
        QCOMPARE(window_->objectName(), text("frmTorvel"));
        for (const char* name :
             {"m_torvel_datei",     "m_datei_beliebig",   "m_datei_n1",
              "m_datei_alt_1",      "m_datei_alt_2",      "m_datei_alt_3",
              "m_datei_alt_4",      "m_datei_n3",         "m_datei_beenden",
              "m_torvel_objekte",   "m_torvel_ansicht",   "m_ansicht_undo",
              "m_ansicht_original", "m_ansicht_halb",     "m_ansicht_netzteile",
              "m_ansicht_maßstab",  "m_torvel_plotten",   "m_plotten_ein",
              "m_plotten_aus",      "m_plotten_null",     "m_plotten_einstellungen",
              "m_plotten_aktuell",  "m_plotten_alle",     "m_torvel_optionen",
              "m_optionen_drucker", "m_optionen_legende", "m_optionen_darstellungen",
              "m_torvel_hilfe",     "m_hilfe_handbuch",   "m_hilfe_neues",
              "m_hilfe_proginfo",   "m_optionen_grenzen", "m_datei_uebernehmen"}) {
            QVERIFY2(action(name) != nullptr, name);
        }
        QVERIFY(window_->findChild<PictureWidget*>(text("pic_torvel")) != nullptr);
        for (const char* name : {"hsb_torvel", "vsb_torvel"}) {
            auto* bar = window_->findChild<QScrollBar*>(text(name));
            QVERIFY2(bar != nullptr, name);
            QVERIFY(bar->isHidden());
        }
        for (const char* name : {"lbl_legende", "lbl_punubinf"}) {
            auto* label = window_->findChild<QLabel*>(text(name));
            QVERIFY2(label != nullptr, name);
            QVERIFY(label->isHidden());
        }
    }

    void toolbar_has_its_buttons_at_their_numbers() {
        create();
        auto* bar = window_->findChild<QToolBar*>(text("tlb_torvel"));
        QVERIFY(bar != nullptr);
        const QList<QAction*> buttons = bar->actions();
        const char* const keys[] = {"datei_öffnen",   nullptr,
                                    "rückgängig",     nullptr,
                                    "netzteile",      "maßstäbe",
                                    nullptr,          "lupe_plus",
                                    "lupe_minus",     "schiebe_rechts",
                                    "schiebe_links",  "schiebe_hoch",
                                    "schiebe_runter", "schiebe_original",
                                    nullptr,          "plot_ein",
                                    "plot_aus",       nullptr,
                                    "beenden"};
        QCOMPARE(buttons.size(), qsizetype{19});
        for (qsizetype i = 0; i < buttons.size(); ++i) {
            QCOMPARE(buttons[i]->isSeparator(), keys[i] == nullptr);
            if (keys[i] != nullptr) {
                QCOMPARE(buttons[i]->objectName(), text(keys[i]));
                QVERIFY(!buttons[i]->toolTip().isEmpty());
                QVERIFY(!buttons[i]->icon().pixmap(24, 24).isNull());
            }
        }
    }

    void without_a_file_only_opening_and_leaving_are_offered() {
        start();
        QCOMPARE(window_->windowTitle(), text("VELDRA - [keine Graphikdatei eröffnet]"));
        auto* bar = window_->findChild<QToolBar*>(text("tlb_torvel"));
        QStringList enabled;
        for (const QAction* button : bar->actions()) {
            if (!button->isSeparator() && button->isEnabled()) {
                enabled << button->objectName();
            }
        }
        QCOMPARE(enabled, QStringList({text("datei_öffnen"), text("beenden")}));
        for (const char* name :
             {"m_torvel_objekte", "m_torvel_ansicht", "m_torvel_plotten", "m_torvel_optionen"}) {
            QVERIFY2(!action(name)->isEnabled(), name);
        }
        QVERIFY(action("m_datei_beliebig")->isEnabled());
        QVERIFY(action("m_hilfe_proginfo")->isEnabled());
        QCOMPARE(session_.datei_geladen, std::int16_t{0});
        QVERIFY(window_->picture().shown().isNull());
    }

    void plain_start_without_any_profile_makes_the_folder_and_keeps_the_defaults() {
        start();
        QVERIFY(QDir(path("dokumente/Kelvara")).exists());
        QVERIFY(!QFile::exists(path("dokumente/Kelvara/VELDRA.INI")));
        QVERIFY(session_.settings == Settings());
        QCOMPARE(action("m_datei_alt_1")->text(), text("&1: "));
        QVERIFY(!action("m_datei_alt_1")->isEnabled());
        QVERIFY(logo() != nullptr);
        QVERIFY(logo()->isVisible());
    }

    void plain_start_moves_an_old_profile_and_shows_its_recent_files() {
        write("windows/VELDRA.INI",
              "[GRAPHIKDATEIEN]\r\nGraphikdatei_1=/daten/A & B/ve_1.dat\r\n"
              "Graphikdatei_3=/daten/ve_3.dat\r\n[BEZPUN]\r\npubgrascr=14\r\n");
        start();
        QVERIFY(!QFile::exists(path("windows/VELDRA.INI")));
        QVERIFY(QFile::exists(path("dokumente/Kelvara/VELDRA.INI")));
        QCOMPARE(session_.settings.pubgrascr, std::int16_t{14});
        QCOMPARE(action("m_datei_alt_1")->text(), text("&1: /daten/A && B/ve_1.dat"));
        QVERIFY(action("m_datei_alt_1")->isEnabled());
        QCOMPARE(action("m_datei_alt_2")->text(), text("&2: "));
        QVERIFY(!action("m_datei_alt_2")->isEnabled());
        QVERIFY(action("m_datei_alt_3")->isEnabled());
    }

    void opening_shows_the_network() {
        start_with_network();
        const QString file = path("ve_quadrat.dat");
        QCOMPARE(session_.datei_geladen, std::int16_t{1});
        QCOMPARE(session_.pu.count(), 4);
        QCOMPARE(window_->windowTitle(), text("VELDRA [") + file + text("]: Lagebeobachtungen"));
        QCOMPARE(action("m_datei_alt_1")->text(), text("&1: ") + file);
        QVERIFY(action("m_torvel_ansicht")->isEnabled());
        const QImage shown = window_->picture().shown();
        QVERIFY(!shown.isNull());
        int red = 0;
        int blue = 0;
        for (int y = 0; y < shown.height(); ++y) {
            for (int x = 0; x < shown.width(); ++x) {
                blue += shown.pixel(x, y) == qRgb(0, 127, 255) ? 1 : 0;
                red += shown.pixel(x, y) == qRgb(255, 0, 63) ? 1 : 0;
            }
        }
        QVERIFY(blue > 0);
        QVERIFY(red > 0);
    }

    void what_has_no_command_stays_disabled() {
        start_with_network();
        QVERIFY(!action("m_plotten_einstellungen")->isEnabled());
    }

    void labels_are_found_under_the_mouse() {
        start_with_network();
        const PictureWidget& picture = window_->picture();
        const Label& label = session_.lbl_pubez[3];
        QVERIFY(label.visible);
        const double metres = session_.view.ansicht_masseinheit * 15;  // a logical pixel
        const double x = static_cast<double>(label.left + label.width / 2) / metres;
        const double top = picture.height() - static_cast<double>(label.top) / metres;
        const double middle = top + static_cast<double>(label.height) / 2 / metres;
        const auto hit = picture.label_at({x, middle});
        QVERIFY(hit.has_value());
        QVERIFY(*hit == (PictureWidget::LabelHit{LabelArray::lbl_pubez, 3}));
        QVERIFY(!picture.label_at({x, top - 3}).has_value());
    }

    void giving_up_the_file_dialog_changes_nothing() {
        start();
        window_->choose_file = [] { return QString(); };
        action("datei_öffnen")->trigger();
        QCOMPARE(session_.datei_geladen, std::int16_t{0});
        QCOMPARE(window_->windowTitle(), text("VELDRA - [keine Graphikdatei eröffnet]"));
    }

    void a_recent_file_that_is_gone_leaves_the_list() {
        write("dokumente/Kelvara/VELDRA.INI",
              "[GRAPHIKDATEIEN]\r\nGraphikdatei_1=/gibt/es/nicht.dat\r\n"
              "Graphikdatei_2=/auch/nicht.dat\r\n");
        start();
        logo()->accept();
        answer_message_box();
        action("m_datei_alt_1")->trigger();
        QCOMPARE(box_title_, text("VELDRA - Datei auswählen"));
        QCOMPARE(box_text_, text("gewünschte Datei ist nicht vorhanden,\n"
                                 "wurde vermutlich zwischenzeitig gelöscht.\n"
                                 "Bitte andere Datei wählen."));
        QCOMPARE(box_icon_, QMessageBox::Warning);
        QCOMPARE(action("m_datei_alt_1")->text(), text("&1: /auch/nicht.dat"));
        QCOMPARE(action("m_datei_alt_2")->text(), text("&2: "));
        QVERIFY(!action("m_datei_alt_2")->isEnabled());
        QCOMPARE(session_.datei_geladen, std::int16_t{0});
    }

    void an_empty_file_is_reported() {
        write("ve_leer.dat", "KOMMENTAR\r\n");
        start();
        logo()->accept();
        window_->choose_file = [this] { return path("ve_leer.dat"); };
        answer_message_box();
        action("m_datei_beliebig")->trigger();
        QCOMPARE(box_title_, text(" Fehler "));
        QCOMPARE(box_text_, text("Datei enthält keine darzustellenden Objekte"));
        QCOMPARE(box_icon_, QMessageBox::Critical);
    }

    void a_file_that_cannot_be_read_ends_all_commands() {
        start();
        logo()->accept();
        window_->choose_file = [this] { return path("fehlt.dat"); };
        std::vector<std::string> failures;
        window_->on_failure = [&failures](const std::exception& failure) {
            failures.emplace_back(failure.what());
        };
        action("m_datei_beliebig")->trigger();
        QCOMPARE(failures.size(), std::size_t{1});
        QVERIFY(failures[0].find("fehlt.dat: Datei kann nicht gelesen werden") !=
                std::string::npos);
        // No command runs any more, not even one that could.
        write("ve_quadrat.dat", square_network);
        window_->choose_file = [this] { return path("ve_quadrat.dat"); };
        action("m_datei_beliebig")->trigger();
        QCOMPARE(failures.size(), std::size_t{1});
        QVERIFY(session_.datei_geladen != 1);
        // The session is not to be trusted: nothing is written any more.
        QVERIFY(window_->close());
        QVERIFY(!QFile::exists(path("dokumente/Kelvara/VELDRA.INI")));
    }

    void a_failure_at_the_start_brings_up_no_logo() {
        // A file in the place of the profile's folder.
        write("dokumente/Kelvara", "");
        int failures = 0;
        create().on_failure = [&failures](const std::exception& /*failure*/) { ++failures; };
        window_->load();
        QCOMPARE(failures, 1);
        QVERIFY(logo() == nullptr);
    }

    void project_start_opens_its_file_and_cannot_leave_it() {
        write("ve_quadrat.dat", square_network);
        write("dokumente/Kelvara/projekt.ini",
              "[VELDRA]\r\nGraphikdatei=" + QFile::encodeName(path("ve_quadrat.dat")) +
                  "\r\nTitel=Mein Netz\r\n[BEZPUN]\r\npubgrascr=12\r\n");
        start("projekt.ini");
        QCOMPARE(session_.datei_geladen, std::int16_t{1});
        QCOMPARE(session_.settings.pubgrascr, std::int16_t{12});
        QCOMPARE(window_->windowTitle(), text("Mein Netz: Lagebeobachtungen"));
        for (const char* name :
             {"m_datei_beliebig", "m_datei_n1", "m_datei_n3", "m_datei_alt_1", "m_datei_alt_2",
              "m_datei_alt_3", "m_datei_alt_4", "m_torvel_hilfe"}) {
            QVERIFY2(!action(name)->isVisible(), name);
        }
        QVERIFY(!action("datei_öffnen")->isEnabled());
        QVERIFY(action("m_datei_beenden")->isVisible());
        QVERIFY(logo() == nullptr);
    }

    void project_profile_in_the_windows_folder_is_the_second_choice() {
        write("windows/projekt.ini", "[VELDRA]\r\nGraphikdatei=/gibt/es/nicht.dat\r\n");
        start("projekt.ini");
        QCOMPARE(window_->run().ini_datei, system_path(path("windows/projekt.ini")));
        QCOMPARE(window_->windowTitle(), text("VELDRA [/gibt/es/nicht.dat]"));
        QCOMPARE(session_.datei_geladen, std::int16_t{0});
    }

    void project_without_a_profile_is_told_and_comes_up_empty() {
        const veldra_test::MessageBoxes boxes;
        start("fehlt.ini");
        QCOMPARE(boxes.seen.size(), std::size_t{1});
        QCOMPARE(boxes.seen[0].text,
                 text("fehlt.ini\nist weder der Name einer Graphikdatei noch der eines Profils."));
        QVERIFY(window_->isVisible());
        QCOMPARE(session_.datei_geladen, std::int16_t{0});
        QVERIFY(!action("m_datei_beliebig")->isVisible());
        QVERIFY(!action("datei_öffnen")->isEnabled());
        QVERIFY(logo() == nullptr);
    }

    void project_icon_comes_from_the_programs_folder() {
        QImage image(16, 16, QImage::Format_RGB32);
        image.fill(Qt::green);
        QVERIFY(image.save(path("programm/projekt.png")));
        write("windows/projekt.ini", "[VELDRA]\r\nIcon=projekt.png\r\n");
        start("projekt.ini");
        QCOMPARE(window_->run().icon_datei, system_path(path("programm/projekt.png")));
        QCOMPARE(window_->windowIcon().pixmap(16, 16).toImage().pixelColor(8, 8),
                 QColor(Qt::green));
    }

    void closing_writes_file_profile_and_recent_list() {
        start_with_network();
        QVERIFY(window_->close());
        QVERIFY(!window_->run().programm_aktiv);
        const QByteArray profile = read("dokumente/Kelvara/VELDRA.INI");
        QVERIFY(profile.contains("[BEZPUN]"));
        QVERIFY(profile.contains("Graphikdatei_1=" + QFile::encodeName(path("ve_quadrat.dat"))));
        // The normal form holds the selection that the file did not have.
        QVERIFY(read("ve_quadrat.dat").contains("Objekte"));
        QVERIFY(!QFile::exists(path("ve_quadrat.dat_1")));
    }

    void closing_a_project_leaves_the_recent_list_alone() {
        write("windows/projekt.ini", "[VELDRA]\r\nTitel=P\r\n");
        start("projekt.ini");
        QVERIFY(window_->close());
        const QByteArray profile = read("windows/projekt.ini");
        QVERIFY(profile.contains("[BEZPUN]"));
        QVERIFY(profile.contains("Titel=P"));
        QVERIFY(!profile.contains("[START]"));
        QVERIFY(!profile.contains("[GRAPHIKDATEIEN]"));
    }

    void logo_waits_for_its_confirmation() {
        start();
        auto* box = of_logo<QCheckBox>("chk_bestaetigen");
        auto* ok = of_logo<QPushButton>("cmd_ok");
        QVERIFY(logo()->isModal());
        QCOMPARE(box->text(), text("künftig nicht mehr bestätigen"));
        QVERIFY(box->isVisible());
        QVERIFY(!box->isChecked());
        QVERIFY(ok->isEnabled());
        QTest::qWait(2 * short_wait);
        QVERIFY(logo() != nullptr);
        box->click();
        QCOMPARE(session_.bestaetigung, std::string("N"));
        QVERIFY(ok->isEnabled());
        box->click();
        QCOMPARE(session_.bestaetigung, std::string());
        ok->click();
        QTRY_VERIFY(logo() == nullptr);
    }

    void logo_that_needs_no_confirmation_closes_by_itself() {
        write("dokumente/Kelvara/VELDRA.INI", "[START]\r\nBestaetigung= N \r\n");
        start();
        QVERIFY(of_logo<QCheckBox>("chk_bestaetigen")->isChecked());
        QVERIFY(!of_logo<QPushButton>("cmd_ok")->isEnabled());
        QTest::qWait(short_wait / 3);
        QVERIFY(logo() != nullptr);
        // Nothing but the box and the time can close it.
        QTest::keyClick(logo(), Qt::Key_Escape);
        QVERIFY(logo()->isVisible());
        QTRY_VERIFY_WITH_TIMEOUT(logo() == nullptr, 10 * short_wait);
        QCOMPARE(session_.bestaetigung, std::string("N"));
    }

    void logo_stays_when_its_box_is_unticked_in_time() {
        write("dokumente/Kelvara/VELDRA.INI", "[START]\r\nBestaetigung=N\r\n");
        start();
        auto* ok = of_logo<QPushButton>("cmd_ok");
        of_logo<QCheckBox>("chk_bestaetigen")->click();
        QVERIFY(ok->isEnabled());
        QCOMPARE(session_.bestaetigung, std::string());
        QTest::qWait(2 * short_wait);
        QVERIFY(logo() != nullptr);
        QVERIFY(logo()->isVisible());
        ok->click();
        QTRY_VERIFY(logo() == nullptr);
    }

    void logo_waits_five_seconds_in_the_program() { QCOMPARE(FrmLogo::usual_wait, 5000); }

    void logo_from_the_help_menu_has_no_box() {
        write("programm/VELDRA.VRS", "[VERSION]\r\nDatum= 1.2.2026 \r\n");
        start();
        QCOMPARE(of_logo<QLabel>("lbl_version")->text(), text("Version erstellt am 1.2.2026"));
        logo()->accept();
        QTRY_VERIFY(logo() == nullptr);
        session_.bestaetigung.assign(1, 'N');
        action("m_hilfe_proginfo")->trigger();
        QVERIFY(logo() != nullptr);
        QVERIFY(!of_logo<QCheckBox>("chk_bestaetigen")->isVisible());
        auto* ok = of_logo<QPushButton>("cmd_ok");
        QVERIFY(ok->isEnabled());
        QVERIFY(qAbs(ok->geometry().center().x() - logo()->width() / 2) <= 2);
        QTest::qWait(2 * short_wait);
        QVERIFY(logo()->isVisible());
    }

    void logo_stands_in_the_middle_of_the_window() {
        start();
        const QPoint distance =
            logo()->frameGeometry().center() - window_->frameGeometry().center();
        QVERIFY(qAbs(distance.x()) <= 2);
        QVERIFY(qAbs(distance.y()) <= 2);
        QVERIFY(of_logo<QLabel>("lbl_version")->text().isEmpty());
    }

    void logo_follows_a_window_that_gets_its_place_late() {
        start();
        // A window manager that places the window while the logo is already shown.
        window_->move(window_->pos() + QPoint(31, 47));
        QEvent activation(QEvent::WindowActivate);
        QApplication::sendEvent(logo(), &activation);
        const QPoint distance =
            logo()->frameGeometry().center() - window_->frameGeometry().center();
        QVERIFY(qAbs(distance.x()) <= 2);
        QVERIFY(qAbs(distance.y()) <= 2);
        // Once it is there, it stays where its user may have moved it.
        const QPoint place = logo()->pos() + QPoint(10, 10);
        logo()->move(place);
        QApplication::sendEvent(logo(), &activation);
        QCOMPARE(logo()->pos(), place);
    }

    void picture_stands_below_the_toolbar_and_is_measured_in_twips() {
        start();
        const PictureWidget& picture = window_->picture();
        auto* bar = window_->findChild<QToolBar*>(text("tlb_torvel"));
        QCOMPARE(picture.mapTo(window_.get(), QPoint(0, 0)),
                 QPoint(0, bar->geometry().bottom() + 1));
        QCOMPARE(session_.picture.width, picture.width() * 15.0);
        QCOMPARE(session_.picture.height, picture.height() * 15.0);
    }

    void dragging_the_border_keeps_scale_and_upper_left_corner() {
        start_with_network();
        const Viewport before = session_.view;
        const int width = window_->picture().width();
        window_->resize(window_->width() - 200, window_->height() - 100);
        QTRY_COMPARE(session_.picture.width, (width - 200) * 15.0);
        QVERIFY(qAbs(session_.view.ansicht_masseinheit - before.ansicht_masseinheit) <
                1e-6 * before.ansicht_masseinheit);
        QVERIFY(qAbs(session_.view.ansicht_rw_min - before.ansicht_rw_min) < 1e-6);
        QVERIFY(qAbs(session_.view.ansicht_hw_max - before.ansicht_hw_max) < 1e-6);
        QCOMPARE(window_->picture().shown().width(), width - 200);
    }

    void maximising_keeps_the_ground_in_view() {
        start_with_network();
        window_->resize(500, 400);
        QTRY_COMPARE(session_.picture.width, 500 * 15.0);
        const Viewport before = session_.view;
        window_->showMaximized();
        QTRY_VERIFY(session_.picture.width > 500 * 15.0);
        QVERIFY(session_.view.ansicht_masseinheit < before.ansicht_masseinheit);
        QVERIFY(session_.view.ansicht_rw_min <= before.ansicht_rw_min + 1e-6);
        QVERIFY(session_.view.ansicht_rw_max >= before.ansicht_rw_max - 1e-6);
    }

    void minimising_changes_nothing_but_undo() {
        start_with_network();
        const Viewport before = session_.view;
        std::string& caption = session_.window[MenuItem::m_ansicht_undo].caption;
        caption = "Rückgängig: Vergrößern";
        window_->showMinimized();
        QTRY_COMPARE(caption, std::string("Rückgängig:"));
        window_->showNormal();
        QTest::qWait(100);
        QCOMPARE(session_.view.ansicht_rw_min, before.ansicht_rw_min);
        QCOMPARE(session_.view.ansicht_masseinheit, before.ansicht_masseinheit);
    }

    void only_the_first_ampersand_of_a_caption_marks_a_shortcut() {
        QCOMPARE(menu_caption(text("&1: a & b & c")), text("&1: a && b && c"));
        QCOMPARE(menu_caption(text("ohne")), text("ohne"));
    }

    void file_filters_keep_their_texts() {
        QCOMPARE(to_name_filters("Graphikdateien (ve*.dat)|ve*.dat|Alle Dateien (*.*)|*.*"),
                 QStringList(
                     {text("Graphikdateien (ve*.dat) (ve*.dat)"), text("Alle Dateien (*.*) (*)")}));
    }
};

QTEST_MAIN(FrmTorvelTest)
#include "frmTorvel_wintest.moc"
