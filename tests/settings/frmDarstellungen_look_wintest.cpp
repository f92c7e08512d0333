#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <memory>

#include "dialog_driver.h"
#include "platform/qt/qt_text_measurer.h"
#include "settings/defaults.h"
#include "settings/frmDarstellungen.h"
#include "unnamed_controls.h"

using namespace veldra;
using namespace veldra_test;

namespace {

QString text(const char* utf8) {
    return QString::fromUtf8(utf8);
}

constexpr const char* standard_buttons[] = {
    "cmd_standard_bezpun_screen", "cmd_standard_bezpun_plott", "cmd_standard_art_screen",
    "cmd_standard_art_plott",     "cmd_standard_vekt_lage",    "cmd_standard_vekt_höhe",
    "cmd_standard_test",          "cmd_standard_verwgrenz"};

}  // namespace

/// Names, captions and the way of the keyboard through the dialog.
class FrmDarstellungenLookTest : public QObject {
    Q_OBJECT

 private:
    FrmDarstellungen& open() {
        dialog_ = std::make_unique<FrmDarstellungen>(nullptr, *session_, measurer_, nullptr);
        dialog_->show();
        if (!QTest::qWaitForWindowActive(dialog_.get())) {
            qFatal("the dialog does not become the active window");
        }
        return *dialog_;
    }
    [[nodiscard]] QComboBox& combo(const char* name) const {
        return control<QComboBox>(*dialog_, name);
    }
    [[nodiscard]] QPushButton& button(const char* name) const {
        return control<QPushButton>(*dialog_, name);
    }
    void show_tab(DisplayTab tab) const {
        control<QTabWidget>(*dialog_, "tab_darstellungen").setCurrentIndex(static_cast<int>(tab));
    }

    QtTextMeasurer measurer_;
    std::unique_ptr<Session> session_;
    std::unique_ptr<FrmDarstellungen> dialog_;

 private Q_SLOTS:
    void init() {
        session_ = std::make_unique<Session>();
        standard_alle(*session_);
        session_->plot.plot_massstab = 0.001;
    }

    void cleanup() {
        dialog_.reset();
        session_.reset();
    }

    void controls_bear_their_names() {
        open();
        QCOMPARE(dialog_->objectName(), text("frmDarstellungen"));
        QCOMPARE(dialog_->windowTitle(), text("Darstellung Objekte"));
        QVERIFY(dialog_->isModal());
        for (const char* name : {"cbo_grundriss_mass",
                                 "cbo_überhöhung",
                                 "cmd_ok",
                                 "cmd_abbrechen",
                                 "pic_pubez_screen",
                                 "pic_pubez_plott",
                                 "lbl_pubez_screen",
                                 "lbl_pubez_plott",
                                 "lbl_nubez_screen",
                                 "lbl_nubez_plott",
                                 "lbl_pa_screen_0",
                                 "lbl_pa_screen_3",
                                 "lbl_pa_plott_0",
                                 "lbl_pa_plott_3",
                                 "lbl_auswahl_pa_screen",
                                 "lbl_punktradius_screen",
                                 "txt_punktradius_screen",
                                 "txt_punktradius_plott",
                                 "txt_offset_rechts_screen",
                                 "txt_offset_hoch_screen",
                                 "txt_offset_rechts_plott",
                                 "txt_offset_hoch_plott",
                                 "txt_pubez_schrift_plott",
                                 "txt_nubez_schrift_plott",
                                 "cmd_pubez_schrift_screen",
                                 "cmd_nubez_schrift_screen",
                                 "cmd_pubez_schrift_plott",
                                 "cmd_nubez_schrift_plott",
                                 "lbl_druckerda",
                                 "frm_terstrecken_screen",
                                 "fra_gpsstrecken_screen",
                                 "fra_orientierung_screen",
                                 "frm_terstrecken_plott",
                                 "fra_gpsstrecken_plott",
                                 "fra_orientierung_plott",
                                 "txt_terstrecken_sig_screen",
                                 "txt_gpsstrecken_sig_screen",
                                 "txt_orientierung_sig_screen",
                                 "txt_terstrecken_sig_plott",
                                 "txt_gpsstrecken_sig_plott",
                                 "txt_orientierung_sig_plott",
                                 "fra_laende",
                                 "fra_lrestkl",
                                 "fra_lfehl",
                                 "fra_haende",
                                 "fra_hrestk",
                                 "fra_hfehl",
                                 "picVektorLage_1",
                                 "picVektorLage_5",
                                 "picVektorHöhe_1",
                                 "picVektorHöhe_5",
                                 "cbo_vekt_mass_lage_1",
                                 "cbo_vekt_mass_lage_3",
                                 "cbo_vekt_mass_höhe_1",
                                 "cbo_vekt_mass_höhe_3",
                                 "lblEinheitLage_1",
                                 "lblEinheitHöhe_3",
                                 "txtMaxwertLage_1",
                                 "txtMaxwertHöhe_1",
                                 "lbl_Für_vekt_lage",
                                 "lbl_Für_vekt_höhe",
                                 "cmd_vekt_farbe_lage",
                                 "cmd_vekt_farbe_höhe",
                                 "cmd_vekt_strich_lage",
                                 "cmd_vekt_strich_höhe",
                                 "fra_testwert_0",
                                 "fra_testwert_3",
                                 "txt_grenzwert",
                                 "txt_ev_wert",
                                 "txt_nv_wert_1",
                                 "txt_nv_wert_2",
                                 "txt_nv_wert_3",
                                 "txt_ep_wert_1",
                                 "txt_ep_wert_2",
                                 "pic_testwert_0",
                                 "pic_testwert_9",
                                 "lbl_testwert_0",
                                 "lbl_testwert_9",
                                 "lbl_hinweis_test",
                                 "lbl_Für_test",
                                 "cmd_test_farbe",
                                 "cmd_test_strich",
                                 "fra_verwgrenz_1",
                                 "fra_verwgrenz_7",
                                 "pic_verwgrenz_1",
                                 "cmd_verwgrenz_farbe_1",
                                 "cmd_verwgrenz_strich_7"}) {
            QVERIFY2(dialog_->findChild<QWidget*>(text(name)) != nullptr, name);
        }
        for (const char* name : standard_buttons) {
            QVERIFY2(dialog_->findChild<QPushButton*>(text(name)) != nullptr, name);
        }
    }

    void captions_are_as_they_have_always_been() {
        open();
        const auto& tabs = control<QTabWidget>(*dialog_, "tab_darstellungen");
        const char* const captions[] = {"Bezeichnungen, Punkte auf Bildschirm",
                                        "Bezeichnungen, Punkte im Plott",
                                        "Beobachtungen auf Bildschirm",
                                        "Beobachtungen im Plott",
                                        "Vektoren Lage",
                                        "Vektoren Höhe",
                                        "Statistischer Test",
                                        "Verwaltungsgrenzen"};
        QCOMPARE(tabs.count(), 8);
        for (int i = 0; i < 8; ++i) {
            QCOMPARE(tabs.tabText(i), text(captions[i]));
        }
        const auto label = [this](const char* name) {
            return control<QLabel>(*dialog_, name).text().remove(QLatin1Char('&'));
        };
        QCOMPARE(label("lbl_pubez_screen"), text("1234567890ABCDEF"));
        QCOMPARE(label("lbl_nubez_plott"), text("12345678"));
        QCOMPARE(label("lbl_auswahl_pa_screen"),
                 text("weitere Auswahl Punktart durch Pfeiltasten"));
        QCOMPARE(label("lbl_punktradius_screen"), text("Radius Punktsignatur TP:"));
        QCOMPARE(label("lbl_offset_rechts_screen"), text("Standard Offset Text rechts:"));
        QCOMPARE(label("lbl_offset_hoch_plott"), text("Standard Offset Text hoch:"));
        QCOMPARE(label("lbl_pubez_schrift_plott"), text("Schrifthöhe Bezeichnungen:"));
        QCOMPARE(label("lbl_druckerda"),
                 text("Drucker nicht verfügbar! Schrifthöhe nur in mm einzugeben."));
        QCOMPARE(label("lbl_hinweis_test"), text("weitere Auswahl duch Pfeiltasten"));
        QCOMPARE(button("cmd_standard_test").text().remove(QLatin1Char('&')), text("Standard"));
    }

    void every_control_has_a_name() {
        open();
        QCOMPARE(unnamed_controls(*dialog_), QStringList());
    }

    void all_tabs_are_in_sight_and_texts_are_not_cut_off() {
        QFont large = QApplication::font();
        const QFont usual = large;
        large.setPointSizeF(usual.pointSizeF() * 1.5);
        QApplication::setFont(large);
        open();
        QApplication::processEvents();
        const auto& tabs = control<QTabWidget>(*dialog_, "tab_darstellungen");
        QVERIFY(tabs.tabBar()->tabRect(7).right() <= tabs.width());
        for (int i = 0; i < tabs.count(); ++i) {
            control<QTabWidget>(*dialog_, "tab_darstellungen").setCurrentIndex(i);
            QApplication::processEvents();
            for (const QPushButton* one : dialog_->findChildren<QPushButton*>()) {
                if (one->isVisible()) {
                    QString caption = one->text();
                    caption.remove(QLatin1Char('&'));
                    QVERIFY2(one->width() >= one->fontMetrics().horizontalAdvance(caption),
                             qPrintable(one->objectName()));
                }
            }
            for (const QLabel* one : tabs.currentWidget()->findChildren<QLabel*>()) {
                if (one->isVisible() && !one->wordWrap() &&
                    !one->parentWidget()->inherits("veldra::SamplePicture")) {
                    QVERIFY2(one->width() >= one->minimumSizeHint().width(),
                             qPrintable(one->text()));
                }
            }
        }
        QApplication::setFont(usual);
    }

    void mnemonics_of_a_tab_differ() {
        open();
        auto& tabs = control<QTabWidget>(*dialog_, "tab_darstellungen");
        for (int i = 0; i < tabs.count(); ++i) {
            tabs.setCurrentIndex(i);
            QStringList letters;
            const auto take = [&letters](const QWidget& widget, const QString& caption) {
                const qsizetype mark = caption.indexOf(QLatin1Char('&'));
                if (widget.isVisible() && mark >= 0) {
                    letters << caption.mid(mark + 1, 1).toUpper();
                }
            };
            for (const QPushButton* one : dialog_->findChildren<QPushButton*>()) {
                take(*one, one->text());
            }
            for (const QLabel* one : dialog_->findChildren<QLabel*>()) {
                take(*one, one->text());
            }
            QVERIFY(letters.contains(text("O")));
            QCOMPARE(letters.removeDuplicates(), qsizetype{0});
        }
    }

    void the_tab_key_goes_from_top_to_bottom() {
        open();
        show_tab(DisplayTab::points_plot);
        combo("cbo_grundriss_mass").setFocus();
        QStringList names;
        for (int i = 0; i < 14; ++i) {
            names << QApplication::focusWidget()->objectName();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(names,
                 QStringList({text("cbo_grundriss_mass"), text("cbo_überhöhung"), text("tab_bar"),
                              text("pic_pubez_plott"), text("txt_punktradius_plott"),
                              text("txt_offset_rechts_plott"), text("txt_offset_hoch_plott"),
                              text("txt_pubez_schrift_plott"), text("cmd_pubez_schrift_plott"),
                              text("txt_nubez_schrift_plott"), text("cmd_nubez_schrift_plott"),
                              text("cmd_standard_bezpun_plott"), text("cmd_ok"),
                              text("cmd_abbrechen")}));
    }
};

QTEST_MAIN(FrmDarstellungenLookTest)
#include "frmDarstellungen_look_wintest.moc"
