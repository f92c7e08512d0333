#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QMap>
#include <QPushButton>
#include <QStringList>
#include <QTest>
#include <QWidget>

namespace veldra_test {

/// Letters that lead to more than one control in sight, as "o: cmd_ok opt_oben".
inline QStringList shared_mnemonics(const QWidget& window) {
    QMap<QChar, QStringList> owners;
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisibleTo(&window)) {
            continue;
        }
        QString text;
        if (const auto* button = qobject_cast<QAbstractButton*>(widget)) {
            text = button->text();
        } else if (const auto* label = qobject_cast<QLabel*>(widget)) {
            text = label->buddy() != nullptr ? label->text() : QString();
        } else if (const auto* group = qobject_cast<QGroupBox*>(widget)) {
            text = group->title();
        }
        const qsizetype mark = text.indexOf(QLatin1Char('&'));
        if (mark >= 0 && mark + 1 < text.size()) {
            owners[text.at(mark + 1).toLower()] << widget->objectName();
        }
    }
    QStringList shared;
    for (auto it = owners.constBegin(); it != owners.constEnd(); ++it) {
        if (it.value().size() > 1) {
            shared << QString(it.key()) + QStringLiteral(": ") + it.value().join(QLatin1Char(' '));
        }
    }
    return shared;
}

/// Buttons that Return presses while the focus is on no button.
inline QStringList default_buttons(const QWidget& window) {
    QStringList found;
    for (const QPushButton* button : window.findChildren<QPushButton*>()) {
        if (button->isDefault()) {
            found << button->objectName();
        }
    }
    return found;
}

/// The controls that Tab reaches from the one with the focus on, once round, by their names.
inline QStringList tab_chain(QWidget& window) {
    QStringList chain;
    const QWidget* const first = window.focusWidget();
    const QWidget* at = first;
    do {
        chain << at->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        at = QApplication::focusWidget();
    } while (at != nullptr && at != first && chain.size() < 100);
    return chain;
}

/// Clicks the mark of an option or a check box, which may be much wider than its text.
inline void click_mark(QAbstractButton& button) {
    QTest::mouseClick(&button, Qt::LeftButton, {},
                      QPoint(button.height() / 2, button.height() / 2));
}

/// A caption without the mark of its shortcut.
inline QString plain(QString caption) {
    return caption.remove(QLatin1Char('&'));
}

}  // namespace veldra_test
