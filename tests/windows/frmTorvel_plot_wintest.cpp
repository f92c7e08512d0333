#include <QAction>
#include <QLabel>
#include <QTest>

#include "scripted_printer.h"
#include "torvel_fixture.h"

using namespace veldra;
using test::text;

namespace {

/// The dialog of a desktop where nobody is asked.
class NoDialog final : public PrintDialog {
 public:
    std::int32_t ShowPrinter(std::int32_t flags) override { return flags; }
};

}  // namespace

/// Plot mode by menu and toolbar, with a printer that remembers what it was told.
class FrmTorvelPlotTest : public test::TorvelFixture {
    Q_OBJECT

 private:
    [[nodiscard]] QLabel* legend() const {
        return window_->findChild<QLabel*>(text("lbl_legende"));
    }

    test::ScriptedPrinter printer_;
    NoDialog dialog_;

 private Q_SLOTS:
    void init() {
        make_folders();
        printer_ = test::ScriptedPrinter();
        create().use_printer(printer_, dialog_);
        window_->load();
        logo()->accept();
        // Plotted 1:500 on upright sheets, the binding margin and the legend at the lower left.
        write("ve.dat", QByteArray("MA\xdfSTABGRUNDRISS 500 3500000.0 5600000.0 41\r\n") +
                            test::square_network);
        window_->choose_file = [this] { return path("ve.dat"); };
        action("m_datei_beliebig")->trigger();
    }
    void cleanup() { close_down(); }

    void menu_switches_the_plot_mode() {
        const QImage screen = window_->picture().shown();
        QVERIFY(action("m_plotten_ein")->isEnabled());
        QVERIFY(!action("m_plotten_aus")->isEnabled());
        action("m_plotten_ein")->trigger();
        QCOMPARE(session_.plotmodus, std::int16_t{1});
        QVERIFY(!action("m_plotten_ein")->isEnabled());
        for (const char* name : {"m_plotten_aus", "m_plotten_aktuell", "m_plotten_alle"}) {
            QVERIFY2(action(name)->isEnabled(), name);
        }
        QVERIFY(window_->picture().shown() != screen);
        action("m_plotten_aus")->trigger();
        QCOMPARE(session_.plotmodus, std::int16_t{0});
        QVERIFY(action("m_plotten_ein")->isEnabled());
        for (const char* name : {"m_plotten_aus", "m_plotten_aktuell", "m_plotten_alle"}) {
            QVERIFY2(!action(name)->isEnabled(), name);
        }
        QVERIFY(window_->picture().shown() == screen);
    }

    void toolbar_switches_the_plot_mode() {
        QVERIFY(action("plot_ein")->isEnabled());
        QVERIFY(!action("plot_aus")->isEnabled());
        action("plot_ein")->trigger();
        QCOMPARE(session_.plotmodus, std::int16_t{1});
        QVERIFY(!action("plot_ein")->isEnabled());
        QVERIFY(action("plot_aus")->isEnabled());
        action("plot_aus")->trigger();
        QCOMPARE(session_.plotmodus, std::int16_t{0});
        QVERIFY(action("plot_ein")->isEnabled());
        QVERIFY(!action("plot_aus")->isEnabled());
    }

    void legend_is_shown_at_its_place_in_plot_mode_only() {
        QVERIFY(legend()->isHidden());
        action("plot_ein")->trigger();
        QVERIFY(!legend()->isHidden());
        // At the lower left corner of the sheets, which is that of the network.
        const Viewport& view = session_.view;
        const double pixel = 15 * view.ansicht_masseinheit;
        QCOMPARE(legend()->x(), qRound((3500000.0 - view.ansicht_rw_min) / pixel));
        const double bottom = (view.ansicht_hw_max - 5600000.0) / pixel;
        QVERIFY(std::abs(legend()->y() + legend()->height() - bottom) <= 1.5);
        QVERIFY(legend()->testAttribute(Qt::WA_TransparentForMouseEvents));
        action("plot_aus")->trigger();
        QVERIFY(legend()->isHidden());
    }

    void switching_leaves_nothing_to_undo() {
        session_.window[MenuItem::m_ansicht_undo].enabled = true;
        action("plot_ein")->trigger();
        QVERIFY(!session_.window[MenuItem::m_ansicht_undo].enabled);
        session_.window[MenuItem::m_ansicht_undo].enabled = true;
        action("plot_aus")->trigger();
        QVERIFY(!session_.window[MenuItem::m_ansicht_undo].enabled);
    }

    void current_part_is_printed_and_the_preview_comes_back() {
        action("plot_ein")->trigger();
        const QImage before = window_->picture().shown();
        const std::size_t sheets = static_cast<std::size_t>(session_.plot.plot_blatt_rechts) *
                                   static_cast<std::size_t>(session_.plot.plot_blatt_hoch);
        action("m_plotten_aktuell")->trigger();
        QCOMPARE(printer_.documents.size(), std::size_t{1});
        QCOMPARE(printer_.documents.front().pages.size(), sheets);
        QCOMPARE(session_.plotmodus, std::int16_t{1});
        QVERIFY(window_->picture().shown() == before);
    }

    void marked_parts_are_printed_after_a_question() {
        action("plot_ein")->trigger();
        answer_message_box();
        action("m_plotten_alle")->trigger();
        QCOMPARE(box_title_, text("Plotten"));
        QCOMPARE(box_icon_, QMessageBox::Question);
        QCOMPARE(session_.plotmodus, std::int16_t{1});
    }

    void question_leaves_the_picture_with_its_labels() {
        action("plot_ein")->trigger();
        const QImage before = window_->picture().shown();
        QImage behind;
        auto* look = new QTimer(this);
        connect(look, &QTimer::timeout, this, [&, look] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box != nullptr) {
                look->deleteLater();
                behind = window_->picture().shown();
                box->buttons().at(1)->click();
            }
        });
        look->start(10);
        action("m_plotten_alle")->trigger();
        QVERIFY(behind == before);
        QVERIFY(printer_.documents.empty());
        QVERIFY(window_->picture().shown() == before);
    }

    void zero_point_is_fitted_with_its_texts_and_can_be_put_back() {
        action("plot_ein")->trigger();
        const double zero = session_.plot.plot_null_rechts;
        const int left = legend()->x();
        action("m_plotten_null")->trigger();
        QCOMPARE(session_.plot.plot_null_rechts, session_.extents.gesamt_rw_min);
        QVERIFY(session_.plot.plot_null_rechts < zero);
        QVERIFY(!legend()->isHidden());
        QVERIFY(legend()->x() < left);
        action("m_ansicht_undo")->trigger();
        QCOMPARE(session_.plot.plot_null_rechts, zero);
        QCOMPARE(legend()->x(), left);
    }
};

QTEST_MAIN(FrmTorvelPlotTest)
#include "frmTorvel_plot_wintest.moc"
