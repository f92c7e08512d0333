// All ways in which the program ends, and what other programs do to its file meanwhile.
#include <QAbstractButton>
#include <QProcess>
#include <csignal>

#include "dialog_driver.h"
#include "platform/os/file_lock.h"
#include "platform/os/files.h"
#include "platform/qt/termination_notifier.h"
#include "torvel_fixture.h"

using namespace veldra;
using namespace veldra::test;

class ProgramEndTest : public TorvelFixture {
    Q_OBJECT

 private:
    void move_label() { session_.pu[3].pu_bez_rechts = 70; }

    /// The file is in its normal form and holds the moved label; nothing lies beside it.
    void expect_written() {
        const QByteArray bytes = read("ve_quadrat.dat").simplified();
        QVERIFY2(bytes.contains("\"3\" 70.0 0.0"), bytes.constData());
        QVERIFY(!QFile::exists(path("ve_quadrat.dat_1")));
        QVERIFY(!QFile::exists(path(".ve_quadrat.dat.veldra")));
        QVERIFY(!window_->run().programm_aktiv);
        QVERIFY(read("dokumente/Kelvara/VELDRA.INI").contains("Graphikdatei_1="));
    }

    void rewrite(const QByteArray& bytes) const {
        QFile::remove(path("ve_quadrat.dat"));
        write("ve_quadrat.dat", bytes);
    }

    /// Presses the n-th button of the next box.
    void answer(int nth) {
        auto* look = new QTimer(this);
        connect(look, &QTimer::timeout, this, [this, look, nth] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr) {
                return;
            }
            look->deleteLater();
            box_title_ = box->windowTitle();
            box_text_ = box->text();
            default_button_ =
                box->defaultButton() == nullptr ? QString() : box->defaultButton()->text();
            box->buttons().at(nth)->click();
        });
        look->start(10);
    }
    void activate_again() {
        window_->activateWindow();
        QEvent activation(QEvent::ActivationChange);
        QApplication::sendEvent(window_.get(), &activation);
        QTest::qWait(60);
    }
    static constexpr int yes = 0;
    static constexpr int no = 1;

    QString default_button_;

 private Q_SLOTS:
    void init() { make_folders(); }
    void cleanup() { close_down(); }

    void closing_the_window_writes() {
        start_with_network();
        move_label();
        QVERIFY(window_->close());
        expect_written();
    }

    void menu_button_and_ctrl_q_write() {
        for (const char* way : {"m_datei_beenden", "beenden", "Ctrl+Q"}) {
            make_folders();
            start_with_network();
            window_->activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(window_.get()));
            move_label();
            if (QByteArray(way) == "Ctrl+Q") {
                QTest::keyClick(window_.get(), Qt::Key_Q, Qt::ControlModifier);
            } else {
                action(way)->trigger();
            }
            QVERIFY2(!window_->isVisible(), way);
            expect_written();
            window_.reset();
        }
    }

    void sigterm_writes() {
        start_with_network();
        const TerminationNotifier notifier([this] { window_->end_by_system(); });
        move_label();
        ::raise(SIGTERM);
        QTRY_VERIFY(!window_->isVisible());
        expect_written();
    }

    void sigterm_behind_an_unanswered_question_overwrites_nothing() {
        start_with_network();
        const TerminationNotifier notifier([this] { window_->end_by_system(); });
        move_label();
        rewrite(square_network);
        // The notice about the rewritten file stands open when the signal comes.
        QTimer::singleShot(200, this, [] { ::raise(SIGTERM); });
        activate_again();
        QTRY_VERIFY(!window_->isVisible());
        QVERIFY(!window_->run().programm_aktiv);
        // Nobody has agreed to overwrite it.
        QCOMPARE(read("ve_quadrat.dat"), QByteArray(square_network));
        QVERIFY(read("ve_quadrat.dat_1").simplified().contains("\"3\" 70.0 0.0"));
    }

    void end_by_the_system_asks_nothing_and_tells_where_the_work_is() {
        start_with_network();
        move_label();
        rewrite("KOMMENTAR fremd\r\n");
        window_->end_by_system();
        QVERIFY(!window_->isVisible());
        QCOMPARE(read("ve_quadrat.dat"), QByteArray("KOMMENTAR fremd\r\n"));
        QVERIFY(read("ve_quadrat.dat_1").simplified().contains("\"3\" 70.0 0.0"));
        QVERIFY(read("dokumente/Kelvara/VELDRA.INI").contains("[BEZPUN]"));
        QCOMPARE(window_->exit_code(), 1);
    }

    void dialogs_go_with_the_window() {
        write("ve_teil.dat", "NETZTEIL A\r\nPUNKTSIGNATUR 3500000 5600000 0 0 1 \"1\"\r\n");
        start();
        logo()->accept();
        window_->choose_file = [this] { return path("ve_teil.dat"); };
        action("m_datei_beliebig")->trigger();
        QVERIFY(window_->findChild<QDialog*>(text("frmNetzteile")) != nullptr);
        QVERIFY(window_->close());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(window_->findChildren<QDialog*>().isEmpty());
    }

    void file_that_cannot_be_written_is_told_with_the_place_of_the_copy() {
        start_with_network();
        QString told;
        window_->on_failure = [&told](const std::exception& failure) {
            told = QString::fromUtf8(failure.what());
        };
        move_label();
        QVERIFY(QDir().mkdir(path("ve_quadrat.dat_1")));
        QVERIFY(window_->close());
        QVERIFY(told.startsWith(path("ve_quadrat.dat_1: ") +
                                text("Datei kann nicht geschrieben werden: ")));
        const QString copy = path("dokumente/Kelvara/ve_quadrat.dat_1");
        QVERIFY(told.contains(copy));
        QVERIFY(read("dokumente/Kelvara/ve_quadrat.dat_1").simplified().contains("70.0"));
        QVERIFY(read("dokumente/Kelvara/VELDRA.INI").contains("[BEZPUN]"));
    }

    void rewritten_file_is_noticed_and_read_anew() {
        start_with_network();
        rewrite("PUNKTSIGNATUR 3500000 5600000 0 0 1 \"neu\"\r\n");
        answer(yes);
        activate_again();
        QCOMPARE(box_title_, text("VELDRA - Graphikdatei geändert"));
        QVERIFY(box_text_.contains(path("ve_quadrat.dat")));
        QCOMPARE(default_button_, text("&Ja"));
        QCOMPARE(session_.pu.count(), 1);
        QVERIFY(!window_->picture().shown().isNull());
        box_title_.clear();
        activate_again();
        QCOMPARE(box_title_, QString());
    }

    void rewritten_file_may_be_left_unread() {
        start_with_network();
        move_label();
        rewrite(square_network);
        answer(no);
        activate_again();
        QCOMPARE(session_.pu.count(), 4);
        QCOMPARE(session_.pu[3].pu_bez_rechts, 70.0);
        QVERIFY(window_->close());
        expect_written();
    }

    void file_open_elsewhere_is_told_before_anything_happens() {
        write("ve_quadrat.dat", square_network);
        const FileLock elsewhere(system_path(path("ve_quadrat.dat")));
        start();
        logo()->accept();
        window_->choose_file = [this] { return path("ve_quadrat.dat"); };
        answer(no);
        action("m_datei_beliebig")->trigger();
        QCOMPARE(box_title_, text("VELDRA - Datei auswählen"));
        QCOMPARE(default_button_, text("&Nein"));
        QCOMPARE(session_.datei_geladen, std::int16_t{0});
        answer(yes);
        action("m_datei_beliebig")->trigger();
        QCOMPARE(session_.datei_geladen, std::int16_t{1});
    }

    void project_whose_file_is_open_elsewhere_may_stay_empty() {
        write("ve_quadrat.dat", square_network);
        write("windows/projekt.ini",
              "[VELDRA]\r\nGraphikdatei=" + QFile::encodeName(path("ve_quadrat.dat")) + "\r\n");
        const FileLock elsewhere(system_path(path("ve_quadrat.dat")));
        answer(no);
        start("projekt.ini");
        QCOMPARE(session_.datei_geladen, std::int16_t{0});
        QVERIFY(!action("m_datei_beliebig")->isVisible());
    }

    void graphic_file_on_the_command_line_is_opened_by_a_plain_start() {
        write("ve_quadrat.dat", square_network);
        start(QFile::encodeName(path("ve_quadrat.dat")).constData());
        QCOMPARE(session_.datei_geladen, std::int16_t{1});
        QCOMPARE(session_.zuletzt_datei[1], system_path(path("ve_quadrat.dat")));
        QVERIFY(action("m_datei_beliebig")->isVisible());
        QVERIFY(logo() != nullptr);
    }

    /// The program itself, as the system starts and ends it.
    void program_that_is_terminated_has_written() {
        write("ve_quadrat.dat", square_network);
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(text("HOME"), root_->path());
        environment.insert(text("XDG_CONFIG_HOME"), path("windows"));
        environment.insert(text("QT_QPA_PLATFORM"), text("offscreen"));
        program.setProcessEnvironment(environment);
        program.start(text(VELDRA_PROGRAM), {path("ve_quadrat.dat")});
        QVERIFY(program.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(path(".ve_quadrat.dat.veldra")), 20000);
        QVERIFY(!read("ve_quadrat.dat").contains("Objekte"));
        program.terminate();
        QVERIFY(program.waitForFinished(20000));
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 0);
        QVERIFY(read("ve_quadrat.dat").contains("Objekte"));
        QVERIFY(!QFile::exists(path(".ve_quadrat.dat.veldra")));
    }

    void program_that_is_terminated_and_cannot_write_says_so() {
        write("ve_quadrat.dat", square_network);
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(text("HOME"), root_->path());
        environment.insert(text("XDG_CONFIG_HOME"), path("windows"));
        environment.insert(text("QT_QPA_PLATFORM"), text("offscreen"));
        program.setProcessEnvironment(environment);
        program.start(text(VELDRA_PROGRAM), {path("ve_quadrat.dat")});
        QVERIFY(program.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(path(".ve_quadrat.dat.veldra")), 20000);
        QTest::qWait(500);
        QVERIFY(QDir().mkdir(path("ve_quadrat.dat_1")));
        program.terminate();
        QVERIFY(program.waitForFinished(20000));
        QCOMPARE(program.exitCode(), 1);
        const QByteArray told = program.readAllStandardError();
        QVERIFY2(told.contains("ve_quadrat.dat_1: Datei kann nicht geschrieben werden: "),
                 told.constData());
        QVERIFY2(told.contains("ve_quadrat.dat_1\nerhalten."), told.constData());
    }
};

QTEST_MAIN(ProgramEndTest)
#include "frmTorvel_ende_wintest.moc"
