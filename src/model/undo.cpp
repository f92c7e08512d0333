#include "model/undo.h"

namespace veldra {

namespace {

void show(WindowState& window, const char* caption, bool enabled) {
    MenuItemState& entry = window[MenuItem::m_ansicht_undo];
    entry.caption = caption;
    entry.enabled = enabled;
    ToolButtonState& button = window[ToolButton::rueckgaengig];
    button.tool_tip = caption;
    button.enabled = enabled;
}

}  // namespace

void store_undo(WindowState& window, const Undo& step, const char* caption) {
    window.undo = step;
    show(window, caption, true);
}

void clear_undo(WindowState& window) {
    window.undo = {};
    show(window, undo_caption::none, false);
}

void clear_undo_for_selection(WindowState& window) {
    if (window.undo.undo_satz == 0) {
        clear_undo(window);
    }
}

}  // namespace veldra
