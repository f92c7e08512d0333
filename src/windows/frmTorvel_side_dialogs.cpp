#include "dialogs/scale_bars.h"
#include "windows/forms/frmLegende.h"
#include "windows/forms/frmMassstab.h"
#include "windows/forms/frmVerwopt.h"
#include "windows/frmTorvel.h"

namespace veldra {

void FrmTorvel::add_side_dialogs(std::map<MenuItem, Command>& commands) {
    commands[MenuItem::m_optionen_legende] = [this] {
        open_modal([this] { return new FrmLegende(this, session_, printer_); }, Redraw::always);
    };
    commands[MenuItem::m_optionen_grenzen] = [this] {
        const auto create = [this] {
            auto* dialog = new FrmVerwopt(this, session_);
            dialog->last_folder = last_folder;
            return dialog;
        };
        open_modal(create, Redraw::if_accepted);
    };
    commands[MenuItem::m_ansicht_massstab] = [this] {
        perform([this] {
            if (session_.window.frm_massstab_shown) {
                close_scale_bars(session_);
            } else {
                open_scale_bars(session_);
            }
        });
    };
}

void FrmTorvel::add_side_dialogs(std::map<ToolButton, Command>& commands) {
    commands[ToolButton::massstaebe] = [this] { perform([this] { open_scale_bars(session_); }); };
}

void FrmTorvel::open_modal(const std::function<QDialog*()>& create, Redraw redraws) {
    if (!ready_for_dialog()) {
        return;
    }
    QDialog* dialog = create();
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::finished, this, [this, redraws](int result) {
        perform([this, redraws, result] {
            const bool wanted = redraws == Redraw::always || result == QDialog::Accepted;
            if (wanted && session_.datei_geladen == 1) {
                redraw();
            }
        });
    });
    synchronise();
    dialog->open();
}

void FrmTorvel::synchronise_scale_bars() {
    auto* dialog = findChild<FrmMassstab*>(QString(), Qt::FindDirectChildrenOnly);
    if (!session_.window.frm_massstab_shown) {
        delete dialog;
        return;
    }
    if (dialog != nullptr) {
        dialog->refresh();
        return;
    }
    dialog = new FrmMassstab(this, session_);
    connect(dialog, &QDialog::finished, this, [this] {
        close_scale_bars(session_);
        synchronise_timer_.start(0);  // the dialog goes when its own event is over
    });
    dialog->show();
}

}  // namespace veldra
