// The display goes while dialogs are open: what nobody confirmed is not written.
#include <QComboBox>

#include "restart_fixture.h"
#include "windows/forms/frmDarstellungen.h"
#include "windows/forms/frmLegende.h"
#include "windows/forms/frmObjekte.h"
#include "windows/forms/frmPlotten.h"

using namespace veldra;
using namespace veldra::test;
using namespace veldra_test;

class DisplayLossTest : public RestartFixture {
    Q_OBJECT

 private Q_SLOTS:
    void init() { make_folders(); }
    void cleanup() { close_down(); }

    void display_options_that_nobody_confirmed_are_not_written() {
        start_with_network(windows_1252(sheet_network));
        auto& dialog = open_dialog<FrmDarstellungen>("m_optionen_darstellungen");
        type_and_enter(control<QComboBox>(dialog, "cbo_überhöhung"), "7");
        type_and_enter(control<QComboBox>(dialog, "cbo_grundriss_mass"), "2500");
        QCOMPARE(session_.settings.faktorStrich, std::int16_t{7});
        window_->end_without_display();
        QVERIFY(read(ini).contains("faktorStrich=1\r\n"));
        QVERIFY(read(network_file).simplified().contains(windows_1252("MaßstabGrundriss 1000 ")));
    }

    void display_options_that_were_confirmed_are_written() {
        start_with_network(windows_1252(sheet_network));
        auto& dialog = open_dialog<FrmDarstellungen>("m_optionen_darstellungen");
        type_and_enter(control<QComboBox>(dialog, "cbo_überhöhung"), "7");
        press(dialog, "cmd_ok");
        window_->end_without_display();
        QVERIFY(read(ini).contains("faktorStrich=7\r\n"));
    }

    void plot_settings_that_nobody_confirmed_are_not_written() {
        start_with_network(windows_1252(sheet_network));
        action("plot_ein")->trigger();
        auto& dialog = open_dialog<FrmPlotten>("m_plotten_einstellungen");
        type_and_enter(control<QComboBox>(dialog, "cbo_grundriss_mass"), "5000");
        QCOMPARE(session_.plot.plot_massstab, 1 / 5000.0);
        window_->end_without_display();
        QVERIFY(read(network_file).simplified().contains(windows_1252("MaßstabGrundriss 1000 ")));
    }

    /// They are taken over however their dialog is closed.
    void texts_of_the_legend_are_written() {
        start_with_network(windows_1252(sheet_network));
        auto& dialog = open_dialog<FrmLegende>("m_optionen_legende");
        type(control<QLineEdit>(dialog, "txt_legende_1"), "Lagenetz");
        window_->end_without_display();
        QVERIFY(read(network_file).contains("VerfahrenLegende Lagenetz\r\n"));
    }

    void a_selection_is_written_as_it_is_chosen() {
        start_with_network(windows_1252(sheet_network));
        auto& dialog = open_dialog<FrmObjekte>("m_torvel_objekte");
        click(control<QRadioButton>(dialog, "opt_beob_3"));
        window_->end_without_display();
        // Point labels, signatures, no values, no test, districts: observations are the eighth.
        QVERIFY(read(network_file).simplified().contains("Objekte 1 1 0 0 1 1 3 3 0"));
    }
};

QTEST_MAIN(DisplayLossTest)
#include "frmTorvel_display_loss_wintest.moc"
