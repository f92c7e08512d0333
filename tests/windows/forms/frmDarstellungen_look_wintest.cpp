#include "dialog_keys.h"
#include "display_dialog_fixture.h"
#include "unnamed_controls.h"

using namespace veldra;
using namespace veldra_test;

/// Names, captions and the way of the keyboard through the dialog.
class FrmDarstellungenLookTest : public DisplayDialogFixture {
    Q_OBJECT

 private Q_SLOTS:
    void init() { make_session(); }
    void cleanup() { close_down(); }

    void controls_bear_their_names() {
        open();
        QCOMPARE(dialog_->objectName(), text("frmDarstellungen"));
        QCOMPARE(dialog_->windowTitle(), text("Darstellung Objekte"));
        QVERIFY(dialog_->isModal());
        for (const char* name : {"cbo_grundriss_mass",
                                 "cbo_überhöhung",
                                 "tab_darstellungen",
                                 "cmd_ok",
                                 "cmd_abbrechen",
                                 "pic_pubez_screen",
                                 "pic_pubez_plott",
                                 "lbl_pubez_screen",
                                 "lbl_pubez_plott",
                                 "lbl_nubez_screen",
                                 "lbl_nubez_plott",
                                 "lbl_auswahl_pa_screen",
                                 "lbl_auswahl_pa_plott",
                                 "lbl_punktradius_screen",
                                 "lbl_punktradius_plott",
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
                                 "txt_terstrecken_sig_screen",
                                 "txt_gpsstrecken_sig_screen",
                                 "txt_orientierung_sig_screen",
                                 "txt_terstrecken_sig_plott",
                                 "txt_gpsstrecken_sig_plott",
                                 "txt_orientierung_sig_plott",
                                 "lbl_Für_vekt_lage",
                                 "lbl_Für_vekt_höhe",
                                 "txt_grenzwert",
                                 "txt_ev_wert",
                                 "lbl_hinweis_test",
                                 "lbl_Für_test"}) {
            QVERIFY2(dialog_->findChild<QWidget*>(text(name)) != nullptr, name);
        }
        const struct {
            const char* stem;
            int first;
            int last;
        } arrays[] = {{"lbl_pa_screen_", 0, 3},       {"lbl_pa_plott_", 0, 3},
                      {"picVektorLage_", 1, 5},       {"picVektorHöhe_", 1, 5},
                      {"cbo_vekt_mass_lage_", 1, 3},  {"cbo_vekt_mass_höhe_", 1, 3},
                      {"lblEinheitLage_", 1, 3},      {"lblEinheitHöhe_", 1, 3},
                      {"txtMaxwertLage_", 1, 5},      {"txtMaxwertHöhe_", 1, 6},
                      {"pic_testwert_", 0, 9},        {"lbl_testwert_", 0, 9},
                      {"txt_nv_wert_", 1, 3},         {"txt_ep_wert_", 1, 2},
                      {"pic_verwgrenz_", 1, 7},       {"cmd_verwgrenz_farbe_", 1, 7},
                      {"cmd_verwgrenz_strich_", 1, 7}};
        for (const auto& array : arrays) {
            for (int i = array.first; i <= array.last; ++i) {
                const QByteArray name = numbered(array.stem, i);
                QVERIFY2(dialog_->findChild<QWidget*>(text(name)) != nullptr, name.constData());
            }
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
            // Each button "Standard" stands on the tab of its group.
            QVERIFY(tabs.widget(i)->isAncestorOf(&button(standard_buttons[i])));
            QCOMPARE(plain(button(standard_buttons[i]).text()), text("Standard"));
        }
        const std::pair<const char*, const char*> labels[] = {
            {"lbl_pubez_screen", "1234567890ABCDEF"},
            {"lbl_pubez_plott", "1234567890ABCDEF"},
            {"lbl_nubez_screen", "12345678"},
            {"lbl_nubez_plott", "12345678"},
            {"lbl_auswahl_pa_screen", "weitere Auswahl Punktart durch Pfeiltasten"},
            {"lbl_auswahl_pa_plott", "weitere Auswahl Punktart durch Pfeiltasten"},
            {"lbl_punktradius_screen", "Radius Punktsignatur TP:"},
            {"lbl_punktradius_plott", "Radius Punktsignatur TP:"},
            {"lbl_offset_rechts_screen", "Standard Offset Text rechts:"},
            {"lbl_offset_hoch_screen", "Standard Offset Text hoch:"},
            {"lbl_offset_rechts_plott", "Standard Offset Text rechts:"},
            {"lbl_offset_hoch_plott", "Standard Offset Text hoch:"},
            {"lbl_pubez_schrift_plott", "Schrifthöhe Bezeichnungen:"},
            {"lbl_druckerda", "Drucker nicht verfügbar! Schrifthöhe nur in mm einzugeben."},
            {"lbl_terstrecken_sig_screen", "Signaturgröße:"},
            {"lbl_gpsstrecken_sig_screen", "Signaturgröße:"},
            {"lbl_orientierung_sig_screen", "Länge:"},
            {"lbl_terstrecken_sig_plott", "Signaturgröße:"},
            {"lbl_gpsstrecken_sig_plott", "Signaturgröße:"},
            {"lbl_orientierung_sig_plott", "Länge:"},
            {"lbl_Für_vekt_lage", "für Lageänderungen Anschlusspunkte"},
            {"lbl_Für_vekt_höhe", "für Höhenänderungen Anschlusspunkte"},
            {"lbl_hinweis_test", "weitere Auswahl duch Pfeiltasten"},
            {"lbl_Für_test", "für NV, EP, EH mit EV < 0.5"}};
        for (const auto& [name, caption] : labels) {
            QCOMPARE(label(name), text(caption));
        }
        for (const char* stem : {"lbl_pa_screen_", "lbl_pa_plott_"}) {
            const char* const classes[] = {"TP", "AP(1)", "AP(2)", "sonst."};
            for (int i = 0; i < 4; ++i) {
                QCOMPARE(label(numbered(stem, i).constData()), text(classes[i]));
            }
        }
        const std::pair<const char*, const char*> buttons[] = {
            {"cmd_pubez_schrift_screen", "Schrift"},
            {"cmd_nubez_schrift_screen", "Schrift"},
            {"cmd_pubez_schrift_plott", "Schrift"},
            {"cmd_nubez_schrift_plott", "Schrift"},
            {"cmd_vekt_farbe_lage", "Farbe"},
            {"cmd_vekt_farbe_höhe", "Farbe"},
            {"cmd_vekt_strich_lage", "Strich"},
            {"cmd_vekt_strich_höhe", "Strich"},
            {"cmd_test_farbe", "Farbe"},
            {"cmd_test_strich", "Strich"},
            {"cmd_verwgrenz_farbe_1", "Farbe"},
            {"cmd_verwgrenz_strich_7", "Strich"},
            {"cmd_ok", "OK"},
            {"cmd_abbrechen", "Abbrechen"}};
        for (const auto& [name, caption] : buttons) {
            QCOMPARE(plain(button(name).text()), text(caption));
        }
    }

    void frames_bear_their_titles() {
        open();
        const std::pair<const char*, const char*> frames[] = {
            {"frm_terstrecken_screen", "Strecken, Höhenunterschiede (terr.)"},
            {"frm_terstrecken_plott", "Strecken, Höhenunterschiede (terr.)"},
            {"fra_gpsstrecken_screen", "GPS-Strecken, GPS-Höhenunterschiede, GPS-Raumvektoren"},
            {"fra_gpsstrecken_plott", "GPS-Strecken, GPS-Höhenunterschiede, GPS-Raumvektoren"},
            {"fra_orientierung_screen", "Orientierungsrichtungen"},
            {"fra_orientierung_plott", "Orientierungsrichtungen"},
            {"fra_laende", "Lageänderungen:"},
            {"fra_lrestkl", "Lagerestklaffungen:"},
            {"fra_lfehl", "Lagefehlerellipsen:"},
            {"fra_haende", "Höhenänderungen:"},
            {"fra_hrestk", "Höhenrestklaffungen:"},
            {"fra_hfehl", "Mittlere Höhenfehler:"},
            {"fra_testwert_0", "Grenzwert für EV zur Darstellung von NV, EP, EH:"},
            {"fra_testwert_1", "EV:"},
            {"fra_testwert_2", "NV:"},
            {"fra_testwert_3", "EP / EH:"},
            {"fra_verwgrenz_1", "Länder"},
            {"fra_verwgrenz_2", "Regierungsbezirke"},
            {"fra_verwgrenz_3", "Kreise, kreisfreie Städte"},
            {"fra_verwgrenz_4", "Gemeinden"},
            {"fra_verwgrenz_5", "sonstige (1)"},
            {"fra_verwgrenz_6", "sonstige (2)"},
            {"fra_verwgrenz_7", "sonstige (3)"}};
        for (const auto& [name, title] : frames) {
            QCOMPARE(plain(control<QGroupBox>(*dialog_, name).title()), text(title));
        }
    }

    void units_and_scales_are_named_beside_their_boxes() {
        open();
        const auto& tabs = control<QTabWidget>(*dialog_, "tab_darstellungen");
        const struct {
            DisplayTab tab;
            const char* caption;
            qsizetype count;
        } expected[] = {{DisplayTab::points_screen, "Twips", 1},
                        {DisplayTab::points_screen, "% der Schrifthöhe", 2},
                        {DisplayTab::points_plot, "mm", 1},
                        {DisplayTab::points_plot, "% der Schrifthöhe", 2},
                        {DisplayTab::points_plot, "mm (genähert)", 2},
                        {DisplayTab::observations_screen, "Twips", 3},
                        {DisplayTab::observations_plot, "mm", 3},
                        {DisplayTab::vectors_position, "Maßstab 1:", 3},
                        {DisplayTab::vectors_position, "cm", 3},
                        {DisplayTab::vectors_height, "Maßstab 1:", 3},
                        {DisplayTab::vectors_height, "cm", 3}};
        for (const auto& one : expected) {
            QStringList captions;
            for (const QLabel* shown :
                 tabs.widget(static_cast<int>(one.tab))->findChildren<QLabel*>()) {
                captions << plain(shown->text());
            }
            QCOMPARE(captions.count(text(one.caption)), one.count);
        }
        const auto label_of = [this](const char* name) {
            for (const QLabel* shown : dialog_->findChildren<QLabel*>()) {
                if (shown->buddy() == &combo(name)) {
                    return plain(shown->text());
                }
            }
            return QString();
        };
        QCOMPARE(label_of("cbo_grundriss_mass"), text("bei Maßstab Grundriss 1:"));
        QCOMPARE(label_of("cbo_überhöhung"), text("Überhöhung der Strichstärken im Plott:"));
    }

    void the_combo_boxes_offer_their_lists() {
        open();
        const auto offered = [this](const char* name) {
            QStringList texts;
            for (int i = 0; i < combo(name).count(); ++i) {
                texts << combo(name).itemText(i);
            }
            return texts.join(QLatin1Char('|'));
        };
        QCOMPARE(offered("cbo_grundriss_mass"),
                 text("5 000 000|2 500 000|2 000 000|1 250 000|1 000 000|500 000|250 000|200 000|"
                      "100 000|50 000|25 000|20 000|10 000|5 000|2 500|2 000|1 500|1 250|1 200|"
                      "1 000|750|500|250|200|100"));
        QCOMPARE(offered("cbo_überhöhung"), text("1|2|3|4|5|6|7|8|9|10"));
        QCOMPARE(offered("cbo_vekt_mass_lage_1"), text("0.1|0.2|0.5|1|2|5|10|20|50|100"));
        QCOMPARE(offered("cbo_vekt_mass_höhe_3"), text("0.1|0.2|0.5|1|2|5|10|20|50|100"));
    }

    void every_control_has_a_name() {
        open();
        QCOMPARE(unnamed_controls(*dialog_), QStringList());
    }

    void all_tabs_are_in_sight_and_texts_are_not_cut_off() {
        const QFont usual = QApplication::font();
        QFont large = usual;
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

    void the_tab_key_goes_from_top_to_bottom_data() {
        QTest::addColumn<QStringList>("controls");
        const auto row = [](const char* title, std::initializer_list<const char*> names) {
            QStringList controls{text("cbo_grundriss_mass"), text("cbo_überhöhung"),
                                 text("tab_bar")};
            for (const char* name : names) {
                controls << text(name);
            }
            QTest::newRow(title) << controls + QStringList{text("cmd_ok"), text("cmd_abbrechen")};
        };
        row("0", {"pic_pubez_screen", "txt_punktradius_screen", "txt_offset_rechts_screen",
                  "txt_offset_hoch_screen", "cmd_pubez_schrift_screen", "cmd_nubez_schrift_screen",
                  "cmd_standard_bezpun_screen"});
        row("1",
            {"pic_pubez_plott", "txt_punktradius_plott", "txt_offset_rechts_plott",
             "txt_offset_hoch_plott", "txt_pubez_schrift_plott", "cmd_pubez_schrift_plott",
             "txt_nubez_schrift_plott", "cmd_nubez_schrift_plott", "cmd_standard_bezpun_plott"});
        row("2", {"txt_terstrecken_sig_screen", "txt_gpsstrecken_sig_screen",
                  "txt_orientierung_sig_screen", "cmd_standard_art_screen"});
        row("3", {"txt_terstrecken_sig_plott", "txt_gpsstrecken_sig_plott",
                  "txt_orientierung_sig_plott", "cmd_standard_art_plott"});
        row("4",
            {"picVektorLage_1", "picVektorLage_2", "cbo_vekt_mass_lage_1", "picVektorLage_3",
             "picVektorLage_4", "cbo_vekt_mass_lage_2", "picVektorLage_5", "cbo_vekt_mass_lage_3",
             "cmd_vekt_farbe_lage", "cmd_vekt_strich_lage", "cmd_standard_vekt_lage"});
        row("5",
            {"picVektorHöhe_1", "picVektorHöhe_2", "cbo_vekt_mass_höhe_1", "picVektorHöhe_3",
             "picVektorHöhe_4", "cbo_vekt_mass_höhe_2", "picVektorHöhe_5", "cbo_vekt_mass_höhe_3",
             "cmd_vekt_farbe_höhe", "cmd_vekt_strich_höhe", "cmd_standard_vekt_höhe"});
        row("6", {"pic_testwert_0", "txt_grenzwert",  "pic_testwert_1",  "pic_testwert_2",
                  "txt_ev_wert",    "pic_testwert_3", "txt_nv_wert_1",   "pic_testwert_4",
                  "txt_nv_wert_2",  "pic_testwert_5", "txt_nv_wert_3",   "pic_testwert_6",
                  "pic_testwert_7", "txt_ep_wert_1",  "pic_testwert_8",  "txt_ep_wert_2",
                  "pic_testwert_9", "cmd_test_farbe", "cmd_test_strich", "cmd_standard_test"});
        row("7", {"cmd_verwgrenz_farbe_1", "cmd_verwgrenz_strich_1", "cmd_verwgrenz_farbe_2",
                  "cmd_verwgrenz_strich_2", "cmd_verwgrenz_farbe_3", "cmd_verwgrenz_strich_3",
                  "cmd_verwgrenz_farbe_4", "cmd_verwgrenz_strich_4", "cmd_verwgrenz_farbe_5",
                  "cmd_verwgrenz_strich_5", "cmd_verwgrenz_farbe_6", "cmd_verwgrenz_strich_6",
                  "cmd_verwgrenz_farbe_7", "cmd_verwgrenz_strich_7", "cmd_standard_verwgrenz"});
    }

    void the_tab_key_goes_from_top_to_bottom() {
        QFETCH(QStringList, controls);
        open_at(static_cast<DisplayTab>(QByteArray(QTest::currentDataTag()).toInt()));
        combo("cbo_grundriss_mass").setFocus();
        QCOMPARE(tab_chain(*dialog_), controls);
        QVERIFY(boxes_->seen.empty());
    }
};

QTEST_MAIN(FrmDarstellungenLookTest)
#include "frmDarstellungen_look_wintest.moc"
