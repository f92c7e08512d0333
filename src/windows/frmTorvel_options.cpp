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
    connect(dialog, &QDialog::finished, this, [this] { redraw_open_file(); });
    synchronise();
    dialog->open();
}

}  // namespace veldra
