// Files that come in other ways than picked among graphic files.
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

#include "torvel_fixture.h"

using namespace veldra;
using test::square_network;
using test::text;

class FrmTorvelDropTest : public test::TorvelFixture {
    Q_OBJECT

 private:
    void drop_on_window(const QList<QUrl>& urls, bool expected) {
        QMimeData data;
        data.setUrls(urls);
        QDragEnterEvent enter(QPoint(100, 200), Qt::CopyAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        enter.ignore();
        QApplication::sendEvent(window_.get(), &enter);
        QCOMPARE(enter.isAccepted(), expected);
        if (expected) {
            QDropEvent drop(QPointF(100, 200), Qt::CopyAction, &data, Qt::LeftButton,
                            Qt::NoModifier);
            QApplication::sendEvent(window_.get(), &drop);
        }
        QTest::qWait(20);
    }

 private Q_SLOTS:
    void init() { make_folders(); }
    void cleanup() { close_down(); }

    void a_dropped_file_is_opened() {
        start();
        logo()->accept();
        write("ve_fall.dat", square_network);
        drop_on_window({QUrl::fromLocalFile(path("ve_fall.dat"))}, true);
        QCOMPARE(session_.datei_geladen, std::int16_t{1});
        QCOMPARE(session_.graphikdatei, system_path(path("ve_fall.dat")));
        // Neither folders nor several files.
        drop_on_window({QUrl::fromLocalFile(path("dokumente"))}, false);
        drop_on_window(
            {QUrl::fromLocalFile(path("ve_fall.dat")), QUrl::fromLocalFile(path("ve_fall.dat"))},
            false);
    }

    void a_dropped_file_that_is_no_graphic_file_is_asked_about() {
        start_with_network();
        const QByteArray notes("Liebe Kollegen,\n\nbitte beachten.\n");
        write("notiz.txt", notes);
        answer(no);
        drop_on_window({QUrl::fromLocalFile(path("notiz.txt"))}, true);
        QCOMPARE(box_title_, text("VELDRA - Datei auswählen"));
        QVERIFY2(box_text_.contains(path("notiz.txt")), qPrintable(box_text_));
        QCOMPARE(default_button_, text("&Nein"));
        QCOMPARE(session_.graphikdatei, system_path(path("ve_quadrat.dat")));
        QCOMPARE(session_.pu.count(), 4);
        QVERIFY(window_->close());
        QCOMPARE(read("notiz.txt"), notes);
    }

    void a_picked_file_that_is_no_text_is_asked_about() {
        const QByteArray bytes("PK\x03\x04\r\n\r\n", 8);
        write("archiv.zip", bytes);
        answer(no);
        start_and_open("archiv.zip");
        QCOMPARE(box_title_, text("VELDRA - Datei auswählen"));
        QCOMPARE(session_.datei_geladen, std::int16_t{0});
        QVERIFY(window_->close());
        QCOMPARE(read("archiv.zip"), bytes);
    }

    void a_dialog_keeps_files_from_being_dropped_on_the_window() {
        start_with_network();
        write("ve_fall.dat", square_network);
        action("m_torvel_objekte")->trigger();
        QVERIFY(QApplication::activeModalWidget() != nullptr);
        drop_on_window({QUrl::fromLocalFile(path("ve_fall.dat"))}, false);
        QCOMPARE(session_.graphikdatei, system_path(path("ve_quadrat.dat")));
    }

    void a_project_takes_no_dropped_file() {
        write("windows/projekt.ini", "[VELDRA]\r\nTitel=P\r\n");
        start("projekt.ini");
        write("ve_fall.dat", square_network);
        drop_on_window({QUrl::fromLocalFile(path("ve_fall.dat"))}, false);
        QCOMPARE(session_.datei_geladen, std::int16_t{0});
    }
};

QTEST_MAIN(FrmTorvelDropTest)
#include "frmTorvel_drop_wintest.moc"
