#include "shell/long_work.h"

#include <algorithm>

#include "graphikdatei/writer.h"
#include "view/undo.h"

namespace veldra {

void LongWork::expect_readings(int readings) {
    expected_readings_ = readings;
    readings_ = 0;
}

void LongWork::tell_reading(double share) {
    step_ = Step::reading;
    share_ =
        (readings_ + std::clamp(share, 0.0, 1.0)) / std::max(expected_readings_, readings_ + 1);
}

void LongWork::tell_read() {
    ++readings_;
    step_ = Step::reading;
    share_ = static_cast<double>(readings_) / std::max(expected_readings_, readings_);
}

void LongWork::tell_drawing(double share) {
    step_ = Step::drawing;
    share_ = std::clamp(share, 0.0, 1.0);
}

void LongWork::forget_shares() {
    step_ = Step::unknown;
    share_.reset();
    expect_readings(1);
}

void forget_file(Session& session) {
    close_document(session);
    session.graphikdatei.clear();
    session.arbeitsdatei_basis.clear();
    session.netz.clear();
    session.netz_aktuell = 0;
    session.pu.clear();
    session.lin.clear();
    session.nuoff.clear();
    ++session.tables_revision;
    session.plotmodus = 0;
    WindowState& window = session.window;
    window.frm_netzteile_shown = false;
    window.frm_massstab_shown = false;
    window.lbl_legende_visible = false;
    for (const MenuItem item : {MenuItem::m_ansicht_netzteile, MenuItem::m_ansicht_massstab}) {
        window[item].enabled = false;
        window[item].checked = false;
    }
    for (const ToolButton button : {ToolButton::netzteile, ToolButton::massstaebe}) {
        window[button].enabled = false;
    }
    clear_undo(window);
    const WindowState designed;
    window.caption = designed.caption;
    window.fenstertitel = designed.fenstertitel;
}

}  // namespace veldra
