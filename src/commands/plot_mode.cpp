#include "commands/plot_mode.h"

#include "view/viewport.h"

namespace veldra {

namespace {

void set_plot_mode(Session& session, const Desk& desk, std::int16_t plotmodus) {
    session.plotmodus = plotmodus;
    clear_undo(session.window);
    desk.redraw();
}

}  // namespace

void plotmodus_ein(Session& session, const Desk& desk) {
    set_plot_mode(session, desk, 1);
}

void plotmodus_aus(Session& session, const Desk& desk) {
    set_plot_mode(session, desk, 0);
}

}  // namespace veldra
