#include "windows/qt/dialog_place.h"

#include <QScreen>
#include <QWidget>
#include <algorithm>

namespace veldra {

void centre_on(QWidget& dialog, const QWidget& window) {
    dialog.resize(dialog.sizeHint());  // adjustSize stops at two thirds of the screen
    const QPoint middle = window.frameGeometry().center();
    const QSize size = dialog.frameGeometry().size();
    dialog.move(middle.x() - size.width() / 2, middle.y() - size.height() / 2);
    keep_on_screen(dialog, *window.screen());
}

void keep_on_screen(QWidget& dialog, const QScreen& screen) {
    const QRect room = screen.availableGeometry();
    const QRect frame = dialog.frameGeometry();
    const int left = std::min(frame.left(), room.right() + 1 - frame.width());
    const int top = std::min(frame.top(), room.bottom() + 1 - frame.height());
    const QPoint place(std::max(room.left(), left), std::max(0, top));
    if (place != frame.topLeft()) {
        dialog.move(place);
    }
}

}  // namespace veldra
