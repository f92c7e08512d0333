#include "model/undo.h"

namespace veldra {

void store_undo(WindowState& window, const Undo& step, const char* caption) {
    window.undo = step;
    window.undo.caption = caption;
}

void clear_undo(WindowState& window) {
    window.undo = {};
}

}  // namespace veldra
