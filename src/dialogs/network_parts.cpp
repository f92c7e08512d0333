#include "dialogs/network_parts.h"

namespace veldra {

namespace {

bool is_part(const Session& session, std::int32_t part) {
    return part >= 1 && part <= session.netz.count();
}

}  // namespace

MarkButtons mark_buttons(const Session& session, std::int32_t part) {
    if (!is_part(session, part)) {
        return {};
    }
    const bool marked = session.netz[part].netz_plotmarke != table_false;
    return {!marked, marked};
}

void mark_for_plotting(Session& session, std::int32_t part, bool marked) {
    if (is_part(session, part)) {
        session.netz[part].netz_plotmarke = marked ? table_true : table_false;
    }
}

void show_network_parts(WindowState& window, bool shown) {
    window.frm_netzteile_shown = shown;
    window[MenuItem::m_ansicht_netzteile].checked = shown;
    window[ToolButton::netzteile].enabled = !shown;
}

}  // namespace veldra
