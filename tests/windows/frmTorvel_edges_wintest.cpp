// Start, life of a file, zoom and undo at their edges, on the real window.
#include <QListWidget>
#include <cmath>

#include "dialog_driver.h"
#include "torvel_fixture.h"
#include "view/viewport.h"
#include "windows/forms/frmDarstellungen.h"

using namespace veldra;
using namespace veldra::test;

class EdgeCaseTest : public TorvelFixture {
    Q_OBJECT

 private:
    [[nodiscard]] PictureWidget& picture() const { return window_->picture(); }
    [[nodiscard]] QString undo_text() const { return action("m_ansicht_undo")->text(); }

    void start_and_wait() {
        start_with_network();
        QTest::qWait(150);  // the window's first size has been followed, which clears undo
    }

    /// Shows ground of this width from the network's first point on, half a metre a pixel for 0.
    void show_ground(double width) {
        const double w = width == 0 ? picture().width() * 0.5 : width;
        FitView(session_, 3500000, 5600000, 3500000 + w, 5600000.001, 0);
        window_->redraw();
    }

    void band(const QPoint& from, const QPoint& to) const {
        QTest::mousePress(&picture(), Qt::LeftButton, {}, from);
        QTest::mouseRelease(&picture(), Qt::LeftButton, {}, to);
    }

 private Q_SLOTS:
    void init() { make_folders(); }
    void cleanup() { close_down(); }

    void command_line_with_a_profile_in_neither_folder_reads_every_value_empty() {
        const veldra_test::MessageBoxes boxes;
        start("fehlt.ini");
        QCOMPARE(boxes.seen.size(), std::size_t{1});
        QCOMPARE(window_->run().ini_datei, system_path(path("windows/fehlt.ini")));
        QCOMPARE(window_->windowTitle(), text("VELDRA []"));
        QVERIFY(window_->run().icon_datei.empty());
        QVERIFY(session_.graphikdatei.empty());
        QVERIFY(session_.settings == Settings());
        QVERIFY(!action("m_datei_beliebig")->isVisible());
        QVERIFY(!action("datei_öffnen")->isEnabled());
        QVERIFY(!QDir(path("dokumente/Kelvara")).exists());
    }

    void opening_the_open_file_writes_it_back_and_reads_it_afresh() {
        write("ve_anderes.dat", square_network);
        start_and_wait();
        window_->choose_file = [this] { return path("ve_anderes.dat"); };
        action("m_datei_beliebig")->trigger();
        window_->choose_file = [this] { return path("ve_quadrat.dat"); };
        action("m_datei_beliebig")->trigger();
        session_.pu[3].pu_bez_rechts = 70;
        session_.pu[3].pu_bez_hoch = -30;
        action("lupe_plus")->trigger();
        action("datei_öffnen")->trigger();
        QVERIFY(read("ve_quadrat.dat").simplified().contains("\"3\" 70.0 -30.0"));
        QVERIFY(!QFile::exists(path("ve_quadrat.dat_1")));
        QCOMPARE(session_.datei_geladen, std::int16_t{1});
        QCOMPARE(session_.pu.count(), 4);
        QCOMPARE(session_.pu[3].pu_bez_rechts, 70.0);
        QVERIFY(!action("rückgängig")->isEnabled());
        QCOMPARE(action("m_datei_alt_1")->text(), text("&1: ") + path("ve_quadrat.dat"));
        QCOMPARE(action("m_datei_alt_2")->text(), text("&2: ") + path("ve_anderes.dat"));
        QCOMPARE(action("m_datei_alt_3")->text(), text("&3: "));
    }

    void after_the_final_form_the_copies_are_gone_and_no_file_is_loaded() {
        write("ve_teile.dat",
              "NETZTEIL A\r\nPUNKTSIGNATUR 3500000 5600000 0 0 1 \"1\"\r\n"
              "NETZTEIL B\r\nPUNKTSIGNATUR 3500000 5600000 0 0 1 \"2\"\r\n");
        start();
        logo()->accept();
        window_->choose_file = [this] { return path("ve_teile.dat"); };
        action("m_datei_beliebig")->trigger();
        auto& list = veldra_test::control<QListWidget>(*window_, "lst_netzteile");
        for (const int row : {1, 0}) {
            list.setCurrentRow(row);
            veldra_test::control<QPushButton>(*window_, "cmd_anzeigen").click();
        }
        QVERIFY(QFile::exists(path("ve_teile.dat_1")));
        QVERIFY(QFile::exists(path("ve_teile.dat_2")));
        QVERIFY(window_->close());
        QVERIFY(!QFile::exists(path("ve_teile.dat_1")));
        QVERIFY(!QFile::exists(path("ve_teile.dat_2")));
        QCOMPARE(session_.datei_geladen, std::int16_t{0});
        QVERIFY(picture().shown().isNull());
    }

    void closer_at_a_view_of_ten_metres_does_nothing_and_keeps_undo() {
        start_and_wait();
        action("lupe_minus")->trigger();
        show_ground(10.0);
        const Viewport before = session_.view;
        const qint64 drawn = picture().shown().cacheKey();
        action("lupe_plus")->trigger();
        QCOMPARE(session_.view.ansicht_rw_min, before.ansicht_rw_min);
        QCOMPARE(session_.view.ansicht_rw_max, before.ansicht_rw_max);
        QCOMPARE(session_.view.ansicht_hw_min, before.ansicht_hw_min);
        QCOMPARE(picture().shown().cacheKey(), drawn);
        QCOMPARE(undo_text(), text("Rückgängig: Verkleinern"));
        QVERIFY(action("rückgängig")->isEnabled());
    }

    void rubber_band_of_five_metres_leaves_undo_and_view_alone() {
        start_and_wait();
        action("lupe_minus")->trigger();
        show_ground(0);
        const double unit = session_.view.ansicht_masseinheit;
        // Ten pixels are exactly five metres.
        band(QPoint(20, 20), QPoint(30, 220));
        band(QPoint(20, 20), QPoint(220, 30));
        QCOMPARE(session_.view.ansicht_masseinheit, unit);
        QCOMPARE(undo_text(), text("Rückgängig: Verkleinern"));
        band(QPoint(20, 20), QPoint(31, 31));
        QVERIFY(session_.view.ansicht_masseinheit < unit);
        QCOMPARE(undo_text(), text("Rückgängig: Vergrößern"));
    }

    void second_zoom_overwrites_the_first() {
        start_and_wait();
        action("lupe_plus")->trigger();
        const Viewport first = session_.view;
        action("lupe_minus")->trigger();
        action("rückgängig")->trigger();
        QVERIFY(std::abs(session_.view.ansicht_rw_min - first.ansicht_rw_min) < 1e-6);
        QVERIFY(std::abs(session_.view.ansicht_hw_max - first.ansicht_hw_max) < 1e-6);
        QCOMPARE(undo_text(), text("Rückgängig:"));
        QVERIFY(!action("rückgängig")->isEnabled());
        QVERIFY(!action("m_ansicht_undo")->isEnabled());
    }

    void undo_after_a_new_size_is_impossible() {
        start_and_wait();
        action("lupe_plus")->trigger();
        window_->resize(window_->width() - 50, window_->height());
        QTRY_VERIFY(!action("rückgängig")->isEnabled());
        const double left = session_.view.ansicht_rw_min;
        QTest::keyClick(window_.get(), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(session_.view.ansicht_rw_min, left);
    }

    void a_dialog_that_opens_ends_what_the_hand_is_doing_data() {
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<bool>("plot_mode");
        for (const char* command : {"m_torvel_objekte", "m_optionen_darstellungen",
                                    "m_optionen_legende", "m_optionen_grenzen"}) {
            QTest::addRow("%s", command) << QByteArray(command) << false;
        }
        for (const char* command : {"m_torvel_objekte", "m_plotten_einstellungen"}) {
            QTest::addRow("%s in plot mode", command) << QByteArray(command) << true;
        }
    }

    void a_dialog_that_opens_ends_what_the_hand_is_doing() {
        QFETCH(const QByteArray, command);
        QFETCH(const bool, plot_mode);
        start_and_wait();
        action(plot_mode ? "m_plotten_ein" : "m_ansicht_original")->trigger();
        press(QPoint(10, 10));
        move(QPoint(60, 60), Qt::LeftButton);
        QVERIFY(plot_mode ? session_.window.sheets_moving
                          : picture().overlay().rubber_band.has_value());
        action(command.constData())->trigger();
        QVERIFY(QApplication::activeModalWidget() != nullptr);
        QVERIFY(!session_.window.sheets_moving);
        QVERIFY(!picture().overlay().rubber_band.has_value());
        QCOMPARE(session_.window.mouse_pointer, 0);
        const double before = session_.view.ansicht_masseinheit;
        release(QPoint(60, 60));
        QCOMPARE(session_.view.ansicht_masseinheit, before);
    }

    void opening_the_display_options_clears_undo() {
        start_and_wait();
        action("lupe_plus")->trigger();
        QVERIFY(action("rückgängig")->isEnabled());
        action("m_optionen_darstellungen")->trigger();
        auto* dialog = window_->findChild<FrmDarstellungen*>(text("frmDarstellungen"));
        QVERIFY(dialog != nullptr);
        QCOMPARE(undo_text(), text("Rückgängig:"));
        QCOMPARE(action("rückgängig")->toolTip(), text("Rückgängig:"));
        QVERIFY(!action("rückgängig")->isEnabled());
        dialog->reject();
        QVERIFY(!action("m_ansicht_undo")->isEnabled());
    }
};

QTEST_MAIN(EdgeCaseTest)
#include "frmTorvel_edges_wintest.moc"
