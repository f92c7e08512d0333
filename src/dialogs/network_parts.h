#pragma once

#include <cstdint>

#include "model/session.h"

namespace veldra {

// What the dialog frmNetzteile does, without its window.

/// Which of the two buttons can be used that mark a part for plotting.
struct MarkButtons {
    bool cmd_plotten = false;
    bool cmd_nicht_plotten = false;
    bool operator==(const MarkButtons&) const = default;
};
/// The buttons for a part, from 1; both off when there is no such part.
[[nodiscard]] MarkButtons mark_buttons(const Session& session, std::int32_t part);

/// Marks a part for plotting or takes the mark away. Nothing happens when there is no such part.
void mark_for_plotting(Session& session, std::int32_t part, bool marked);

/// Opens the dialog or closes it: its menu entry is checked while it is open, and its button in the
/// toolbar disabled.
void show_network_parts(WindowState& window, bool shown);

}  // namespace veldra
