// All ways in which the program ends, and what other programs do to its file meanwhile.
#include <QAbstractButton>
#include <QListWidget>
#include <QProcess>
#include <QRadioButton>
#include <QSessionManager>
#include <csignal>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include "dialog_driver.h"
#include "os/file_lock.h"
#include "os/files.h"
#include "torvel_fixture.h"
#include "windows/qt/session_end.h"
#include "windows/qt/termination_notifier.h"

using namespace veldra;
using namespace veldra::test;
using veldra_test::control;

namespace {

/// For tests that run as the administrator, whom no protection stops: an ordinary user as long as
/// this lives.
class OrdinaryUser {
 public:
    OrdinaryUser() : before_(::geteuid()) {
        constexpr uid_t nobody = 65534;
        became_ = before_ != 0 || ::setresuid(nobody, nobody, before_) == 0;
    }
    ~OrdinaryUser() {
        if (before_ == 0 && became_ && ::setresuid(before_, before_, before_) != 0) {
            qFatal("the test is no longer who it was");
        }
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

    [[nodiscard]] bool became() const { return became_; }

 private:
    uid_t before_;
    bool became_ = false;
};

constexpr int not_permitted = 77;

/// In a new process: a disk of 64 kB in the place of a folder, seen by this process alone, with one
/// file on it.
void mount_small_disk(const QByteArray& folder, const QByteArray& file, const QByteArray& bytes) {
    const bool mounted = ::unshare(CLONE_NEWNS) == 0 &&
                         ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                         ::mount("tmpfs", folder.constData(), "tmpfs", 0, "size=64k") == 0;
    const int handle = mounted ? ::open(file.constData(), O_CREAT | O_WRONLY, 0644) : -1;
    if (handle < 0 || ::write(handle, bytes.constData(), static_cast<std::size_t>(bytes.size())) !=
                          bytes.size()) {
        ::_exit(not_permitted);
    }
    ::close(handle);
}

QFile::Permissions all_may(bool write) {
    const QFile::Permissions read = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadUser |
                                    QFile::ExeUser | QFile::ReadGroup | QFile::ExeGroup |
                                    QFile::ReadOther | QFile::ExeOther;
    return write
               ? read | QFile::WriteOwner | QFile::WriteUser | QFile::WriteGroup | QFile::WriteOther
               : read;
}

}  // namespace

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

    void activate_again() {
        window_->activateWindow();
        const auto active_or_gone = [this] {
            return window_->isActiveWindow() || !window_->isVisible();
        };
        QVERIFY(QTest::qWaitFor(active_or_gone));
        QEvent activation(QEvent::ActivationChange);
        QApplication::sendEvent(window_.get(), &activation);
        QTest::qWait(60);
    }

    static QSessionManager& session_manager() {
        auto* manager = qApp->findChild<QSessionManager*>();
        if (manager == nullptr) {
            qFatal("the application has no session manager");
        }
        return *manager;
    }
    /// As the desktop does it.
    static void log_out() { Q_EMIT qApp->commitDataRequest(session_manager()); }

    /// Opens a network in a folder of its own, which an ordinary user may write to or not.
    void open_in_folder() {
        write("netze/ve_quadrat.dat", square_network);
        start();
        logo()->accept();
        window_->choose_file = [this] { return path("netze/ve_quadrat.dat"); };
        action("m_datei_beliebig")->trigger();
        QCOMPARE(session_.datei_geladen, std::int16_t{1});
        for (const char* folder : {"", "dokumente", "dokumente/Kelvara", "netze"}) {
            QVERIFY(QFile::setPermissions(path(folder), all_may(true)));
        }
        window_->on_failure = [this](const std::exception& failure) {
            told_ = QString::fromUtf8(failure.what());
        };
        told_.clear();
        move_label();
    }

    /// Starts the program itself on a file.
    void run(QProcess& program, const QString& file) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(text("HOME"), root_->path());
        environment.insert(text("XDG_CONFIG_HOME"), path("windows"));
        environment.insert(text("QT_QPA_PLATFORM"), text("offscreen"));
        program.setProcessEnvironment(environment);
        program.start(text(VELDRA_PROGRAM), {file});
        QVERIFY(program.waitForStarted());
    }

    QString told_;

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

    void signals_of_the_system_write() {
        for (const int number : {SIGTERM, SIGHUP, SIGINT}) {
            make_folders();
            start_with_network();
            const TerminationNotifier notifier([this] { window_->end_by_system(); });
            move_label();
            ::raise(number);
            QTRY_VERIFY(!window_->isVisible());
            expect_written();
            window_.reset();
        }
    }

    void end_of_the_session_writes() {
        start_with_network();
        follow_session_end(*qApp, *window_, [this] { return window_->end_by_system(); });
        move_label();
        log_out();
        QVERIFY(!window_->isVisible());
        expect_written();
        QCOMPARE(window_->exit_code(), 0);
        QCOMPARE(session_manager().restartHint(), QSessionManager::RestartNever);
    }

    void end_of_the_session_gives_an_open_dialog_up() {
        start_with_network();
        follow_session_end(*qApp, *window_, [this] { return window_->end_by_system(); });
        move_label();
        action("m_optionen_darstellungen")->trigger();
        QVERIFY(QApplication::activeModalWidget() != nullptr);
        log_out();
        QTRY_VERIFY(!window_->isVisible());
        expect_written();
    }

    void end_of_the_session_does_not_wait_for_the_logo() {
        write("dokumente/Kelvara/VELDRA.INI", "[START]\r\nBestaetigung=N\r\n");
        start();
        follow_session_end(*qApp, *window_, [this] { return window_->end_by_system(); });
        QVERIFY(logo()->isVisible());
        log_out();
        QVERIFY(!window_->isVisible());
        QVERIFY(!window_->run().programm_aktiv);
        QVERIFY(read("dokumente/Kelvara/VELDRA.INI").contains("[BEZPUN]"));
    }

    /// Giving up the selection shows nothing and says so: nobody is there to read it.
    void end_of_the_session_gives_up_the_message_of_a_dialog_that_was_given_up() {
        write("ve_quadrat.dat",
              "DISTANZ  3500000.000  5600000.000  3500100.000  5600100.000    0.0\r\n");
        start(QFile::encodeName(path("ve_quadrat.dat")).constData());
        logo()->accept();
        follow_session_end(*qApp, *window_, [this] { return window_->end_by_system(); });
        action("m_torvel_objekte")->trigger();
        control<QRadioButton>(*window_, "opt_beob_0").click();
        bool in_time = true;
        QTimer too_late;
        too_late.setSingleShot(true);
        connect(&too_late, &QTimer::timeout, this, [&in_time] {
            in_time = false;
            if (auto* box = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
                box->reject();
            }
        });
        too_late.start(5000);
        log_out();
        QTRY_VERIFY(!window_->isVisible());
        QVERIFY(in_time);
        QVERIFY(!window_->run().programm_aktiv);
        QVERIFY(read("ve_quadrat.dat").contains("Objekte"));
    }

    void end_of_the_session_that_was_called_off_and_comes_again_does_nothing() {
        start_with_network();
        follow_session_end(*qApp, *window_, [this] { return window_->end_by_system(); });
        log_out();
        const QByteArray written = read("ve_quadrat.dat");
        rewrite("KOMMENTAR fremd\r\n");
        log_out();
        QCOMPARE(read("ve_quadrat.dat"), QByteArray("KOMMENTAR fremd\r\n"));
        QVERIFY(written.contains("Objekte"));
    }

    void sigterm_behind_an_unanswered_question_overwrites_nothing() {
        start_with_network();
        const TerminationNotifier notifier([this] { window_->end_by_system(); });
        move_label();
        rewrite(square_network);
        // The notice about the rewritten file stands open when the signal comes.
        QTimer look;
        connect(&look, &QTimer::timeout, this, [&look] {
            if (QApplication::activeModalWidget() != nullptr) {
                look.stop();
                ::raise(SIGTERM);
            }
        });
        look.start(10);
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
        session_.arbeitsdatei_basis = path("fort/ve_quadrat.dat").toStdString();
        QVERIFY(window_->close());
        QVERIFY(told.startsWith(path("fort/ve_quadrat.dat_1: ") +
                                text("Datei kann nicht geschrieben werden: ")));
        const QString copy = path("dokumente/Kelvara/ve_quadrat.dat_1");
        QVERIFY(told.contains(copy));
        QVERIFY(read("dokumente/Kelvara/ve_quadrat.dat_1").simplified().contains("70.0"));
        QVERIFY(read("dokumente/Kelvara/VELDRA.INI").contains("[BEZPUN]"));
    }

    void rewritten_file_is_noticed_and_read_anew() {
        start_with_network();
        rewrite("PUNKTSIGNATUR 3500000 5600000 0 0 1 \"neu\"\r\n");
        veldra_test::MessageBoxes boxes;  // answers Yes
        QStringList default_buttons;
        boxes.at_box = [&default_buttons] {
            const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            default_buttons +=
                box->defaultButton() == nullptr ? QString() : box->defaultButton()->text();
        };
        QTRY_COMPARE(boxes.seen.size(), std::size_t{2});
        QCOMPARE(boxes.seen[0].title, text("VELDRA - Graphikdatei geändert"));
        QVERIFY(boxes.seen[0].text.contains(path("ve_quadrat.dat")));
        QCOMPARE(default_buttons.constFirst(), text("&Ja"));
        QCOMPARE(session_.pu.count(), 1);
        QVERIFY(!window_->picture().shown().isNull());
        activate_again();
        QCOMPARE(boxes.seen.size(), std::size_t{2});
    }

    void rewritten_file_may_be_left_unread() {
        start_with_network();
        move_label();
        rewrite(square_network);
        answer(no);
        activate_again();
        QTRY_COMPARE(box_title_, text("VELDRA - Graphikdatei geändert"));
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

    void file_on_the_command_line_that_is_no_graphic_file_may_stay_as_it_is() {
        const QByteArray bytes("\x89PNG\r\n\x1A\n\r\n\x01\r\n", 14);
        write("foto.png", bytes);
        answer(no);
        start(QFile::encodeName(path("foto.png")).constData());
        QCOMPARE(box_title_, text("VELDRA - Datei auswählen"));
        QCOMPARE(session_.datei_geladen, std::int16_t{0});
        QVERIFY(logo() != nullptr);
        QVERIFY(window_->close());
        QCOMPARE(read("foto.png"), bytes);
    }

    void protected_file_is_told_with_the_place_of_the_copy() {
        open_in_folder();
        QVERIFY(QFile::setPermissions(path("netze/ve_quadrat.dat"), all_may(false)));
        {
            const OrdinaryUser user;
            if (!user.became()) {
                QSKIP("this system does not let the test become an ordinary user");
            }
            QVERIFY(window_->close());
        }
        QVERIFY2(
            told_.startsWith(path("netze/ve_quadrat.dat: ") +
                             text("Datei kann nicht geschrieben werden: keine Berechtigung\n")),
            qPrintable(told_));
        QVERIFY(told_.contains(path("netze/ve_quadrat.dat_1\nerhalten.")));
        QCOMPARE(read("netze/ve_quadrat.dat"), QByteArray(square_network));
        QVERIFY(read("netze/ve_quadrat.dat_1").simplified().contains("\"3\" 70.0 0.0"));
        QVERIFY(read("dokumente/Kelvara/VELDRA.INI").contains("[BEZPUN]"));
    }

    void protected_folder_is_told_with_the_place_of_the_copy() {
        open_in_folder();
        QVERIFY(QFile::setPermissions(path("netze"), all_may(false)));
        {
            const OrdinaryUser user;
            if (!user.became()) {
                QSKIP("this system does not let the test become an ordinary user");
            }
            QVERIFY(window_->close());
        }
        QVERIFY2(
            told_.startsWith(path("netze/ve_quadrat.dat_1: ") +
                             text("Datei kann nicht geschrieben werden: keine Berechtigung\n")),
            qPrintable(told_));
        QVERIFY(told_.contains(path("dokumente/Kelvara/ve_quadrat.dat_1\nerhalten.")));
        QCOMPARE(read("netze/ve_quadrat.dat"), QByteArray(square_network));
        QVERIFY(read("dokumente/Kelvara/ve_quadrat.dat_1").simplified().contains("\"3\" 70.0 0.0"));
    }

    void full_disk_is_told_with_the_place_of_the_copy() {
        QByteArray bytes = square_network;
        for (int i = 0; i < 40; ++i) {
            bytes += "KOMMENTAR " + QByteArray(1000, 'x') + "\r\n";
        }
        QVERIFY(QDir().mkpath(path("netze")));
        const QString file = path("netze/ve_quadrat.dat");
        QProcess program;
        program.setChildProcessModifier([folder = QFile::encodeName(path("netze")),
                                         name = QFile::encodeName(file),
                                         bytes] { mount_small_disk(folder, name, bytes); });
        run(program, file);
        const QString disk = text("/proc/%1/root").arg(program.processId());
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(disk + path("netze/.ve_quadrat.dat.veldra")) ||
                                     program.state() == QProcess::NotRunning,
                                 20000);
        if (program.state() == QProcess::NotRunning && program.exitCode() == not_permitted) {
            QSKIP("this system lets the test mount no small disk of its own");
        }
        QTest::qWait(1500);  // it has read the file
        program.terminate();
        QVERIFY(program.waitForFinished(20000));
        QCOMPARE(program.exitCode(), 1);
        const QString said = QString::fromUtf8(program.readAllStandardError());
        QVERIFY2(said.contains(file + text("_1: Datei kann nicht geschrieben werden: auf dem "
                                           "Datenträger ist kein Speicherplatz mehr frei")),
                 qPrintable(said));
        const QString mark = text("Ihr Stand bleibt in der Arbeitskopie\n");
        const QString rescued =
            said.mid(said.indexOf(mark) + mark.size()).section(QLatin1Char('\n'), 0, 0);
        QVERIFY2(rescued.endsWith(text("/Kelvara/ve_quadrat.dat_1")), qPrintable(rescued));
        QFile copy(rescued);
        QVERIFY(copy.open(QIODevice::ReadOnly));
        const QByteArray kept = copy.readAll();
        QVERIFY(kept.contains("Objekte"));
        QCOMPARE(kept.count("KOMMENTAR "), 40);
    }

    void move_survives_a_part_that_cannot_be_shown() {
        write("ve_teile.dat",
              "NETZTEIL A\r\nPUNKTSIGNATUR 3500000 5600000 0 0 1 \"1\"\r\n"
              "NETZTEIL B\r\nPUNKTSIGNATUR 3500000 5600000 40000 0 1 \"2\"\r\n");
        start();
        logo()->accept();
        window_->choose_file = [this] { return path("ve_teile.dat"); };
        action("m_datei_beliebig")->trigger();
        window_->on_failure = [this](const std::exception& failure) {
            told_ = QString::fromUtf8(failure.what());
        };
        session_.pu[1].pu_bez_rechts = 70;
        control<QListWidget>(*window_, "lst_netzteile").setCurrentRow(1);
        control<QPushButton>(*window_, "cmd_anzeigen").click();
        QVERIFY2(told_.startsWith(text("Laufzeitfehler '6': Überlauf")), qPrintable(told_));
        const QString mark = text("Ihr Stand bleibt in der Arbeitskopie\n");
        QVERIFY(told_.contains(mark + path("ve_teile.dat_2")));
        QVERIFY(read("ve_teile.dat_2").simplified().contains("\"1\" 70.0 0.0"));
        QVERIFY(window_->close());
        QVERIFY(QFile::exists(path("ve_teile.dat_2")));
    }

    void second_program_on_the_file_overwrites_nothing_without_an_answer() {
        start_with_network();
        move_label();
        QProcess second;
        run(second, path("ve_quadrat.dat"));
        // It asks, and nobody answers.
        QVERIFY(!second.waitForFinished(2000));
        QCOMPARE(read("ve_quadrat.dat"), QByteArray(square_network));
        second.terminate();
        QVERIFY(second.waitForFinished(20000));
        QCOMPARE(second.exitCode(), 0);
        QCOMPARE(read("ve_quadrat.dat"), QByteArray(square_network));
        QVERIFY(window_->close());
        expect_written();
    }

    /// The program itself, as the system starts and ends it.
    void program_that_is_terminated_has_written() {
        write("ve_quadrat.dat", square_network);
        QProcess program;
        run(program, path("ve_quadrat.dat"));
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(path(".ve_quadrat.dat.veldra")), 20000);
        QVERIFY(!read("ve_quadrat.dat").contains("Objekte"));
        program.terminate();
        QVERIFY(program.waitForFinished(20000));
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 0);
        QVERIFY(read("ve_quadrat.dat").contains("Objekte"));
        QVERIFY(!QFile::exists(path(".ve_quadrat.dat.veldra")));
    }

    void program_that_is_terminated_and_must_not_write_says_so() {
        write("ve_quadrat.dat", square_network);
        QProcess program;
        run(program, path("ve_quadrat.dat"));
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(path(".ve_quadrat.dat.veldra")), 20000);
        QTest::qWait(1500);  // it has read the file
        rewrite(square_network + QByteArray("KOMMENTAR fremd\r\n"));
        program.terminate();
        QVERIFY(program.waitForFinished(20000));
        QCOMPARE(program.exitCode(), 1);
        const QByteArray told = program.readAllStandardError();
        QVERIFY2(told.contains("ve_quadrat.dat: Ein anderes Programm hat die Graphikdatei"),
                 told.constData());
        QVERIFY2(told.contains("ve_quadrat.dat_1\nerhalten."), told.constData());
    }
};

QTEST_MAIN(ProgramEndTest)
#include "frmTorvel_ende_wintest.moc"
