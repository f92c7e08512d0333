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
    const WindowState designed;
    session.window.caption = designed.caption;
    session.window.fenstertitel = designed.fenstertitel;
}

}  // namespace veldra
