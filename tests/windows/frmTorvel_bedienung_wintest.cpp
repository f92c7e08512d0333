// What the hand expects of wheel, menu bar, dragged sheets and file dialogs.
#include <QFileDialog>
#include <QMenuBar>

#include "dialog_driver.h"
#include "hand_fixture.h"

using namespace veldra;
using namespace veldra::test;
using veldra_test::when_shown;

namespace {

constexpr int notch = 120;

/// The square as a part with sheets of its own, the legend at the lower left.
constexpr const char* square_on_sheets =
    "NETZTEIL A\r\n"
    "MA\xDFSTABGRUNDRISS 500 3500000.000 5600000.000 37\r\n"
    "PUNKTSIGNATUR  3500000.000  5600000.000  0  0 1 \"1\"\r\n"
    "PUNKTSIGNATUR  3500100.000  5600100.000  0  0 1 \"2\"\r\n";

}  // namespace

class HandlingTest : public HandFixture {
    Q_OBJECT

 private:
    void turn(const QPoint& place, int angle, quint64 time) {
        turn_wheel(place, angle, time);
        QTest::qWait(5);  // each is shown for itself
    }
    void start_with_menu_bar() {
        start_with_network();
        QTest::qWait(150);  // the window's first size has been followed
        window_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    }
    [[nodiscard]] QMenuBar& bar() const { return *window_->menuBar(); }
    void key(Qt::Key key) const {
        QWidget* const popup = QApplication::activePopupWidget();
        QTest::keyClick(popup != nullptr ? popup : QApplication::focusWidget(), key);
    }
    void click_menu(const char* name) {
        QTest::mouseClick(&bar(), Qt::LeftButton, {}, bar().actionGeometry(action(name)).center());
    }
    [[nodiscard]] QMenu& menu(const char* name) const {
        return veldra_test::control<QMenu>(*window_, name);
    }
    /// The folder and the name that the next file dialog begins with; it is then given up.
    void look_at_dialog(const char* entry) {
        folder_.clear();
        name_.clear();
        when_shown<QFileDialog>([this](QFileDialog& files) {
            folder_ = files.directory().absolutePath();
            name_ = veldra_test::control<QLineEdit>(files, "fileNameEdit").text();
            files.reject();
        });
        action(entry)->trigger();
    }
    /// In the next file dialog.
    void choose_in_dialog(const char* folder, const char* name) {
        when_shown<QFileDialog>([this, folder, name](QFileDialog& files) {
            files.setDirectory(path(folder));
            files.selectFile(text(name));
            veldra_test::control<QLineEdit>(files, "fileNameEdit").setText(text(name));
            static_cast<QDialog&>(files).accept();
        });
    }

    QString folder_;
    QString name_;

 private Q_SLOTS:
    void init() { make_folders(); }
    void cleanup() { close_down(); }

    void undo_takes_a_whole_turn_of_the_wheel_back() {
        start_with_network();
        QTest::qWait(150);  // the window's first size has been followed, which clears undo
        const ViewEdges before = edges(session_.view);
        const QPoint place(200, 150);
        turn(place, notch, 1000);
        turn(place, notch, 1300);
        turn(place, notch, 1800);
        turn(place, -notch, 2300);
        QVERIFY(!close_to(edges(session_.view), before, 1e-2));
        QCOMPARE(undo_text(), text("Rückgängig: Vergrößern"));
        action("rückgängig")->trigger();
        QVERIFY(close_to(edges(session_.view), before, 1e-4));
        QVERIFY(!action("rückgängig")->isEnabled());
    }

    void a_pause_begins_another_turn() {
        start_with_network();
        QTest::qWait(150);
        const QPoint place(200, 150);
        turn(place, -notch, 1000);
        const ViewEdges between = edges(session_.view);
        turn(place, -notch, 1501);
        turn(place, -notch, 1600);
        QCOMPARE(undo_text(), text("Rückgängig: Verkleinern"));
        action("rückgängig")->trigger();
        QVERIFY(close_to(edges(session_.view), between, 1e-4));
    }

    void another_command_between_two_notches_ends_the_turn() {
        start_with_network();
        QTest::qWait(150);
        const QPoint place(200, 150);
        turn(place, -notch, 1000);
        action("lupe_plus")->trigger();
        const ViewEdges between = edges(session_.view);
        turn(place, -notch, 1010);
        action("rückgängig")->trigger();
        QVERIFY(close_to(edges(session_.view), between, 1e-4));
        // What was undone is no part of the next turn either.
        turn(place, -notch, 1020);
        action("schiebe_rechts")->trigger();
        const ViewEdges pushed = edges(session_.view);
        turn(place, -notch, 1030);
        action("rückgängig")->trigger();
        QVERIFY(close_to(edges(session_.view), pushed, 1e-4));
    }

    void arrows_go_on_moving_in_the_menu_bar_that_the_mouse_has_opened() {
        start_with_menu_bar();
        picture().setFocus();
        const ViewEdges before = edges(session_.view);
        click_menu("m_torvel_datei");
        QTRY_VERIFY(menu("m_torvel_datei").isVisible());
        key(Qt::Key_Right);
        QCOMPARE(bar().activeAction(), action("m_torvel_objekte"));
        QVERIFY(QApplication::activePopupWidget() == nullptr);
        key(Qt::Key_Up);
        key(Qt::Key_Down);
        key(Qt::Key_Right);
        QTRY_VERIFY(menu("m_torvel_ansicht").isVisible());
        key(Qt::Key_Left);
        QCOMPARE(bar().activeAction(), action("m_torvel_objekte"));
        key(Qt::Key_Left);
        QTRY_VERIFY(menu("m_torvel_datei").isVisible());
        key(Qt::Key_Right);
        key(Qt::Key_Escape);
        QVERIFY(bar().activeAction() == nullptr);
        QVERIFY(picture().hasFocus());
        QCOMPARE(edges(session_.view), before);
        // From now on they are those of the picture again.
        key(Qt::Key_Right);
        QVERIFY(session_.view.ansicht_rw_min > before[0]);
    }

    void arrows_go_on_moving_in_the_menu_bar_that_a_key_has_opened() {
        start_with_menu_bar();
        picture().setFocus();
        const ViewEdges before = edges(session_.view);
        QTest::keyClick(window_->windowHandle(), Qt::Key_D, Qt::AltModifier);
        QTRY_VERIFY(menu("m_torvel_datei").isVisible());
        key(Qt::Key_Right);
        QCOMPARE(bar().activeAction(), action("m_torvel_objekte"));
        key(Qt::Key_Right);
        QTRY_VERIFY(menu("m_torvel_ansicht").isVisible());
        key(Qt::Key_Escape);
        key(Qt::Key_Left);
        QCOMPARE(bar().activeAction(), action("m_torvel_objekte"));
        key(Qt::Key_Left);
        QCOMPARE(bar().activeAction(), action("m_torvel_datei"));
        QCOMPARE(edges(session_.view), before);
    }

    void return_on_an_entry_without_a_menu_runs_it() {
        start_with_menu_bar();
        click_menu("m_torvel_datei");
        QTRY_VERIFY(menu("m_torvel_datei").isVisible());
        key(Qt::Key_Right);
        key(Qt::Key_Return);
        auto* const dialog = window_->findChild<QDialog*>(text("frmObjekte"));
        QVERIFY(dialog != nullptr);
        dialog->reject();
    }

    void the_empty_box_of_the_legend_goes_with_the_sheets() {
        start_with_network(square_on_sheets);
        action("plot_ein")->trigger();
        QVERIFY(session_.window.lbl_legende_visible);
        const Label& legend = session_.lbl_legende;
        const QRectF at_first(static_cast<double>(legend.left) / pixel(),
                              picture().height() - static_cast<double>(legend.top) / pixel(),
                              static_cast<double>(legend.width) / pixel(),
                              static_cast<double>(legend.height) / pixel());
        const auto is_at = [&](const QPointF& shift) {
            const auto& box = picture().overlay().legend;
            return box && close_to(box->x(), at_first.x() + shift.x(), 0.6) &&
                   close_to(box->y(), at_first.y() + shift.y(), 0.6) &&
                   close_to(box->width(), at_first.width(), 0.6) &&
                   close_to(box->height(), at_first.height(), 0.6);
        };
        press(QPoint(10, 10));
        QVERIFY(is_at({0, 0}));
        move(QPoint(60, 40), Qt::LeftButton);
        QVERIFY(is_at({50, 30}));
        const QString pictures = qEnvironmentVariable("VELDRA_PICTURES");
        if (!pictures.isEmpty()) {
            QVERIFY(window_->grab().save(pictures + text("/legende.png")));
        }
        release(QPoint(60, 40));
        QVERIFY(!picture().overlay().legend);
        QVERIFY(close_to(static_cast<double>(legend.left) / pixel(), at_first.x() + 50, 0.6));
    }

    void sheets_without_a_legend_move_alone() {
        start_with_network(square_on_sheets);
        session_.plot.plot_legendenlage = 0;
        action("plot_ein")->trigger();
        press(QPoint(10, 10));
        move(QPoint(60, 40), Qt::LeftButton);
        QVERIFY(!picture().overlay().legend);
        release(QPoint(60, 40));
    }

    void file_dialogs_begin_where_the_last_file_lay_and_propose_a_name() {
        QDir().mkpath(path("netze"));
        QDir().mkpath(path("bilder"));
        start();
        logo()->accept();
        QTest::qWait(150);
        look_at_dialog("m_datei_beliebig");
        QCOMPARE(folder_, path("dokumente"));
        QCOMPARE(name_, QString());
        write("netze/ve_a.b.dat", square_network);
        choose_in_dialog("netze", "ve_a.b.dat");
        action("m_datei_beliebig")->trigger();
        QCOMPARE(session_.datei_geladen, std::int16_t{1});
        look_at_dialog("m_datei_bild");
        QCOMPARE(folder_, path("netze"));
        QCOMPARE(name_, text("ve_a.b.png"));
        choose_in_dialog("bilder", "lage.png");
        action("m_datei_bild")->trigger();
        QVERIFY(QFile::exists(path("bilder/lage.png")));
        look_at_dialog("m_datei_bild");
        QCOMPARE(folder_, path("bilder"));
        look_at_dialog("m_datei_beliebig");
        QCOMPARE(folder_, path("bilder"));
        QCOMPARE(name_, QString());
    }

    void file_dialogs_of_the_next_run_begin_with_the_file_opened_last() {
        QDir().mkpath(path("netze"));
        write("netze/ve_quadrat.dat", square_network);
        start_and_open("netze/ve_quadrat.dat");
        QVERIFY(window_->close());
        window_.reset();
        session_ = Session();
        start();
        logo()->accept();
        look_at_dialog("m_datei_beliebig");
        QCOMPARE(folder_, path("netze"));
        window_.reset();
        // A folder that has gone is no place to begin.
        QVERIFY(QDir(path("netze")).removeRecursively());
        session_ = Session();
        start();
        logo()->accept();
        look_at_dialog("m_datei_beliebig");
        QCOMPARE(folder_, path("dokumente"));
    }
};

QTEST_MAIN(HandlingTest)
#include "frmTorvel_bedienung_wintest.moc"
