// Pointing at labels and moving them, driven by the mouse.
#include <QFontMetrics>

#include "drawing/districts.h"
#include "hand_fixture.h"

using namespace veldra;
using test::close_to;
using test::text;

class FrmTorvelLabelsTest : public test::HandFixture {
    Q_OBJECT

 private:
    /// A kilometre grid with the network's first point on a node.
    void show_kilometre_squares(std::int16_t nbez) {
        session_.obj.obj_nube = 2;
        session_.obj.obj_nbez = nbez;
        window_->redraw();
    }
    /// The visible district label, 0 if there is none.
    [[nodiscard]] std::int32_t node_label() const {
        for (std::size_t i = 1; i < session_.lbl_nubez.size(); ++i) {
            if (session_.lbl_nubez[i].visible) {
                return static_cast<std::int32_t>(i);
            }
        }
        return 0;
    }

    void open_file(const QByteArray& records) {
        write("ve_anders.dat", records);
        start_and_open("ve_anders.dat");
    }

    /// Two points, and a point with changes (3, -4) and (6, 8) centimetres of two epochs.
    void open_epochs() {
        open_file(
            "MA\xDFSTABVEKTOREN 2 2 2 2 2 2\r\nMA\xDFSTABGRUNDRISS 1000\r\n"
            "OBJEKTE 0 1 1 0 0 0 0 0 0 1 0 1 1 -99 1\r\n"
            "PUNKTSIGNATUR 3500000 5600000 0 0 1 \"1\"\r\n"
            "PUNKTSIGNATUR 3500200 5600100 0 0 1 \"2\"\r\n"
            "LAGE\xC4NDERUNG 3500100 5600050 3.0 -4.0 0 \"1998\"\r\n"
            "N\xC4"
            "CHSTEEPOCHE 6.0 8.0 \"2001\"\r\n");
    }

    /// Ends the program and opens the file with another.
    void start_anew() {
        window_.reset();
        session_ = Session();
        start_and_open("ve_quadrat.dat");
    }

    /// Draws from farther and farther away until the label of a district is seen; 0 if it never is.
    std::size_t zoom_out_to(const std::string& key) {
        for (int i = 0; i < 12; ++i) {
            window_->redraw();
            const auto& names = district_cache(session_).grid.grid_bez;
            for (std::size_t node = 1; node < session_.lbl_nubez.size(); ++node) {
                if (session_.lbl_nubez[node].visible && names[node] == key) {
                    return node;
                }
            }
            action("lupe_minus")->trigger();
        }
        return 0;
    }

 private Q_SLOTS:
    void init() { make_folders(); }
    void cleanup() { close_down(); }

    void a_label_follows_the_hand_and_stays_where_it_was_dropped() {
        start_with_network();
        const Label before = session_.lbl_pubez[3];
        const QPoint from = middle(before);
        const QPoint to = from + QPoint(60, -25);
        const qint64 drawn = picture().shown().cacheKey();
        press(from, Qt::RightButton);
        release(from, Qt::RightButton);
        QVERIFY(info()->isVisible());
        press(from);
        QVERIFY(picture().overlay().ghost.has_value());
        // What it was asked before does not stand in the way.
        QVERIFY(!info()->isVisible());
        move(to, Qt::LeftButton);
        QCOMPARE(session_.window.mouse_pointer, 99);
        const QRectF ghost = *picture().overlay().ghost;
        QVERIFY(close_to(ghost.left(), static_cast<double>(before.left) / pixel() + 60, 0.01));
        QVERIFY(close_to(ghost.width(), static_cast<double>(before.width) / pixel(), 0.01));
        QCOMPARE(picture().shown().cacheKey(), drawn);
        QCOMPARE(session_.lbl_pubez[3].left, before.left);
        release(to);
        QVERIFY(!picture().overlay().ghost.has_value());
        const Label& after = session_.lbl_pubez[3];
        QVERIFY(close_to(static_cast<double>(after.left - before.left), 60 * pixel(), 1e-3));
        QVERIFY(close_to(static_cast<double>(after.top - before.top), 25 * pixel(), 1e-3));
        QCOMPARE(undo_text(), text("Rückgängig: Verschiebung Bezeichnung"));
        const PointRow& row = session_.pu[3];
        // The label stood 60 % of its height to the east of its point.
        const double percent = 100 * pixel() / static_cast<double>(after.height);
        QVERIFY(close_to(row.pu_bez_rechts, 60 + 60 * percent, 0.01));
        QVERIFY(close_to(row.pu_bez_hoch, 25 * percent, 0.01));
        // It is found at its new place, and a redraw leaves it there.
        QVERIFY(picture().label_at(to).has_value());
        const Label moved = after;
        window_->redraw();
        QVERIFY(close_to(static_cast<double>(session_.lbl_pubez[3].left),
                         static_cast<double>(moved.left), 1e-3));
        QVERIFY(close_to(static_cast<double>(session_.lbl_pubez[3].top),
                         static_cast<double>(moved.top), 1e-3));
        QVERIFY(picture().shown().cacheKey() != drawn);
    }

    void a_moved_label_can_be_put_back_and_is_in_the_file_at_the_end() {
        start_with_network();
        const QPoint from = middle(session_.lbl_pubez[2]);
        drag(from, from + QPoint(30, 10));
        action("rückgängig")->trigger();
        QCOMPARE(session_.pu[2].pu_bez_rechts, 0.0);
        QVERIFY(!action("rückgängig")->isEnabled());
        drag(from, from + QPoint(-80, 40));
        const double rechts = session_.pu[2].pu_bez_rechts;
        const double hoch = session_.pu[2].pu_bez_hoch;
        QVERIFY(rechts < 0 && hoch < 0);
        QVERIFY(window_->close());
        start_anew();
        QVERIFY(close_to(session_.pu[2].pu_bez_rechts, rechts, 0.5));
        QVERIFY(close_to(session_.pu[2].pu_bez_hoch, hoch, 0.5));
        QCOMPARE(session_.pu[3].pu_bez_rechts, 0.0);
    }

    void blank_labels_take_the_click_and_do_nothing() {
        start_with_network();
        session_.obj.obj_pube = 0;
        window_->redraw();
        const QPoint from = middle(session_.lbl_pubez[3]);
        QVERIFY(picture().label_at(from).has_value());
        press(from);
        move(from + QPoint(100, 100), Qt::LeftButton);
        QVERIFY(!picture().overlay().ghost.has_value());
        QVERIFY(!picture().overlay().rubber_band.has_value());
        release(from + QPoint(100, 100));
        QCOMPARE(session_.pu[3].pu_bez_rechts, 0.0);
        QVERIFY(!action("rückgängig")->isEnabled());
    }

    void district_labels_are_moved_and_put_back() {
        start_with_network();
        show_kilometre_squares(1);
        const std::int32_t i = node_label();
        QVERIFY(i > 0);
        const QPoint from = middle(session_.lbl_nubez[static_cast<std::size_t>(i)]);
        drag(from, from + QPoint(50, -40));
        QCOMPARE(session_.nuoff.count(), 1);
        QCOMPARE(session_.nuoff[1].nuoff_bez, std::string("35005600"));
        QVERIFY(close_to(session_.nuoff[1].nuoff_rechts, 3500000 + 50 * pixel(), 0.01));
        QVERIFY(close_to(session_.nuoff[1].nuoff_hoch, 5600000 + 40 * pixel(), 0.01));
        QCOMPARE(undo_text(), text("Rückgängig: Verschiebung NB-Bezeichnung"));
        window_->redraw();
        QVERIFY(picture().label_at(from + QPoint(50, -40)).has_value());
        action("rückgängig")->trigger();
        QCOMPARE(session_.nuoff.count(), 1);
        QVERIFY(close_to(session_.nuoff[1].nuoff_rechts, 3500000, 0.01));
        QVERIFY(close_to(session_.nuoff[1].nuoff_hoch, 5600000, 0.01));
    }

    void right_click_tells_about_a_point() {
        start_with_network();
        const QPoint place = middle(session_.lbl_pubez[4]);
        press(place, Qt::RightButton);
        QVERIFY(info()->isVisible());
        QCOMPARE(info()->text(), text("PBZ: 4"));
        QCOMPARE(info()->font().family(), text("Courier New"));
        QVERIFY(info()->font().fixedPitch());
        const QFontMetrics letters(info()->font());
        QCOMPARE(letters.horizontalAdvance(text("iiii")), letters.horizontalAdvance(text("WWWW")));
        // The corner stands at the point.
        QVERIFY(qAbs(info()->x() - at(3500000, 5600100).x()) <= 1);
        QVERIFY(qAbs(info()->y() - at(3500000, 5600100).y()) <= 1);
        move(place, Qt::RightButton);
        QVERIFY(info()->isVisible());
        release(place, Qt::RightButton);
        move(place);
        QVERIFY(info()->isVisible());
        move(QPoint(3, 3));
        QVERIFY(!info()->isVisible());
    }

    void info_at_the_right_edge_flips() {
        start_with_network();
        // The view is moved until point 3 stands near its right edge.
        const double shift = (3500100 - session_.view.ansicht_rw_max) + 40 * pixel();
        session_.view.ansicht_rw_min += shift;
        session_.view.ansicht_rw_max += shift;
        window_->redraw();
        session_.pu[3].pu_bez = "ein langer Name";
        press(at(3500100, 5600100) + QPoint(12, 8), Qt::RightButton);
        QVERIFY(info()->isVisible());
        QVERIFY(qAbs(info()->geometry().right() + 1 - at(3500100, 5600100).x()) <= 1);
    }

    void right_click_tells_about_a_district() {
        start_with_network();
        for (const std::int16_t nbez : {std::int16_t{1}, std::int16_t{2}}) {
            show_kilometre_squares(nbez);
            const std::int32_t i = node_label();
            QVERIFY(i > 0);
            press(middle(session_.lbl_nubez[static_cast<std::size_t>(i)]), Qt::RightButton);
            QVERIFY(info()->isVisible());
            QCOMPARE(info()->text(), text(" 34995600 | 35005600 \n  34995599 | 35005599 "));
            const QPoint centre = info()->geometry().center();
            QVERIFY(qAbs(centre.x() - at(3500000, 5600000).x()) <= 1);
            QVERIFY(qAbs(centre.y() - at(3500000, 5600000).y()) <= 1);
            move(QPoint(3, 3));
        }
    }

    void right_click_beside_labels_tells_nothing() {
        start_with_network();
        press(QPoint(3, 3), Qt::RightButton);
        QVERIFY(!info()->isVisible());
    }

    void pointer_shows_what_can_be_held() {
        start_with_network();
        move(middle(session_.lbl_pubez[3]));
        QCOMPARE(session_.window.mouse_pointer, 99);
        QCOMPARE(picture().cursor().shape(), Qt::SizeAllCursor);
        move(QPoint(3, 3));
        QCOMPARE(session_.window.mouse_pointer, 0);
        QCOMPARE(picture().cursor().shape(), Qt::ArrowCursor);
    }

    void info_tells_the_change_since_the_epoch_before() {
        open_epochs();
        QCOMPARE(session_.pu.count(), 4);
        press(middle(session_.lbl_pubez[3]), Qt::RightButton);
        QCOMPARE(info()->text(), text("Epoche: 1998\nNeupunkt\nDy =          3.0 cm\n"
                                      "Dx =         -4.0 cm\nDs =          5.0 cm"));
        // At 1:1000 and 1:2 a centimetre is 5 m; the label stands at the tip of the vector.
        QVERIFY(qAbs(info()->x() - at(3500115, 5600030).x()) <= 1);
        QVERIFY(qAbs(info()->y() - at(3500115, 5600030).y()) <= 1);
        press(middle(session_.lbl_pubez[4]), Qt::RightButton);
        QCOMPARE(info()->text(), text("Epoche: 2001\nNeupunkt\nDy =          6.0 cm\n"
                                      "Dx =          8.0 cm\nDs =         10.0 cm"));
        QVERIFY(qAbs(info()->x() - at(3500145, 5600070).x()) <= 1);
        QVERIFY(qAbs(info()->y() - at(3500145, 5600070).y()) <= 1);
    }

    void info_of_a_point_without_number_is_empty() {
        open_file(
            "PUNKTSIGNATUR 3500000 5600000 0 0 1\r\n"
            "PUNKTSIGNATUR 3500100 5600100 0 0 1 \"2\"\r\n");
        press(middle(session_.lbl_pubez[1]), Qt::RightButton);
        QVERIFY(info()->isVisible());
        QCOMPARE(info()->text(), QString());
    }

    void info_at_the_lower_edge_flips_upward() {
        start_with_network();
        // The view is moved until point 1 stands 20 pixels above its lower edge.
        const double shift = 5600000 - 20 * pixel() - session_.view.ansicht_hw_min;
        session_.view.ansicht_hw_min += shift;
        session_.view.ansicht_hw_max += shift;
        session_.pu[1].pu_wert_lage = -3;  // four lines of text
        window_->redraw();
        press(middle(session_.lbl_pubez[1]), Qt::RightButton);
        QVERIFY(info()->isVisible());
        QVERIFY(info()->height() > 20);
        QVERIFY(qAbs(info()->geometry().bottom() + 1 - at(3500000, 5600000).y()) <= 1);
    }

    void the_topmost_of_two_labels_is_pointed_at() {
        open_file(
            "PUNKTSIGNATUR 3500000 5600000 0 0 1 \"unten\"\r\n"
            "PUNKTSIGNATUR 3500000.01 5600000 0 0 1 \"oben\"\r\n"
            "PUNKTSIGNATUR 3500100 5600100 0 0 1 \"fern\"\r\n");
        press(middle(session_.lbl_pubez[1]), Qt::RightButton);
        QCOMPARE(info()->text(), text("PBZ: oben"));
        drag(middle(session_.lbl_pubez[1]), QPoint(40, 40));
        QCOMPARE(session_.pu[1].pu_bez_rechts, 0.0);
        QVERIFY(session_.pu[2].pu_bez_rechts != 0.0);
    }

    void a_drag_to_its_start_stores_the_offsets_all_the_same() {
        start_with_network();
        const QPoint place = middle(session_.lbl_pubez[3]);
        drag(place, place);
        // The standard place: 60 % of the height to the east.
        QVERIFY(close_to(session_.pu[3].pu_bez_rechts, 60, 0.01));
        QVERIFY(close_to(session_.pu[3].pu_bez_hoch, 0, 0.01));
        QCOMPARE(undo_text(), text("Rückgängig: Verschiebung Bezeichnung"));
    }

    void an_offset_of_exactly_zero_falls_back_at_the_next_redraw() {
        start_with_network();
        session_.settings.stanplt = 0;
        // All numbers of this view are exact in 32 bits.
        const double unit = 1.0 / 64;
        Viewport& view = session_.view;
        view = {3499936, 5599936, 3499936 + unit * 15 * picture().width(),
                5599936 + unit * 15 * picture().height(), unit};
        window_->redraw();
        const Label standard = session_.lbl_pubez[1];
        const QPoint place = middle(standard);
        drag(place, place - QPoint(0, 40));
        QCOMPARE(session_.pu[1].pu_bez_rechts, 0.0);
        QVERIFY(session_.pu[1].pu_bez_hoch > 0);
        QVERIFY(close_to(static_cast<double>(session_.lbl_pubez[1].top - standard.top),
                         40 * pixel(), 1e-3));
        window_->redraw();
        QCOMPARE(session_.lbl_pubez[1].left, standard.left);
        QCOMPARE(session_.lbl_pubez[1].top, standard.top);
    }

    void a_label_put_back_from_outside_the_picture_is_seen_at_once() {
        start_with_network();
        const QImage before = picture().shown();
        const QPoint from = middle(session_.lbl_pubez[2]);
        drag(from, QPoint(-500, from.y()));
        window_->redraw();
        QVERIFY(!session_.lbl_pubez[2].visible);
        QVERIFY(picture().shown() != before);
        action("rückgängig")->trigger();
        QCOMPARE(picture().shown(), before);
        QCOMPARE(picture().label_at(from)->index, 2);
    }

    void a_district_label_moved_twice_reuses_its_entry() {
        start_with_network();
        show_kilometre_squares(1);
        const auto i = static_cast<std::size_t>(node_label());
        QVERIFY(i > 0);
        const QPoint from = middle(session_.lbl_nubez[i]);
        drag(from, from + QPoint(50, -40));
        drag(from + QPoint(50, -40), from + QPoint(80, -70));
        QCOMPARE(session_.nuoff.count(), 1);
        QVERIFY(close_to(session_.nuoff[1].nuoff_rechts, 3500000 + 80 * pixel(), 0.01));
        QVERIFY(close_to(session_.nuoff[1].nuoff_hoch, 5600000 + 70 * pixel(), 0.01));
        // Only the second step can be taken back.
        action("rückgängig")->trigger();
        QVERIFY(close_to(session_.nuoff[1].nuoff_rechts, 3500000 + 50 * pixel(), 0.01));
        QVERIFY(close_to(session_.nuoff[1].nuoff_hoch, 5600000 + 40 * pixel(), 0.01));
    }

    void names_of_map_sheets_with_a_blank_are_found_again_in_the_file_data() {
        QTest::addColumn<int>("nube");
        QTest::addColumn<QByteArray>("key");
        // South-west corners 50 36' 9 00' and 50 24' 9 20': rows 506 and 504, columns 54 and 56 of
        // the sheets 1:25 000, hence 559 - 506 = 53 and 54 - 34 = 20, 55 and 22.
        QTest::newRow("TK 50") << 4 << QByteArray("L 5320");
        QTest::newRow("TK 100") << 5 << QByteArray("C 5522");
    }

    void names_of_map_sheets_with_a_blank_are_found_again_in_the_file() {
        QFETCH(int, nube);
        QFETCH(QByteArray, key);
        start_with_network();
        session_.obj.obj_nube = static_cast<std::int16_t>(nube);
        session_.obj.obj_nbez = 1;
        const std::size_t before = zoom_out_to(key.toStdString());
        QVERIFY(before > 0);
        const QPoint from = middle(session_.lbl_nubez[before]);
        drag(from, from + QPoint(60, -30));
        QCOMPARE(session_.nuoff.count(), 1);
        const NubezOffsetRow moved = session_.nuoff[1];
        QCOMPARE(QByteArray::fromStdString(moved.nuoff_bez), key);
        QVERIFY(window_->close());
        QVERIFY(read("ve_quadrat.dat").contains("\r\nNumbezOffset " + key + " "));
        start_anew();
        QCOMPARE(session_.nuoff.count(), 1);
        QCOMPARE(QByteArray::fromStdString(session_.nuoff[1].nuoff_bez), key);
        QVERIFY(close_to(session_.nuoff[1].nuoff_rechts, moved.nuoff_rechts, 0.0006));
        QVERIFY(close_to(session_.nuoff[1].nuoff_hoch, moved.nuoff_hoch, 0.0006));
        QCOMPARE(int{session_.obj.obj_nube}, nube);
        // It stands where it was put, not at its node.
        const std::size_t after = zoom_out_to(key.toStdString());
        QVERIFY(after > 0);
        QVERIFY(close_to(static_cast<double>(session_.lbl_nubez[after].left),
                         moved.nuoff_rechts - session_.view.ansicht_rw_min, pixel()));
        // A second move, and another leaving, find the same entry.
        drag(middle(session_.lbl_nubez[after]), QPoint(100, 100));
        QCOMPARE(session_.nuoff.count(), 1);
        QVERIFY(window_->close());
        QCOMPARE(read("ve_quadrat.dat").count("NumbezOffset"), 1);
    }
};

QTEST_MAIN(FrmTorvelLabelsTest)
#include "frmTorvel_labels_wintest.moc"
