#include "platform/qt/dialog_area.h"

#include <QScreen>
#include <QScrollBar>

namespace veldra {

namespace {

/// What the rest of a dialog, its frame and the desktop's bars take of the screen, in heights of a
/// line of text.
constexpr int lines_beside = 8;

}  // namespace

DialogArea::DialogArea(QWidget* contents, QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    setWidget(contents);
}

QSize DialogArea::sizeHint() const {
    const QSize wanted = widget()->minimumSizeHint().expandedTo(widget()->sizeHint());
    const int beside = lines_beside * fontMetrics().height();
    const QSize room = screen()->availableSize() - QSize(beside / 2, beside);
    QSize size = wanted.boundedTo(room);
    if (wanted.height() > room.height()) {
        size.rwidth() += verticalScrollBar()->sizeHint().width();
    }
    if (wanted.width() > room.width()) {
        size.rheight() += horizontalScrollBar()->sizeHint().height();
    }
    return size.boundedTo(room);
}

}  // namespace veldra
