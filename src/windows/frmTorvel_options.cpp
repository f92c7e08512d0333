#include "dialogs/object_selection.h"
#include "model/undo.h"
#include "windows/forms/frmDarstellungen.h"
#include "windows/frmTorvel.h"

namespace veldra {

void FrmTorvel::open_display_options() {
    if (!ready_for_dialog()) {
        return;
    }
    clear_undo(session_.window);
    auto* dialog = new FrmDarstellungen(this, session_, measurer_, printer_);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->set_mouse_pointer = [this](int pointer) {
        session_.window.mouse_pointer = pointer;
        ui_.set_mouse_pointer(pointer);
    };
    connect(dialog, &QDialog::finished, this,
            [this, limit = session_.settings.stndwert] { take_display_options(limit); });
    synchronise();
    dialog->open();
}

void FrmTorvel::take_display_options(double limit) {
    perform([this, limit] {
        if (session_.datei_geladen != 1) {
            return;
        }
        if (session_.settings.stndwert != limit) {
            revocable([this, limit] { grenzwert_uebernehmen(session_, limit, desk()); });
        }
        // Also what else was set, when the new limit was given up.
        if (session_.settings.stndwert == limit) {
            redraw();
        }
    });
}

}  // namespace veldra
