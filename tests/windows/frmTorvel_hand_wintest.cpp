// The main window under mouse and keyboard.
#include <QLabel>
#include <cmath>

#include "hand_fixture.h"
#include "view/zoom.h"
#include "windows/frmTorvel_status.h"
#include "windows/qt/picture_image.h"

using namespace veldra;
using test::close_to;
using test::edges;
using test::square_network;
using test::text;
using test::ViewEdges;

namespace {

/// A pixel of the screen within half a logical pixel of a place, in a picture of any resolution.
bool differs_near(const QImage& a, const QImage& b, double x, double y) {
    const double ratio = a.devicePixelRatio();
    const auto first = [ratio](double place) {
        return static_cast<int>(std::floor((place - 0.5) * ratio));
    };
    const auto last = [ratio](double place) {
        return static_cast<int>(std::ceil((place + 0.5) * ratio));
    };
    for (int row = first(y); row <= last(y); ++row) {
        for (int column = first(x); column <= last(x); ++column) {
            if (a.pixel(column, row) != b.pixel(column, row)) {
                return true;
            }
        }
    }
    return false;
}

}  // namespace

class FrmTorvelHandTest : public test::HandFixture {
    Q_OBJECT

 private Q_SLOTS:
    void init() { make_folders(); }
    void cleanup() { close_down(); }

    void rubber_band_shows_the_rectangle() {
        start_with_network();
        const ViewEdges before = edges(session_.view);
        const qint64 drawn = picture().shown().cacheKey();
        const QPoint from = at(3500020, 5600080);
        const QPoint to = at(3500060, 5600040);
        press(from);
        QCOMPARE(session_.window.mouse_pointer, 2);
        QCOMPARE(picture().cursor().shape(), Qt::CrossCursor);
        move(to, Qt::LeftButton);
        QVERIFY(picture().overlay().rubber_band.has_value());
        QCOMPARE(*picture().overlay().rubber_band, QRectF(from, to));
        // Nothing beneath is drawn while the mouse moves, and nothing has happened yet.
        QCOMPARE(picture().shown().cacheKey(), drawn);
        QCOMPARE(edges(session_.view), before);
        const double left = before[0] + from.x() * pixel();
        const double right = before[0] + to.x() * pixel();
        const double top = before[3] - from.y() * pixel();
        const double bottom = before[3] - to.y() * pixel();
        const double width_twips = picture().width() * 15.0;
        const double height_twips = picture().height() * 15.0;
        release(to);
        QVERIFY(!picture().overlay().rubber_band.has_value());
        QCOMPARE(session_.window.mouse_pointer, 0);
        // The square of about 40 m fills the height of the wide picture.
        const double scale = (top - bottom) / height_twips;
        const double half = width_twips * scale / 2;
        QVERIFY(close_to(edges(session_.view),
                         {(left + right) / 2 - half, bottom, (left + right) / 2 + half, top},
                         1e-4));
        QVERIFY(picture().shown().cacheKey() != drawn);
        QCOMPARE(undo_text(), text("Rückgängig: Vergrößern"));
        QCOMPARE(action("rückgängig")->toolTip(), text("Rückgängig: Vergrößern"));
        QVERIFY(action("rückgängig")->isEnabled());
        action("m_ansicht_undo")->trigger();
        QVERIFY(close_to(edges(session_.view), before));
        QCOMPARE(undo_text(), text("Rückgängig:"));
        QVERIFY(!action("m_ansicht_undo")->isEnabled());
        QVERIFY(!action("rückgängig")->isEnabled());
    }

    void rubber_band_is_seen_on_the_picture() {
        start_with_network();
        move(QPoint(5, 5));
        const QImage before = picture().grab().toImage();
        press(QPoint(20, 20));
        move(QPoint(120, 90), Qt::LeftButton);
        const QImage after = picture().grab().toImage();
        const double ratio = after.devicePixelRatio();
        const int first = qRound(20 * ratio);
        const int last = qRound(120 * ratio);
        int changed = 0;
        for (int x = first; x <= last; ++x) {
            const int y = static_cast<int>(20 * ratio);
            changed += before.pixel(x, y) != after.pixel(x, y) ? 1 : 0;
        }
        // Three logical pixels on, three off.
        const int all = last - first + 1;
        QVERIFY2(changed > all * 2 / 5 && changed < all * 13 / 20,
                 qPrintable(QString::number(changed)));
        QVERIFY(differs_near(before, after, 70, 20));
        QVERIFY(!differs_near(before, after, 70, 55));
        release(QPoint(21, 21));
        QCOMPARE(picture().grab().toImage(), before);
    }

    void small_rubber_band_changes_nothing() {
        start_with_network();
        action("lupe_minus")->trigger();
        const ViewEdges before = edges(session_.view);
        const QPoint from = at(3500020, 5600080);
        drag(from, from + QPoint(static_cast<int>(4.9 / pixel()), 200));
        QCOMPARE(edges(session_.view), before);
        QCOMPARE(undo_text(), text("Rückgängig: Verkleinern"));
        QVERIFY(!picture().overlay().rubber_band.has_value());
    }

    void escape_gives_a_drag_up() {
        start_with_network();
        const ViewEdges before = edges(session_.view);
        press(QPoint(20, 20));
        move(QPoint(300, 300), Qt::LeftButton);
        QTest::keyClick(window_.get(), Qt::Key_Escape);
        QVERIFY(!picture().overlay().rubber_band.has_value());
        release(QPoint(300, 300));
        QCOMPARE(edges(session_.view), before);
    }

    void escape_reaches_the_drag_after_the_menu_was_used() {
        start_with_network();
        window_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window_.get()));
        const ViewEdges before = edges(session_.view);
        QTest::keyClick(window_->windowHandle(), Qt::Key_D, Qt::AltModifier);
        auto* menu = window_->findChild<QMenu*>(text("m_torvel_datei"));
        QTRY_VERIFY(menu->isVisible());
        QTest::keyClick(menu, Qt::Key_Escape);
        QVERIFY(!menu->isVisible());
        QTest::keyClick(window_->windowHandle(), Qt::Key_Escape);  // leaves the bar
        press(QPoint(20, 20));
        move(QPoint(300, 300), Qt::LeftButton);
        QVERIFY(picture().overlay().rubber_band.has_value());
        QTest::keyClick(window_->windowHandle(), Qt::Key_Escape);
        QVERIFY(!picture().overlay().rubber_band.has_value());
        release(QPoint(300, 300));
        QCOMPARE(edges(session_.view), before);
    }

    void second_press_of_a_double_click_starts_nothing() {
        start_with_network();
        const ViewEdges before = edges(session_.view);
        mouse(QEvent::MouseButtonDblClick, QPoint(20, 20), Qt::LeftButton, Qt::LeftButton);
        move(QPoint(300, 300), Qt::LeftButton);
        QVERIFY(!picture().overlay().rubber_band.has_value());
        release(QPoint(300, 300));
        QCOMPARE(edges(session_.view), before);
    }

    void buttons_and_menu_change_the_view() {
        start_with_network();
        const ViewEdges whole = edges(session_.view);
        const double w = whole[2] - whole[0];
        const double h = whole[3] - whole[1];
        const auto moved = [&](double r, double u) {
            return ViewEdges{whole[0] + r, whole[1] + u, whole[2] + r, whole[3] + u};
        };
        action("lupe_plus")->trigger();
        QVERIFY(close_to(edges(session_.view),
                         {whole[0] + w / 4, whole[1] + h / 4, whole[2] - w / 4, whole[3] - h / 4}));
        action("rückgängig")->trigger();
        QVERIFY(close_to(edges(session_.view), whole));
        action("lupe_minus")->trigger();
        QVERIFY(close_to(edges(session_.view),
                         {whole[0] - w / 2, whole[1] - h / 2, whole[2] + w / 2, whole[3] + h / 2}));
        action("schiebe_original")->trigger();
        QVERIFY(close_to(edges(session_.view), whole));
        QCOMPARE(undo_text(), text("Rückgängig:"));
        action("m_ansicht_halb")->trigger();
        QCOMPARE(undo_text(), text("Rückgängig: Verkleinern"));
        action("m_ansicht_original")->trigger();
        QVERIFY(close_to(edges(session_.view), whole));
        action("schiebe_rechts")->trigger();
        QVERIFY(close_to(edges(session_.view), moved(w / 3, 0)));
        action("schiebe_links")->trigger();
        action("schiebe_hoch")->trigger();
        QVERIFY(close_to(edges(session_.view), moved(0, h / 3)));
        action("schiebe_runter")->trigger();
        QVERIFY(close_to(edges(session_.view), whole));
    }

    void keys_change_the_view() {
        start_with_network();
        window_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window_.get()));
        const ViewEdges whole = edges(session_.view);
        const double w = whole[2] - whole[0];
        const double h = whole[3] - whole[1];
        QTest::keyClick(window_.get(), Qt::Key_Plus);
        QVERIFY(close_to(session_.view.ansicht_rw_min, whole[0] + w / 4));
        QTest::keyClick(window_.get(), Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(close_to(edges(session_.view), whole));
        QTest::keyClick(window_.get(), Qt::Key_Minus);
        QVERIFY(close_to(session_.view.ansicht_rw_min, whole[0] - w / 2));
        QTest::keyClick(window_.get(), Qt::Key_Home);
        QVERIFY(close_to(edges(session_.view), whole));
        QTest::keyClick(window_.get(), Qt::Key_Minus, Qt::ControlModifier);
        QVERIFY(close_to(session_.view.ansicht_rw_min, whole[0] - w / 2));
        QTest::keyClick(window_.get(), Qt::Key_Plus, Qt::ControlModifier);
        QVERIFY(close_to(edges(session_.view), whole));
        QTest::keyClick(window_.get(), Qt::Key_Right);
        QTest::keyClick(window_.get(), Qt::Key_Up);
        QVERIFY(close_to(session_.view.ansicht_rw_min, whole[0] + w / 3));
        QVERIFY(close_to(session_.view.ansicht_hw_min, whole[1] + h / 3));
        QTest::keyClick(window_.get(), Qt::Key_Left);
        QTest::keyClick(window_.get(), Qt::Key_Down);
        QVERIFY(close_to(edges(session_.view), whole));
        int asked = 0;
        window_->choose_file = [&asked] {
            ++asked;
            return QString();
        };
        QTest::keyClick(window_.get(), Qt::Key_O, Qt::ControlModifier);
        QCOMPARE(asked, 1);
        QTest::keyClick(window_.get(), Qt::Key_F11);
        QVERIFY(window_->isFullScreen());
        QTest::keyClick(window_.get(), Qt::Key_F11);
        QVERIFY(!window_->isFullScreen());
    }

    void opening_by_key_is_hidden_in_a_project() {
        write("windows/projekt.ini", "[VELDRA]\r\nTitel=P\r\n");
        start("projekt.ini");
        window_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window_.get()));
        int asked = 0;
        window_->choose_file = [&asked] {
            ++asked;
            return QString();
        };
        QTest::keyClick(window_.get(), Qt::Key_O, Qt::ControlModifier);
        QCOMPARE(asked, 0);
    }

    void wheel_zooms_about_the_pointer() {
        start_with_network();
        QTest::qWait(150);  // the window's first size has been followed, which clears undo
        const QPoint place(200, 150);
        const double rechts = session_.view.ansicht_rw_min + place.x() * pixel();
        const double hoch = session_.view.ansicht_hw_max - place.y() * pixel();
        const double before = pixel();
        turn_wheel(place, 120);
        turn_wheel(place, 120);
        QTest::qWait(20);
        // Two notches that came together are one step.
        QVERIFY(close_to(pixel(), before / (1.25 * 1.25)));
        QVERIFY(close_to(session_.view.ansicht_rw_min + place.x() * pixel(), rechts, 1e-4));
        QVERIFY(close_to(session_.view.ansicht_hw_max - place.y() * pixel(), hoch, 1e-4));
        QCOMPARE(undo_text(), text("Rückgängig: Vergrößern"));
        constexpr quint64 later = 501;
        turn_wheel(place, -120, later);
        QTest::qWait(20);
        QVERIFY(close_to(pixel(), before / 1.25));
        QCOMPARE(undo_text(), text("Rückgängig: Verkleinern"));
        action("m_ansicht_undo")->trigger();
        QVERIFY(close_to(pixel(), before / (1.25 * 1.25)));
    }

    void wheel_and_push_rest_where_there_is_nothing_to_draw() {
        start();
        logo()->accept();
        QTest::qWait(150);  // the window's first size has been followed
        write("ve_leer.dat", "KOMMENTAR\r\n");
        window_->choose_file = [this] { return path("ve_leer.dat"); };
        answer_message_box();
        action("m_datei_beliebig")->trigger();
        QCOMPARE(box_title_, text(" Fehler "));
        QVERIFY(!action("lupe_plus")->isEnabled());
        const ViewEdges before = edges(session_.view);
        int boxes = 0;
        QTimer look;
        connect(&look, &QTimer::timeout, this, [&boxes] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                ++boxes;
                box->accept();
            }
        });
        look.start(10);
        turn_wheel(QPoint(200, 150), -120);
        QTest::qWait(40);
        drag(QPoint(20, 20), QPoint(60, 60), Qt::MiddleButton);
        QTest::qWait(40);
        QCOMPARE(boxes, 0);
        QCOMPARE(edges(session_.view), before);
    }

    void middle_button_pushes_the_picture() {
        start_with_network();
        action("lupe_plus")->trigger();
        const ViewEdges before = edges(session_.view);
        const qint64 drawn = picture().shown().cacheKey();
        press(QPoint(300, 300), Qt::MiddleButton);
        move(QPoint(340, 280), Qt::MiddleButton);
        QCOMPARE(picture().overlay().shift, QPointF(40, -20));
        QCOMPARE(picture().shown().cacheKey(), drawn);
        release(QPoint(340, 280), Qt::MiddleButton);
        QVERIFY(picture().overlay().shift.isNull());
        QVERIFY(close_to(edges(session_.view),
                         {before[0] - 40 * pixel(), before[1] - 20 * pixel(),
                          before[2] - 40 * pixel(), before[3] - 20 * pixel()},
                         1e-4));
        QCOMPARE(undo_text(), text("Rückgängig:"));
    }

    void the_sheets_follow_the_hand_in_plot_mode() {
        start_with_network();
        session_.plotmodus = 1;
        const double rechts = session_.plot.plot_null_rechts;
        const double hoch = session_.plot.plot_null_hoch;
        const ViewEdges view = edges(session_.view);
        const QPoint from(10, 10);
        press(from);
        QCOMPARE(undo_text(), text("Rückgängig: Verschiebung Blatteinteilung"));
        QCOMPARE(session_.window.mouse_pointer, 99);
        move(from + QPoint(30, 20), Qt::LeftButton);
        move(from + QPoint(50, 40), Qt::LeftButton);
        QVERIFY(!picture().overlay().rubber_band.has_value());
        release(from + QPoint(50, 40));
        QVERIFY(close_to(session_.plot.plot_null_rechts, rechts + 50 * pixel(), 1e-3));
        QVERIFY(close_to(session_.plot.plot_null_hoch, hoch - 40 * pixel(), 1e-3));
        QCOMPARE(edges(session_.view), view);
        QCOMPARE(session_.window.mouse_pointer, 0);
        action("rückgängig")->trigger();
        QCOMPARE(session_.plot.plot_null_rechts, rechts);
        QCOMPARE(session_.plot.plot_null_hoch, hoch);
        QVERIFY(!action("rückgängig")->isEnabled());
    }

    void escape_puts_the_sheets_back() {
        start_with_network();
        action("m_plotten_ein")->trigger();
        const double rechts = session_.plot.plot_null_rechts;
        const double hoch = session_.plot.plot_null_hoch;
        const QImage before = picture().shown();
        press(QPoint(10, 10));
        move(QPoint(50, 40), Qt::LeftButton);
        QTest::keyClick(window_.get(), Qt::Key_Escape);
        QCOMPARE(session_.plot.plot_null_rechts, rechts);
        QCOMPARE(session_.plot.plot_null_hoch, hoch);
        QVERIFY(!session_.window.sheets_moving);
        QCOMPARE(picture().shown(), before);
        QCOMPARE(undo_text(), text("Rückgängig:"));
        move(QPoint(90, 40), Qt::LeftButton);
        release(QPoint(90, 40));
        QCOMPARE(session_.plot.plot_null_rechts, rechts);
    }

    void sheets_are_outlined_while_they_move() {
        start_with_network();
        action("lupe_minus")->trigger();
        const QImage plain = picture().grab().toImage();
        session_.plotmodus = 1;
        window_->redraw();
        const auto differs_at = [&](const QImage& image, double x) {
            return differs_near(plain, image, x, picture().height() / 2.0);
        };
        const double left =
            (session_.plot.plot_null_rechts - session_.view.ansicht_rw_min) / pixel();
        press(QPoint(10, 10));
        QVERIFY(close_to(moving_sheet_lines(session_).at(0).x1(), left, 1e-3));
        QVERIFY(differs_at(picture().grab().toImage(), left));
        move(QPoint(50, 10), Qt::LeftButton);
        const QImage moved = picture().grab().toImage();
        QVERIFY(!differs_at(moved, left));
        QVERIFY(differs_at(moved, left + 40));
        release(QPoint(50, 10));
        const QImage dropped = picture().grab().toImage();
        QVERIFY(dropped != plain);
        window_->redraw();
        QCOMPARE(picture().grab().toImage(), dropped);
    }

    void district_lines_make_room_for_a_legend_that_has_moved() {
        // The lines 3500 and 5600 cross in the first point, in the sheet's lower left corner.
        start_with_network();
        session_.plotmodus = 1;
        session_.obj.obj_nube = 2;
        session_.plot.plot_legendenlage = 0;
        window_->redraw();
        const QImage whole = picture().shown();
        session_.plot.plot_legendenlage = 2;
        window_->redraw();
        const QImage at_first = picture().shown();
        QVERIFY(at_first != whole);
        press(QPoint(10, 10));
        move(QPoint(60, 10), Qt::LeftButton);
        release(QPoint(60, 10));
        const QImage dropped = picture().shown();
        QVERIFY(dropped != at_first);
        window_->redraw();
        QCOMPARE(picture().shown(), dropped);
        action("rückgängig")->trigger();
        QCOMPARE(picture().shown(), at_first);
    }

    void a_command_during_the_drag_leaves_the_sheets_where_they_have_come_to() {
        start_with_network();
        action("plot_ein")->trigger();
        const double rechts = session_.plot.plot_null_rechts;
        const double metres = 40 * pixel();
        press(QPoint(10, 10));
        move(QPoint(50, 10), Qt::LeftButton);
        QVERIFY(session_.window.sheets_moving);
        int asked = 0;
        window_->choose_picture_file = [&asked] {
            ++asked;
            return QString();
        };
        action("m_datei_bild")->trigger();
        QCOMPARE(asked, 1);
        QVERIFY(!session_.window.sheets_moving);
        QVERIFY(session_.window.lbl_legende_visible);
        QVERIFY(close_to(session_.plot.plot_null_rechts, rechts + metres, 1e-3));
        const QImage shown = picture().shown();
        // The hand has lost them: neither moving nor releasing does anything more.
        move(QPoint(90, 10), Qt::LeftButton);
        release(QPoint(90, 10));
        QVERIFY(close_to(session_.plot.plot_null_rechts, rechts + metres, 1e-3));
        QCOMPARE(picture().shown(), shown);
        window_->redraw();
        QCOMPARE(picture().shown(), shown);
        QCOMPARE(undo_text(), text("Rückgängig: Verschiebung Blatteinteilung"));
    }

    void plot_origin_is_fitted_by_its_command() {
        start_with_network();
        session_.plotmodus = 1;
        session_.window[MenuItem::m_plotten_null].enabled = true;
        window_->synchronise();
        session_.plot.plot_null_rechts += 17;
        const double rechts = session_.plot.plot_null_rechts;
        action("m_plotten_null")->trigger();
        QCOMPARE(session_.plot.plot_null_rechts, session_.extents.gesamt_rw_min);
        QCOMPARE(session_.plot.plot_null_hoch, session_.extents.gesamt_hw_min);
        QCOMPARE(undo_text(), text("Rückgängig: Plotternullpunkt anpassen"));
        action("rückgängig")->trigger();
        QCOMPARE(session_.plot.plot_null_rechts, rechts);
    }

    void resizing_clears_undo() {
        start_with_network();
        action("lupe_plus")->trigger();
        window_->resize(window_->width() - 50, window_->height());
        QTRY_COMPARE(undo_text(), text("Rückgängig:"));
        QVERIFY(!action("m_ansicht_undo")->isEnabled());
    }

    void the_mouse_waits_while_a_command_runs() {
        start_with_network();
        const ViewEdges before = edges(session_.view);
        window_->choose_file = [this] {
            drag(QPoint(20, 20), QPoint(300, 300));
            turn_wheel(QPoint(20, 20), 120);
            return QString();
        };
        action("m_datei_beliebig")->trigger();
        QTest::qWait(20);
        QCOMPARE(edges(session_.view), before);
        QVERIFY(!picture().overlay().rubber_band.has_value());
    }

    void without_a_file_the_mouse_does_nothing() {
        start();
        logo()->accept();
        drag(QPoint(20, 20), QPoint(300, 300));
        turn_wheel(QPoint(20, 20), 120);
        press(QPoint(20, 20), Qt::RightButton);
        QVERIFY(!info()->isVisible());
        QVERIFY(!action("rückgängig")->isEnabled());
    }

    void status_line_tells_place_and_scale() {
        start_with_network();
        auto* status = window_->findChild<TorvelStatus*>(text("sta_torvel"));
        QVERIFY(status != nullptr);
        auto* place = status->findChild<QLabel*>(text("lbl_ort"));
        auto* scale = status->findChild<QLabel*>(text("lbl_massstab"));
        session_.view.ansicht_rw_min = 3500000;
        move(QPoint(0, 0));
        QVERIFY2(place->text().startsWith(text("Rechtswert 3500000.00   Hochwert ")),
                 qPrintable(place->text()));
        QVERIFY(scale->text().startsWith(text("1 : ")));
        const QString before = scale->text();
        action("lupe_minus")->trigger();
        QVERIFY(scale->text() != before);
        // Beneath the pointer there is other ground now.
        const QString left = QString::number(session_.view.ansicht_rw_min, 'f', 2);
        QVERIFY(left != text("3500000.00"));
        QVERIFY2(place->text().startsWith(text("Rechtswert ") + left), qPrintable(place->text()));
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(&picture(), &leave);
        QVERIFY(place->text().isEmpty());
    }

    void the_status_line_never_widens_the_window() {
        start_with_network();
        QTest::qWait(150);  // its first size has been followed
        const int narrowest = window_->minimumSizeHint().width();
        const int width = window_->width();
        move(QPoint(40, 40));
        for (int i = 0; i < 1200; ++i) {
            zoom_out(session_);  // without drawing each of them
        }
        action("lupe_minus")->trigger();
        move(QPoint(40, 41));
        QTest::qWait(20);
        QVERIFY(window_->minimumSizeHint().width() <= narrowest);
        QCOMPARE(window_->width(), width);
        action("m_ansicht_original")->trigger();
        move(QPoint(40, 40));
        auto* place = window_->findChild<QLabel*>(text("lbl_ort"));
        QVERIFY2(place->text().startsWith(text("Rechtswert 34999")), qPrintable(place->text()));
        QVERIFY(window_->minimumSizeHint().width() <= narrowest);
    }

    void the_picture_is_saved() {
        start();
        QVERIFY(!action("m_datei_bild")->isEnabled());
        start_with_network();
        QVERIFY(action("m_datei_bild")->isEnabled());
        window_->choose_picture_file = [this] { return path("bild.png"); };
        action("m_datei_bild")->trigger();
        const QImage saved(path("bild.png"));
        QCOMPARE(saved.convertToFormat(QImage::Format_RGB32).size(), picture().shown().size());
        QCOMPARE(saved.pixel(0, 0), picture_background);
        window_->choose_picture_file = [this] { return path("bild.SVG"); };
        action("m_datei_bild")->trigger();
        QVERIFY(read("bild.SVG").contains("<svg"));
        window_->choose_picture_file = [] { return QString(); };
        action("m_datei_bild")->trigger();
    }

    void a_picture_that_cannot_be_saved_is_told_and_nothing_else() {
        start_with_network();
        window_->choose_picture_file = [this] { return path("gibt/es/nicht.png"); };
        const QImage before = picture().shown();
        answer_message_box();
        action("m_datei_bild")->trigger();
        QCOMPARE(box_title_, text("VELDRA - Bild speichern"));
        QVERIFY(box_text_.contains(text("nicht.png")));
        // The labels stay behind the box, and after it.
        QVERIFY(picture().shown() == before);
        QVERIFY(action("lupe_plus")->isEnabled());
        action("lupe_plus")->trigger();
        QCOMPARE(undo_text(), text("Rückgängig: Vergrößern"));
    }
};

QTEST_MAIN(FrmTorvelHandTest)
#include "frmTorvel_hand_wintest.moc"
