// The file that the program is started with: it is read as any other.
#include <QWindow>
#include <csignal>

#include "windows/qt/termination_notifier.h"
#include "work_fixture.h"

using namespace veldra;
using namespace veldra::test;

namespace {

/// Looks whether the window stands on the screen when a box is about to be placed.
struct BoxBegin final : QObject {
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Polish && qobject_cast<QMessageBox*>(watched) != nullptr) {
            exposed << window->windowHandle()->isExposed();
        }
        return false;
    }
    QWidget* window = nullptr;
    QList<bool> exposed;
};

}  // namespace

class StartFileTest : public WorkFixture {
    Q_OBJECT

 private:
    /// A window that is about to be brought up with a file, whose reading takes more than its time.
    void create_with_slow_file() {
        write("ve_lang.dat", diagonal(many));
        create(QFile::encodeName(path("ve_lang.dat")).constData());
        auto* look = new QTimer(window_.get());
        connect(look, &QTimer::timeout, window_.get(), [this, look] {
            constexpr int hourglass = 11;
            if (session_.window.mouse_pointer == hourglass) {
                look->stop();
                QTest::qSleep(TorvelProgress::patience + 50);
            }
        });
        look->start(0);
    }
    /// Runs `act` before the events are served for the first time amid the work.
    void when_served(std::function<void()> act) {
        window_->findChild<TorvelProgress*>()->before_events = [this, act = std::move(act)] {
            if (served_++ == 0) {
                act();
            }
        };
    }

    int served_ = 0;

 private Q_SLOTS:
    void init() {
        make_folders();
        served_ = 0;
    }
    void cleanup() { close_down(); }

    void its_reading_shows_how_far_it_is_and_can_be_given_up() {
        create_with_slow_file();
        bool shown = false;
        when_served([&] {
            shown = bar().isVisible() && give_up().isVisible();
            give_up().click();
        });
        window_->load();
        QVERIFY(shown);
        QCOMPARE(served_, 1);
        QCOMPARE(session_.datei_geladen, std::int16_t{0});
        QVERIFY(bar().isHidden());
        QVERIFY(window_->close());
        QCOMPARE(read("ve_lang.dat"), diagonal(many));
    }

    void a_signal_gives_its_reading_up() {
        create_with_slow_file();
        const TerminationNotifier notifier([this] { window_->end_by_system(); });
        when_served([] { ::raise(SIGTERM); });
        window_->load();
        QCOMPARE(served_, 1);
        QCOMPARE(session_.datei_geladen, std::int16_t{0});
        QTRY_VERIFY(!window_->isVisible());
        QVERIFY(!window_->run().programm_aktiv);
        QCOMPARE(read("ve_lang.dat"), diagonal(many));
    }

    void a_question_about_it_comes_when_the_window_has_its_place() {
        write("brief.txt", "Sehr geehrte Damen und Herren\r\n");
        create(QFile::encodeName(path("brief.txt")).constData());
        BoxBegin begin;
        begin.window = window_.get();
        qApp->installEventFilter(&begin);
        answer(no);
        window_->load();
        QCOMPARE(box_title_, text("VELDRA - Datei auswählen"));
        QCOMPARE(begin.exposed, QList<bool>{true});
    }
};

QTEST_MAIN(StartFileTest)
#include "frmTorvel_start_wintest.moc"
