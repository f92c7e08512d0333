// Long work in the main window: what it tells, how it is given up, what happens beside it.
#include <QLabel>
#include <QRadioButton>
#include <QSignalSpy>
#include <algorithm>

#include "os/file_lock.h"
#include "windows/forms/frmObjekte.h"
#include "windows/qt/picture_image.h"
#include "work_fixture.h"

using namespace veldra;
using namespace veldra::test;
using veldra_test::control;

namespace {

/// Takes half a second before it passes on what it hears.
struct PatientWork final : LongWork {
    bool goes_on() override {
        QTest::qSleep(TorvelProgress::patience + 50);
        const bool on = next->goes_on();
        shown();
        return on;
    }
    LongWork* next = nullptr;
    std::function<void()> shown;
};

}  // namespace

class LongWorkTest : public WorkFixture {
    Q_OBJECT

 private:
    /// The picture as a drawing of the session makes it now.
    [[nodiscard]] QImage drawn_afresh() {
        QtTextMeasurer measurer;
        QtUserInterface silent(nullptr, nullptr);
        return render_picture(session_, measurer, silent, picture().shown().size(),
                              picture().devicePixelRatioF());
    }

    PatientWork patient_;

 private Q_SLOTS:
    void init() { make_folders(); }
    void cleanup() { close_down(); }

    void long_work_shows_itself_and_can_be_given_up() {
        start_with_network();
        auto* bar = window_->findChild<QProgressBar*>(text("bar_fortschritt"));
        auto* give_up = window_->findChild<QPushButton*>(text("cmd_abbrechen"));
        QVERIFY(bar->isHidden() && give_up->isHidden());
        write("ve_zwei.dat", square_network);
        int shown_late = 0;
        bool could_give_up = false;
        // The reading is met by a command that has already taken its time.
        window_->choose_file = [&] {
            auto* look = new QTimer(window_.get());
            connect(look, &QTimer::timeout, window_.get(), [&could_give_up, give_up] {
                if (give_up->isVisible()) {
                    could_give_up = true;
                    give_up->click();
                }
            });
            look->start(0);
            session_.work = &patient_;
            patient_.next = window_->findChild<TorvelProgress*>();
            patient_.shown = [&] { shown_late += bar->isVisible() ? 1 : 0; };
            return path("ve_zwei.dat");
        };
        action("m_datei_beliebig")->trigger();
        QVERIFY(shown_late > 0);
        QVERIFY(could_give_up);
        QVERIFY(bar->isHidden() && give_up->isHidden());
        // No file is loaded; the one that was open has been written back.
        QCOMPARE(session_.datei_geladen, std::int16_t{0});
        QCOMPARE(window_->windowTitle(), text("VELDRA - [keine Graphikdatei eröffnet]"));
        QVERIFY(picture().shown().isNull());
        QVERIFY(!action("lupe_plus")->isEnabled());
        QVERIFY(!action("m_torvel_ansicht")->isEnabled());
        QVERIFY(read("ve_quadrat.dat").contains("Objekte"));
        QCOMPARE(read("ve_zwei.dat"), QByteArray(square_network));
        // And everything goes on.
        window_->choose_file = [this] { return path("ve_zwei.dat"); };
        action("m_datei_beliebig")->trigger();
        QCOMPARE(session_.datei_geladen, std::int16_t{1});
        QCOMPARE(session_.pu.count(), 4);
        QVERIFY(window_->close());
        QVERIFY(read("ve_zwei.dat").contains("Objekte"));
    }

    void quick_work_shows_nothing() {
        start_with_network();
        QTest::qWait(150);  // no command of the window's own comes between
        auto* bar = window_->findChild<QProgressBar*>(text("bar_fortschritt"));
        auto* progress = window_->findChild<TorvelProgress*>();
        progress->begin();
        QVERIFY(progress->goes_on());
        QVERIFY(bar->isHidden());
        QTest::qSleep(TorvelProgress::patience + 50);
        QVERIFY(progress->goes_on());
        QVERIFY(bar->isVisible());
        // Nothing stands ready to clear up: it cannot be given up.
        QVERIFY(!window_->findChild<QPushButton*>(text("cmd_abbrechen"))->isVisible());
        progress->end();
        QVERIFY(bar->isHidden());
    }

    void the_bar_tells_the_share_of_writing_of_reading_and_of_drawing() {
        start_with(square_network);
        std::map<LongWork::Step, QList<int>> shares;
        const std::map<LongWork::Step, const char*> steps{{LongWork::Step::writing, "Schreiben"},
                                                          {LongWork::Step::reading, "Lesen"},
                                                          {LongWork::Step::drawing, "Zeichnen"}};
        const QSize size = picture().size();
        be_slow([&] {
            QVERIFY(bar().isVisible());
            QCOMPARE(picture().size(), size);  // it takes no room from the picture
            if (slow_.share()) {
                QCOMPARE(bar().maximum(), 100);
                QCOMPARE(bar().value(), static_cast<int>(std::floor(*slow_.share() * 100)));
                const QString step = text(steps.at(slow_.step()));
                QCOMPARE(bar().format(), step + text(" %p %"));
                QCOMPARE(give_up().isVisible(), slow_.step() != LongWork::Step::writing);
                shares[slow_.step()] << bar().value();
                const QString pictures = qEnvironmentVariable("VELDRA_PICTURES");
                if (!pictures.isEmpty()) {
                    QVERIFY(window_->grab().save(pictures + text("/") + step + text(".png")));
                }
            } else {
                QCOMPARE(bar().maximum(), 0);
            }
        });
        open("ve_zwei.dat", diagonal(2048));
        // What is written is read meanwhile: two times one window, asked before it and before the
        // end. Seven readings then do the same.
        QCOMPARE(shares[LongWork::Step::writing], QList<int>({0, 50, 50, 100}));
        QCOMPARE(shares[LongWork::Step::reading],
                 QList<int>({14, 14, 28, 28, 42, 42, 57, 57, 71, 71, 85, 85, 100}));
        // 2048 signatures, then as many labels.
        const QList<int>& drawing = shares[LongWork::Step::drawing];
        QVERIFY(drawing.size() >= 3);
        QVERIFY(std::is_sorted(drawing.begin(), drawing.end()));
        QVERIFY(drawing.first() >= 25 && drawing.first() <= 50);
        QVERIFY(drawing.last() >= 95 && drawing.last() <= 100);
        QVERIFY(bar().isHidden());
    }

    void another_part_given_up_leaves_the_former_one() {
        start_with(two_parts());
        move_last_label();
        const double moved = session_.pu[many].pu_bez_rechts;
        QVERIFY(moved > 0);
        const QImage shown = picture().shown();
        const QString caption = window_->windowTitle();
        be_slow([this] {
            // The first two are those of the writing.
            QCOMPARE(give_up().isVisible(), slow_.questions > 2);
            if (slow_.questions == 4) {
                give_up().click();
            }
        });
        show_part(1);
        QCOMPARE(slow_.questions, 5);
        QCOMPARE(session_.netz_aktuell, 1);
        QCOMPARE(session_.pu.count(), many);
        QCOMPARE(session_.lin.count(), 1);
        QCOMPARE(session_.titel[1].getTitelText(), std::string("erstes"));
        QCOMPARE(window_->windowTitle(), caption);
        QCOMPARE(picture().shown(), shown);
        QVERIFY(bar().isHidden() && give_up().isHidden());
        QCOMPARE(session_.window.mouse_pointer, 0);
        // The move can still be undone, and everything goes on.
        QVERIFY(action("rückgängig")->isEnabled());
        action("rückgängig")->trigger();
        QCOMPARE(session_.pu[many].pu_bez_rechts, 0.0);
        move_last_label();
        show_part(1);
        QCOMPARE(session_.netz_aktuell, 2);
        QCOMPARE(session_.pu.count(), 20);
        QVERIFY(window_->close());
        QVERIFY(read("ve_lang.dat")
                    .contains("\"" + QByteArray::number(many) + "\"" +
                              QByteArray::number(moved, 'f', 1).rightJustified(10)));
        QVERIFY(!QFile::exists(path("ve_lang.dat_1")));
    }

    void another_part_is_given_up_by_escape_in_the_list() {
        start_with(two_parts());
        parts().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&parts()));
        be_slow([this] {
            // Once amid the writing, which goes on, and once amid the reading.
            if (slow_.questions == 1 || slow_.questions == 3) {
                QTest::keyClick(&control<QListWidget>(parts(), "lst_netzteile"), Qt::Key_Escape);
            }
        });
        show_part(1);
        QCOMPARE(slow_.questions, 4);
        QCOMPARE(session_.netz_aktuell, 1);
        QVERIFY(parts().isVisible());
        QTest::keyClick(&control<QListWidget>(parts(), "lst_netzteile"), Qt::Key_Escape);
        QVERIFY(!session_.window.frm_netzteile_shown);
    }

    void another_selection_given_up_leaves_the_former_one() {
        start_with(two_parts());
        const QImage shown = picture().shown();
        action("m_torvel_objekte")->trigger();
        auto* dialog = window_->findChild<FrmObjekte*>(text("frmObjekte"));
        control<QRadioButton>(*dialog, "opt_beob_2").click();
        control<QRadioButton>(*dialog, "opt_puwe_7").click();
        be_slow([this] {
            if (slow_.questions == 3) {
                give_up().click();
            }
        });
        control<QPushButton>(*dialog, "cmd_ok").click();
        QCOMPARE(slow_.questions, 4);
        QCOMPARE(session_.obj.obj_beob, std::int16_t{1});
        QCOMPARE(session_.obj.obj_puwe, std::int16_t{0});
        QCOMPARE(session_.obj.obj_wert_lage, std::int16_t{0});
        QCOMPARE(session_.lin.count(), 1);
        QCOMPARE(picture().shown(), shown);
        QCOMPARE(drawn_afresh(), shown);
        QVERIFY(bar().isHidden());
    }

    void nothing_can_be_undone_after_an_opening_that_was_given_up() {
        start_with(diagonal(many));
        action("maßstäbe")->trigger();
        move_last_label();
        QVERIFY(action("rückgängig")->isEnabled());
        be_slow([this] { give_up().click(); });
        open("ve_zwei.dat", square_network);
        QCOMPARE(session_.datei_geladen, std::int16_t{0});
        for (const char* name : {"rückgängig", "maßstäbe", "netzteile", "m_ansicht_undo"}) {
            QVERIFY2(!action(name)->isEnabled(), name);
        }
        QVERIFY(!session_.window.frm_massstab_shown);
        action("m_ansicht_undo")->trigger();
        QVERIFY(window_->close());
    }

    void a_file_that_is_being_read_shows_nothing_of_the_one_before() {
        start_with(diagonal(many));
        bool seen = false;
        be_slow([&] {
            if (slow_.step() == LongWork::Step::reading) {
                seen = true;
                QVERIFY(picture().shown().isNull());
            }
        });
        open("ve_zwei.dat", square_network);
        QVERIFY(seen);
        QVERIFY(!picture().shown().isNull());
    }

    void the_opening_of_a_project_can_be_given_up() {
        write("ve_projekt.dat", diagonal(many));
        write("windows/projekt.ini", "[VELDRA]\r\nTitel=Mein Netz\r\nGraphikdatei=" +
                                         QFile::encodeName(path("ve_projekt.dat")) + "\r\n");
        create("projekt.ini");
        be_slow([this] { give_up().click(); });
        window_->load();
        QVERIFY(slow_.questions > 0);
        QCOMPARE(session_.datei_geladen, std::int16_t{0});
        QCOMPARE(window_->windowTitle(), text("Mein Netz"));
        QVERIFY(window_->close());
        QCOMPARE(read("ve_projekt.dat"), diagonal(many));
    }

    void a_rewritten_file_read_anew_can_be_given_up() {
        start_with(diagonal(many));
        QFile::remove(path("ve_lang.dat"));
        write("ve_lang.dat", diagonal(many, 7));
        veldra_test::MessageBoxes boxes;  // answers Yes
        boxes.at_box = [this, &boxes] {
            if (boxes.seen.size() == 1) {
                be_slow([this] { give_up().click(); });
            }
        };
        QTRY_COMPARE(boxes.seen.size(), std::size_t{2});
        QVERIFY(boxes.seen[1].text.contains(path("ve_lang.dat_1")));
        QCOMPARE(read("ve_lang.dat_1").count("Punktsignatur") +
                     read("ve_lang.dat_1").count("PUNKTSIGNATUR"),
                 diagonal(many, 7).count("PUNKTSIGNATUR"));
        QTRY_COMPARE(session_.datei_geladen, std::int16_t{0});
        QVERIFY(picture().shown().isNull());
        for (const char* name : {"lupe_plus", "plot_ein", "m_torvel_ansicht", "m_torvel_objekte"}) {
            QVERIFY2(!action(name)->isEnabled(), name);
        }
        QCOMPARE(window_->windowTitle(), text("VELDRA - [keine Graphikdatei eröffnet]"));
        QVERIFY(window_->close());
        QCOMPARE(read("ve_lang.dat"), diagonal(many, 7));
    }

    void a_given_up_drawing_can_be_drawn_again() {
        start_with(diagonal(4 * many));
        be_slow([this] { give_up().click(); });
        action("lupe_minus")->trigger();
        QVERIFY(slow_.questions > 0);
        QCOMPARE(session_.datei_geladen, std::int16_t{1});
        QVERIFY(session_.lbl_pubez_placed.empty());
        QVERIFY(action("lupe_plus")->isEnabled());
        action("rückgängig")->trigger();
        QVERIFY(!session_.lbl_pubez_placed.empty());
        const QImage shown = picture().shown();
        QCOMPARE(drawn_afresh(), shown);
    }

    void a_given_up_drawing_says_so_and_offers_to_draw_anew() {
        start_with(diagonal(4 * many));
        const auto& notice = control<QFrame>(*window_, "fra_abgebrochen");
        QVERIFY(!notice.isVisible());
        be_slow([this] { give_up().click(); });
        action("lupe_minus")->trigger();
        QVERIFY(notice.isVisible());
        QVERIFY(picture().rect().contains(notice.geometry()));
        QCOMPARE(control<QLabel>(notice, "lbl_abgebrochen").text(),
                 text("Das Zeichnen wurde abgebrochen, das Bild ist unvollständig."));
        const QString pictures = qEnvironmentVariable("VELDRA_PICTURES");
        if (!pictures.isEmpty()) {
            QVERIFY(window_->grab().save(pictures + text("/abgebrochen.png")));
        }
        // Giving up once more leaves it; the arrows still move the picture.
        be_slow([this] { give_up().click(); });
        control<QPushButton>(notice, "cmd_neu_zeichnen").click();
        QVERIFY(slow_.questions > 0);
        QVERIFY(notice.isVisible());
        QVERIFY(action("rückgängig")->isEnabled());
        control<QPushButton>(notice, "cmd_neu_zeichnen").click();
        QVERIFY(!notice.isVisible());
        QVERIFY(!session_.lbl_pubez_placed.empty());
        const QImage shown = picture().shown();
        QCOMPARE(drawn_afresh(), shown);
    }

    void the_notice_of_a_given_up_drawing_goes_with_the_file() {
        start_with(diagonal(4 * many));
        be_slow([this] { give_up().click(); });
        action("lupe_minus")->trigger();
        const auto& notice = control<QFrame>(*window_, "fra_abgebrochen");
        QVERIFY(notice.isVisible());
        open("ve_zwei.dat", square_network);
        QVERIFY(!notice.isVisible());
    }

    void a_redraw_and_a_new_size_amid_a_drawing_come_after_it() {
        start_with(diagonal(4 * many));
        const QSize before = window_->size();
        QSignalSpy missed(&picture(), &PictureWidget::redraw_missed);
        int nested = 0;
        be_slow([&] {
            if (slow_.step() != LongWork::Step::drawing || !picture().is_drawing() || nested >= 3) {
                return;
            }
            ++nested;
            QtUserInterface silent(nullptr, nullptr);
            window_->resize(before - QSize(40 * nested, 30 * nested));
            window_->redraw();
            picture().redraw(session_, silent);
            picture().repaint_labels();
            picture().clear();
            QApplication::processEvents();
            QVERIFY(picture().is_drawing());
            QVERIFY(missed.isEmpty());
        });
        action("lupe_minus")->trigger();
        QCOMPARE(nested, 3);
        QCOMPARE(missed.count(), 1);
        QCOMPARE(window_->size(), before - QSize(120, 90));
        QTRY_COMPARE(picture().shown().size(), picture().size() * picture().devicePixelRatioF());
        QTRY_COMPARE(session_.picture.width, picture().width() * 15.0);
        const QImage shown = picture().shown();
        QVERIFY(!session_.lbl_pubez_placed.empty());
        QCOMPARE(drawn_afresh(), shown);
    }

    void a_drawing_outside_of_a_command_lets_no_command_in() {
        start_with(diagonal(4 * many));
        bool asked = false;
        be_slow([&] {
            if (!asked && picture().is_drawing()) {
                asked = true;
                action("lupe_plus")->trigger();
                action("m_torvel_objekte")->trigger();
                window_->redraw();
            }
        });
        const double unit = session_.view.ansicht_masseinheit;
        window_->redraw();
        QVERIFY(asked);
        QCOMPARE(session_.view.ansicht_masseinheit, unit);
        QVERIFY(window_->findChild<FrmObjekte*>(text("frmObjekte")) == nullptr);
    }

    void a_question_leaves_the_labels_where_they_are() {
        start_with(two_parts());
        const QImage shown = picture().shown();
        action("m_plotten_ein")->trigger();
        action("m_plotten_aus")->trigger();
        QCOMPARE(picture().shown(), shown);
        session_.zuletzt_datei[2] = "/gibt/es/nicht.dat";
        zuletzt_menue(session_);
        window_->synchronise();
        veldra_test::MessageBoxes boxes;
        boxes.at_box = [&] { QCOMPARE(picture().shown(), shown); };
        action("m_datei_alt_2")->trigger();
        QCOMPARE(boxes.seen.size(), std::size_t{1});
        QCOMPARE(picture().shown(), shown);
    }

    void the_time_for_an_answer_is_no_work() {
        write("ve_quadrat.dat", square_network);
        const FileLock elsewhere(system_path(path("ve_quadrat.dat")));
        start();
        logo()->accept();
        auto* progress = window_->findChild<TorvelProgress*>();
        int shown = 0;
        progress->before_events = [&shown] { ++shown; };
        veldra_test::when_shown<QMessageBox>([](QMessageBox& box) {
            QTest::qSleep(TorvelProgress::patience + 50);
            box.buttons().constFirst()->click();
        });
        window_->choose_file = [this] { return path("ve_quadrat.dat"); };
        action("m_datei_beliebig")->trigger();
        QCOMPARE(session_.datei_geladen, std::int16_t{1});
        QCOMPARE(shown, 0);
    }
};

QTEST_MAIN(LongWorkTest)
#include "frmTorvel_work_wintest.moc"
