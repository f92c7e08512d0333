#pragma once

#include <cstdint>

#include "model/window_state.h"

namespace veldra {

/// What can be taken back (`undo_art`).
namespace undo_kind {
constexpr std::int16_t none = 0;
constexpr std::int16_t point_label = 1;     ///< index, old offsets east and north
constexpr std::int16_t district_label = 2;  ///< index, old easting and northing
constexpr std::int16_t sheets = 3;          ///< old plotter zero point
constexpr std::int16_t zoom_in = 4;         ///< old view: both minima, both maxima
constexpr std::int16_t zoom_out = 5;        ///< as zoom_in
}  // namespace undo_kind

/// Texts of menu entry and button, UTF-8.
namespace undo_caption {
constexpr const char* none = "Rückgängig:";
constexpr const char* point_label = "Rückgängig: Verschiebung Bezeichnung";
constexpr const char* district_label = "Rückgängig: Verschiebung NB-Bezeichnung";
constexpr const char* sheets = "Rückgängig: Verschiebung Blatteinteilung";
constexpr const char* plot_origin = "Rückgängig: Plotternullpunkt anpassen";
constexpr const char* zoom_in = "Rückgängig: Vergrößern";
constexpr const char* zoom_out = "Rückgängig: Verkleinern";
}  // namespace undo_caption

/// Makes a step the one that can be undone; menu entry and button say so.
void store_undo(WindowState& window, const Undo& step, const char* caption);

/// Nothing can be undone: menu entry and button fall back to their plain text and are disabled.
void clear_undo(WindowState& window);

/// The same before the selection of objects, which a moved label of a change outlives.
void clear_undo_for_selection(WindowState& window);

}  // namespace veldra
