#pragma once

namespace veldra {

struct Session;

// Default helpers of the display settings, one for each group of values that has a button
// "Standard". `code`: 0 sets the defaults and saves them, 1 sets the defaults, 2 saves the values
// in their twins, 3 restores them from there; any other code does nothing.

/// Sizes of the observation signatures on screen.
void standard_beob_screen(Session& session, int code);
/// Sizes of the observation signatures in the plot, and the multiplier of its line widths.
void standard_beob_plot(Session& session, int code);
/// Widths, colours and both scales of the vector slots 1 to 3.
void standard_vektor_lage(Session& session, int code);
/// Widths, colours and both scales of the vector slots 4 to 6.
void standard_vektor_hoehe(Session& session, int code);
/// Widths, colours and limits of the test classes.
void standard_test(Session& session, int code);
/// Sizes of point signatures and labels on screen, and what screen and plot share: fonts, styles,
/// colours and the standard offset of labels.
void standard_punkt_screen(Session& session, int code);
/// Sizes of point signatures and labels in the plot.
void standard_punkt_plot(Session& session, int code);
/// Widths and colours of the boundaries.
void standard_grenzen(Session& session, int code);

/// Fonts, sizes and styles of the four title lines. Their texts stay.
void standard_legende(Session& session);

/// All defaults, set and saved in the order of the start: test classes, boundaries, vectors,
/// observations, points, legend.
void standard_alle(Session& session);

}  // namespace veldra
