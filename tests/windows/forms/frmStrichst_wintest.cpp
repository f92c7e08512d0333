#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <algorithm>

#include "dialog_driver.h"
#include "dialog_keys.h"
#include "model/settings.h"
#include "unnamed_controls.h"
#include "windows/forms/frmStrichst.h"
#include "windows/qt/sample_picture.h"

using namespace veldra;
using namespace veldra_test;

class FrmStrichstTest : public QObject {
    Q_OBJECT

 private:
    static SamplePicture& picture(const FrmStrichst& dialog, int i) {
        return control<SamplePicture>(dialog, qPrintable(QStringLiteral("pic_strichst_%1").arg(i)));
    }
    static QLabel& label(const FrmStrichst& dialog, int i) {
        return control<QLabel>(dialog, qPrintable(QStringLiteral("lbl_strichst_%1").arg(i)));
    }
    /// Numbers of the pictures that bear the frame.
    static QList<int> framed(const FrmStrichst& dialog) {
        QList<int> numbers;
        for (int i = 0; i < 7; ++i) {
            if (picture(dialog, i).is_chosen()) {
                numbers << i;
            }
        }
        return numbers;
    }

 private Q_SLOTS:
    void shows_seven_widths_and_the_chosen_one() {
        LineWidthChoice choice{3, 1, rgb(255, 250, 240)};
        FrmStrichst dialog(nullptr, choice, QStringLiteral("Strichstärke EV"));
        QCOMPARE(dialog.objectName(), QStringLiteral("frmStrichst"));
        QCOMPARE(dialog.windowTitle(), QStringLiteral("Strichstärke EV"));
        QCOMPARE(label(dialog, 0).text(), QStringLiteral("(nicht dargestellt)"));
        for (int i = 1; i < 7; ++i) {
            QCOMPARE(label(dialog, i).text(), QStringLiteral("%1 p").arg(i));
        }
        QCOMPARE(framed(dialog), QList<int>{3});
        QCOMPARE(FrmStrichst(nullptr, choice, QString()).windowTitle(), QStringLiteral("Strich"));
    }

    void a_width_is_a_black_line_from_360_twips_to_the_right_edge() {
        LineWidthChoice choice{1, 0, rgb(200, 220, 240)};
        FrmStrichst dialog(nullptr, choice, QString());
        dialog.show();
        constexpr int width = 5;
        const QImage image = picture(dialog, width).grab().toImage();
        const int middle = image.height() / 2;
        const QRgb background = qRgb(200, 220, 240);
        const int start = std::max(24, label(dialog, width).sizeHint().width() + 12);
        int black = 0;
        for (int y = 0; y < image.height(); ++y) {
            black += image.pixel(image.width() - 1, y) == qRgb(0, 0, 0) ? 1 : 0;
        }
        QCOMPARE(black, width);
        QCOMPARE(image.pixel(start + width, middle), qRgb(0, 0, 0));
        QCOMPARE(image.pixel(start - width, middle), background);
        QCOMPARE(image.pixel(0, 0), background);
    }

    void the_chosen_width_has_a_blue_box() {
        LineWidthChoice choice{2, 0, rgb(255, 255, 255)};
        FrmStrichst dialog(nullptr, choice, QString());
        dialog.show();
        const QImage chosen = picture(dialog, 2).grab().toImage();
        for (int x = 0; x < 4; ++x) {
            QCOMPARE(chosen.pixel(x, chosen.height() / 2), qRgb(0, 0, 255));
        }
        QVERIFY(chosen.pixel(4, 5) != qRgb(0, 0, 255));
        QCOMPARE(picture(dialog, 1).grab().toImage().pixel(0, 0), qRgb(255, 255, 255));
    }

    void ok_gives_the_clicked_width() {
        LineWidthChoice choice{3, 0, 0};
        FrmStrichst dialog(nullptr, choice, QString());
        dialog.show();
        click(label(dialog, 5));
        QCOMPARE(framed(dialog), QList<int>{5});
        QCOMPARE(choice.strich_wert, std::int16_t{3});
        click(control<QPushButton>(dialog, "cmd_ok"));
        QCOMPARE(choice.strich_wert, std::int16_t{5});
        QCOMPARE(dialog.result(), static_cast<int>(QDialog::Accepted));
    }

    void abbrechen_and_escape_leave_the_width() {
        for (const int way : {0, 1, 2}) {
            LineWidthChoice choice{3, 0, 0};
            FrmStrichst dialog(nullptr, choice, QString());
            dialog.show();
            click(picture(dialog, 6));
            QCOMPARE(dialog.held(), std::int16_t{6});
            if (way == 0) {
                QTest::keyClick(&dialog, Qt::Key_Escape);
            } else if (way == 1) {
                auto& abbrechen = control<QPushButton>(dialog, "cmd_abbrechen");
                abbrechen.setFocus();
                QTest::keyClick(&abbrechen, Qt::Key_Return);
            } else {
                click(control<QPushButton>(dialog, "cmd_abbrechen"));
            }
            QVERIFY(!dialog.isVisible());
            QCOMPARE(choice.strich_wert, std::int16_t{3});
        }
    }

    void width_zero_is_offered_only_where_it_is_allowed() {
        for (const std::int16_t allowed : {std::int16_t{0}, std::int16_t{1}}) {
            LineWidthChoice choice{1, allowed, 0};
            FrmStrichst dialog(nullptr, choice, QString());
            dialog.show();
            QCOMPARE(label(dialog, 0).isEnabled(), allowed == 1);
            click(picture(dialog, 0));
            QCOMPARE(dialog.held(), std::int16_t{allowed == 1 ? std::int16_t{0} : std::int16_t{1}});
            QTest::keyClick(&picture(dialog, 1), Qt::Key_Up);
            QCOMPARE(dialog.held(), std::int16_t{allowed == 1 ? std::int16_t{0} : std::int16_t{1}});
        }
    }

    void arrow_keys_go_from_width_to_width_and_enter_takes_it() {
        LineWidthChoice choice{5, 0, 0};
        FrmStrichst dialog(nullptr, choice, QString());
        dialog.show();
        QTest::keyClick(&picture(dialog, 5), Qt::Key_Down);
        QCOMPARE(dialog.held(), std::int16_t{6});
        QTest::keyClick(&picture(dialog, 6), Qt::Key_Down);
        QCOMPARE(dialog.held(), std::int16_t{6});
        QTest::keyClick(&picture(dialog, 6), Qt::Key_Up);
        QTest::keyClick(&picture(dialog, 5), Qt::Key_Up);
        QTest::keyClick(&dialog, Qt::Key_Return);
        QCOMPARE(choice.strich_wert, std::int16_t{4});
    }

    void a_width_beyond_the_picker_stays_until_another_is_chosen() {
        LineWidthChoice choice{9, 0, 0};
        FrmStrichst dialog(nullptr, choice, QString());
        dialog.show();
        QCOMPARE(framed(dialog), QList<int>());
        click(control<QPushButton>(dialog, "cmd_ok"));
        QCOMPARE(choice.strich_wert, std::int16_t{9});
    }

    void the_tab_key_goes_from_width_to_width_to_the_buttons() {
        LineWidthChoice choice{2, 1, 0};
        FrmStrichst dialog(nullptr, choice, QString());
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        picture(dialog, 0).setFocus();
        QStringList names;
        for (int i = 0; i < 7; ++i) {
            names << QStringLiteral("pic_strichst_%1").arg(i);
        }
        names << QStringLiteral("cmd_ok") << QStringLiteral("cmd_abbrechen");
        QCOMPARE(tab_chain(dialog), names);
        QCOMPARE(shared_mnemonics(dialog), QStringList());
    }

    void return_on_abbrechen_leaves_the_width() {
        LineWidthChoice choice{2, 1, 0};
        FrmStrichst dialog(nullptr, choice, QString());
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        click(picture(dialog, 5));
        auto& abbrechen = control<QPushButton>(dialog, "cmd_abbrechen");
        abbrechen.setFocus();
        QTest::keyClick(&abbrechen, Qt::Key_Return);
        QVERIFY(!dialog.isVisible());
        QCOMPARE(choice.strich_wert, std::int16_t{2});
    }

    void every_control_has_a_name() {
        LineWidthChoice choice{1, 1, 0};
        FrmStrichst dialog(nullptr, choice, QString());
        QCOMPARE(unnamed_controls(dialog), QStringList());
    }

    void the_check_of_names_finds_controls_without_one() {
        QWidget window;
        QPushButton spoken(QStringLiteral("Text"), &window);  // no name in the program
        QLineEdit silent(&window);
        silent.setObjectName(QStringLiteral("txt"));
        QCOMPARE(unnamed_controls(window),
                 QStringList({QStringLiteral("QPushButton "), QStringLiteral("QLineEdit txt")}));
    }
};

QTEST_MAIN(FrmStrichstTest)
#include "frmStrichst_wintest.moc"
