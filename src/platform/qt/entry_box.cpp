#include "platform/qt/entry_box.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QMetaObject>
#include <utility>

namespace veldra {

EntryBox::EntryBox(QWidget& control, QLineEdit& edit, Commit commit, Leaves leaves_unread)
    : QObject(&control),
      edit_(edit),
      commit_(std::move(commit)),
      leaves_unread_(std::move(leaves_unread)) {
    control.installEventFilter(this);
}

void EntryBox::take_over() {
    if (busy_) {
        return;
    }
    busy_ = true;
    commit_();
    busy_ = false;
}

bool EntryBox::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            take_over();
            edit_.selectAll();
            return true;  // not for the default button
        }
    } else if (event->type() == QEvent::FocusIn) {
        // After the box has put its cursor where the mouse is.
        QMetaObject::invokeMethod(&edit_, &QLineEdit::selectAll, Qt::QueuedConnection);
    } else if (event->type() == QEvent::FocusOut) {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason &&
            !leaves_unread_()) {
            take_over();
        }
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace veldra
