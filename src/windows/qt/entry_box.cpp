#include "windows/qt/entry_box.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QPointer>
#include <utility>

#include "windows/qt/dialog_controls.h"

namespace veldra {

EntryBox::EntryBox(QWidget& control, QLineEdit& edit, Commit commit, Leaves leaves_unread)
    : QObject(&control),
      edit_(edit),
      commit_(std::move(commit)),
      leaves_unread_(std::move(leaves_unread)) {
    keep_one_line(edit_);
    select_.setSingleShot(true);
    connect(&select_, &QTimer::timeout, &edit_, &QLineEdit::selectAll);
    control.installEventFilter(this);
}

void EntryBox::take_over() {
    if (busy_) {
        return;
    }
    // A message box lets the end of the program in, and with it that of the box and of this.
    const QPointer<EntryBox> self(this);
    const Commit commit = commit_;
    busy_ = true;
    commit();
    if (self) {
        busy_ = false;
    }
}

bool EntryBox::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            const QPointer<EntryBox> self(this);
            take_over();
            if (self) {
                edit_.selectAll();
            }
            return true;  // not for the default button
        }
    } else if (event->type() == QEvent::FocusIn) {
        // After the box has put its cursor where the mouse is.
        select_.start(0);
    } else if (event->type() == QEvent::FocusOut) {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason &&
            !leaves_unread_()) {
            const QPointer<EntryBox> self(this);
            take_over();
            if (!self) {
                return true;  // the box that lost the focus is gone
            }
        }
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace veldra
