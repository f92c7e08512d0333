#include <QColorDialog>
#include <QFontDialog>
#include <QPushButton>
#include <QTest>

#include "dialog_driver.h"
#include "windows/qt/choosers.h"

using namespace veldra;
using namespace veldra_test;

class ChoosersTest : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void a_colour_goes_there_and_back() {
        when_shown<QColorDialog>([](QColorDialog& dialog) {
            QCOMPARE(dialog.objectName(), QStringLiteral("dlg_farbe"));
            QCOMPARE(dialog.currentColor(), QColor(1, 2, 3));
            dialog.setCurrentColor(QColor(4, 5, 6));
            dialog.accept();
        });
        const auto chosen =
            toolkit_choosers().colour(nullptr, QStringLiteral("dlg_farbe"), rgb(1, 2, 3));
        QCOMPARE(chosen.value_or(0), rgb(4, 5, 6));
    }

    void giving_up_chooses_nothing() {
        when_shown<QColorDialog>([](QColorDialog& dialog) { dialog.reject(); });
        QVERIFY(!toolkit_choosers().colour(nullptr, QStringLiteral("dlg"), 0).has_value());
        when_shown<QDialog>([](QDialog& dialog) { dialog.reject(); });
        QVERIFY(!toolkit_choosers().font(nullptr, QStringLiteral("dlg"), {}).has_value());
    }

    void a_font_takes_size_style_and_colour_and_keeps_a_face_that_the_system_lacks() {
        const FontChoice before{{"Nirgendwo Sans", 12, -1, 0, -1}, rgb(7, 7, 7)};
        when_shown<QDialog>([](QDialog& dialog) {
            QCOMPARE(dialog.objectName(), QStringLiteral("dlg_pubez_screen"));
            auto& fonts = *dialog.findChild<QFontDialog*>();
            QFont font = fonts.currentFont();
            QVERIFY(font.bold() && font.underline() && !font.italic());
            font.setPointSizeF(17);
            font.setUnderline(false);
            fonts.setCurrentFont(font);
            when_shown<QColorDialog>([](QColorDialog& colours) {
                colours.setCurrentColor(QColor(9, 8, 7));
                colours.accept();
            });
            auto& farbe = control<QPushButton>(dialog, "cmd_farbe");
            farbe.setFocus();
            QTest::keyClick(&farbe, Qt::Key_Return);
            dialog.accept();
        });
        const auto chosen =
            toolkit_choosers().font(nullptr, QStringLiteral("dlg_pubez_screen"), before);
        QVERIFY(chosen.has_value());
        QCOMPARE(chosen->font.face, std::string("Nirgendwo Sans"));
        QCOMPARE(chosen->font.points, 17.0);
        QCOMPARE(chosen->font.bold, std::int16_t{-1});
        QCOMPARE(chosen->font.underline, std::int16_t{0});
        QCOMPARE(chosen->colour, rgb(9, 8, 7));
    }
};

QTEST_MAIN(ChoosersTest)
#include "choosers_wintest.moc"
