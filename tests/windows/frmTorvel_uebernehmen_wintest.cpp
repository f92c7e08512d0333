// The open file while other programs write it, and settings that come from another file.
#include "dialog_driver.h"
#include "torvel_fixture.h"

using namespace veldra;
using namespace veldra::test;

class FrmTorvelUebernehmenTest : public TorvelFixture {
    Q_OBJECT

    /// Puts another file in the place of the open one, as most programs do.
    void replace(const QByteArray& bytes) const {
        write("neu", bytes);
        QVERIFY(::rename(QFile::encodeName(path("neu")).constData(),
                         QFile::encodeName(path("ve_quadrat.dat")).constData()) == 0);
    }

    /// Long enough for a notice that must not come.
    static void wait_for_notice() { QTest::qWait(2500); }

 private Q_SLOTS:
    void init() { make_folders(); }
    void cleanup() { close_down(); }

    void a_replaced_file_is_noticed_while_the_window_just_stands_there() {
        start_with_network();
        session_.pu[3].pu_bez_rechts = 70;
        session_.pu[3].pu_bez_hoch = -30;
        veldra_test::MessageBoxes boxes;  // answers Yes
        replace(QByteArray(square_network).replace("5600100.000", "5600100.002"));
        QTRY_COMPARE(boxes.seen.size(), std::size_t{2});
        QCOMPARE(boxes.seen[0].title, text("VELDRA - Graphikdatei geändert"));
        QCOMPARE(boxes.seen[1].title, text("VELDRA - Einstellungen übernommen"));
        QVERIFY(boxes.seen[1].text.contains(text("Beschriftungen von Punkten: 1\n")));
        QTRY_COMPARE(session_.pu[3].pu_hoch, 5600100.002);
        QCOMPARE(session_.pu[3].pu_bez_rechts, 70.0);
        wait_for_notice();
        QCOMPARE(boxes.seen.size(), std::size_t{2});
    }

    void a_file_written_in_place_is_asked_about_when_it_is_complete() {
        start_with_network();
        veldra_test::MessageBoxes boxes;
        QFile file(path("ve_quadrat.dat"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        for (int i = 0; i < 10; ++i) {
            file.write(QByteArray(square_network).left(40 + i));
            file.write("\r\n");
            QVERIFY(file.flush());
            QTest::qWait(200);  // two seconds in all
            QCOMPARE(boxes.seen.size(), std::size_t{0});
        }
        file.close();
        QTRY_VERIFY(!boxes.seen.empty());
    }

    void own_writing_is_no_news() {
        write("ve_zwei.dat", "NETZTEIL A\r\nPUNKTSIGNATUR 1 2 0 0 1 \"1\"\r\nNETZTEIL B\r\n");
        start_with_network();
        veldra_test::MessageBoxes boxes;
        window_->choose_file = [this] { return path("ve_zwei.dat"); };
        action("m_datei_beliebig")->trigger();
        window_->choose_file = [this] { return path("ve_quadrat.dat"); };
        action("m_datei_beliebig")->trigger();
        QVERIFY(read("ve_zwei.dat").contains("Objekte"));
        wait_for_notice();
        QCOMPARE(boxes.seen.size(), std::size_t{0});
    }

    void settings_of_another_file_come_into_the_open_one() {
        write("ve_alt.dat",
              "Titel2 von dort\r\nPUNKTSIGNATUR 3500000.000 5600000.000 0 0 1 \"1\" 12 34\r\n");
        create();
        window_->load();
        QVERIFY(!action("m_datei_uebernehmen")->isEnabled());
        logo()->accept();
        write("ve_quadrat.dat", square_network);
        window_->choose_file = [this] { return path("ve_quadrat.dat"); };
        action("m_datei_beliebig")->trigger();
        QVERIFY(action("m_datei_uebernehmen")->isEnabled());
        window_->choose_settings_file = [this] { return path("ve_alt.dat"); };
        answer_message_box();
        action("m_datei_uebernehmen")->trigger();
        QCOMPARE(box_title_, text("VELDRA - Einstellungen übernommen"));
        QCOMPARE(session_.pu[1].pu_bez_rechts, 12.0);
        QCOMPARE(session_.titel[1].getTitelText(), std::string("von dort"));
        QVERIFY(!picture().shown().isNull());
        QVERIFY(window_->close());
        QVERIFY(read("ve_quadrat.dat").simplified().contains("\"1\" 12.0 34.0"));
    }
};

QTEST_MAIN(FrmTorvelUebernehmenTest)
#include "frmTorvel_uebernehmen_wintest.moc"
