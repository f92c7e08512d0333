#pragma once

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QStringList>
#include <QWidget>

namespace veldra_test {

/// Visible controls and frames of a window that have less room than their text needs, or that
/// reach out of what holds them; by their names.
inline QStringList cut_off_controls(const QWidget& window) {
    QStringList cut_off;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        const bool has_text = qobject_cast<const QAbstractButton*>(widget) != nullptr ||
                              qobject_cast<const QLabel*>(widget) != nullptr ||
                              qobject_cast<const QComboBox*>(widget) != nullptr ||
                              qobject_cast<const QLineEdit*>(widget) != nullptr ||
                              qobject_cast<const QGroupBox*>(widget) != nullptr;
        if (!has_text || !widget->isVisibleTo(&window) || widget->objectName().isEmpty()) {
            continue;
        }
        const QSize wanted = widget->minimumSizeHint();
        const bool small = widget->width() < wanted.width() || widget->height() < wanted.height();
        if (small || !widget->parentWidget()->rect().contains(widget->geometry())) {
            cut_off << widget->objectName();
        }
    }
    return cut_off;
}

}  // namespace veldra_test
