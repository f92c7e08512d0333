#include "windows/qt/dialog_area.h"

#include <QApplication>
#include <QEvent>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>
#include <algorithm>

namespace veldra {

namespace {

/// Left free around the control that the keyboard has come to, logical pixels.
constexpr int around_focus = 8;

}  // namespace

DialogArea::DialogArea(QWidget* contents, QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    setWidget(contents);
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget* /*from*/, QWidget* to) { show_focus(to); });
}

/// The contents give the keyboard up while they go, after this has gone.
DialogArea::~DialogArea() {
    disconnect(qApp, nullptr, this, nullptr);
}

/// What the dialog's frame, margins and buttons leave of the screen.
QSize DialogArea::room_on_screen() const {
    const auto metric = [this](QStyle::PixelMetric which) {
        return style()->pixelMetric(which, nullptr, this);
    };
    const int line = fontMetrics().height();
    const int title = std::max(metric(QStyle::PM_TitleBarHeight), 2 * line);
    const int buttons = 3 * line;  // with the line above them that tells of entries
    const int width = metric(QStyle::PM_LayoutLeftMargin) + metric(QStyle::PM_LayoutRightMargin) +
                      2 * metric(QStyle::PM_MdiSubWindowFrameWidth);
    const int height = title + buttons + metric(QStyle::PM_LayoutTopMargin) +
                       metric(QStyle::PM_LayoutVerticalSpacing) +
                       metric(QStyle::PM_LayoutBottomMargin);
    return screen()->availableSize() - QSize(width, height);
}

QSize DialogArea::sizeHint() const {
    const QSize wanted = widget()
                             ->minimumSizeHint()
                             .expandedTo(widget()->sizeHint())
                             .expandedTo(widget()->minimumSize());
    const QSize room = room_on_screen();
    const int bar_width = verticalScrollBar()->sizeHint().width();
    const int bar_height = horizontalScrollBar()->sizeHint().height();
    // A bar for one direction may take the room that the other one would just have had.
    const bool wide = wanted.width() > room.width();
    const bool high = wanted.height() + (wide ? bar_height : 0) > room.height();
    const bool wide_beside_bar = wanted.width() + (high ? bar_width : 0) > room.width();
    return (wanted + QSize(high ? bar_width : 0, wide || wide_beside_bar ? bar_height : 0))
        .boundedTo(room);
}

/// What the contents ask for may change while they are shown.
bool DialogArea::eventFilter(QObject* watched, QEvent* event) {
    if (watched == widget() && event->type() == QEvent::LayoutRequest) {
        updateGeometry();
    }
    return QScrollArea::eventFilter(watched, event);
}

/// A click is left alone: what it was meant for must not move away beneath it.
void DialogArea::show_focus(QWidget* focus) {
    if (focus != nullptr && widget()->isAncestorOf(focus) &&
        QGuiApplication::mouseButtons() == Qt::NoButton) {
        // The whole control, as far as there is room for it; the toolkit's own way stops at the
        // cursor of a box.
        const QPoint middle = focus->mapTo(widget(), focus->rect().center());
        const QSize around = focus->size() / 2 + QSize(around_focus, around_focus);
        const QSize margin = around.boundedTo(viewport()->size() / 2);
        ensureVisible(middle.x(), middle.y(), margin.width(), margin.height());
    }
}

}  // namespace veldra
