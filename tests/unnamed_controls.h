#pragma once

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QComboBox>
#include <QLineEdit>
#include <QListView>
#include <QStringList>
#include <QTabBar>
#include <QTabWidget>
#include <QWidget>

namespace veldra_test {

/// A part of a larger control that a screen reader meets under that control's name: the list of a
/// combo box, the arrows of a strip of tabs.
inline bool is_inner_part(const QWidget& widget) {
    for (const QWidget* parent = widget.parentWidget(); parent != nullptr;
         parent = parent->parentWidget()) {
        const auto* const tabs = qobject_cast<const QTabBar*>(parent);
        if (tabs != nullptr || parent->inherits("QComboBoxPrivateContainer") ||
            qobject_cast<const QAbstractSpinBox*>(parent) != nullptr) {
            return true;
        }
        if (qobject_cast<const QAbstractItemView*>(parent) != nullptr) {
            return true;
        }
    }
    return widget.inherits("QComboBoxPrivateContainer");
}

/// What a user can operate, or reach by the keyboard.
inline bool is_control(const QWidget& widget) {
    return qobject_cast<const QAbstractButton*>(&widget) != nullptr ||
           qobject_cast<const QLineEdit*>(&widget) != nullptr ||
           qobject_cast<const QComboBox*>(&widget) != nullptr ||
           qobject_cast<const QAbstractSpinBox*>(&widget) != nullptr ||
           qobject_cast<const QTabBar*>(&widget) != nullptr ||
           qobject_cast<const QAbstractItemView*>(&widget) != nullptr ||
           (widget.focusPolicy() & Qt::TabFocus) != 0;
}

/// Controls of a window, hidden ones too, of which a screen reader cannot say what they are, or
/// which bear no name of their own in the program; each as its class and name.
inline QStringList unnamed_controls(const QWidget& window) {
    QStringList unnamed;
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (is_inner_part(*widget) || !is_control(*widget)) {
            continue;
        }
        QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(widget);
        const bool has_spoken_name =
            spoken != nullptr && !spoken->text(QAccessible::Name).trimmed().isEmpty();
        const bool edits_a_combo = qobject_cast<QComboBox*>(widget->parentWidget()) != nullptr;
        if (!has_spoken_name || (widget->objectName().isEmpty() && !edits_a_combo)) {
            unnamed << QString::fromLatin1(widget->metaObject()->className()) + QLatin1Char(' ') +
                           widget->objectName();
        }
    }
    return unnamed;
}

}  // namespace veldra_test
