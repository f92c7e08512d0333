#include "model/undo.h"

namespace veldra {

void store_undo(WindowState& window, const Undo& step, const char* caption) {
    window.undo = step;
    window.undo.caption = caption;
}

void clear_undo(WindowState& window) {
    window.undo = {};
}

void clear_undo_for_selection(WindowState& window) {
    if (window.undo.undo_satz == 0) {
        clear_undo(window);
    }
}

}  // namespace veldra
