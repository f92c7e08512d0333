// The program itself under X, with a session manager that ends the session.
#include <QProcess>

#include "os/file_lock.h"
#include "private_session_manager.h"
#include "torvel_fixture.h"

using namespace veldra;
using namespace veldra::test;

class SessionManagerTest : public TorvelFixture {
    Q_OBJECT

 private:
    void start_x() {
        display_.clear();
        x_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        x_.start(text("Xvfb"), {text("-displayfd"), text("1"), text("-screen"), text("0"),
                                text("1280x1024x24"), text("-nolisten"), text("tcp")});
        if (!x_.waitForStarted()) {
            return;
        }
        while (!display_.endsWith('\n') && x_.waitForReadyRead(10000)) {
            display_ += x_.readAllStandardOutput();
        }
    }

    void stop_x() {
        x_.terminate();
        x_.waitForFinished();
    }

    void run(const QString& file) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(text("HOME"), root_->path());
        environment.insert(text("XDG_CONFIG_HOME"), path("windows"));
        environment.insert(text("QT_QPA_PLATFORM"), text("xcb"));
        environment.insert(text("DISPLAY"), text(":") + text(display_.trimmed().constData()));
        environment.insert(text("SESSION_MANAGER"), text(manager_->address().constData()));
        program_.setProcessEnvironment(environment);
        program_.start(text(VELDRA_PROGRAM), {file});
        QVERIFY(program_.waitForStarted());
        QVERIFY(manager_->serve_until([this] { return manager_->times_saved == 1; }));
    }

    /// True when the profile, which the program writes last, is there.
    [[nodiscard]] bool has_ended() const {
        QDir folder(root_->path());
        for (const QString& documents : folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            QFile profile(folder.filePath(documents + text("/Kelvara/VELDRA.INI")));
            if (profile.open(QIODevice::ReadOnly) && profile.readAll().contains("[BEZPUN]")) {
                return true;
            }
        }
        return false;
    }

    /// Waits until the program waits, too: it has opened its file and does nothing any more.
    [[nodiscard]] bool falls_asleep() {
        constexpr int looks = 60;
        int asleep = 0;
        return manager_->serve_until([&] {
            QFile state(text("/proc/%1/stat").arg(program_.processId()));
            const bool read = state.open(QIODevice::ReadOnly);
            const QByteArray fields = read ? state.readAll() : QByteArray();
            asleep = fields.mid(fields.lastIndexOf(')') + 2, 1) == "S" ? asleep + 1 : 0;
            return asleep == looks;
        });
    }

    /// Ends the session as a desktop does, and lets the program die.
    void log_out() {
        const int saved = manager_->times_saved;
        manager_->log_out();
        QVERIFY(manager_->serve_until(
            [&] { return manager_->times_saved > saved || manager_->times_put_off > 0; }));
        if (manager_->times_saved == saved) {
            manager_->go_on_with_phase_2();
            QVERIFY(manager_->serve_until([&] { return manager_->times_saved > saved; }));
        }
        QVERIFY(manager_->serve_until([&] { return program_.state() == QProcess::NotRunning; }));
        QCOMPARE(program_.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program_.exitCode(), 0);
    }

    QProcess x_;
    QByteArray display_;
    QProcess program_;
    std::unique_ptr<PrivateSessionManager> manager_;

 private Q_SLOTS:
    void init() {
        make_folders();
        start_x();
        if (display_.isEmpty()) {
            QSKIP("there is no Xvfb on this machine (package xvfb)");
        }
        manager_ = std::make_unique<PrivateSessionManager>();
        QVERIFY2(manager_->trouble().isEmpty(), manager_->trouble().constData());
    }
    void cleanup() {
        program_.kill();
        program_.waitForFinished();
        manager_.reset();
        stop_x();
        close_down();
    }

    void all_is_written_when_the_desktop_has_its_answer() {
        write("ve_quadrat.dat", square_network);
        run(path("ve_quadrat.dat"));
        QVERIFY(falls_asleep());
        bool ended = false;
        QByteArray written;
        manager_->at_answer = [&] {
            ended = has_ended();
            written = read("ve_quadrat.dat");
        };
        log_out();
        QCOMPARE(manager_->times_put_off, 0);
        QVERIFY(ended);
        QVERIFY2(written.contains("Objekte"), written.constData());
        QCOMPARE(read("ve_quadrat.dat"), written);
    }

    /// The program serves events for the first time while it asks whether to open a file that
    /// another one has open: amid its first command.
    void amid_a_command_the_program_asks_for_time_and_then_ends() {
        write("ve_quadrat.dat", square_network);
        const FileLock elsewhere(system_path(path("ve_quadrat.dat")));
        run(path("ve_quadrat.dat"));
        QCOMPARE(manager_->times_put_off, 0);
        QList<bool> ended;
        manager_->at_answer = [&] { ended << has_ended(); };
        log_out();
        QCOMPARE(manager_->times_put_off, 1);
        QCOMPARE(ended, QList<bool>({false, true}));
        QCOMPARE(read("ve_quadrat.dat"), QByteArray(square_network));
    }

    /// As when a session ends that nobody manages: the X server goes first.
    void all_is_written_when_the_display_is_lost() {
        write("ve_quadrat.dat", square_network);
        run(path("ve_quadrat.dat"));
        QVERIFY(falls_asleep());
        stop_x();
        QVERIFY(program_.waitForFinished(20000));
        QCOMPARE(program_.exitStatus(), QProcess::NormalExit);
        QVERIFY(has_ended());
        QVERIFY(read("ve_quadrat.dat").contains("Objekte"));
        QVERIFY(!QFile::exists(path("ve_quadrat.dat_1")));
        QVERIFY(!QFile::exists(path(".ve_quadrat.dat.veldra")));
    }
};

QTEST_MAIN(SessionManagerTest)
#include "session_manager_wintest.moc"
