#include "shell/long_work.h"

namespace veldra {

void forget_file(Session& session) {
    session.datei_geladen = 0;
    session.graphikdatei.clear();
    session.arbeitsdatei_basis.clear();
    session.arbeitsdatei_suffix.clear();
    session.netz.clear();
    session.netz_aktuell = 0;
    session.pu.clear();
    session.lin.clear();
    session.nuoff.clear();
    ++session.tables_revision;
    session.window.frm_netzteile_shown = false;
    session.window[MenuItem::m_ansicht_netzteile].enabled = false;
    session.window[MenuItem::m_ansicht_netzteile].checked = false;
    const WindowState designed;
    session.window.caption = designed.caption;
    session.window.fenstertitel = designed.fenstertitel;
}

}  // namespace veldra
