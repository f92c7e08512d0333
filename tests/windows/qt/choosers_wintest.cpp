#include <QColorDialog>
#include <QListWidget>
#include <QMap>
#include <QPushButton>
#include <QTest>
#include <QTranslator>

#include "control_names.h"
#include "dialog_driver.h"
#include "dialog_keys.h"
#include "model/tables.h"
#include "unnamed_controls.h"
#include "windows/qt/choosers.h"
#include "windows/qt/colour_dialog.h"
#include "windows/qt/font_dialog.h"

using namespace veldra;
using namespace veldra_test;

namespace {

/// The names of styles as the toolkit's German translation has them.
class GermanStyles final : public QTranslator {
 public:
    QString translate(const char* context, const char* source, const char* /*comment*/,
                      int /*n*/) const override {
        static const QMap<QByteArray, QString> names{{"Normal", QStringLiteral("Normal")},
                                                     {"Regular", QStringLiteral("Normal")},
                                                     {"Bold", QStringLiteral("Fett")},
                                                     {"Italic", QStringLiteral("Kursiv")},
                                                     {"Oblique", QStringLiteral("Schräggestellt")},
                                                     {"Bold Italic", QStringLiteral("Fett Kursiv")},
                                                     {"&Size", QStringLiteral("&Größe")}};
        return QByteArray(context).startsWith("QFont") ? names.value(source) : QString();
    }
    [[nodiscard]] bool isEmpty() const override { return false; }
};

}  // namespace

class ChoosersTest : public QObject {
    Q_OBJECT

 private Q_SLOTS:
    void a_colour_goes_there_and_back() {
        when_shown<ColourDialog>([](ColourDialog& dialog) {
            QCOMPARE(dialog.objectName(), QStringLiteral("dlg_farbe"));
            QCOMPARE(dialog.colour(), rgb(1, 2, 3));
            auto& colours = *dialog.findChild<QColorDialog*>();
            QVERIFY(colours.isVisible());
            colours.setCurrentColor(QColor(4, 5, 6));
            click(control<QPushButton>(dialog, "cmd_ok"));
        });
        const auto chosen =
            toolkit_choosers().colour(nullptr, QStringLiteral("dlg_farbe"), rgb(1, 2, 3));
        QCOMPARE(chosen.value_or(0), rgb(4, 5, 6));
    }

    void giving_up_chooses_nothing() {
        when_shown<ColourDialog>([](ColourDialog& dialog) { dialog.reject(); });
        QVERIFY(!toolkit_choosers().colour(nullptr, QStringLiteral("dlg"), 0).has_value());
        when_shown<QDialog>([](QDialog& dialog) { dialog.reject(); });
        QVERIFY(!toolkit_choosers().font(nullptr, QStringLiteral("dlg"), {}).has_value());
    }

    void ok_alone_changes_no_font_data() {
        QTest::addColumn<bool>("german");
        QTest::addColumn<QByteArray>("face");
        QTest::addColumn<bool>("bold");
        QTest::addColumn<bool>("italic");
        for (const bool german : {false, true}) {
            for (const char* face : {"Liberation Sans", "DejaVu Sans", "Nirgendwo Sans", ""}) {
                for (int style = 0; style < 4; ++style) {
                    QTest::addRow("%s, %s, %d", german ? "German" : "untranslated", face, style)
                        << german << QByteArray(face) << (style % 2 == 1) << (style / 2 == 1);
                }
            }
        }
    }

    /// In all dialogs that choose a font, whatever language the toolkit has.
    void ok_alone_changes_no_font() {
        QFETCH(bool, german);
        QFETCH(QByteArray, face);
        QFETCH(bool, bold);
        QFETCH(bool, italic);
        GermanStyles translator;
        if (german) {
            QCoreApplication::installTranslator(&translator);
        }
        const FontSpec font{face.toStdString(), 12.5, table_boolean(bold), table_boolean(italic),
                            table_boolean(true)};
        when_shown<QDialog>([](QDialog& dialog) { dialog.accept(); });
        const auto with_colour =
            toolkit_choosers().font(nullptr, QStringLiteral("dlg"), {font, rgb(7, 7, 7)});
        QVERIFY(with_colour.has_value());
        QCOMPARE(*with_colour, (FontChoice{font, rgb(7, 7, 7)}));
        for (const bool with_size : {true, false}) {
            when_shown<QDialog>([](QDialog& dialog) { dialog.accept(); });
            const auto chosen =
                toolkit_face_chooser()(nullptr, QStringLiteral("dlg"), font, with_size);
            QVERIFY(chosen.has_value());
            QCOMPARE(*chosen, font);
        }
    }

    void a_font_takes_face_style_size_and_colour() {
        const FontChoice before{{"Nirgendwo Sans", 12, -1, 0, -1}, rgb(7, 7, 7)};
        when_shown<FontDialog>([](FontDialog& dialog) {
            QCOMPARE(dialog.objectName(), QStringLiteral("dlg_pubez_screen"));
            QCOMPARE(dialog.choice().font.face, std::string("Nirgendwo Sans"));
            auto& faces = control<QListWidget>(dialog, "lst_schriftart");
            QVERIFY(faces.currentItem()->text().startsWith(QStringLiteral("Nirgendwo Sans (")));
            faces.setCurrentItem(
                faces.findItems(QStringLiteral("Liberation Serif"), Qt::MatchExactly).value(0));
            auto& styles = control<QListWidget>(dialog, "lst_schriftstil");
            QCOMPARE(styles.currentItem()->text(), QStringLiteral("fett"));
            QTest::keyClick(&styles, Qt::Key_Down);
            QCOMPARE(styles.currentItem()->text(), QStringLiteral("fett kursiv"));
            type(control<QComboBox>(dialog, "cbo_groesse"), "17,5");
            click_mark(control<QCheckBox>(dialog, "chk_unterstrichen"));
            when_shown<ColourDialog>([](ColourDialog& colours) {
                colours.set_colour(rgb(9, 8, 7));
                colours.accept();
            });
            auto& farbe = control<QPushButton>(dialog, "cmd_farbe");
            farbe.setFocus();
            QTest::keyClick(&farbe, Qt::Key_Return);
            const QFont sample = control<QLabel>(dialog, "lbl_muster").font();
            QCOMPARE(sample.family(), QStringLiteral("Liberation Serif"));
            QVERIFY(sample.bold() && sample.italic() && !sample.underline());
            QCOMPARE(sample.pointSizeF(), 17.5);
            dialog.accept();
        });
        const auto chosen =
            toolkit_choosers().font(nullptr, QStringLiteral("dlg_pubez_screen"), before);
        QVERIFY(chosen.has_value());
        QCOMPARE(*chosen, (FontChoice{{"Liberation Serif", 17.5, -1, -1, 0}, rgb(9, 8, 7)}));
    }

    void a_size_that_is_none_is_refused_and_told() {
        for (const char* typed : {"0", "abc", "", "1639", "-3"}) {
            MessageBoxes messages;
            FontDialog dialog(nullptr, QStringLiteral("dlg"), {{"Arial", 12, 0, 0, 0}, 0},
                              {true, true});
            dialog.show();
            QVERIFY(QTest::qWaitForWindowActive(&dialog));
            type(control<QComboBox>(dialog, "cbo_groesse"), typed);
            click(control<QPushButton>(dialog, "cmd_ok"));
            QVERIFY2(dialog.isVisible(), typed);
            QCOMPARE(messages.seen.size(), std::size_t{1});
            QCOMPARE(messages.seen[0].icon, QMessageBox::Critical);
            QCOMPARE(messages.seen[0].text,
                     text("Bitte geben Sie eine Schriftgröße von 1 bis 1638 Punkt an."));
            QCOMPARE(dialog.focusWidget()->objectName(), QStringLiteral("cbo_groesse"));
            type(control<QComboBox>(dialog, "cbo_groesse"), "1638");
            click(control<QPushButton>(dialog, "cmd_ok"));
            QCOMPARE(dialog.result(), static_cast<int>(QDialog::Accepted));
            QCOMPARE(dialog.choice().font.points, 1638.0);
        }
    }

    void escape_and_return_end_the_font_dialog_data() {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("result");
        QTest::newRow("Escape") << static_cast<int>(Qt::Key_Escape)
                                << static_cast<int>(QDialog::Rejected);
        QTest::newRow("Return") << static_cast<int>(Qt::Key_Return)
                                << static_cast<int>(QDialog::Accepted);
    }

    /// From each of its controls.
    void escape_and_return_end_the_font_dialog() {
        QFETCH(int, key);
        QFETCH(int, result);
        for (const char* name :
             {"lst_schriftart", "lst_schriftstil", "cbo_groesse", "chk_unterstrichen"}) {
            FontDialog dialog(nullptr, QStringLiteral("dlg"), {{"Arial", 12, 0, 0, 0}, 0},
                              {true, true});
            dialog.show();
            QVERIFY(QTest::qWaitForWindowActive(&dialog));
            auto& focus = control<QWidget>(dialog, name);
            focus.setFocus();
            bool ended = false;
            connect(&dialog, &QDialog::finished, this, [&ended](int) { ended = true; });
            QTest::keyClick(&focus, static_cast<Qt::Key>(key));
            QVERIFY2(ended && !dialog.isVisible(), name);
            QCOMPARE(dialog.result(), result);
        }
    }

    void the_font_dialog_can_be_used_by_keys_and_with_large_letters() {
        for (const double factor : {1.0, 2.0}) {
            const QFont usual = QApplication::font();
            QFont large = usual;
            large.setPointSizeF(usual.pointSizeF() * factor);
            QApplication::setFont(large);
            FontDialog dialog(nullptr, QStringLiteral("dlg"), {{"Arial", 12, 0, 0, 0}, 0},
                              {true, true});
            dialog.show();
            QVERIFY(QTest::qWaitForWindowActive(&dialog));
            QApplication::setFont(usual);
            QCOMPARE(unnamed_controls(dialog), QStringList());
            QCOMPARE(shared_mnemonics(dialog), QStringList());
            QCOMPARE(default_buttons(dialog), QStringList{QStringLiteral("cmd_ok")});
            QCOMPARE(dialog.focusWidget()->objectName(), QStringLiteral("lst_schriftart"));
            QCOMPARE(tab_chain(dialog),
                     (QStringList{QStringLiteral("lst_schriftart"),
                                  QStringLiteral("lst_schriftstil"), QStringLiteral("cbo_groesse"),
                                  QStringLiteral("chk_unterstrichen"), QStringLiteral("cmd_farbe"),
                                  QStringLiteral("cmd_ok"), QStringLiteral("cmd_abbrechen")}));
        }
    }

    void escape_and_return_end_the_colour_dialog() {
        for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Enter}) {
            ColourDialog dialog(nullptr, QStringLiteral("dlg"), rgb(1, 2, 3));
            dialog.show();
            QVERIFY(QTest::qWaitForWindowActive(&dialog));
            auto& colours = *dialog.findChild<QColorDialog*>();
            colours.findChild<QLineEdit*>()->setFocus();
            QTest::keyClick(dialog.focusWidget(), key);
            QVERIFY(!dialog.isVisible());
            QVERIFY(!colours.isHidden());  // it went with the dialog, not by itself
            QCOMPARE(dialog.result(), static_cast<int>(key == Qt::Key_Escape ? QDialog::Rejected
                                                                             : QDialog::Accepted));
        }
    }

    void without_a_size_the_one_that_was_set_stays() {
        when_shown<FontDialog>([](FontDialog& dialog) {
            QVERIFY(dialog.findChild<QComboBox*>() == nullptr);
            QVERIFY(dialog.findChild<QPushButton*>(QStringLiteral("cmd_farbe")) == nullptr);
            click_mark(control<QCheckBox>(dialog, "chk_unterstrichen"));
            dialog.accept();
        });
        const FontSpec before{"nirgendwo", 12.345, 0, -1, 0};
        const auto chosen =
            toolkit_face_chooser()(nullptr, QStringLiteral("dlg_schrift"), before, false);
        QVERIFY(chosen.has_value());
        QCOMPARE(*chosen, (FontSpec{"nirgendwo", 12.345, 0, -1, -1}));
    }
};

QTEST_MAIN(ChoosersTest)
#include "choosers_wintest.moc"
