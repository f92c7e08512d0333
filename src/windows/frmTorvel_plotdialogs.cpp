// The part of the main window that opens the dialogs of the plot.
#include "windows/forms/frmDrucker.h"
#include "windows/forms/frmNetzteile.h"
#include "windows/forms/frmPlotten.h"
#include "windows/frmTorvel.h"

namespace veldra {

void FrmTorvel::add_plot_dialogs(std::map<MenuItem, Command>& commands) {
    commands[MenuItem::m_plotten_einstellungen] = [this] { open_plot_settings(); };
    commands[MenuItem::m_optionen_drucker] = [this] { open_printer_dialog(); };
}

void FrmTorvel::redraw_open_file() {
    perform([this] {
        if (session_.datei_geladen == 1) {
            redraw();
        }
    });
}

void FrmTorvel::open_plot_settings() {
    if (!ready_for_dialog()) {
        return;
    }
    auto* dialog = new FrmPlotten(this, session_, desk());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->redraw_preview = [this] { redraw_open_file(); };
    dialog->mark_part = [this](std::int32_t part, bool marked) {
        if (frm_netzteile_ != nullptr) {
            frm_netzteile_->show_mark(part, marked);
        }
    };
    connect(dialog, &QDialog::finished, this, [this] { synchronise(); });
    synchronise();
    dialog->open();
}

void FrmTorvel::open_printer_dialog() {
    if (!ready_for_dialog()) {
        return;
    }
    auto* dialog = new FrmDrucker(this, session_, printer_);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->is_shutting_down = [this] { return !run_.programm_aktiv; };
    connect(dialog, &QDialog::finished, this, [this](int result) {
        synchronise();
        // Another paper divides the part into other sheets.
        if (result == QDialog::Accepted && session_.plotmodus == 1) {
            redraw_open_file();
        }
    });
    dialog->open();
}

}  // namespace veldra
