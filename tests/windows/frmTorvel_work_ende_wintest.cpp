// The end of the program amid long work: nothing is lost, and the work ends first.
#include <QSessionManager>
#include <QStatusBar>
#include <csignal>

#include "windows/qt/session_end.h"
#include "windows/qt/termination_notifier.h"
#include "work_fixture.h"

using namespace veldra;
using namespace veldra::test;
using veldra_test::control;

namespace {

constexpr auto writing = LongWork::Step::writing;
constexpr auto reading = LongWork::Step::reading;
constexpr auto drawing = LongWork::Step::drawing;

/// Ways in which the user leaves the program.
constexpr const char* ways[] = {"frame", "Ctrl+Q", "m_datei_beenden", "beenden"};

}  // namespace

class EndAmidWorkTest : public WorkFixture {
    Q_OBJECT

 private:
    void leave(const char* way) {
        if (QByteArray(way) == "frame") {
            window_->windowHandle()->close();
        } else if (QByteArray(way) == "Ctrl+Q") {
            QTest::keyClick(window_.get(), Qt::Key_Q, Qt::ControlModifier);
        } else {
            action(way)->trigger();
        }
    }

    /// The next command is slow, and amid the first such step `act` happens, once.
    void once_amid(LongWork::Step step, std::function<void()> act) {
        asked_after_ = 0;
        done_ = false;
        be_slow([this, step, act = std::move(act)] {
            if (done_) {
                ++asked_after_;
            } else if (slow_.step() == step) {
                done_ = true;
                act();
                open_after_ = window_->isVisible();
            }
        });
    }

    /// The program has ended and wrote the moved label; whatever comes now, it writes nothing more.
    void expect_ended_once() {
        QVERIFY(done_);
        QVERIFY(open_after_);
        QTRY_VERIFY(!window_->isVisible());
        QVERIFY(!window_->run().programm_aktiv);
        const QByteArray bytes = read("ve_lang.dat").simplified();
        QVERIFY2(bytes.contains("\"3\" 70.0 0.0"), bytes.left(400).constData());
        QVERIFY(!QFile::exists(path("ve_lang.dat_1")));
        QVERIFY(!QFile::exists(path("ve_lang.dat_2")));
        QVERIFY(!QFile::exists(path(".ve_lang.dat.veldra")));
        QVERIFY(read("dokumente/Kelvara/VELDRA.INI").contains("Graphikdatei_1="));
        QVERIFY(QFile::remove(path("dokumente/Kelvara/VELDRA.INI")));
        QTest::qWait(60);
        window_->close();
        window_->end_by_system();
        QVERIFY(!QFile::exists(path("dokumente/Kelvara/VELDRA.INI")));
    }

    void move_label() { session_.pu[3].pu_bez_rechts = 70; }
    /// A file with a moved label; the window takes keys.
    void start_and_move(const QByteArray& bytes) {
        start_with(bytes);
        window_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window_.get()));
        move_label();
    }

    /// As the desktop does it. True if the desktop may go on: nothing is left to be written.
    void follow_desktop() {
        answers_.clear();
        follow_session_end(*qApp, *window_, [this] {
            answers_ << window_->end_by_system();
            return answers_.last();
        });
    }
    static void log_out() {
        auto* manager = qApp->findChild<QSessionManager*>();
        QVERIFY(manager != nullptr);
        Q_EMIT qApp->commitDataRequest(*manager);
    }

    int asked_after_ = 0;  ///< times that the work has asked since it was to end
    bool done_ = false;
    bool open_after_ = false;
    QList<bool> answers_;

 private Q_SLOTS:
    void init() { make_folders(); }
    void cleanup() { close_down(); }

    void closing_amid_a_drawing_gives_it_up_and_ends() {
        for (const char* way : ways) {
            make_folders();
            start_and_move(diagonal(4 * many));
            once_amid(drawing, [&] { leave(way); });
            action("lupe_minus")->trigger();
            QVERIFY2(done_, way);
            QCOMPARE(asked_after_, 1);
            QVERIFY(session_.lbl_pubez_placed.empty());
            expect_ended_once();
            window_.reset();
        }
    }

    void closing_amid_a_drawing_outside_of_a_command_ends() {
        start_and_move(diagonal(4 * many));
        once_amid(drawing, [this] { leave("frame"); });
        window_->redraw();
        QCOMPARE(asked_after_, 1);
        expect_ended_once();
    }

    void closing_amid_another_part_leaves_the_former_one_and_ends() {
        start_and_move(two_parts());
        once_amid(reading, [this] { leave("frame"); });
        show_part(1);
        QCOMPARE(asked_after_, 1);
        QCOMPARE(session_.netz_aktuell, 1);
        QCOMPARE(session_.pu.count(), many);
        expect_ended_once();
    }

    void closing_amid_an_opening_leaves_both_files_whole() {
        start_and_move(two_parts());
        once_amid(reading, [this] { leave("frame"); });
        open("ve_zwei.dat", square_network);
        QCOMPARE(asked_after_, 1);
        QCOMPARE(session_.datei_geladen, std::int16_t{0});
        expect_ended_once();
        QCOMPARE(read("ve_zwei.dat"), QByteArray(square_network));
    }

    void closing_amid_a_writing_finishes_it_and_reads_nothing_more() {
        start_and_move(two_parts());
        QString told;
        once_amid(writing, [this, &told] {
            leave("Ctrl+Q");
            told = window_->statusBar()->currentMessage();
        });
        show_part(1);
        QCOMPARE(told, text("Das Programm wird beendet ..."));
        // Before the end of the writing, and before the reading begins.
        QCOMPARE(asked_after_, 2);
        QCOMPARE(session_.netz_aktuell, 1);
        QCOMPARE(session_.pu.count(), many);
        expect_ended_once();
    }

    void closing_amid_the_writing_of_another_opening_finishes_it() {
        start_and_move(two_parts());
        once_amid(writing, [this] { leave("frame"); });
        open("ve_zwei.dat", square_network);
        QCOMPARE(asked_after_, 4);
        expect_ended_once();
        QCOMPARE(read("ve_zwei.dat"), QByteArray(square_network));
    }

    void closing_amid_the_end_ends_once() {
        start_and_move(two_parts());
        once_amid(writing, [this] {
            for (const char* way : ways) {
                leave(way);
            }
        });
        leave("frame");
        // Two writings ask twice each.
        QCOMPARE(asked_after_, 3);
        QVERIFY(!window_->isVisible());
        expect_ended_once();
    }

    void nothing_new_begins_before_the_end() {
        start_and_move(two_parts());
        once_amid(reading, [this] { leave("frame"); });
        show_part(1);
        const double unit = session_.view.ansicht_masseinheit;
        action("lupe_minus")->trigger();
        action("m_torvel_objekte")->trigger();
        action("m_optionen_darstellungen")->trigger();
        action("m_optionen_legende")->trigger();
        action("m_plotten_einstellungen")->trigger();
        action("m_optionen_drucker")->trigger();
        QVERIFY(QApplication::activeModalWidget() == nullptr);
        QCOMPARE(session_.view.ansicht_masseinheit, unit);
        expect_ended_once();
    }

    void closing_amid_the_first_opening_shows_no_logo() {
        write("ve_lang.dat", diagonal(many));
        create(QFile::encodeName(path("ve_lang.dat")).constData());
        once_amid(reading, [this] { leave("frame"); });
        window_->load();
        QVERIFY(done_);
        QVERIFY(logo() == nullptr);
        QVERIFY(window_->isVisible());  // the event loop is not there yet
        QTRY_VERIFY(!window_->isVisible());
        QVERIFY(!window_->run().programm_aktiv);
        QCOMPARE(read("ve_lang.dat"), diagonal(many));
        QVERIFY(read("dokumente/Kelvara/VELDRA.INI").contains("Graphikdatei_1="));
    }

    void the_desktop_waits_for_a_drawing_that_is_given_up() {
        start_and_move(diagonal(4 * many));
        follow_desktop();
        once_amid(drawing, [] { log_out(); });
        action("lupe_minus")->trigger();
        QCOMPARE(asked_after_, 1);
        QCOMPARE(answers_, QList<bool>({false}));
        // The desktop asks once more; by its answer all is written.
        log_out();
        QCOMPARE(answers_, QList<bool>({false, true}));
        QVERIFY(!window_->isVisible());
        expect_ended_once();
        QCOMPARE(window_->exit_code(), 0);
    }

    void the_desktop_waits_for_a_writing_which_serves_nobody_else() {
        start_and_move(two_parts());
        follow_desktop();
        bool served = false;
        once_amid(writing, [this, &served] {
            log_out();
            QTimer::singleShot(0, window_.get(), [&served] { served = true; });
        });
        show_part(1);
        QCOMPARE(asked_after_, 2);
        QVERIFY(!served);
        QVERIFY(window_->isVisible());
        log_out();
        QCOMPARE(answers_, QList<bool>({false, true}));
        expect_ended_once();
    }

    void the_end_of_the_session_amid_the_end_ends_once() {
        start_and_move(two_parts());
        follow_desktop();
        once_amid(writing, [] { log_out(); });
        leave("frame");
        QCOMPARE(asked_after_, 3);
        QCOMPARE(answers_, QList<bool>({false}));
        log_out();
        QCOMPARE(answers_, QList<bool>({false, true}));
        expect_ended_once();
    }

    void a_signal_amid_a_reading_gives_it_up_and_ends() {
        start_and_move(two_parts());
        const TerminationNotifier notifier([this] { window_->end_by_system(); });
        int questions = 0;
        be_slow([this, &questions] {
            if (slow_.step() == reading) {
                done_ = true;
                open_after_ = window_->isVisible();
                if (++questions == 1) {
                    ::raise(SIGTERM);
                }
            }
        });
        show_part(1);
        // The signal is heard at the second look at the events.
        QCOMPARE(questions, 2);
        QCOMPARE(session_.netz_aktuell, 1);
        expect_ended_once();
    }

    void a_display_lost_amid_a_drawing_loses_nothing() {
        start_and_move(diagonal(4 * many));
        QByteArray written;
        once_amid(drawing, [this, &written] {
            window_->end_without_display();
            written = read("ve_lang.dat").simplified();
        });
        action("lupe_minus")->trigger();
        QVERIFY2(written.contains("\"3\" 70.0 0.0"), written.left(400).constData());
        QVERIFY(!window_->run().programm_aktiv);
    }

    void a_display_lost_amid_a_reading_leaves_the_file_whole() {
        start_and_move(two_parts());
        bool active = false;
        QByteArray copy;
        once_amid(reading, [this, &active, &copy] {
            window_->end_without_display();
            active = window_->run().programm_aktiv;
            copy = read("ve_lang.dat_1").simplified();
        });
        show_part(1);
        QVERIFY(active);
        QCOMPARE(read("ve_lang.dat"), two_parts());
        QVERIFY2(copy.contains("\"3\" 70.0 0.0"), copy.left(400).constData());
    }

    void no_message_comes_up_when_nobody_is_there() {
        start_and_move("NETZTEIL Eins\r\n" + diagonal(3) + "NETZTEIL Leer\r\n");
        veldra_test::MessageBoxes boxes;
        show_part(1);  // says that there is nothing to draw
        QCOMPARE(boxes.seen.size(), std::size_t{1});
        bool amid_command = false;
        // Heard when the hourglass appears.
        QTimer::singleShot(0, window_.get(),
                           [this, &amid_command] { amid_command = !window_->end_by_system(); });
        window_->redraw();
        QVERIFY(amid_command);
        QTRY_VERIFY(!window_->isVisible());
        QCOMPARE(boxes.seen.size(), std::size_t{1});
        QVERIFY(read("ve_lang.dat").simplified().contains("\"3\" 70.0 0.0"));
    }
};

QTEST_MAIN(EndAmidWorkTest)
#include "frmTorvel_work_ende_wintest.moc"
