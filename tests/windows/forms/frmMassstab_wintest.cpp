#include <QGroupBox>
#include <QLabel>
#include <QTest>
#include <QTextDocument>
#include <memory>

#include "dialog_driver.h"
#include "settings/defaults.h"
#include "unnamed_controls.h"
#include "windows/forms/frmMassstab.h"
#include "windows/qt/sample_picture.h"

using namespace veldra;
using namespace veldra_test;

namespace {

constexpr QRgb ap_colour = qRgb(200, 0, 0);
constexpr QRgb np_colour = qRgb(0, 0, 200);

}  // namespace

class FrmMassstabTest : public QObject {
    Q_OBJECT

 private:
    FrmMassstab& open() {
        dialog_ = std::make_unique<FrmMassstab>(window_.get(), session_);
        dialog_->show();
        if (!QTest::qWaitForWindowActive(dialog_.get())) {
            qFatal("the dialog does not become the active window");
        }
        return *dialog_;
    }
    [[nodiscard]] QString label(const char* name) const {
        return control<QLabel>(*dialog_, name).text();
    }
    [[nodiscard]] bool shown(const char* name) const {
        return control<QWidget>(*dialog_, name).isVisible();
    }
    [[nodiscard]] QImage picture(const char* name) const {
        return control<SamplePicture>(*dialog_, name).grab().toImage();
    }
    /// Pixels of a colour in the row at half the height.
    [[nodiscard]] static int in_middle_row(const QImage& image, QRgb colour) {
        int count = 0;
        for (int x = 0; x < image.width(); ++x) {
            count += image.pixel(x, image.height() / 2) == colour ? 1 : 0;
        }
        return count;
    }
    /// A centimetre of value is `pixels` wide.
    void set_scale(double pixels) {
        session_.plot.plot_massstab = 0.001;
        session_.view.ansicht_masseinheit = 1;
        session_.vektor_massstab.fill(pixels * 15 * 0.001 * 100);
    }

    Session session_;
    std::unique_ptr<QWidget> window_;
    std::unique_ptr<FrmMassstab> dialog_;

 private Q_SLOTS:
    void init() {
        session_ = Session();
        standard_alle(session_);
        set_scale(20);
        for (std::size_t slot = 1; slot <= 6; ++slot) {
            session_.settings.vektArgb[slot] = rgb(200, 0, 0);
            session_.settings.vektNrgb[slot] = rgb(0, 0, 200);
        }
        window_ = std::make_unique<QWidget>();
        window_->resize(700, 600);
        window_->show();
    }

    void cleanup() {
        dialog_.reset();
        window_.reset();
    }

    void has_its_name_and_is_modeless() {
        open();
        QCOMPARE(dialog_->objectName(), QString::fromUtf8("frmMaßstab"));
        QCOMPARE(dialog_->windowTitle(), QString::fromUtf8("Maßstab"));
        QVERIFY(!dialog_->isModal());
        for (const char* name :
             {"lblEinheitGrundriss", "lblEinheitLage", "lblEinheitElli", "lblEinheitHöhe",
              "lblMaxAPLage", "lblMaxNPLage", "lblBeiAPLage", "lblBeiNPLage", "lblMaxNPElli",
              "lblBeiNPElli", "lblMaxAPHöhe", "lblMaxNPHöhe", "lblBeiAPHöhe", "lblBeiNPHöhe"}) {
            QVERIFY2(dialog_->findChild<QLabel*>(QString::fromUtf8(name)) != nullptr, name);
        }
        QVERIFY(dialog_->findChild<QLabel*>(QStringLiteral("lblMaxAPElli")) == nullptr);
    }

    void without_values_only_the_ground_shows() {
        open();
        QVERIFY(shown("fraGrundriss"));
        QVERIFY(!shown("fraLage") && !shown("fraLfehl") && !shown("fraHöhe"));
        QCOMPARE(control<QGroupBox>(*dialog_, "fraGrundriss").title(),
                 QStringLiteral("Grundriss:"));
        // 15 m a pixel: 1 km ends in the 67th pixel, 10 km beyond the picture.
        const int width = control<QWidget>(*dialog_, "picGrundriss").width();
        QVERIFY(width > 67 && width < 666);
        QCOMPARE(label("lblEinheitGrundriss"), QStringLiteral("1 km"));
        QCOMPARE(in_middle_row(picture("picGrundriss"), qRgb(0, 0, 0)), 67);
    }

    void a_kind_of_values_brings_its_frame() {
        session_.obj.obj_wert_lage = 1;
        open();
        QVERIFY(shown("fraLage") && !shown("fraLfehl") && !shown("fraHöhe"));
        auto& lage = control<QGroupBox>(*dialog_, "fraLage");
        QCOMPARE(lage.title(), QString::fromUtf8(" Lageänderungen: "));
        session_.obj.obj_wert_lage = 2;
        dialog_->refresh();
        QCOMPARE(lage.title(), QString::fromUtf8(" Lagerestklaffungen: "));
        session_.obj.obj_wert_lage = 3;
        dialog_->refresh();
        QVERIFY(!shown("fraLage") && shown("fraLfehl"));
        QCOMPARE(control<QGroupBox>(*dialog_, "fraLfehl").title(),
                 QStringLiteral("Lagefehlerellipsen:"));
        auto& hoehe = control<QGroupBox>(*dialog_, "fraHöhe");
        const char* const captions[] = {
            " Höhenänderungen: ", " Höhenrestklaffungen: ", " Mittlere Höhenfehler: "};
        for (std::int16_t kind = 1; kind <= 3; ++kind) {
            session_.obj.obj_wert_hoehe = kind;
            dialog_->refresh();
            QVERIFY(shown("fraHöhe"));
            QCOMPARE(hoehe.title(), QString::fromUtf8(captions[kind - 1]));
        }
    }

    void frames_are_105_twips_apart_and_end_15_twips_above_the_lower_edge() {
        session_.obj.obj_wert_lage = 1;
        session_.obj.obj_wert_hoehe = 1;
        open();
        const QRect ground = control<QWidget>(*dialog_, "fraGrundriss").geometry();
        const QRect lage = control<QWidget>(*dialog_, "fraLage").geometry();
        const QRect hoehe = control<QWidget>(*dialog_, "fraHöhe").geometry();
        QCOMPARE(lage.top() - (ground.bottom() + 1), 7);
        QCOMPARE(hoehe.top() - (lage.bottom() + 1), 7);
        QCOMPARE(dialog_->height() - (hoehe.bottom() + 1), 1);
    }

    void the_lower_edge_stays_where_it_is() {
        open();
        dialog_->move(50, 400);
        const int bottom = dialog_->geometry().bottom();
        const int height = dialog_->height();
        session_.obj.obj_wert_lage = 1;
        dialog_->refresh();
        QApplication::processEvents();
        QVERIFY(dialog_->height() > height);
        QCOMPARE(dialog_->geometry().bottom(), bottom);
        session_.obj.obj_wert_lage = 0;
        dialog_->refresh();
        QApplication::processEvents();
        QCOMPARE(dialog_->height(), height);
        QCOMPARE(dialog_->geometry().bottom(), bottom);
    }

    void maxima_are_drawn_in_their_pens_the_shorter_one_over_the_longer() {
        session_.obj.obj_wert_lage = 1;
        session_.max_ap[1] = {5, 0, 0, "17", "1998"};
        session_.max_np[1] = {2, 0, 0, "", ""};
        open();
        const QImage image = picture("picVektorLage");
        // 100 pixels of 5 cm, of which the first 40 lie under those of 2 cm.
        const int ap = in_middle_row(image, ap_colour);
        const int np = in_middle_row(image, np_colour);
        QVERIFY2(std::abs(np - 40) <= 3, qPrintable(QString::number(np)));
        QVERIFY2(std::abs(ap - 60) <= 4, qPrintable(QString::number(ap)));
        QCOMPARE(label("lblMaxAPLage"), QStringLiteral("max. AP: 5.0 cm"));
        QCOMPARE(label("lblBeiAPLage"), QStringLiteral("bei: 17, Epoche: 1998"));
        QCOMPARE(label("lblMaxNPLage"), QStringLiteral("max. NP: 2.0 cm"));
        QVERIFY(shown("lblBeiAPLage") && !shown("lblBeiNPLage"));
        // 1 dm is 200 pixels.
        QCOMPARE(label("lblEinheitLage"), QStringLiteral("1 dm"));
    }

    void texts_say_what_is_not_seen() {
        session_.obj.obj_wert_hoehe = 2;
        session_.settings.vektAdrw[5] = 0;
        session_.max_ap[5].wert = 1;
        session_.max_np[5].wert = 1000;
        open();
        QCOMPARE(label("lblMaxAPHöhe"), QStringLiteral("max. AP: 1.0 cm (nicht dargestellt)"));
        QCOMPARE(label("lblMaxNPHöhe"), QStringLiteral("max. NP: 1000.0 cm >"));
        QCOMPARE(in_middle_row(picture("picVektorHöhe"), ap_colour), 0);
    }

    void long_names_do_not_widen_it_and_can_be_read_whole() {
        session_.obj.obj_wert_lage = 1;
        open();
        const int width = dialog_->width();
        session_.max_np[1] = {2, 0, 0, std::string(120, 'W'), "1998"};
        dialog_->refresh();
        QApplication::processEvents();
        QCOMPARE(dialog_->width(), width);
        QCOMPARE(control<QLabel>(*dialog_, "lblBeiNPLage").toolTip(),
                 QStringLiteral("bei: ") + QString(120, QLatin1Char('W')) +
                     QStringLiteral(", Epoche: 1998"));
    }

    void names_in_tool_tips_are_no_markup() {
        session_.obj.obj_wert_lage = 1;
        open();
        session_.max_np[1] = {2, 0, 0, "<img src='x'>A & B", ""};
        dialog_->refresh();
        QTextDocument shown;
        shown.setHtml(control<QLabel>(*dialog_, "lblBeiNPLage").toolTip());
        QCOMPARE(shown.toPlainText(), QStringLiteral("bei: <img src='x'>A & B"));
    }

    void ellipses_have_new_points_only() {
        session_.obj.obj_wert_lage = 3;
        session_.max_ap[3].wert = 5;  // never of a file
        session_.max_np[3] = {3, 0, 0, "4", ""};
        open();
        const QImage image = picture("picVektorElli");
        QCOMPARE(in_middle_row(image, ap_colour), 0);
        QVERIFY(in_middle_row(image, np_colour) > 50);
        QCOMPARE(label("lblMaxNPElli"), QStringLiteral("max. NP: 3.0 cm"));
        QCOMPARE(label("lblBeiNPElli"), QStringLiteral("bei: 4"));
    }

    void the_label_stands_over_its_tick_inside_the_picture() {
        open();
        auto& mark = control<QLabel>(*dialog_, "lblEinheitGrundriss");
        QVERIFY(std::abs(mark.x() + mark.width() / 2.0 - 66.7) <= 1);
        const int width = control<QWidget>(*dialog_, "picGrundriss").width();
        // A kilometre that ends one pixel before the right edge.
        session_.view.ansicht_masseinheit = 1000.0 / 15 / (width - 1);
        dialog_->refresh();
        QCOMPARE(label("lblEinheitGrundriss"), QStringLiteral("1 km"));
        QCOMPARE(mark.x() + mark.width(), width);
        session_.view.ansicht_masseinheit = 1e12 / 15;  // 10^12 m in one pixel
        dialog_->refresh();
        QCOMPARE(label("lblEinheitGrundriss"), QStringLiteral("1000000000 km"));
        QCOMPARE(mark.x(), 0);
    }

    void a_wider_window_has_longer_bars() {
        open();
        session_.view.ansicht_masseinheit =
            1000.0 / 15 / (control<QWidget>(*dialog_, "picGrundriss").width() + 1);
        dialog_->refresh();
        QCOMPARE(label("lblEinheitGrundriss"), QStringLiteral("100 m"));
        const int height = dialog_->height();
        dialog_->resize(dialog_->width() + 40, height);
        QApplication::processEvents();
        QCOMPARE(label("lblEinheitGrundriss"), QStringLiteral("1 km"));
        QCOMPARE(dialog_->height(), height);
    }

    void is_redrawn_when_it_becomes_active() {
        open();
        window_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window_.get()));
        session_.obj.obj_wert_hoehe = 1;
        session_.view.ansicht_masseinheit = 0.1;
        QCOMPARE(label("lblEinheitGrundriss"), QStringLiteral("1 km"));
        dialog_->activateWindow();
        QTRY_COMPARE(label("lblEinheitGrundriss"), QStringLiteral("100 m"));
        QVERIFY(shown("fraHöhe"));
    }

    void escape_closes_it() {
        open();
        QTest::keyClick(dialog_.get(), Qt::Key_Escape);
        QVERIFY(!dialog_->isVisible());
    }

    void every_control_has_a_name() {
        open();
        QCOMPARE(unnamed_controls(*dialog_), QStringList());
    }
};

QTEST_MAIN(FrmMassstabTest)
#include "frmMassstab_wintest.moc"
