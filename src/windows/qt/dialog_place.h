#pragma once

class QScreen;
class QWidget;

namespace veldra {

/// Puts a dialog in the middle of its window, as far as the screen has room for it there.
void centre_on(QWidget& dialog, const QWidget& window);
/// Moves a dialog so that its frame lies on the screen. What is larger begins at its left and top
/// edges.
void keep_on_screen(QWidget& dialog, const QScreen& screen);

}  // namespace veldra
